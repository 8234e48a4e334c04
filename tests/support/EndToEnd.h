#pragma once

// The base of end-to-end tests: the real reference service and the real application in-process on the
// offscreen platform, driven through the object contract as a user would (typing, tapping). Only tests
// that link the service include it.

#include "Ekinora.h"
#include "QuickProbe.h"
#include "accounts/DemoAccounts.h"
#include "core/Database.h"
#include "core/Server.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
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
        opened.clear();
    }
    // A service keeping its records in a fresh file, read back through db().
    void startStoredService() {
        server::ServerOptions options;
        options.dbPath = dbPath();
        QFile::remove(QString::fromStdString(options.dbPath));
        startService(options);
    }
    // For cleanup().
    void stopAll() {
        database.reset();
        app.reset();
        service.reset();
        settings.reset();
    }

    // Starts the application on the settings folder (and on another service address when given).
    void startApp(const std::function<void(platform::Application&)>& configure = {}, const QString& base = {}) {
        StartOptions options;
        options.serviceBase = base.isEmpty() ? QString::fromStdString(service->baseUrl()) : base;
        options.settingsDir = settings->path();
        app = std::make_unique<Ekinora>(options);
        auto& application = app->platform().application();
        application.setEchoLog(qEnvironmentVariableIsSet("EKINORA_ECHO_LOG"));
        if (configure) configure(application);
        QVERIFY(app->start());
        QVERIFY(QTest::qWaitForWindowExposed(window()));
    }
    // Mail, telephone and other hand-offs are recorded in `opened`, not handed to the desktop.
    void startAppRecordingUrls() {
        startApp([this](platform::Application& application) {
            application.setUrlChecker([](const QUrl&) { return true; });
            application.setUrlOpener([this](const QUrl& url) {
                opened << url;
                return true;
            });
        });
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
    void tap(QQuickItem* item) {
        QVERIFY(item);
        tapItem(window(), item);
    }
    // Taps the control (a name or an item), then waits for the item so named to show, or to go.
    template <class Control> void tapUntilShown(Control control, const char* shown, int ms = 5000) {
        tap(control);
        QTRY_VERIFY2_WITH_TIMEOUT(itemNamed(window(), shown), shown, ms);
    }
    template <class Control> void tapUntilGone(Control control, const char* gone, int ms = 5000) {
        tap(control);
        QTRY_VERIFY2_WITH_TIMEOUT(!itemNamed(window(), gone), gone, ms);
    }

    // Types into a field as the keyboard sends it (Turkish letters with their text); with replace,
    // what it held goes first.
    void typeInto(const char* field, const QString& text, bool replace = false) {
        QQuickItem* item = nullptr;
        QTRY_VERIFY2((item = itemNamed(window(), field)), field);
        tapItem(window(), item);
        QTRY_VERIFY(item->hasActiveFocus());
        if (replace) {
            QTest::keyClick(window(), Qt::Key_End);
            for (int i = item->property("text").toString().size(); i > 0; --i) QTest::keyClick(window(), Qt::Key_Backspace);
        }
        for (QChar c : text) {
            if (c.unicode() < 128) QTest::keyClick(window(), c.toLatin1());
            else QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, QString(c), Qt::NoModifier);
        }
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
    // A demo account signed in, on its first screen once that has loaded.
    void signInAs(const char* role) {
        signIn(server::accounts::demoAccount(role).phone);
        QTRY_VERIFY_WITH_TIMEOUT(content() && content()->topViewController(), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
    }

    // The side menu's row with this label, tapped (the lower rows are scrolled into view first); the
    // menu has closed, the content slid back and the screen so named, when given, is up.
    void openMenu(const QString& label, const char* screen = nullptr) {
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "presentLeftMenuViewController"), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD"), 5000);
        tap("presentLeftMenuViewController");
        QTRY_VERIFY(root()->isMenuVisible());
        QTest::qWait(400);
        QQuickItem* row = nullptr;
        for (QQuickItem* cell : cells("Cell"))
            if (cell->property("content").toMap().value("text").toString() == label) row = cell;
        QVERIFY2(row, qPrintable(label));
        for (QQuickItem* up = row->parentItem(); up; up = up->parentItem())
            if (up->inherits("QQuickFlickable")) {
                const double bottom = up->property("contentHeight").toDouble() - up->height();
                up->setProperty("contentY", std::max(0.0, std::min(row->y() - 100, bottom)));
                break;
            }
        QTest::qWait(200);
        tapItem(window(), row);
        QTRY_VERIFY_WITH_TIMEOUT(!root()->isMenuVisible(), 5000);
        QTest::qWait(400);
        if (screen) QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), screen), 5000);
    }

    // No indicator left, then a moment for the scene to draw.
    void settle(int ms = 400) {
        QTRY_VERIFY_WITH_TIMEOUT(!itemNamed(window(), "progressHUD") && !itemNamed(window(), "waitOverlay"), 5000);
        QTest::qWait(ms);
    }
    void shootSettled(const QString& name, int ms = 400) {
        settle(ms);
        saveScreenshot(window(), name);
    }
    void shoot(const QString& name, int ms = 300) {
        QTest::qWait(ms);
        saveScreenshot(window(), name);
    }

    QString alertText(const char* property = "message") const {
        QQuickItem* alert = itemNamed(window(), "alert");
        return alert ? alert->property(property).toString() : QString();
    }
    // The button with this title once the alert shows it, tapped when the alert has settled in place.
    void tapAlertButton(const QString& title) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY2_WITH_TIMEOUT([&] {
            for (QQuickItem* button : itemsNamed(itemNamed(window(), "alert"), "alertButton"))
                if (button->property("text").toString() == title) found = button;
            return found != nullptr;
        }(), qPrintable(title), 5000);
        QTest::qWait(300);
        tapItem(window(), found);
    }
    // The alert's button at this place, tapped; the alert goes.
    void dismissAlert(int button = 0) {
        QTRY_VERIFY_WITH_TIMEOUT(itemNamed(window(), "alert"), 5000);
        tapItem(window(), itemsNamed(itemNamed(window(), "alert"), "alertButton").at(button));
        QTRY_VERIFY(!itemNamed(window(), "alert"));
    }

    QList<QQuickItem*> cells(const char* name) const { return itemsNamed(window()->contentItem(), name); }
    // The cell so named whose label reads `text`, else null.
    QQuickItem* cellWith(const char* cellName, const char* label, const QString& text) const {
        QQuickItem* found = nullptr;
        for (QQuickItem* cell : cells(cellName))
            if (textOf(cell, label) == text) found = cell;
        return found;
    }
    void tapCell(const char* cellName, const char* label, const QString& text) {
        QQuickItem* found = nullptr;
        QTRY_VERIFY2_WITH_TIMEOUT((found = cellWith(cellName, label, text)), qPrintable(text), 5000);
        tapItem(window(), found);
    }
    // The text of the first item so named within `within`, else empty.
    static QString textOf(QQuickItem* within, const char* name) {
        const auto found = within ? itemsNamed(within, name) : QList<QQuickItem*>{};
        return found.isEmpty() ? QString() : found.first()->property("text").toString();
    }
    QString textOf(const char* name) const { return textOf(window()->contentItem(), name); }

    // The requests whose target holds the fragment, and those of one command, in order.
    std::vector<server::RecordedRequest> requestsWith(const std::string& fragment) const {
        std::vector<server::RecordedRequest> found;
        for (const auto& r : service->requests())
            if (r.target.find(fragment) != std::string::npos) found.push_back(r);
        return found;
    }
    bool answered(const std::string& fragment) const { return !requestsWith(fragment).empty(); }
    std::vector<server::RecordedRequest> sent(const QString& command) const {
        const QRegularExpression pattern(QStringLiteral("[?&]do=%1(&|$)").arg(QRegularExpression::escape(command)));
        std::vector<server::RecordedRequest> found;
        for (const auto& r : service->requests())
            if (pattern.match(QString::fromStdString(r.target).replace("%2F", "/")).hasMatch()) found.push_back(r);
        return found;
    }
    static QString headerOf(const server::RecordedRequest& r, const std::string& name) {
        for (const auto& [key, value] : r.headers)
            if (QString::fromStdString(key).compare(QString::fromStdString(name), Qt::CaseInsensitive) == 0)
                return QString::fromStdString(value);
        return {};
    }

    std::string dbPath() const { return databaseDir.filePath(QStringLiteral("service.db")).toStdString(); }
    server::Database& db() {
        if (!database) database = std::make_unique<server::Database>(dbPath());
        return *database;
    }

    // A file of the source tree, relative to the tests' e2e folder; the compiler may name the source
    // relative to the build folder, the parent of the tests' own.
    static QString sourceFile(const QString& relative) {
        const QFileInfo self(QStringLiteral(__FILE__));
        const QString folder = self.isAbsolute() ? self.path()
                                                 : QCoreApplication::applicationDirPath() + QStringLiteral("/../") + self.path();
        return QDir(folder).filePath(QStringLiteral("../e2e/") + relative);
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
    template <class T> T* presented() const {
        for (auto* c : app->platform().window().presentedControllers())
            if (auto* t = qobject_cast<T*>(c)) return t;
        return nullptr;
    }

    std::unique_ptr<server::Server> service;
    std::unique_ptr<QTemporaryDir> settings;
    std::unique_ptr<Ekinora> app;
    QStringList codes;
    QList<QUrl> opened;
    QTemporaryDir databaseDir;
    std::unique_ptr<server::Database> database;
};

} // namespace ekinora::testing
