#pragma once

// The base of end-to-end tests: the real reference service and the real application in-process on the
// offscreen platform, driven through the object contract as a user would (typing, tapping). Only tests
// that link the service include it.

#include "Ekinora.h"
#include "QuickProbe.h"
#include "core/Server.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"

#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

namespace ekinora::testing {

class EndToEnd : public QObject {
protected:
    // For init(): a fresh service and settings folder.
    // The SMS codes it issues reach `codes` as a phone would receive them.
    void startService(server::ServerOptions options = {}) {
        options.demo = true; // journeys use the demo accounts' tokens
        options.smsGateway = [this](const std::string&, const std::string& code) {
            QMetaObject::invokeMethod(this, [this, code] { codes << QString::fromStdString(code); }, Qt::QueuedConnection);
        };
        service = std::make_unique<server::Server>(std::move(options));
        service->start();
        settings = std::make_unique<QTemporaryDir>();
        codes.clear();
    }
    // For cleanup().
    void stopAll() {
        app.reset();
        service.reset();
        settings.reset();
    }

    // Starts the application on the settings folder.
    void startApp(const std::function<void(platform::Application&)>& configure = {}) {
        StartOptions options;
        options.serviceBase = QString::fromStdString(service->baseUrl());
        options.settingsDir = settings->path();
        app = std::make_unique<Ekinora>(options);
        auto& application = app->platform().application();
        application.setEchoLog(qEnvironmentVariableIsSet("EKINORA_ECHO_LOG"));
        if (configure) configure(application);
        QVERIFY(app->start());
        QVERIFY(QTest::qWaitForWindowExposed(window()));
    }
    void restartApp() {
        app.reset();
        startApp();
    }

    // The sign-in screen is up and its conditions' indicator (a second after the text) has gone.
    void waitForSignIn() {
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "txtLoginPhone"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 8000);
    }

    void tap(const char* name) {
        QQuickItem* item = nullptr;
        QTRY_VERIFY2((item = itemNamed(window(), name)), name);
        tapItem(window(), item);
    }

    // Types into a field; with replace, what it held goes first.
    void typeInto(const char* field, const QString& text, bool replace = false) {
        QQuickItem* item = itemNamed(window(), field);
        QVERIFY2(item, field);
        tapItem(window(), item);
        QTRY_VERIFY(item->hasActiveFocus());
        if (replace) {
            QTest::keyClick(window(), Qt::Key_End);
            for (int i = item->property("text").toString().size(); i > 0; --i) QTest::keyClick(window(), Qt::Key_Backspace);
        }
        for (QChar c : text) QTest::keyClick(window(), c.toLatin1());
        QTRY_COMPARE(item->property("text").toString(), text);
    }
    void typeInto(const char* field, const std::string& text, bool replace = false) {
        typeInto(field, QString::fromStdString(text), replace);
    }
    void typeInto(const char* field, const char* text, bool replace = false) { typeInto(field, QString::fromUtf8(text), replace); }

    // The number, then the code panel with the code the service issued.
    void askCode(const std::string& phone) {
        waitForSignIn();
        typeInto("txtLoginPhone", phone);
        tap("getSmsCodeForLogin");
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "viewLoginCode"), 5000);
        QTRY_VERIFY(!codes.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }
    void signIn(const std::string& phone) {
        codes.clear();
        askCode(phone);
        typeInto("txtLoginCode", codes.last());
        tap("validateSmsCodeForLogin");
    }

    QQuickWindow* window() const { return app->platform().window().quickWindow(); }
    platform::SideMenuViewController* root() const {
        return qobject_cast<platform::SideMenuViewController*>(app->platform().window().rootViewController());
    }
    platform::NavigationController* content() const {
        return root() ? qobject_cast<platform::NavigationController*>(root()->contentViewController()) : nullptr;
    }
    // The storyboard identifier of the content's top screen.
    QString topIdentifier() const {
        auto* nav = content();
        if (!nav || !nav->topViewController()) return {};
        return nav->topViewController()->property("storyboardIdentifier").toString();
    }

    std::unique_ptr<server::Server> service;
    std::unique_ptr<QTemporaryDir> settings;
    std::unique_ptr<Ekinora> app;
    QStringList codes;
};

} // namespace ekinora::testing
