// The farmer's profile and the dealer's shop data against scripted replies: what the forms read, how
// the place is picked, what goes to the service, and what the answers show.

#include "FakePlatform.h"
#include "platform/AlertController.h"
#include "platform/NavigationController.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "profile/DealerViewController.h"
#include "profile/ProfileViewController.h"
#include "service/LocalStore.h"
#include "widgets/DropDownList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using profile::DealerViewController;
using profile::ProfileViewController;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonObject& errors = {}) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", errors}, {"data", data}};
}

QJsonObject place(int id, const QString& name) { return QJsonObject{{"id", id}, {"name", name}}; }

QJsonObject bodyOf(const HttpRequest& request) { return QJsonDocument::fromJson(request.body).object(); }

} // namespace

class ProfileTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        fake->store->setString("token", "tok-1");
        service::LocalStore::setUserInfo(QJsonObject{{"phone", "05321000101"}, {"fullname", "Hasan Yıldırım"}});
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 0}})));
        fake->http->on("farmer/profile",
                       jsonReply(envelope(QJsonObject{{"fullname", "Hasan Yıldırım"}, {"email", QJsonValue::Null}, {"type", "farmer"},
                                                      {"location", QJsonObject{{"city", place(6, "Ankara")}, {"county", place(602, "Polatlı")}}}})));
        // Two cities of the same name: the inline scans take the last.
        fake->http->on("region/cities", jsonReply(envelope(QJsonObject{{"cities", QJsonArray{place(6, "Ankara"), place(42, "Konya"), place(43, "Konya")}}})));
        fake->http->on("region/counties", [](const HttpRequest& r) {
            const bool konya = r.url.contains("cityId=43");
            return jsonReply(envelope(QJsonObject{{"counties", konya ? QJsonArray{place(4301, "Ereğli"), place(4302, "Karapınar")}
                                                                     : QJsonArray{place(601, "Haymana"), place(602, "Polatlı")}}}));
        });
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void profileOpensWithThePlaceAlreadySet() {
        auto* screen = showProfile();
        QCOMPARE(screen->txtName->text(), QStringLiteral("Hasan Yıldırım"));
        QCOMPARE(screen->txtMail->text(), QString()); // null e-mail
        QCOMPARE(screen->txtPhone->text(), QStringLiteral("05321000101"));
        QVERIFY(!screen->txtPhone->isEnabled());
        QCOMPARE(screen->btnCity->title(), QStringLiteral("Ankara"));
        QCOMPARE(screen->txtCounty->text(), QStringLiteral("Polatlı")); // counties loaded with the county kept
        QCOMPARE(screen->arrCounties.size(), 2);
        QVERIFY(fake->http->requestsFor("region/counties").value(0).url.contains("cityId=6"));
    }

    void newCityEmptiesTheCountyAndTheFormGoesWithoutIt() {
        auto* screen = showProfile();
        fake->http->requests.clear();
        screen->btnCity->tap();
        pick(screen, "Konya");
        QCOMPARE(screen->txtCounty->text(), QString()); // at once, before the list comes
        QVERIFY(!screen->btnCounty->userInteractionEnabled());
        fake->run(500);
        QVERIFY(screen->btnCounty->userInteractionEnabled());
        QVERIFY(fake->http->requestsFor("region/counties").value(0).url.contains("cityId=43"));

        fake->http->on("farmer/update-profile", jsonReply(envelope(QJsonValue::Null, 400, QJsonObject{{"email", "Lütfen geçerli bir e-posta adresi giriniz."}})));
        screen->txtMail->setText("hasan@");
        screen->updateButton->tap();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Önce ilçe seçiniz."));
        const QJsonObject body = bodyOf(fake->http->requestsFor("farmer/update-profile").value(0));
        QVERIFY(!body.contains("countyId"));
        QCOMPARE(body.value("fullname").toString(), QStringLiteral("Hasan Yıldırım"));
        QCOMPARE(body.value("email").toString(), QStringLiteral("hasan@"));
        fake->alert()->tapButton(0);
        fake->run(0);
        // Only the name's message is read: another rejection gives an empty text.
        QCOMPARE(fake->alert()->title(), QStringLiteral("Uyarı"));
        QCOMPARE(fake->alert()->message(), QString());
    }

    void savedProfileReplacesTheStoredRecord() {
        auto* screen = showProfile();
        const QJsonObject saved{{"fullname", "Hasan Yıldırım"}, {"phone", "05321000101"}, {"type", "farmer"},
                                {"location", QJsonObject{{"county", QJsonObject{{"name", "Haymana"}, {"latitude", 39.43}, {"longitude", 32.5}}}}}};
        fake->http->on("farmer/update-profile", jsonReply(envelope(saved)));
        screen->btnCounty->tap();
        pick(screen, "Haymana");
        QCOMPARE(screen->txtCounty->text(), QStringLiteral("Haymana"));
        screen->updateButton->tap();
        QCOMPARE(bodyOf(fake->http->requestsFor("farmer/update-profile").value(0)).value("countyId").toInt(), 601);
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Profil bilgileriniz güncellendi."));
        QCOMPARE(service::LocalStore::userInfo().toObject(), saved);
        QCOMPARE(fake->store->stringForKey("token"), QStringLiteral("tok-1"));
    }

    void dealerReadsAndSavesTheShop() {
        fake->http->on("dealer/information", jsonReply(envelope(QJsonObject{{"dealerName", "Bereket Tarım"}, {"TCNo", "10000000146"}, {"taxNumber", "1234567890"}})));
        auto* screen = new DealerViewController;
        show(screen);
        fake->run(0);
        QCOMPARE(screen->txtDealerName->text(), QStringLiteral("Bereket Tarım"));
        QCOMPARE(screen->txtDealerIdNumber->text(), QStringLiteral("10000000146"));
        QCOMPARE(screen->txtDealerTaxNumber->text(), QStringLiteral("1234567890"));
        const HttpRequest read = fake->http->requestsFor("dealer/information").value(0);
        QVERIFY(read.url.contains("bearer=tok-1"));

        fake->http->on("dealer/update-information", jsonReply(envelope(QJsonValue::Null, 400, QJsonObject{{"TCNo", "T.C. kimlik numarası geçersiz."}})));
        screen->txtDealerName->setText("");
        screen->updateButton->tap();
        const HttpRequest update = fake->http->requestsFor("dealer/update-information").value(0);
        const QJsonObject body = bodyOf(update);
        QCOMPARE(body.keys(), (QStringList{"TCNo", "dealerName", "deviceType", "taxNumber", "term"}));
        QCOMPARE(body.value("dealerName").toString(), QString());
        QCOMPARE(body.value("deviceType").toInt(), 2);
        QCOMPARE(update.header("Authorization"), QByteArray("Bearer tok-1"));
        fake->run(0);
        QCOMPARE(fake->alert()->title(), QStringLiteral("Hata"));
        QCOMPARE(fake->alert()->message(), QStringLiteral("T.C. kimlik numarası geçersiz."));
    }

    void aFailedDealerReadIsToldAndABadgeBroadcastEndsTheApplication() {
        fake->http->on("dealer/information", jsonReply(QJsonObject{}, 500));
        show(new DealerViewController);
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Bilinmeyen bir hata oluştu"));
        QVERIFY(fake->endings.isEmpty());
        try {
            platform::Platform::current().notificationCenter().postNotificationName("checkNotifBadge");
        } catch (...) {
        }
        QCOMPARE(fake->endings.size(), 1);
    }

private:
    void show(platform::ViewController* screen) {
        auto* nav = new platform::NavigationController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
    }
    ProfileViewController* showProfile() {
        auto* screen = new ProfileViewController;
        show(screen);
        fake->run(0);
        return screen;
    }
    void pick(ProfileViewController* screen, const QString& name) {
        auto* list = screen->dropDownCityCounty();
        QVERIFY(list);
        const int row = list->list().indexOf(name);
        QVERIFY(row >= 0);
        list->didSelectRow(row);
    }

    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(ProfileTest)
#include "tst_profile.moc"
