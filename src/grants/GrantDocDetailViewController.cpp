#include "GrantDocDetailViewController.h"

#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "service/LocalStore.h"
#include "service/ServiceCall.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QUrlQuery>

namespace ekinora::grants {

using namespace platform;

namespace {
Platform& P() { return Platform::current(); }
} // namespace

GrantDocDetailViewController::GrantDocDetailViewController(QObject* parent)
    : ViewController(parent), webViewDocument(makeControl<WebView>("webViewDocument")), navBar(makeControl<Label>("navBar")) {
    navBar->setNumberOfLines(2);
}

QUrl GrantDocDetailViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Grants/GrantDocDetailView.qml"));
}

void GrantDocDetailViewController::viewDidLoad() {
    hud = ProgressHUD::showHUDAddedTo(this, true);
    webViewDocument->setDidFinishNavigation([this](WebView* web) { webViewDidFinishNavigation(web); });
    navBar->setText(stringOrNull(member(dictGrantDoc, QStringLiteral("ConstantValue"))));
    webViewDocument->setBounces(false);
    webViewDocument->loadRequest(QUrl(stringOrNull(member(dictGrantDoc, QStringLiteral("AppendixA")))));
}

// A load that fails leaves the indicator up.
void GrantDocDetailViewController::webViewDidFinishNavigation(WebView*) {
    if (hud) hud->hideAnimated(true);
}

void GrantDocDetailViewController::close(QObject*) { dismissViewControllerAnimated(true); }

QByteArray GrantDocDetailViewController::dataWithContentsOfURL(const QUrl& url) {
    if (!url.isValid() || url.scheme().isEmpty()) return {};
    HttpRequest request;
    request.url = url.toEncoded();
    QByteArray data;
    bool done = false;
    QEventLoop loop;
    P().http().send(request, {}, [&](const HttpResponse& response) {
        if (response.transportOk && response.statusCode == 200) data = response.body;
        done = true;
        loop.quit();
    });
    if (!done) loop.exec(QEventLoop::ExcludeUserInputEvents);
    return data;
}

void GrantDocDetailViewController::sendMail(QObject*) {
    if (!MailComposeViewController::canSendMail()) {
        auto* alert = AlertController::alertControllerWithTitle(QStringLiteral("Uyarı"),
                                                                 QStringLiteral("Mail hesabınız telefonunuza kurulu değildir."));
        alert->addAction(QStringLiteral("Tamam"), AlertController::Default);
        presentViewController(alert, true);
        return;
    }
    const QByteArray pdf = dataWithContentsOfURL(QUrl(stringOrNull(member(dictGrantDoc, QStringLiteral("AppendixA")))));
    auto* composer = new MailComposeViewController;
    composer->mailComposeDelegate = this;
    const QString email = stringOrNull(member(service::LocalStore::userInfo(), QStringLiteral("email")));
    composer->setToRecipients(email.isEmpty() ? QStringList() : QStringList{email});
    composer->setSubject(title()); // nothing sets the title: the subject stays empty
    composer->setMessageBody(QString(), false);
    composer->addAttachmentData(pdf, QStringLiteral("application/pdf"), QStringLiteral("grantdoc.pdf"));
    presentViewController(composer, true);
}

void GrantDocDetailViewController::mailComposeControllerDidFinishWithResult(MailComposeViewController*, int) {
    dismissViewControllerAnimated(true);
}

MailComposeViewController::MailComposeViewController(QObject* parent) : ViewController(parent) {}

QUrl MailComposeViewController::viewSource() const {
    return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Grants/MailComposeView.qml"));
}

bool MailComposeViewController::canSendMail() { return P().application().canOpenURL(QUrl(QStringLiteral("mailto:"))); }

void MailComposeViewController::addAttachmentData(const QByteArray& data, const QString& mimeType, const QString& fileName) {
    m_data = data;
    m_mimeType = mimeType;
    m_fileName = fileName;
}

QString MailComposeViewController::attachmentSize() const {
    if (m_data.size() < 1024) return QStringLiteral("%1 bayt").arg(m_data.size());
    return QStringLiteral("%1 KB").arg((m_data.size() + 512) / 1024);
}

void MailComposeViewController::send(QObject*) {
    if (!m_fileName.isEmpty() && !m_data.isEmpty()) {
        const QString folder = QDir::temp().filePath(QStringLiteral("ekinora-mail"));
        QDir().mkpath(folder);
        QFile file(QDir(folder).filePath(m_fileName));
        if (file.open(QIODevice::WriteOnly) && file.write(m_data) == m_data.size()) m_path = file.fileName();
    }
    QUrl mail(QStringLiteral("mailto:") + m_to.join(QLatin1Char(',')));
    if (!m_subject.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("subject"), m_subject);
        mail.setQuery(query);
    }
    const bool opened = P().application().openURL(mail);
    if (!m_path.isEmpty()) service::log(QStringLiteral("sendMail: attachment at %1").arg(m_path));
    finish(opened ? Sent : Failed);
}

void MailComposeViewController::cancel(QObject*) { finish(Cancelled); }

void MailComposeViewController::finish(int result) {
    if (mailComposeDelegate) mailComposeDelegate->mailComposeControllerDidFinishWithResult(this, result);
}

} // namespace ekinora::grants
