#include "RegisterRequests.h"

namespace ekinora::accounts {

using namespace platform;
using service::RequestFrame;

namespace {

const service::FrameSpec RegisterFrame{"POST", false, false, false};
const service::FrameSpec CheckFrame{"POST", true, true, false};

// What every registration ends with: the terms accepted, and this platform as the number 2.
void addRegistrationTail(service::Parameters& p) {
    RequestFrame::add(p, QStringLiteral("term"), QStringLiteral("yes"));
    RequestFrame::add(p, QStringLiteral("deviceType"), 2);
}

} // namespace

service::Parameters RegisterFarmerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("email"), email);
    RequestFrame::add(p, QStringLiteral("deviceId"), deviceID);
    RequestFrame::add(p, QStringLiteral("countyId"), countyID);
    RequestFrame::add(p, QStringLiteral("fullname"), fullName);
    RequestFrame::add(p, QStringLiteral("firstName"), firstName);
    RequestFrame::add(p, QStringLiteral("lastName"), lastName);
    RequestFrame::add(p, QStringLiteral("hash"), hashID);
    if (count(arrFields) > 0) RequestFrame::add(p, QStringLiteral("fields"), arrFields);
    RequestFrame::add(p, QStringLiteral("etk-sms"), etkSmsPermission);
    RequestFrame::add(p, QStringLiteral("etk-advertising"), etkAdvPermission);
    RequestFrame::add(p, QStringLiteral("etk-email"), etkEmailPermission);
    addRegistrationTail(p);
    return p;
}

void RegisterFarmerRequest::registerFarmer(Callback success, Callback fail) const {
    RequestFrame::send(RegisterFrame, RequestFrame::commandUrl(stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

service::Parameters RegisterDealerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("email"), email);
    RequestFrame::add(p, QStringLiteral("deviceId"), deviceID);
    RequestFrame::add(p, QStringLiteral("countyId"), countyID);
    RequestFrame::add(p, QStringLiteral("fullname"), fullName);
    RequestFrame::add(p, QStringLiteral("firstName"), firstName);
    RequestFrame::add(p, QStringLiteral("lastName"), lastName);
    RequestFrame::add(p, QStringLiteral("etk-sms"), etkSmsPermission);
    RequestFrame::add(p, QStringLiteral("etk-advertising"), etkAdvPermission);
    RequestFrame::add(p, QStringLiteral("etk-email"), etkEmailPermission);
    RequestFrame::add(p, QStringLiteral("hash"), hashID);
    RequestFrame::add(p, QStringLiteral("taxNumber"), dealerNumber);
    RequestFrame::add(p, QStringLiteral("dealerName"), dealerName);
    RequestFrame::add(p, QStringLiteral("TCNo"), TCNo);
    addRegistrationTail(p);
    return p;
}

void RegisterDealerRequest::registerDealer(Callback success, Callback fail) const {
    RequestFrame::send(RegisterFrame, RequestFrame::commandUrl(stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

service::Parameters CheckDealerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("do"), doParam);
    RequestFrame::add(p, QStringLiteral("taxNumber"), taxNumber);
    RequestFrame::add(p, QStringLiteral("dealerName"), dealerName);
    RequestFrame::add(p, QStringLiteral("TCNo"), TCNo);
    return p;
}

void CheckDealerRequest::checkDealer(Callback success, Callback fail) const {
    RequestFrame::send(CheckFrame, RequestFrame::commandUrl(stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

} // namespace ekinora::accounts
