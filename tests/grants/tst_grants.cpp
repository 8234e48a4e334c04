// The grant search against scripted replies: the place taken from the farmer's record, the lookups of
// ids by the buttons' titles, the checks before a search, what a reply does to the list, and the way
// from a programme to one document and a mail.

#include "FakePlatform.h"
#include "grants/GrantDetailViewController.h"
#include "grants/GrantDocDetailViewController.h"
#include "grants/GrantViewController.h"
#include "platform/AlertController.h"
#include "grants/GrantsScreens.h"
#include "platform/NavigationController.h"
#include "service/LocalStore.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>
#include <QTimer>

using namespace ekinora;
using namespace ekinora::testing;
using grants::GrantViewController;

namespace {

QJsonObject envelope(const QJsonValue& data, int status = 200, const QJsonObject& errors = {}) {
    return QJsonObject{{"status", status}, {"message", ""}, {"errors", errors}, {"data", data}};
}
QJsonObject named(int id, const QString& name) { return QJsonObject{{"id", id}, {"name", name}}; }

// Two cities of one name: the county load takes the last, the search the first.
const QJsonArray Cities{named(6, "Ankara"), named(42, "Konya"), named(420, "Konya")};
const QJsonArray Counties{named(501, "Çumra"), named(502, "Karapınar"), named(503, "Çumra")};
const QJsonArray Crops{named(1, "Buğday"), named(3, "Mısır")};

QJsonObject grant(const QString& name, const QJsonArray& files) {
    return QJsonObject{{"GrantSupportName", name}, {"TypeName", "Hibe (%50)"}, {"EndDateStr", "31.10.2024"},
                       {"SMSTemplateName", "<p>Sulama yatırımları</p>"}, {"FileList", files}};
}
const QJsonArray Files{QJsonObject{{"ConstantValue", "Başvuru Formu"}, {"AppendixA", "http://svc.test/documents/grants/1.pdf"}},
                       QJsonObject{{"ConstantValue", "Taahhütname"}, {"AppendixA", "http://svc.test/documents/grants/2.pdf"}}};

} // namespace

class GrantsTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        grants::registerScreens();
        fake->store->setString("token", "tok-1");
        fake->http->on("region/cities", jsonReply(envelope(QJsonObject{{"cities", Cities}})));
        fake->http->on("region/counties", jsonReply(envelope(QJsonObject{{"counties", Counties}})));
        fake->http->on("produces", jsonReply(envelope(QJsonObject{{"produces", Crops}})));
        fake->http->on("notifications", jsonReply(envelope(QJsonObject{{"unreadCount", 0}})));
        fake->http->on("agrivo/grants", [this](const HttpRequest&) { return jsonReply(grantsReply); });
        grantsReply = envelope(QJsonObject{{"grants", QJsonArray{grant("Basınçlı Sulama", Files), grant("Tohum", {})}}});
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
    }

    void aFarmersSearchNeedsOnlyACrop() {
        signedIn("farmer");
        auto* screen = loaded();
        // The farmer's place is shown and its counties load, the county title kept.
        QCOMPARE(screen->btnCity->title(), QStringLiteral("Konya"));
        QCOMPARE(screen->btnCounty->title(), QStringLiteral("Çumra"));
        QCOMPARE(queryValues(fake->http->requestsFor("region/counties").value(0), "cityId"), QStringList{"420"});
        QCOMPARE(queryValues(fake->http->requestsFor("produces").value(0), "farmerprio"), QStringList{"1"});
        QCOMPARE(screen->arrCounties.size(), 3);

        screen->getGrants();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Hibe Desteği sorgulamak için ürün seçmelisiniz."));
        fake->alert()->tapButton(0);
        QVERIFY(fake->http->requestsFor("agrivo/grants").isEmpty());

        pick(screen, screen->btnProduct, &GrantViewController::selectProduct, 0);
        QCOMPARE(screen->btnProduct->title(), QStringLiteral("Buğday"));
        screen->getGrants();
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        const HttpRequest sent = fake->http->requestsFor("agrivo/grants").value(0);
        QCOMPARE(queryValues(sent, "city"), QStringList{"42"});
        QCOMPARE(queryValues(sent, "county"), QStringList{"501"});
        QCOMPARE(queryValues(sent, "produce"), QStringList{"1"});
        QCOMPARE(screen->collGrant->numberOfRows(), 2);
        const auto cell = screen->collGrant->cellForRow(0).values;
        QCOMPARE(cell.value("lblType").toString(), QStringLiteral("Destek Tipi: Hibe (%50)"));
        QCOMPARE(cell.value("lblDate").toString(), QStringLiteral("  Son Başvuru Tarihi: 31.10.2024  "));
        QVERIFY(!screen->collGrant->isHidden());
    }

    void aNewCityForcesANewCountyAndUnknownTitlesSendNothing() {
        signedIn("dealer");
        auto* screen = loaded();
        QCOMPARE(screen->btnCity->title(), GrantViewController::NoCity);
        QVERIFY(fake->http->requestsFor("region/counties").isEmpty());
        screen->selectCounty(screen->btnCounty);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Önce şehir seçiniz."));
        fake->alert()->tapButton(0);

        pick(screen, screen->btnCity, &GrantViewController::selectCity, 1);
        // At once: the county is gone and its button waits for the new list.
        QCOMPARE(screen->btnCounty->title(), GrantViewController::NoCounty);
        QVERIFY(!screen->btnCounty->userInteractionEnabled());
        QVERIFY(fake->http->requestsFor("region/counties").isEmpty());
        fake->run(500);
        QCOMPARE(queryValues(fake->http->requestsFor("region/counties").value(0), "cityId"), QStringList{"420"});
        QVERIFY(screen->btnCounty->userInteractionEnabled());

        pick(screen, screen->btnProduct, &GrantViewController::selectProduct, 1);
        screen->getGrants();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Hibe Desteği sorgulamak için ilçe seçmelisiniz."));
        fake->alert()->tapButton(0);

        // A county title that no record carries goes out without its parameter.
        screen->btnCounty->setTitle(QStringLiteral("Merkez"));
        screen->getGrants();
        fake->run(0);
        const HttpRequest sent = fake->http->requestsFor("agrivo/grants").value(0);
        QVERIFY(queryValues(sent, "county").isEmpty());
        QCOMPARE(queryValues(sent, "city"), QStringList{"42"});
    }

    void repliesWithoutGrantsHideOrKeepTheList() {
        signedIn("farmer");
        auto* screen = loaded();
        pick(screen, screen->btnProduct, &GrantViewController::selectProduct, 0);
        screen->getGrants();
        fake->run(0);
        QCOMPARE(screen->collGrant->rows()->rowCount(), 2);

        // Null data: the message, the list emptied but not asked again, so the old cells stay.
        grantsReply = envelope(QJsonValue::Null, 400, QJsonObject{{"county", "Seçtiğiniz ilçe bu ile ait değil."}});
        screen->getGrants();
        fake->run(0);
        QCOMPARE(fake->alert()->message(), QStringLiteral("Seçtiğiniz ilçe bu ile ait değil."));
        fake->alert()->tapButton(0);
        QCOMPARE(screen->arrGrants.size(), 0);
        QCOMPARE(screen->collGrant->rows()->rowCount(), 2);
        QVERIFY(!screen->collGrant->isHidden());
        QVERIFY(screen->collGrant->cellForRow(1).values.isEmpty());

        // No programmes: the list goes.
        grantsReply = envelope(QJsonObject{{"grants", QJsonValue::Null}});
        screen->getGrants();
        fake->run(0);
        QVERIFY(screen->collGrant->isHidden());
        QCOMPARE(screen->collGrant->rows()->rowCount(), 0);
        QCOMPARE(fake->platform->window().hudCount(), 0);
    }

    void fromAProgrammeToADocumentAndAMail() {
        signedIn("farmer");
        auto* screen = loaded();
        pick(screen, screen->btnProduct, &GrantViewController::selectProduct, 0);
        screen->getGrants();
        fake->run(0);

        // The programme without documents says so.
        screen->collGrant->selectRow(1);
        auto* detail = qobject_cast<grants::GrantDetailViewController*>(nav->topViewController());
        QVERIFY(detail);
        QCOMPARE(detail->lblDate->text(), QStringLiteral("Son Başvuru Tarihi: 31.10.2024"));
        detail->showDocs();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Belge bulunamadı."));
        fake->alert()->tapButton(0);
        nav->popViewControllerAnimated(false);

        screen->collGrant->selectRow(0);
        detail = qobject_cast<grants::GrantDetailViewController*>(nav->topViewController());
        detail->showDocs();
        auto* docs = qobject_cast<grants::GrantDocsViewController*>(nav->topViewController());
        QVERIFY(docs);
        QCOMPARE(docs->tblDocs->cellForRow(1).values.value("lblTitle").toString(), QStringLiteral("Taahhütname"));
        docs->tblDocs->selectRow(0);
        auto* document = qobject_cast<grants::GrantDocDetailViewController*>(docs->presentedViewController());
        QVERIFY(document);
        QCOMPARE(document->navBar->text(), QStringLiteral("Başvuru Formu"));
        QCOMPARE(document->webViewDocument->url(), QUrl("http://svc.test/documents/grants/1.pdf"));
        QVERIFY(document->hud);

        // No mail program: the message, nothing fetched.
        fake->platform->application().setUrlChecker([](const QUrl&) { return false; });
        document->sendMail();
        QCOMPARE(fake->alert()->message(), QStringLiteral("Mail hesabınız telefonunuza kurulu değildir."));
        fake->alert()->tapButton(0);
        QVERIFY(fake->http->requestsFor("/documents/grants/1.pdf").isEmpty());

        // With one: the PDF is fetched before the composer opens, addressed to the user himself.
        fake->platform->application().setUrlChecker([](const QUrl&) { return true; });
        QList<QUrl> opened;
        fake->platform->application().setUrlOpener([&](const QUrl& url) { opened << url; return true; });
        fake->http->on("/documents/grants/1.pdf", rawReply(QByteArray(3000, 'x'), 200, "application/pdf"));
        QTimer::singleShot(0, [this] { fake->http->flush(); });
        document->sendMail();
        auto* composer = qobject_cast<grants::MailComposeViewController*>(document->presentedViewController());
        QVERIFY(composer);
        QCOMPARE(composer->recipients(), QStringLiteral("hasan@ornek.com.tr"));
        QCOMPARE(composer->subject(), QString());
        QCOMPARE(composer->attachmentName(), QStringLiteral("grantdoc.pdf"));
        QCOMPARE(composer->attachmentMimeType(), QStringLiteral("application/pdf"));
        QCOMPARE(composer->attachmentData().size(), 3000);
        composer->send();
        QCOMPARE(opened.value(0).scheme(), QStringLiteral("mailto"));
        QCOMPARE(opened.value(0).path(), QStringLiteral("hasan@ornek.com.tr"));
        QVERIFY(!document->presentedViewController());
        QCOMPARE(docs->presentedViewController(), document);
    }

private:
    void signedIn(const QString& type) {
        service::LocalStore::setUserInfo(QJsonObject{
            {"type", type}, {"email", "hasan@ornek.com.tr"},
            {"location", QJsonObject{{"city", named(42, "Konya")}, {"county", named(501, "Çumra")}}}});
    }
    GrantViewController* loaded() {
        nav = new platform::NavigationController;
        auto* screen = new GrantViewController;
        nav->setViewControllers({screen});
        fake->platform->window().setRootViewController(nav);
        fake->platform->window().makeKeyAndVisible();
        fake->run(0);
        return screen;
    }
    // Opens a list from its button and picks a row, as a tap would.
    void pick(GrantViewController* screen, platform::Button* button, void (GrantViewController::*open)(QObject*), int row) {
        (screen->*open)(button);
        QVERIFY(screen->dropDown());
        screen->dropDown()->didSelectRow(row);
        QVERIFY(!screen->dropDown());
    }

    FakePlatform* fake = nullptr;
    platform::NavigationController* nav = nullptr;
    QJsonObject grantsReply;
};

QTEST_GUILESS_MAIN(GrantsTest)
#include "tst_grants.moc"
