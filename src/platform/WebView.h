#pragma once

#include <QtQml/qqmlregistration.h>

#include "Controls.h"

#include <QHash>
#include <QUrl>
#include <QVariant>
#include <functional>

namespace ekinora::platform {

// A web view: an HTML string with no base address or a page address, navigation decisions and
// "did finish" by the screen, and script evaluation with a completion. The QML side loads the web
// engine only when a web view is first shown, so that screens without one never pay for it.
class WebView : public ekinora::platform::View {
    Q_OBJECT
    QML_NAMED_ELEMENT(WKWebView)
    QML_UNCREATABLE("Made by the application.")
    Q_PROPERTY(QString html READ html NOTIFY loadRequested)
    Q_PROPERTY(QUrl baseUrl READ baseUrl NOTIFY loadRequested)
    Q_PROPERTY(QUrl url READ url NOTIFY loadRequested)
    Q_PROPERTY(int loadSerial READ loadSerial NOTIFY loadRequested)
    Q_PROPERTY(bool bounces READ bounces WRITE setBounces NOTIFY changed)
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
public:
    // The platform's navigation types: a link the user activated is 0; anything else not listed is -1.
    enum NavigationType { LinkActivated = 0, FormSubmitted = 1, BackForward = 2, Reload = 3, FormResubmitted = 4, Other = -1 };

    using DecidePolicy = std::function<bool(WebView*, const QUrl& url, int navigationType)>;
    using DidFinish = std::function<void(WebView*)>;
    using ScriptCompletion = std::function<void(const QVariant& result)>;

    using View::View;

    QString html() const { return m_html; }
    QUrl baseUrl() const { return m_base; }
    QUrl url() const { return m_url; }
    int loadSerial() const { return m_serial; }
    bool bounces() const { return m_bounces; }
    void setBounces(bool b) { set(m_bounces, b); }
    bool isLoading() const { return m_loading; }

    void loadHTMLString(const QString& html, const QUrl& baseUrl = {});
    void loadRequest(const QUrl& url);
    void evaluateJavaScript(const QString& script, ScriptCompletion completion = {});

    // The navigation delegate's calls; a screen sets what it implements.
    void setDecidePolicy(DecidePolicy f) { m_decide = std::move(f); }
    void setDidFinishNavigation(DidFinish f) { m_didFinish = std::move(f); }

    // Called by the view (or a test): may the page go to this address?
    Q_INVOKABLE bool shouldNavigate(const QUrl& url, int navigationType);
    // Called by the view (or a test) when the page has loaded.
    Q_INVOKABLE void navigationFinished();
    Q_INVOKABLE void navigationFailed();
    // The result of a script that the view ran.
    Q_INVOKABLE void scriptFinished(int id, const QVariant& result);
    // Scripts asked for before the view could run them.
    QStringList pendingScripts() const;

signals:
    void loadRequested();
    void loadingChanged();
    void scriptRequested(int id, const QString& script);

private:
    QString m_html;
    QUrl m_base;
    QUrl m_url;
    int m_serial = 0;
    bool m_bounces = true;
    bool m_loading = false;
    int m_nextScript = 1;
    QHash<int, std::pair<QString, ScriptCompletion>> m_scripts;
    DecidePolicy m_decide;
    DidFinish m_didFinish;
};

} // namespace ekinora::platform
