// Prints, for a catalogue of 1 000 products: the time from the list's reply to the drawn list, one
// search keystroke's filtering (with the update of the list on show), the switch to the grid after it, and
// the resident memory before and after. Figures only: the budgets (100 ms, 5 ms) are printed beside them.

#include "catalogue/AllProductsViewController.h"
#include "catalogue/CatalogueState.h"
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
#include <algorithm>
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

QByteArray catalogueReply(int n) {
    static const char* const groups[] = {"Herbisit", "Fungisit", "İnsektisit", "Akarisit", "Nematisit", "Tohum İlacı"};
    static const char* const stems[] = {"Irgat", "Işıldak", "İnsekta", "Kırmızan", "Tarvizol", "Yeşilkal", "Ovagard", "Boylan"};
    QJsonArray data;
    for (int i = 0; i < n; ++i)
        data.append(QJsonObject{{"id", 1000 + i},
                                {"title", QStringLiteral("%1%2<sup>&reg;</sup> %3 SC").arg(stems[i % 8]).arg(i / 8).arg(25 * (1 + i % 20))},
                                {"group", groups[i % 6]},
                                {"image", QStringLiteral("http://127.0.0.1:9/static/catalogue/%1.svg").arg(1001 + i % 84)}});
    return QJsonDocument(QJsonObject{{"status", 200}, {"message", ""}, {"errors", ""}, {"data", data}}).toJson(QJsonDocument::Compact);
}

// Answers the list at once from memory and marks the moment the reply is handed over.
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

double median(QList<double> v) {
    std::sort(v.begin(), v.end());
    return v.isEmpty() ? 0 : v.at(v.size() / 2);
}

} // namespace

int main(int argc, char** argv) {
    platform::prepareProcess();
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    auto* transport = new MemoryTransport;
    transport->body = catalogueReply(1000);
    auto* engine = new QQmlEngine;
    platform::Platform platform(new platform::SystemScheduler, new platform::UserDefaults(dir.filePath("store.ini")), transport,
                                new platform::PushService, engine);
    platform.defaults().setString(QStringLiteral("token"), QStringLiteral("bench"));

    const long before = residentKiB();
    auto* nav = new platform::NavigationController;
    auto* screen = new catalogue::AllProductsViewController;
    nav->setViewControllers({screen});
    platform.window().setRootViewController(nav);
    platform.window().makeKeyAndVisible();
    QQuickWindow* window = platform.window().quickWindow();

    // Reply to drawn list: the first frame swapped after the table holds every row.
    QList<double> drawn;
    for (int run = 0; run < 7; ++run) {
        if (run > 0) screen->loadProducts();
        QEventLoop loop;
        double ms = -1;
        auto c = QObject::connect(window, &QQuickWindow::frameSwapped, &loop, [&] {
            if (screen->tableView->rows()->count() == 1000 && transport->replied.isValid()) {
                ms = transport->replied.nsecsElapsed() / 1e6;
                loop.quit();
            }
        });
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        QObject::disconnect(c);
        transport->replied.invalidate();
        if (ms >= 0) drawn << ms;
        // Rows go empty before the next fetch, so the next run draws the whole list again.
        catalogue::productList() = catalogue::Product{};
        screen->tableView->reloadData();
        screen->collectionView->reloadData();
        QCoreApplication::processEvents();
    }
    screen->loadProducts();
    while (screen->tableView->rows()->count() < 1000) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    const long loaded = residentKiB();

    // One keystroke: the search over the list and the update of the list on show (the hidden grid
    // follows when it is switched to). Several rounds, as the machine is shared.
    QList<double> keystroke;
    for (int round = 0; round < 5; ++round)
        for (const QString& text : {QStringLiteral("ı"), QStringLiteral("i"), QStringLiteral("k"), QStringLiteral("a")}) {
            screen->searchBar->setText(QString());
            QElapsedTimer t;
            t.start();
            screen->searchBar->userType(text);
            keystroke << t.nsecsElapsed() / 1e6;
            QCoreApplication::processEvents();
        }
    QElapsedTimer t;
    t.start();
    screen->searchBar->userType(QStringLiteral("r")); // a second character narrows the first's matches
    const double second = t.nsecsElapsed() / 1e6;

    // The grid, switched to after the search: its rows are brought up to date then.
    QElapsedTimer toGrid;
    toGrid.start();
    screen->changeGridWithSender();
    const double gridSwitch = toGrid.nsecsElapsed() / 1e6;

    std::printf("catalogue of 1000 products\n");
    std::printf("reply to drawn list: median %.1f ms over %lld runs (budget 100 ms)\n", median(drawn), qlonglong(drawn.size()));
    std::printf("one search keystroke, filter and the list's update: median %.2f ms over %lld, second character %.2f ms"
                " (budget 5 ms)\n",
                median(keystroke), qlonglong(keystroke.size()), second);
    std::printf("switching to the grid after a search, its rows updated: %.2f ms\n", gridSwitch);
    std::printf("resident memory: %.1f MB before the list, %.1f MB with it drawn\n", before / 1024.0, loaded / 1024.0);
    return 0;
}
