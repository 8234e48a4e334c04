// The web view through the real web engine: an HTML string loads and reports its end, scripts return
// their results, and the screen decides on each navigation with the platform's navigation types.

#include "FakePlatform.h"
#include "QuickProbe.h"
#include "platform/ProcessSetup.h"
#include "platform/WebView.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <memory>

using namespace ekinora;
using namespace ekinora::platform;

class WebViewTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        fake = new testing::FakePlatform;
        engine = new QQmlEngine;
        window = new QQuickWindow;
        window->resize(390, 844);
        model = new WebView(QStringLiteral("webViewContent"));
        QQmlComponent component(engine, QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/PWebView.qml")));
        view = qobject_cast<QQuickItem*>(component.createWithInitialProperties({{"model", QVariant::fromValue<QObject*>(model)}}));
        QVERIFY2(view, qPrintable(component.errorString()));
        view->setParentItem(window->contentItem());
        view->setSize({390, 600});
        window->show();
    }
    void cleanup() {
        delete view;
        delete window;
        delete engine;
        delete model;
        delete fake;
    }

    void htmlLoadsScriptsAnswerAndTappedLinksAreDecided() {
        int finished = 0;
        model->setDidFinishNavigation([&](WebView*) { ++finished; });
        QStringList tapped;
        // Tapped links are refused, so that nothing is handed to the desktop.
        model->setDecidePolicy([&](WebView*, const QUrl& url, int type) {
            if (type != int(WebView::LinkActivated)) return true;
            tapped << url.toString();
            return false;
        });
        model->loadHTMLString(
            QStringLiteral("<html><head></head><body><p style=\"height:700px\">Başvuru: "
                           "<a id=\"m\" href=\"mailto:kvkk@ekinora.com.tr\"><b id=\"inner\">kvkk</b></a>"
                           " <a id=\"t\" href=\"tel:08504553566\">ara</a></p></body></html>"));
        QVERIFY(model->isLoading());
        QTRY_COMPARE_WITH_TIMEOUT(finished, 1, 15000);
        QVERIFY(!model->isLoading());
        // Qt loads an HTML string without asking; only later navigations come to the screen.
        QVERIFY(tapped.isEmpty());

        QVariant height;
        model->evaluateJavaScript(QStringLiteral("document.body.offsetHeight;"), [&](const QVariant& v) { height = v; });
        QTRY_VERIFY_WITH_TIMEOUT(height.isValid(), 10000);
        QVERIFY(height.toInt() >= 700);

        // A tap on the text inside a link counts as a tap on the link; the page stays.
        model->evaluateJavaScript(QStringLiteral("document.getElementById('inner').click(); true;"));
        QTRY_COMPARE_WITH_TIMEOUT(tapped, QStringList{"mailto:kvkk@ekinora.com.tr"}, 10000);
        model->evaluateJavaScript(QStringLiteral("document.getElementById('t').click(); true;"));
        QTRY_COMPARE_WITH_TIMEOUT(tapped.size(), 2, 10000);
        QCOMPARE(tapped.last(), QStringLiteral("tel:08504553566"));
        QTest::qWait(200);
        QCOMPARE(finished, 1);
    }

    void theEngineWaitsForTheViewToBeShown() {
        // A view under a hidden panel, placed in the window, and the panel passing through a visible state
        // within one call (as a screen hides its panels after placing its view): no engine yet.
        QQmlComponent component(engine);
        component.setData("import QtQuick\nimport Ekinora.Platform\n"
                          "Item { visible: false; width: 390; height: 600; PWebView { anchors.fill: parent } }",
                          QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Platform/Panel.qml")));
        std::unique_ptr<QQuickItem> panel(qobject_cast<QQuickItem*>(component.create()));
        QVERIFY2(panel, qPrintable(component.errorString()));
        WebView hiddenModel(QStringLiteral("webviewETK"));
        QQuickItem* web = panel->childItems().value(0);
        web->setProperty("model", QVariant::fromValue<QObject*>(&hiddenModel));
        const auto engineMade = [&] {
            for (QObject* o : web->findChildren<QObject*>())
                if (o->inherits("QQuickWebEngineView")) return true;
            return false;
        };
        panel->setParentItem(window->contentItem());
        panel->setVisible(true);
        panel->setVisible(false);
        QTest::qWait(100);
        QVERIFY(!engineMade());
        // Shown: the engine view comes, and the page given before is loaded.
        int finished = 0;
        hiddenModel.setDidFinishNavigation([&](WebView*) { ++finished; });
        hiddenModel.loadHTMLString(QStringLiteral("<html><head></head><body>KVKK</body></html>"));
        panel->setVisible(true);
        QTRY_VERIFY(engineMade());
        QTRY_COMPARE_WITH_TIMEOUT(finished, 1, 15000);
        panel.reset();
    }

    void scriptsWaitForAViewThatIsNotShown() {
        model->setHidden(true);
        model->evaluateJavaScript(QStringLiteral("1 + 1;"));
        QCOMPARE(model->pendingScripts(), QStringList{"1 + 1;"});
    }

private:
    testing::FakePlatform* fake = nullptr;
    QQmlEngine* engine = nullptr;
    QQuickWindow* window = nullptr;
    WebView* model = nullptr;
    QQuickItem* view = nullptr;
};

EKINORA_GUI_TEST_MAIN(WebViewTest)
#include "tst_webview.moc"
