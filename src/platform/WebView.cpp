#include "WebView.h"

namespace ekinora::platform {

void WebView::loadHTMLString(const QString& html, const QUrl& baseUrl) {
    m_html = html;
    m_base = baseUrl;
    m_url = QUrl();
    ++m_serial;
    m_loading = true;
    emit loadingChanged();
    emit loadRequested();
}

void WebView::loadRequest(const QUrl& url) {
    m_html.clear();
    m_base = QUrl();
    m_url = url;
    ++m_serial;
    m_loading = true;
    emit loadingChanged();
    emit loadRequested();
}

void WebView::evaluateJavaScript(const QString& script, ScriptCompletion completion) {
    const int id = m_nextScript++;
    m_scripts.insert(id, {script, std::move(completion)});
    emit scriptRequested(id, script);
}

QStringList WebView::pendingScripts() const {
    QStringList list;
    for (const auto& s : m_scripts) list << s.first;
    return list;
}

bool WebView::shouldNavigate(const QUrl& url, int navigationType) {
    return m_decide ? m_decide(this, url, navigationType) : true;
}

void WebView::navigationFinished() {
    m_loading = false;
    emit loadingChanged();
    if (m_didFinish) m_didFinish(this);
}

void WebView::navigationFailed() {
    m_loading = false;
    emit loadingChanged();
}

void WebView::scriptFinished(int id, const QVariant& result) {
    auto it = m_scripts.find(id);
    if (it == m_scripts.end()) return;
    ScriptCompletion completion = std::move(it->second);
    m_scripts.erase(it);
    if (completion) completion(result);
}

} // namespace ekinora::platform
