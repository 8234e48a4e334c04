#pragma once

#include "platform/Controls.h"
#include "platform/Foundation.h"
#include "platform/Overlays.h"
#include "platform/ViewController.h"
#include "platform/WebView.h"

#include <QByteArray>
#include <QPointer>
#include <QStringList>

namespace ekinora::grants {

class MailComposeViewController;

// One application document as a PDF under its own bar, which the user can mail to himself.
class GrantDocDetailViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard.")
    UI_OUTLET(ekinora::platform::WebView, webViewDocument)
    // The bar's top item title is its text.
    UI_OUTLET(ekinora::platform::Label, navBar)
public:
    static constexpr int BarPositionTopAttached = 3;

    explicit GrantDocDetailViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    platform::Json dictGrantDoc{QJsonValue::Undefined};
    QPointer<platform::ProgressHUD> hud;
    platform::WebView* webViewDocument;
    platform::Label* navBar;

    void viewDidLoad() override;
    void webViewDidFinishNavigation(platform::WebView* webView);
    int positionForBar() const { return BarPositionTopAttached; }
    void mailComposeControllerDidFinishWithResult(MailComposeViewController* controller, int result);

    // The document's bytes, fetched on the calling thread: the interface waits for the download, with no
    // indicator. Empty when the fetch fails.
    static QByteArray dataWithContentsOfURL(const QUrl& url);

public slots:
    void close(QObject* sender = nullptr);
    void sendMail(QObject* sender = nullptr);
};

// The mail composer: recipients, subject, body and attachments, shown for the user to send or cancel.
// Sending hands the mail to the desktop's mail program through a "mailto:" address with the recipient
// and the subject, and keeps the attachment as a file in the temporary folder, named as attached.
class MailComposeViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by its screen.")
    Q_PROPERTY(QString recipients READ recipients CONSTANT)
    Q_PROPERTY(QString subject READ subject CONSTANT)
    Q_PROPERTY(QString attachmentName READ attachmentName CONSTANT)
    Q_PROPERTY(QString attachmentSize READ attachmentSize CONSTANT)
public:
    enum Result { Cancelled = 0, Saved = 1, Sent = 2, Failed = 3 };

    explicit MailComposeViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // +canSendMail: a mail program can take a "mailto:" address.
    static bool canSendMail();

    GrantDocDetailViewController* mailComposeDelegate = nullptr;
    void setToRecipients(const QStringList& to) { m_to = to; }
    void setSubject(const QString& subject) { m_subject = subject; }
    void setMessageBody(const QString& body, bool isHTML) {
        m_body = body;
        m_html = isHTML;
    }
    void addAttachmentData(const QByteArray& data, const QString& mimeType, const QString& fileName);

    QString recipients() const { return m_to.join(QStringLiteral(", ")); }
    QString subject() const { return m_subject; }
    QString messageBody() const { return m_body; }
    QString attachmentName() const { return m_fileName; }
    QString attachmentMimeType() const { return m_mimeType; }
    QByteArray attachmentData() const { return m_data; }
    QString attachmentSize() const;
    // Where the attachment was kept when the mail was sent.
    QString attachmentPath() const { return m_path; }

public slots:
    void send(QObject* sender = nullptr);
    void cancel(QObject* sender = nullptr);

private:
    void finish(int result);
    QStringList m_to;
    QString m_subject, m_body, m_fileName, m_mimeType, m_path;
    bool m_html = false;
    QByteArray m_data;
};

} // namespace ekinora::grants
