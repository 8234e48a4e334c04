// The campaign card: which boxes open for which record, the product name's lost last letter, the
// body's wrap, the indicator that waits for the body, and closing.

#include "FakePlatform.h"
#include "platform/Storyboard.h"
#include "shell/PopupViewController.h"

#include <QJsonObject>
#include <QTest>

using namespace ekinora;
using namespace ekinora::testing;
using shell::PopupViewController;

class PopupTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new FakePlatform;
        root = new platform::ViewController;
        fake->platform->window().setRootViewController(root);
        fake->platform->window().makeKeyAndVisible();
        fake->clock->advance(0);
    }
    void cleanup() { delete fake; }

    void plainCardHasOnlyTitleAndBody() {
        auto* card = show(QJsonObject{{"header", "Bahar Kampanyası"},
                                      {"content", "<p>Seçili ürünlerde indirim</p>"},
                                      {"file_path", ""},
                                      {"pest_id", QJsonValue::Null}});
        QCOMPARE(card->constraintViewProductHeight->constant(), 0.0);
        QCOMPARE(card->constraintImageBannerHeight->constant(), 0.0);
        QCOMPARE(card->lblTitle->text(), QStringLiteral("Bahar Kampanyası"));
        QCOMPARE(card->webViewContent->html(),
                 QStringLiteral("<span style=\"font-family: AvenirNext-Medium; font-size: 16\"><p>Seçili ürünlerde indirim</p></span>"));
        QVERIFY(card->webViewContent->baseUrl().isEmpty());
        QVERIFY(!card->webViewContent->bounces());
    }

    void productCardLosesTheLastCharacterOfTheName_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        QTest::newRow("mark at the end") << "Tarvenza<sup>&reg;</sup>" << "Tarvenza";
        QTest::newRow("mark inside") << "Tarvenza<sup>&reg;</sup> 250 EC" << "Tarvenza® 250 E";
        QTest::newRow("empty name is left alone") << "" << "";
    }
    void productCardLosesTheLastCharacterOfTheName() {
        QFETCH(QString, name);
        QFETCH(QString, shown);
        auto* card = show(QJsonObject{{"header", "Ürün"},
                                      {"content", "x"},
                                      {"file_path", "http://svc.test/static/media/popup/banner.svg"},
                                      {"pest_id", 12},
                                      {"pest_file_path", "http://svc.test/static/media/popup/urun.svg"},
                                      {"pest_name", name}});
        QCOMPARE(card->constraintViewProductHeight->constant(), (390.0 - 32) / 4);
        QCOMPARE(card->constraintImageBannerHeight->constant(), (390.0 - 16) / 2);
        QCOMPARE(card->imgProduct->imageUrl(), QUrl("http://svc.test/static/media/popup/urun.svg"));
        QCOMPARE(card->imgProduce->imageUrl(), QUrl("http://svc.test/static/media/popup/banner.svg"));
        QCOMPARE(card->lblProductName->text(), shown);
    }

    void nullBannerAddressStillOpensTheBanner() {
        auto* card = show(QJsonObject{{"header", "h"}, {"content", "c"}, {"file_path", QJsonValue::Null}, {"pest_id", QJsonValue::Null}});
        QCOMPARE(card->constraintImageBannerHeight->constant(), (390.0 - 16) / 2);
        QCOMPARE(card->imgProduce->imageUrl(), QUrl(QStringLiteral("<null>")));
    }

    void aNullProductNameStopsTheApplication() {
        auto* card = new PopupViewController;
        card->dictPopup = QJsonObject{{"pest_id", 3}, {"pest_name", QJsonValue::Null}};
        QVERIFY_THROWS_EXCEPTION(platform::FatalStop, card->loadViewIfNeeded());
        QCOMPARE(fake->endings, QList<int>{platform::Application::FaultExitCode});
    }

    void indicatorWaitsForTheBodyThenHalfASecond() {
        auto* card = show(QJsonObject{{"header", "h"}, {"content", "c"}, {"pest_id", QJsonValue::Null}});
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(5000);
        QCOMPARE(fake->platform->window().hudCount(), 1); // a body that never loads keeps it
        card->webViewContent->navigationFinished();
        fake->run(499);
        QCOMPARE(fake->platform->window().hudCount(), 1);
        fake->run(1);
        QCOMPARE(fake->platform->window().hudCount(), 0);
        QCOMPARE(card->webViewContent->pendingScripts(),
                 QStringList{"(document.height !== undefined) ? document.height : document.body.offsetHeight;"});
    }

private:
    PopupViewController* show(const QJsonObject& record) {
        auto* card = new PopupViewController;
        card->dictPopup = record;
        card->modalPresentationStyle = 5;
        root->presentViewController(card, true);
        return card;
    }

    FakePlatform* fake = nullptr;
    platform::ViewController* root = nullptr;
};

QTEST_GUILESS_MAIN(PopupTest)
#include "tst_popup.moc"
