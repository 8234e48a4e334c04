// Events against scripted replies: the sections and their headers, the slider's pictures and the
// empty state, and the answers, always painted from the service's word.

#include "FakePlatform.h"
#include "events/EventDetailViewController.h"
#include "events/EventViewController.h"
#include "events/EventsScreens.h"
#include "platform/NavigationController.h"
#include "platform/Storyboard.h"
#include "widgets/Colors.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

namespace {
QJsonObject eventRow(int id, const QJsonValue& image, const QJsonValue& isJoin = QJsonValue::Null) {
    return QJsonObject{{"id", id}, {"name", QString("Etkinlik %1").arg(id)}, {"place", "Adana"}, {"dayNumber", "7"},
                       {"monthName", "Mayıs"}, {"image", image}, {"isJoin", isJoin}};
}
QJsonObject list(const QJsonArray& past, const QJsonArray& ongoing, const QJsonArray& coming) {
    return QJsonObject{{"status", 200}, {"data", QJsonObject{{"past", past}, {"ongoing", ongoing}, {"coming", coming}}}};
}
QJsonObject detailReply(bool joinable, const QJsonValue& isJoin) {
    return QJsonObject{{"status", 200},
                       {"data", QJsonObject{{"event", QJsonObject{{"name", "Mısır Tarla Günü"}, {"monthName", "Mayıs"}, {"dayNumber", "7"},
                                                                  {"dateRange", "7 Mayıs 2025"}, {"place", "Ceyhan"}, {"content", "<p>Program</p>"},
                                                                  {"isJoinable", joinable}, {"isJoin", isJoin}}}}}};
}
} // namespace

class EventsTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    events::EventViewController* screen = nullptr;

    void show(const QJsonObject& reply) {
        fake->http->on("events", jsonReply(reply));
        if (fake->platform->window().rootViewController()->isViewLoaded()) {
            screen->viewDidAppear(false); // the screen appearing again
        } else {
            fake->platform->window().makeKeyAndVisible();
            fake->clock->advance(0);
        }
        fake->run(0);
    }
    events::EventDetailViewController* openDetail(const char* type, const QJsonObject& reply) {
        fake->store->setJson("userInfo", QJsonObject{{"type", type}, {"token", "tok"}});
        fake->http->on("event/detail", jsonReply(reply));
        show(list({}, {eventRow(5, QJsonValue::Null)}, {}));
        screen->tblEvent->selectRow(0, 0);
        fake->run(0);
        return qobject_cast<events::EventDetailViewController*>(nav->topViewController());
    }

private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok");
        platform::Storyboard::clear();
        events::registerScreens();
        nav = new platform::NavigationController;
        screen = new events::EventViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
    }
    void cleanup() {
        delete fake;
        platform::Storyboard::clear();
    }

    void activeAndPastInTheirSections() {
        show(list({eventRow(1, "p1")}, {eventRow(2, "o2", true)}, {eventRow(3, "c3", false)}));
        QCOMPARE(screen->numberOfSections(), 2);
        QCOMPARE(screen->tblEvent->numberOfRows(0), 2); // ongoing then coming, one list
        QCOMPARE(screen->sectionHeaders().at(0).toMap().value("title").toString(), QStringLiteral("Gelecek Etkinlikler"));
        QCOMPARE(screen->sectionHeaders().at(1).toMap().value("title").toString(), QStringLiteral("Geçmiş Etkinlikler"));
        QCOMPARE(screen->tblEvent->cellForRow(0, 0).values.value("viewDateFrame").value<QColor>(), widgets::Colors::leaf());
        QCOMPARE(screen->tblEvent->cellForRow(1, 0).values.value("viewDateFrame").value<QColor>(), widgets::Colors::cerulean());
        QCOMPARE(screen->tblEvent->cellForRow(0, 1).values.value("viewFrameAlpha").toDouble(), 0.6);
        QCOMPARE(screen->slider->slides(), (QStringList{"o2", "c3", "p1"}));

        // Only past events: one section with the past header, rows dimmed.
        show(list({eventRow(1, "p1"), eventRow(4, "p4")}, {}, {}));
        QCOMPARE(screen->numberOfSections(), 1);
        QCOMPARE(screen->tblEvent->numberOfRows(0), 2);
        QCOMPARE(screen->sectionHeaders().at(0).toMap().value("title").toString(), QStringLiteral("Geçmiş Etkinlikler"));
        QCOMPARE(screen->tblEvent->cellForRow(0, 0).values.value("viewFrameAlpha").toDouble(), 0.6);
    }

    void theSliderAndTheEmptyState() {
        // Nothing at all: one section without rows, the empty state shown.
        show(list({}, {}, {}));
        QCOMPARE(screen->numberOfSections(), 1);
        QCOMPARE(screen->tblEvent->numberOfRows(0), 0);
        QVERIFY(!screen->imgInfoBack->isHidden() && !screen->lblInfoBack->isHidden());

        // Twelve coming events: the slider stops at eleven, a null taking its place; the table lists all.
        QJsonArray coming;
        for (int i = 0; i < 12; ++i) coming.append(eventRow(i, i == 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(QString("c%1").arg(i))));
        show(list({eventRow(99, "p")}, {}, coming));
        QCOMPARE(screen->slider->slides().size(), 10);
        QCOMPARE(screen->slider->slides().first(), QStringLiteral("c1"));
        QCOMPARE(screen->tblEvent->numberOfRows(0), 12);
        QVERIFY(screen->imgInfoBack->isHidden());

        // Events without pictures: neither a picture nor the empty state.
        show(list({eventRow(1, QJsonValue::Null)}, {}, {}));
        QVERIFY(screen->slider->slides().isEmpty());
        QVERIFY(screen->imgInfoBack->isHidden() && screen->lblInfoBack->isHidden());

        // A failed list keeps what is shown.
        fake->http->on("events", transportFailure());
        screen->getEvents();
        fake->run(0);
        QCOMPARE(screen->tblEvent->numberOfRows(0), 1);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void aFarmerAnswersAndTheServiceSaysHowItStands() {
        auto* detail = openDetail("farmer", detailReply(true, QJsonValue::Null));
        QVERIFY(detail);
        QCOMPARE(queryValues(fake->http->requestsFor("event/detail").at(0), "id"), QStringList{"5"});
        QCOMPARE(detail->constraintButtonHeight->constant(), 50.0);
        QCOMPARE(detail->lblDateRange->text(), QStringLiteral("7 Mayıs 2025"));
        QVERIFY(detail->webContent->html().contains("font-family: AvenirNext-Regular; font-size: 16\"><p>Program</p>"));
        // The indicator waits for the page.
        QCOMPARE(fake->platform->window().hudCount(), 1);
        detail->webContent->navigationFinished();
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QCOMPARE(detail->btnAccept->backgroundColor(), widgets::Colors::buttonDefault());

        // The service accepts: the buttons follow its new "isJoin".
        fake->http->on("event/join", jsonReply(QJsonObject{{"status", 200}}));
        fake->http->on("event/detail", jsonReply(detailReply(true, true)));
        detail->btnAccept->tap();
        fake->run(0);
        detail->webContent->navigationFinished();
        QCOMPARE(queryValues(fake->http->requestsFor("event/join").at(0), "status"), QStringList{"1"});
        QCOMPARE(detail->btnAccept->image(), QStringLiteral("check"));
        QCOMPARE(detail->btnAccept->backgroundColor(), widgets::Colors::leaf());
        QCOMPARE(detail->btnReject->image(), QString());

        // A refused decline: the old colours come back from the service.
        fake->http->on("event/join", jsonReply(QJsonObject{{"status", 400}}));
        detail->btnReject->tap();
        fake->run(0);
        detail->webContent->navigationFinished();
        QCOMPARE(queryValues(fake->http->requestsFor("event/join").at(1), "status"), QStringList{"0"});
        QCOMPARE(detail->btnAccept->image(), QStringLiteral("check"));
        QCOMPARE(detail->btnReject->backgroundColor(), widgets::Colors::buttonDefault());

        // A failed detail hides its indicator: it never reaches the web view.
        fake->http->on("event/detail", transportFailure());
        detail->getEventDetail();
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void theAnswersAreAFarmersOnJoinableEvents() {
        QCOMPARE(openDetail("dealer", detailReply(true, QJsonValue::Null))->constraintButtonHeight->constant(), 0.0);
        cleanup();
        init();
        QCOMPARE(openDetail("loyalty", detailReply(false, QJsonValue::Null))->constraintButtonHeight->constant(), 0.0);
    }
};

QTEST_GUILESS_MAIN(EventsTest)
#include "tst_events.moc"
