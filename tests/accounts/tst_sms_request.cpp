// The SMS requests go without any token, with "Content-Type", and leave out what is not set.

#include "FakePlatform.h"
#include "accounts/SmsRequest.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;

class SmsRequestTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        service::Roots::configure(QStringLiteral("http://svc.test/api"));
    }
    void cleanup() { delete fake; }

    void loginCodeRequestCarriesOnlyTheNumberAndNoToken() {
        fake->store->setString(service::StoreKey::Token, QStringLiteral("should-not-travel"));
        accounts::SmsRequest request;
        request.doParam = QStringLiteral("sms/get");
        request.phoneNumber = QStringLiteral("05321000101");
        request.getSmsCode([](const service::Json&) {}, [](const service::Json&) {});
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.url, QByteArray("http://svc.test/api?do=sms/get&phoneNumber=05321000101"));
        QVERIFY(!r.hasHeader("Authorization"));
        QCOMPARE(r.header("Content-Type"), QByteArray("application/json; charset=UTF-8"));
    }

    void loginCheckLeavesOutAMissingDeviceId() {
        accounts::SmsRequest request;
        request.doParam = QStringLiteral("farmer/login");
        request.hashID = QStringLiteral("h");
        request.validationCode = QStringLiteral("123456");
        request.queryType = QStringLiteral("login");
        request.deviceType = QStringLiteral("2");
        request.deviceID = service::LocalStore::defaults().contains(service::StoreKey::NotifToken)
                               ? service::Json(service::LocalStore::defaults().stringForKey(service::StoreKey::NotifToken))
                               : platform::nil();
        request.validateSmsCode([](const service::Json&) {}, [](const service::Json&) {});
        const auto& r = fake->http->requests.first();
        QCOMPARE(r.url, QByteArray("http://svc.test/api?code=123456&deviceType=2&do=farmer/login&hash=h&type=login"));
    }

private:
    FakePlatform* fake = nullptr;
};

QTEST_GUILESS_MAIN(SmsRequestTest)
#include "tst_sms_request.moc"
