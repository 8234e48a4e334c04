#include "SmsRequest.h"

#include "service/ServiceRoots.h"

namespace ekinora::accounts {

using service::RequestFrame;

namespace {
const service::FrameSpec Frame{"GET", true, false, false};
}

service::Parameters SmsRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("phoneNumber"), phoneNumber);
    RequestFrame::add(p, QStringLiteral("type"), queryType);
    RequestFrame::add(p, QStringLiteral("deviceId"), deviceID);
    RequestFrame::add(p, QStringLiteral("deviceType"), deviceType);
    RequestFrame::add(p, QStringLiteral("do"), doParam);
    RequestFrame::add(p, QStringLiteral("hash"), hashID);
    RequestFrame::add(p, QStringLiteral("code"), validationCode);
    return p;
}

void SmsRequest::getSmsCode(Callback success, Callback fail) const {
    RequestFrame::send(Frame, service::Roots::ServiceBase, dictionaryRepresentation(), std::move(success), std::move(fail));
}

void SmsRequest::validateSmsCode(Callback success, Callback fail) const {
    RequestFrame::send(Frame, service::Roots::ServiceBase, dictionaryRepresentation(), std::move(success), std::move(fail));
}

} // namespace ekinora::accounts
