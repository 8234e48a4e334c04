// The news feed against scripted replies: only the "more" flag goes out, pages are appended, a drag
// that stops dead loads nothing, and the detail reads its item.

#include "FakePlatform.h"
#include "news/NewsDetailViewController.h"
#include "news/NewsScreens.h"
#include "news/NewsViewController.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <ctime>

using namespace ekinora;
using namespace ekinora::testing;

namespace {
QJsonObject page(const QJsonArray& news) { return QJsonObject{{"status", 200}, {"data", QJsonObject{{"news", news}}}}; }
QJsonObject item(int id, const QJsonValue& date) {
    return QJsonObject{{"id", id}, {"header", QString("Haber %1").arg(id)}, {"newsDate", date}, {"thumbnailUrl", "http://h/t.jpg"}};
}
} // namespace

class NewsTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    news::NewsViewController* screen = nullptr;

private slots:
    void initTestCase() {
        qputenv("TZ", "Europe/Istanbul");
        tzset();
    }
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok");
        platform::Storyboard::clear();
        news::registerScreens();
        nav = new platform::NavigationController;
        screen = new news::NewsViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    void pagesAreAppendedAndOnlyTheFlagGoesOut() {
        QList<QJsonArray> pages{{item(1, 1700000000), item(2, "1699900000")}, {item(3, 1699800000)}, {}};
        fake->http->on("agricultural-news", [&](const HttpRequest&) { return jsonReply(page(pages.isEmpty() ? QJsonArray() : pages.takeFirst())); });
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        QCOMPARE(screen->tblNews->numberOfRows(), 2);
        const auto first = fake->http->requestsFor("agricultural-news").at(0);
        QVERIFY(queryValues(first, "ptoken").isEmpty());
        QCOMPARE(screen->tblNews->cellForRow(1).values.value("lblInfo").toString(), QStringLiteral("13.11.2023"));

        // A drag that stops dead at the end loads nothing; one that coasts on asks for more.
        screen->scrollViewDidEndDragging(1, false);
        fake->run(0);
        QCOMPARE(fake->http->requestsFor("agricultural-news").size(), 1);
        screen->scrollViewDidEndDragging(0, true); // not at the end
        screen->scrollViewDidEndDragging(1, true);
        fake->run(0);
        const auto more = fake->http->requestsFor("agricultural-news");
        QCOMPARE(more.size(), 2);
        QCOMPARE(queryValues(more.at(1), "ptoken"), QStringList{"1"});
        QCOMPARE(screen->tblNews->numberOfRows(), 3);
        // The end of the feed is an empty page; asking again is the service's concern.
        screen->scrollViewDidEndDragging(2, true);
        screen->scrollViewDidEndDragging(2, true);
        fake->run(0);
        QCOMPARE(fake->http->requestsFor("agricultural-news").size(), 4);
        QCOMPARE(screen->tblNews->numberOfRows(), 3);
    }

    void oddRepliesLeaveTheListAsItIs() {
        fake->http->on("agricultural-news", jsonReply(QJsonObject{{"status", 400}, {"data", QJsonObject{}}}));
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        QCOMPARE(screen->tblNews->numberOfRows(), 0);
        // A date that isn't a number reads as the first day of 1970.
        QCOMPARE(news::newsDateText(QJsonValue("dün")), QStringLiteral("01.01.1970"));
    }

    void anItemOpensOnItsDetail() {
        fake->http->on("agricultural-news", jsonReply(page({item(7, 1700000000), item(9, 1700000000)})));
        fake->http->on("agricultural-news/detail", jsonReply(QJsonObject{
            {"status", 200},
            {"data", QJsonObject{{"newsItem", QJsonObject{{"header", "Don uyarısı"}, {"newsDate", 1700000000},
                                                         {"longDescription", "Uzun metin"}, {"imageUrl", "http://h/i.jpg"}}}}}}));
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        screen->tblNews->selectRow(1);
        fake->run(0);
        auto* detail = qobject_cast<news::NewsDetailViewController*>(nav->topViewController());
        QVERIFY(detail);
        QCOMPARE(queryValues(fake->http->requestsFor("agricultural-news/detail").at(0), "id"), QStringList{"9"});
        QCOMPARE(detail->lblTitle->text(), QStringLiteral("Don uyarısı"));
        QCOMPARE(detail->lblDate->text(), QStringLiteral("15.11.2023"));
        QCOMPARE(detail->txtContent->text(), QStringLiteral("Uzun metin"));
        QCOMPARE(detail->imagePhoto->imageUrl(), QUrl("http://h/i.jpg"));
        QVERIFY(detail->contentScrollEnabled());
    }
};

QTEST_GUILESS_MAIN(NewsTest)
#include "tst_news.moc"
