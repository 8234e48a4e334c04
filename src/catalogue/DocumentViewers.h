#pragma once

#include "platform/Controls.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

namespace ekinora::catalogue {

// What URL(string:) gives: nil for an empty text or one with blanks or characters an address can't hold.
std::optional<QUrl> urlFromString(const QString& text);

// A document of a plant-protection product: the address and the title come through the process-wide
// documentPath and documentTitle. The load is not watched; a document that fails leaves the page blank.
class DocumentViewerViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::WebView, webView)
public:
    explicit DocumentViewerViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;
    platform::WebView* webView;
    void viewDidLoad() override;
};

// A document of a seed product: the pusher sets the title and url. The request waits 60 seconds.
class MaizeDocumentViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::WebView, webView)
public:
    explicit MaizeDocumentViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;
    platform::WebView* webView;
    QString url = QStringLiteral("");
    int timeoutSeconds = 0; // of the last request made
    void viewDidLoad() override;
};

// The picture or film of a media strip, full screen; the film starts once the screen is up.
class PlayerViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its presenter.")
    Q_PROPERTY(QUrl playerUrl READ playerUrl CONSTANT)
    Q_PROPERTY(bool playing READ playing NOTIFY playingChanged)
public:
    explicit PlayerViewController(const QUrl& url, QObject* parent = nullptr);
    QUrl viewSource() const override;
    QUrl playerUrl() const { return m_url; }
    bool playing() const { return m_playing; }
    void play();
public slots:
    void close(QObject* sender = nullptr);
signals:
    void playingChanged();

private:
    QUrl m_url;
    bool m_playing = false;
};

} // namespace ekinora::catalogue
