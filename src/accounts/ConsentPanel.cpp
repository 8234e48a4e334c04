#include "ConsentPanel.h"

#include "platform/Overlays.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"
#include "widgets/Colors.h"

#include <QPointer>

namespace ekinora::accounts {

using namespace platform;

namespace {

// The wrap a page text goes into, with no style and no base address.
QString wrapped(const Json& fragment) {
    return stringWithFormat(QStringLiteral("<html><head></head><body>%@</body></html>"), {fragment});
}

QString sent(const widgets::GroupedRadioButton* radio) {
    return stringWithFormat(QStringLiteral("%d"), {int(radio->isSelected())});
}

} // namespace

ConsentPanel::ConsentPanel(ConsentPolicy policy, ViewController* host)
    : ViewController(host), viewKVKK(makeControl<View>("viewKVKK")), viewETK(makeControl<View>("viewETK")),
      webviewETK(makeControl<WebView>("webviewETK")), radioETK1(makeControl<widgets::GroupedRadioButton>("radioETK1")),
      radioETK2(makeControl<widgets::GroupedRadioButton>("radioETK2")),
      radioETK3(makeControl<widgets::GroupedRadioButton>("radioETK3")), m_policy(std::move(policy)), m_host(host) {
    setParentController(host);
    if (m_policy.withTerms) {
        viewETKWeb = makeControl<View>("viewETKWeb");
        webKVKK = makeControl<WebView>("webKVKK");
        btn1Enb = makeControl<Button>("btn1Enb");
        btn2Enb = makeControl<Button>("btn2Enb");
        btn3Enb = makeControl<Button>("btn3Enb");
        btn1Enb->setTitle(QStringLiteral("SMS"));
        btn2Enb->setTitle(QStringLiteral("E-POSTA"));
        btn3Enb->setTitle(QStringLiteral("REKLAM"));
    }
    // Three independent answers: each box switches on and off by itself.
    const QList<widgets::GroupedRadioButton*> radios{radioETK1, radioETK2, radioETK3};
    for (int i = 0; i < radios.size(); ++i) {
        widgets::GroupedRadioButton* radio = radios.at(i);
        radio->setTitle(m_policy.permissionTitles.value(i));
        radio->setMultipleSelectionEnabled(true);
        if (m_policy.squareBoxes) radio->setIconSquare(true);
        radio->setIconSize(22);
        radio->setContentHorizontalAlignment(widgets::GroupedRadioButton::AlignLeft);
        if (m_policy.squareBoxes) {
            radio->setTitleColor(widgets::Colors::black());
            radio->setIconColor(widgets::Colors::leaf());
            radio->setIndicatorColor(widgets::Colors::leaf());
        }
    }
}

QUrl ConsentPanel::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Accounts/ConsentPanelView.qml")); }

QString ConsentPanel::openNoticeAction() const {
    return m_policy.withTerms ? QStringLiteral("openETKWebView") : QStringLiteral("openETKView");
}

QString ConsentPanel::closeNoticeAction() const {
    return m_policy.withTerms ? QStringLiteral("closeETKWebView") : QStringLiteral("closeETKView");
}

QString ConsentPanel::permissionsAction() const {
    return m_policy.withTerms ? QStringLiteral("closeETKView") : QStringLiteral("setETKinfo");
}

void ConsentPanel::hidePages() {
    viewKVKK->setHidden(true);
    viewETK->setHidden(true);
    if (viewETKWeb) viewETKWeb->setHidden(true);
}

void ConsentPanel::loadWebviewETK() {
    service::ScreenCall call(m_host, QStringLiteral("loadWebviewETK"));
    service::WSRequest request;
    request.doParam = QStringLiteral("page/detail");
    request.slugName = QStringLiteral("kvkk");
    request.requestData(call.done([this](const Json& response) {
                            webviewETK->loadHTMLString(wrapped(
                                path(response, {QStringLiteral("data"), QStringLiteral("page"), QStringLiteral("text")})));
                        }),
                        call.failed());
}

void ConsentPanel::getInfo() {
    if (!webKVKK) return;
    // The indicator lingers a second over the conditions once they are in.
    QPointer<ProgressHUD> hud = ProgressHUD::showHUDAddedTo(service::hudHost(m_host), true);
    service::ScreenCall call(m_host, QStringLiteral("getInfo"));
    service::WSRequest request;
    request.doParam = QStringLiteral("page/detail");
    request.slugName = QStringLiteral("conditions-of-use");
    request.requestData(call.done([this, hud](const Json& response) {
                            webKVKK->loadHTMLString(wrapped(
                                path(response, {QStringLiteral("data"), QStringLiteral("page"), QStringLiteral("text")})));
                            if (hud) hud->hideAnimated(true, 1.0);
                        }),
                        call.failed([hud](const Json&) {
                            if (hud) hud->hideAnimated(true);
                        }));
}

void ConsentPanel::bringSubviewToFront(View* panel) {
    m_frontPanel = panel->objectName();
    emit frontPanelChanged();
}

QString ConsentPanel::smsPermission() const { return sent(radioETK1); }

QString ConsentPanel::emailPermission() const { return sent(radioETK2); }

QString ConsentPanel::advPermission() const { return sent(radioETK3); }

void ConsentPanel::openNotice() {
    if (m_policy.withTerms) openETKWebView();
    else openETKView();
}

void ConsentPanel::closeNotice() {
    if (m_policy.withTerms) closeETKWebView();
    else closeETKView();
}

void ConsentPanel::confirmPermissions() {
    if (m_policy.withTerms) closeETKView();
    else setETKinfo();
}

void ConsentPanel::acceptKVKK(QObject*) {
    viewKVKK->setHidden(true);
    viewETK->setHidden(false);
    if (!viewETKWeb) return;
    viewETKWeb->setHidden(false);
    // The notice stands over the permissions until it is closed.
    bringSubviewToFront(viewETKWeb);
}

void ConsentPanel::setETKinfo(QObject*) {
    if (m_policy.confirm) m_policy.confirm();
}

void ConsentPanel::openETKView(QObject*) { viewETK->setHidden(false); }

void ConsentPanel::closeETKView(QObject*) { viewETK->setHidden(true); }

void ConsentPanel::openETKWebView(QObject*) {
    if (!viewETKWeb) return;
    viewETKWeb->setHidden(false);
    bringSubviewToFront(viewETKWeb);
}

void ConsentPanel::closeETKWebView(QObject*) {
    if (viewETKWeb) viewETKWeb->setHidden(true);
}

} // namespace ekinora::accounts
