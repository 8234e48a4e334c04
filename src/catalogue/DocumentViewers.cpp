#include "DocumentViewers.h"

#include "CatalogueState.h"
#include "platform/Foundation.h"

namespace ekinora::catalogue {

using namespace platform;

std::optional<QUrl> urlFromString(const QString& text) {
    if (text.isEmpty()) return std::nullopt;
    for (QChar c : text)
        if (c.isSpace() || c == u'"' || c == u'<' || c == u'>' || c == u'\\' || c == u'^' || c == u'`' || c == u'{' ||
            c == u'|' || c == u'}')
            return std::nullopt;
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid()) return std::nullopt;
    return url;
}

DocumentViewerViewController::DocumentViewerViewController(QObject* parent)
    : ViewController(parent), webView(makeControl<WebView>("webView")) {}

QUrl DocumentViewerViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/DocumentViewerView.qml"));
}

void DocumentViewerViewController::viewDidLoad() {
    setTitle(documentTitle());
    const auto url = urlFromString(documentPath());
    if (!url) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (documentPath)"));
    webView->loadRequest(*url);
}

MaizeDocumentViewController::MaizeDocumentViewController(QObject* parent)
    : ViewController(parent), webView(makeControl<WebView>("webView")) {}

QUrl MaizeDocumentViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/MaizeDocumentView.qml"));
}

void MaizeDocumentViewController::viewDidLoad() {
    const auto address = urlFromString(url);
    if (!address) fatal(QStringLiteral("Fatal error: Unexpectedly found nil while unwrapping an Optional value (url)"));
    // The web engine has no per-request time-out; the default cache policy is its own.
    timeoutSeconds = 60;
    webView->loadRequest(*address);
}

PlayerViewController::PlayerViewController(const QUrl& url, QObject* parent) : ViewController(parent), m_url(url) {}

QUrl PlayerViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Catalogue/PlayerView.qml")); }

void PlayerViewController::play() {
    m_playing = true;
    emit playingChanged();
}

void PlayerViewController::close(QObject*) { dismissViewControllerAnimated(true); }

} // namespace ekinora::catalogue
