#include "DealerViewController.h"

#include "DealerRequests.h"
#include "notifications/Bell.h"
#include "platform/AlertController.h"
#include "platform/Platform.h"
#include "service/Replies.h"
#include "service/ServiceCall.h"

namespace ekinora::profile {

using namespace platform;

namespace {

void alert(ViewController* screen, const QString& title, const QString& message,
           AlertController::ActionStyle style = AlertController::Default) {
    auto* controller = AlertController::alertControllerWithTitle(title, message);
    controller->addAction(QStringLiteral("Tamam"), style);
    screen->presentViewController(controller, true);
}

} // namespace

DealerViewController::DealerViewController(QObject* parent)
    : ViewController(parent), txtDealerName(makeControl<TextField>("txtDealerName")),
      txtDealerTaxNumber(makeControl<TextField>("txtDealerTaxNumber")),
      txtDealerIdNumber(makeControl<TextField>("txtDealerIdNumber")), updateButton(makeControl<Button>("updateButton")) {
    setTitle(QStringLiteral("Bayi Bilgileri"));
    txtDealerName->setPlaceholder(QStringLiteral("Bayi Adı"));
    txtDealerTaxNumber->setPlaceholder(QStringLiteral("Vergi Numarası"));
    txtDealerIdNumber->setPlaceholder(QStringLiteral("T.C. Kimlik Numarası"));
    txtDealerTaxNumber->setKeyboardType(4);
    txtDealerIdNumber->setKeyboardType(4);
    updateButton->setTitle(QStringLiteral("Güncelle"));
    updateButton->addTarget(this, QStringLiteral("updateProfile"));
    for (TextField* field : {txtDealerName, txtDealerTaxNumber, txtDealerIdNumber})
        field->setShouldReturn([this](TextField* f) { return textFieldShouldReturn(f); });
}

QUrl DealerViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Profile/DealerView.qml")); }

void DealerViewController::viewDidLoad() { getProfile(); }

void DealerViewController::viewDidAppear(bool) {
    Platform::current().notificationCenter().addObserver(this, QStringLiteral("setNotifBadge"),
                                                         notifications::Bell::CheckNotifBadge);
}

void DealerViewController::getProfile() {
    service::ScreenCall call(this, QStringLiteral("getProfile"), service::ScreenCall::WithHud);
    GetDealerRequest request;
    request.doParam = QStringLiteral("dealer/information");
    // The one read of the application that tells the user of a failure.
    request.requestDealer(call.done([this](const Json& response) {
                              const Json data = member(response, QStringLiteral("data"));
                              service::log(QStringLiteral("dealerName: %1").arg(description(member(data, QStringLiteral("dealerName")))));
                              txtDealerName->setText(stringOrNull(member(data, QStringLiteral("dealerName"))));
                              txtDealerIdNumber->setText(stringOrNull(member(data, QStringLiteral("TCNo"))));
                              txtDealerTaxNumber->setText(stringOrNull(member(data, QStringLiteral("taxNumber"))));
                          }),
                          call.failed([this](const Json&) {
                              alert(this, QStringLiteral("Uyarı"), QStringLiteral("Bilinmeyen bir hata oluştu"));
                          }));
}

void DealerViewController::updateProfile(QObject*) {
    service::ScreenCall call(this, QStringLiteral("updateProfile"), service::ScreenCall::WithHud);
    UpdateDealerRequest request;
    request.doParam = QStringLiteral("dealer/update-information");
    request.TCNo = txtDealerIdNumber->text();
    request.dealerName = txtDealerName->text();
    request.taxNumber = txtDealerTaxNumber->text();
    request.updateDealer(call.done([this](const Json& response) {
                             const int status = service::statusOf(response);
                             if (status == 200) {
                                 alert(this, QStringLiteral("Başarılı"), QStringLiteral("Bayi bilgileriniz güncellendi."));
                             } else if (status == 400) {
                                 const Json errors = member(response, QStringLiteral("errors"));
                                 const Json tc = member(errors, QStringLiteral("TCNo"));
                                 if (!isNil(tc)) alert(this, QStringLiteral("Hata"), stringOrNull(tc), AlertController::Destructive);
                                 const Json tax = member(errors, QStringLiteral("taxNumber"));
                                 alert(this, QStringLiteral("Hata"),
                                       isNil(tax) ? QStringLiteral("Bilgileri doğru girdiğinizden emin olun") : stringOrNull(tax),
                                       AlertController::Destructive);
                             }
                         }),
                         call.failed());
}

bool DealerViewController::textFieldShouldReturn(TextField* field) {
    field->resignFirstResponder();
    return true;
}

} // namespace ekinora::profile
