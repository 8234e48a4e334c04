// Prints, for a product of 12 blocks in 6 sections: the time from the detail reply to the drawn
// screen, and to every section measured by its hidden page (the sections table then takes its
// height), and the resident memory the measuring pages hold at that moment. Figures only.

#include "catalogue/CatalogueState.h"
#include "catalogue/ProductDetailViewController.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/ProcessSetup.h"
#include "platform/PushService.h"
#include "platform/Scheduler.h"
#include "platform/UserDefaults.h"
#include "platform/Window.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

using namespace ekinora;

namespace {

long residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').value(0).toLong();
    return 0;
}

QJsonObject block(const QString& type, const QJsonArray& lines) { return {{"type", type}, {"data", QJsonObject{{type, lines}}}}; }

QByteArray detailReply() {
    QJsonArray contents;
    for (int s = 0; s < 6; ++s) {
        QJsonArray blocks{block("headline", {QStringLiteral("Bölüm %1").arg(s + 1)})};
        if (s % 3 == 2)
            blocks.append(block("table", {"<table><tr><th>Bitki</th><th>Doz</th></tr><tr><td>Buğday</td><td>100 ml/da</td></tr>"
                                          "<tr><td>Arpa</td><td>80 ml/da</td></tr></table>"}));
        else
            blocks.append(block(s % 2 ? "list" : "paragraph",
                                {"İlacı, tank yarıya kadar doldurulduktan sonra karıştırarak ekleyiniz; rüzgârsız ve serin "
                                 "saatlerde, etiketteki dozda uygulayınız.",
                                 "Hasattan önceki bekleme süresine uyunuz."}));
        contents.append(QJsonObject{{"header", QStringLiteral("Bölüm %1").arg(s + 1)}, {"data", blocks}});
    }
    const QJsonObject data{{"group", "Herbisit"}, {"title", "Irgat® 250 SL"}, {"path", "qrc:/ekinora/images/dokuman.png"},
                           {"specialities", QJsonObject{{"group", "Herbisit"}, {"activeSubstance", "250 g/l Pinoksaden"}}},
                           {"contents", contents}, {"documents", QJsonArray{}}, {"media", QJsonArray{}}};
    return QJsonDocument(QJsonObject{{"status", 200}, {"data", data}}).toJson(QJsonDocument::Compact);
}

class MemoryTransport : public platform::HttpClient {
public:
    QByteArray body;
    QElapsedTimer replied;
    void send(const platform::HttpRequest&, platform::RedirectBlock, platform::ResponseHandler done) override {
        QTimer::singleShot(0, this, [this, done] {
            platform::HttpResponse r;
            r.transportOk = true;
            r.statusCode = 200;
            r.body = body;
            replied.start();
            done(r);
        });
    }
};

} // namespace

int main(int argc, char** argv) {
    platform::prepareProcess();
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    auto* transport = new MemoryTransport;
    transport->body = detailReply();
    auto* engine = new QQmlEngine;
    platform::Platform platform(new platform::SystemScheduler, new platform::UserDefaults(dir.filePath("store.ini")), transport,
                                new platform::PushService, engine);
    platform.defaults().setString(QStringLiteral("token"), QStringLiteral("bench"));
    catalogue::selectedProductId() = QStringLiteral("1001");

    const long before = residentKiB();
    auto* nav = new platform::NavigationController;
    auto* screen = new catalogue::ProductDetailViewController;
    nav->setViewControllers({screen});
    platform.window().setRootViewController(nav);
    platform.window().makeKeyAndVisible();
    QQuickWindow* window = platform.window().quickWindow();

    double drawn = -1, measured = -1;
    QEventLoop loop;
    QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&] {
        if (!transport->replied.isValid()) return;
        if (drawn < 0 && !screen->productSloganLbl->text().isEmpty()) drawn = transport->replied.nsecsElapsed() / 1e6;
        if (measured < 0 && screen->tableView2Height->constant() > 0) {
            measured = transport->replied.nsecsElapsed() / 1e6;
            loop.quit();
        }
    });
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    loop.exec();
    const long after = residentKiB();

    std::printf("product detail, %lld blocks in %lld sections\n", qlonglong(screen->contentStrings.size()),
                qlonglong(screen->tableView2->numberOfRows()));
    std::printf("  reply to drawn screen:          %8.1f ms\n", drawn);
    std::printf("  reply to every section measured: %8.1f ms (%lld of %lld heights)\n", measured,
                qlonglong(screen->contentHeights.size()), qlonglong(screen->contentStrings.size()));
    std::printf("  resident memory before opening: %8ld KiB\n", before);
    std::printf("  resident memory, pages measured: %8ld KiB (+%ld KiB, %lld hidden pages)\n", after, after - before,
                qlonglong(screen->measurers.size()));
    return measured < 0 ? 1 : 0;
}
