// The info pages: the three legal pages by slug, and the product site's guide as an accordion, split by
// its fixed shape, decoded all or nothing, at most one section open.

#include "FakePlatform.h"
#include "info/InfoDetailViewController.h"
#include "info/InfoScreens.h"
#include "info/InfoViewController.h"
#include "info/site/InfoElement.h"
#include "info/site/SiteInfoViewController.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using info::site::InfoViewController;

namespace {
const QString Guide = QStringLiteral("/site/scripts/components/static/page_182.php");
// Blocks 0 and 12 main, the others paragraphs numbered by position.
QByteArray document(int blocks, const QString& badValueAt = {}) {
    QJsonArray list;
    for (int i = 0; i < blocks; ++i)
        list.append(QJsonObject{{"item", i == 0 || i == 12 ? "headline" : "paragraph"},
                                {"type", i == 0 || i == 12 ? "main" : (badValueAt == QString::number(i) ? "lead" : "standard")},
                                {"content", QString("B%1").arg(i)}});
    return QJsonDocument(list).toJson();
}
} // namespace

class InfoTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;

    InfoViewController* guide(const QByteArray& body) {
        fake->http->on(Guide, rawReply(body, 200, "application/json"));
        auto* screen = new InfoViewController;
        fake->platform->window().setRootViewController(screen);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    QStringList shown(InfoViewController* screen) const {
        QStringList rows;
        for (const auto& row : screen->tableView->rows()->rows())
            rows << row.reuseIdentifier + ":" + row.values.value(row.reuseIdentifier == "Cell" ? "textLabel" : "ButtonToShowHide").toString();
        return rows;
    }

private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok");
        platform::Storyboard::clear();
        info::registerScreens();
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    void aLegalPageOpensBySlug() {
        auto* nav = new platform::NavigationController;
        auto* list = new info::InfoViewController;
        nav->setViewControllers({list});
        fake->platform->window().setRootViewController(nav);
        fake->http->on("page/detail", jsonReply(QJsonObject{{"status", 200},
                                                            {"data", QJsonObject{{"page", QJsonObject{{"name", "KVKK"}, {"text", "<p>Metin</p>"}}}}}}));
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        QCOMPARE(list->tableViewInfo->numberOfRows(), 4);
        QCOMPARE(list->tableViewInfo->cellForRow(0).reuseIdentifier, QStringLiteral("HeaderCell"));
        list->tableViewInfo->selectRow(0); // the heading does nothing
        QVERIFY(fake->platform->window().presentedControllers().isEmpty());
        list->tableViewInfo->selectRow(2);
        fake->run(0);
        auto* page = qobject_cast<info::InfoDetailViewController*>(fake->platform->window().presentedControllers().value(0));
        QVERIFY(page);
        QCOMPARE(queryValues(fake->http->requestsFor("page/detail").at(0), "slug"), QStringList{"kvkk"});
        QCOMPARE(page->webViewDocument->html(), QStringLiteral("<html><head></head><body><p>Metin</p></body></html>"));
        QCOMPARE(page->navBar->text(), QStringLiteral("KVKK"));
        page->webViewDocument->navigationFinished();
        QCOMPARE(fake->platform->window().hudCount(), 0);
        page->close();

        // A failed page leaves its indicator up; the user leaves by closing.
        fake->http->on("page/detail", transportFailure());
        list->tableViewInfo->selectRow(1);
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 1);
    }

    void theGuideSplitsByPosition() {
        auto* screen = guide(document(15));
        QCOMPARE(screen->section, (QStringList{"B0", "B12"}));
        QCOMPARE(screen->items1, QStringLiteral("  B1\n\n  B2\n\n  B3\n\n  B4\n\n  B5\n\n  B6\n\n  B7\n\n  B8\n\n  B9\n\n  B10\n\n  B11\n\n"));
        QCOMPARE(screen->items2, QStringLiteral("  B13\n\n  B14\n\n"));
        QCOMPARE(shown(screen), (QStringList{"HeaderCell1:Göster", "HeaderCell1:Göster"}));

        // Open the second, then the first: the second closes. The open one's button closes it.
        screen->tapHeaderButton(1);
        QCOMPARE(shown(screen), (QStringList{"HeaderCell1:Göster", "HeaderCell1:Gizle", "Cell:  B13\n\n  B14\n\n"}));
        screen->tapHeaderButton(0);
        QCOMPARE(shown(screen).size(), 3);
        QCOMPARE(shown(screen).at(0), QStringLiteral("HeaderCell1:Gizle"));
        QVERIFY(shown(screen).at(1).startsWith("Cell:  B1\n"));
        screen->tapHeaderButton(0);
        QCOMPARE(shown(screen), (QStringList{"HeaderCell1:Göster", "HeaderCell1:Göster"}));
    }

    void shortOrBadDocuments() {
        // Fewer than 13 blocks with one main: one section, the text past 12 out of reach.
        auto* screen = guide(document(8));
        QCOMPARE(screen->section, QStringList{"B0"});
        QVERIFY(screen->items2.isEmpty());
        QVERIFY(!fake->alert());
        cleanup();
        init();
        // One value outside the known ones fails the whole document.
        screen = guide(document(15, "5"));
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bilinmeyen bir hata oluştu"));
        QVERIFY(screen->section.isEmpty());
        QVERIFY(info::site::InfoElement::decodeList(R"([{"item":"headline","type":"main"}])") == std::nullopt);
    }
};

QTEST_GUILESS_MAIN(InfoTest)
#include "tst_info.moc"
