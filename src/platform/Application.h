#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <exception>
#include <functional>

namespace ekinora::platform {

class Window;

// Thrown when a fatal stop's ending returns, which only a test's ending does: the code after the stop
// must not run.
struct FatalStop : std::exception {
    int code;
    QString reason;
    FatalStop(int c, QString r) : code(c), reason(std::move(r)) {}
    const char* what() const noexcept override { return "fatal stop"; }
};

// The application object: badge, URL hand-off, orientation mask, the log and the one way out of the
// process. Everything that ends the process (exit, a forced unwrap of nothing, an unrecognised selector)
// goes through terminate().
class Application : public QObject {
    Q_OBJECT
    Q_PROPERTY(int applicationIconBadgeNumber READ applicationIconBadgeNumber WRITE setApplicationIconBadgeNumber
                   NOTIFY applicationIconBadgeNumberChanged)
public:
    // Code of a fatal fault, as a process ended by abort reports it.
    static constexpr int FaultExitCode = 134;
    // UIInterfaceOrientationMask values.
    static constexpr int OrientationMaskPortrait = 2;
    static constexpr int OrientationMaskAll = 30;

    using Ending = std::function<void(int code)>;
    using UrlOpener = std::function<bool(const QUrl&)>;

    explicit Application(QObject* parent = nullptr);
    ~Application() override;

    static Application* shared();

    int applicationIconBadgeNumber() const { return m_badge; }
    void setApplicationIconBadgeNumber(int n);

    // -[UIApplication openURL:]. The opener is QDesktopServices in the desktop app, a recorder in tests.
    bool openURL(const QUrl& url);
    void setUrlOpener(UrlOpener opener) { m_opener = std::move(opener); }
    // -[UIApplication canOpenURL:]. The desktop knows handlers for the web, mail and telephone schemes
    // only; tests may say otherwise.
    bool canOpenURL(const QUrl& url) const;
    void setUrlChecker(std::function<bool(const QUrl&)> checker) { m_checker = std::move(checker); }

    // The window's orientation mask comes from the application's delegate.
    void setOrientationSource(std::function<int()> source) { m_orientation = std::move(source); }
    int supportedInterfaceOrientations() const;

    QString bundleShortVersion() const { return m_version; }
    void setBundleShortVersion(const QString& v) { m_version = v; }

    Window* keyWindow() const { return m_window; }
    void setKeyWindow(Window* w) { m_window = w; }

    // A plain line to the log (standard output).
    void log(const QString& line);
    void setEchoLog(bool echo) { m_echo = echo; }

    // Logs the reason, emits terminated(code) and runs the ending (exit by default).
    void terminate(int code, const QString& reason);
    void setEnding(Ending ending) { m_ending = std::move(ending); }
    // Runs before the ending, so that the store reaches its file.
    void setBeforeEnding(std::function<void()> hook) { m_beforeEnding = std::move(hook); }

    [[noreturn]] static void fatalStop(const QString& reason);

signals:
    void applicationIconBadgeNumberChanged();
    void logged(const QString& line);
    void urlOpened(const QUrl& url);
    void terminated(int code, const QString& reason);

private:
    int m_badge = 0;
    bool m_echo = true;
    QString m_version;
    UrlOpener m_opener;
    std::function<bool(const QUrl&)> m_checker;
    std::function<int()> m_orientation;
    Ending m_ending;
    std::function<void()> m_beforeEnding;
    Window* m_window = nullptr;
};

} // namespace ekinora::platform
