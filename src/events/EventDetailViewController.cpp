#include "EventDetailViewController.h"

#include "service/LocalStore.h"
#include "service/ServiceCall.h"
#include "service/WSRequest.h"
#include "widgets/Colors.h"

namespace ekinora::events {

using namespace platform;

namespace {

void paint(Button* button, const QString& image, const QColor& background, const QColor& title) {
    button->setImage(image);
    button->setBackgroundColor(background);
    button->setTitleColor(title);
}

} // namespace

EventDetailViewController::EventDetailViewController(QObject* parent)
    : ViewController(parent), lblTitle(makeControl<Label>("lblTitle")), lblDay(makeControl<Label>("lblDay")),
      lblMonth(makeControl<Label>("lblMonth")), lblPlace(makeControl<Label>("lblPlace")),
      lblDateRange(makeControl<Label>("lblDateRange")), webContent(makeControl<WebView>("webContent")),
      btnAccept(makeControl<Button>("btnAccept")), btnReject(makeControl<Button>("btnReject")),
      // As laid out: the row of the two answers is there until the screen decides.
      constraintButtonHeight(makeControl<LayoutConstraint>("constraintButtonHeight", 50.0)) {
    setTitle(QStringLiteral("Etkinlikler"));
    lblTitle->setNumberOfLines(0);
    lblPlace->setNumberOfLines(0);
    btnAccept->setTitle(QStringLiteral("Katılıyorum"));
    btnReject->setTitle(QStringLiteral("Katılmıyorum"));
    btnAccept->addTarget(this, &EventDetailViewController::joinEvent);
    btnReject->addTarget(this, &EventDetailViewController::dontJoinEvent);
    paintButtons(nullObject());
}

QUrl EventDetailViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Events/EventDetailView.qml")); }

void EventDetailViewController::viewDidLoad() {
    getEventDetail();
    webContent->setDidFinishNavigation([this](WebView* web) { webViewDidFinishNavigation(web); });
    isFarmer = false;
    const Json user = service::LocalStore::userInfo();
    if (!isNil(user)) {
        const Json type = member(user, QStringLiteral("type"));
        isFarmer = isString(type, QStringLiteral("farmer")) || isString(type, QStringLiteral("loyalty"));
        constraintButtonHeight->setConstant(isFarmer ? 50.0 : 0.0);
    }
}

void EventDetailViewController::getEventDetail() {
    // The indicator stays until the text has loaded in the web view; only a failure hides it here.
    hud = ProgressHUD::showHUDAddedTo(service::hudHost(this), true);
    service::ScreenCall call(this, QStringLiteral("getEventDetail"));
    service::WSRequest request;
    request.doParam = QStringLiteral("event/detail");
    request.objectID = objectID;
    request.requestData(call.done([this](const Json& response) {
                            service::log(description(response));
                            const Json event = path(response, {QStringLiteral("data"), QStringLiteral("event")});
                            lblTitle->setText(stringOrNull(member(event, QStringLiteral("name"))));
                            lblMonth->setText(stringOrNull(member(event, QStringLiteral("monthName"))));
                            lblDay->setText(description(member(event, QStringLiteral("dayNumber"))));
                            lblDateRange->setText(stringOrNull(member(event, QStringLiteral("dateRange"))));
                            lblPlace->setText(stringOrNull(member(event, QStringLiteral("place"))));
                            const QString html = stringWithFormat(QStringLiteral("<span style=\"font-family: %@; font-size: %i\">%@</span>"),
                                                                  {QStringLiteral("AvenirNext-Regular"), 16,
                                                                   member(event, QStringLiteral("content"))});
                            webContent->loadHTMLString(html);
                            webContent->setBounces(false);
                            const bool joinable = boolValue(member(event, QStringLiteral("isJoinable")));
                            constraintButtonHeight->setConstant(joinable && isFarmer ? 50.0 : 0.0);
                            paintButtons(member(event, QStringLiteral("isJoin")));
                        }),
                        call.failed([this](const Json&) {
                            if (hud) hud->hideAnimated(true);
                        }));
}

void EventDetailViewController::paintButtons(const Json& isJoin) {
    const QColor white(Qt::white);
    const bool attends = isJoin.isBool() && isJoin.toBool();
    const bool declines = isJoin.isBool() && !isJoin.toBool();
    if (attends) paint(btnAccept, QStringLiteral("check"), widgets::Colors::leaf(), white);
    else paint(btnAccept, QString(), widgets::Colors::buttonDefault(), widgets::Colors::black());
    if (declines) paint(btnReject, QStringLiteral("cross"), widgets::Colors::cerulean(), white);
    else paint(btnReject, QString(), widgets::Colors::buttonDefault(), widgets::Colors::black());
}

void EventDetailViewController::webViewDidFinishNavigation(WebView*) {
    if (hud) hud->hideAnimated(true);
}

// The two answers differ only in where their indicator stands.
void EventDetailViewController::joinEvent(QObject*) {
    sendAnswer(QStringLiteral("1"), ProgressHUD::showHUDAddedTo(service::hudHost(this), true));
}

void EventDetailViewController::dontJoinEvent(QObject*) { sendAnswer(QStringLiteral("0"), ProgressHUD::showHUDAddedTo(this, true)); }

void EventDetailViewController::sendAnswer(const QString& status, ProgressHUD* indicator) {
    QPointer<ProgressHUD> shown(indicator);
    service::ScreenCall call(this, QStringLiteral("event/join"));
    service::WSRequest request;
    request.doParam = QStringLiteral("event/join");
    request.objectID = objectID;
    request.eventStatus = status;
    // The reply's status isn't read: a refused answer repaints the buttons as they were.
    request.requestData(call.done([this, shown](const Json& response) {
                            service::log(description(response));
                            if (shown) shown->hideAnimated(true);
                            getEventDetail();
                        }),
                        call.failed([shown](const Json&) {
                            if (shown) shown->hideAnimated(true);
                        }));
}

} // namespace ekinora::events
