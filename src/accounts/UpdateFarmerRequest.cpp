#include "UpdateFarmerRequest.h"

namespace ekinora::accounts {

using service::RequestFrame;

namespace {
const service::FrameSpec PostFrame{"POST", true, true, true};
}

service::Parameters UpdateFarmerRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("email"), email);
    RequestFrame::add(p, QStringLiteral("countyId"), countyID);
    RequestFrame::add(p, QStringLiteral("fullname"), fullName);
    RequestFrame::add(p, QStringLiteral("etk-sms"), etkSmsPermission);
    RequestFrame::add(p, QStringLiteral("etk-advertising"), etkAdvPermission);
    RequestFrame::add(p, QStringLiteral("etk-email"), etkEmailPermission);
    RequestFrame::addBearer(p);
    return p;
}

void UpdateFarmerRequest::updateFarmer(Callback success, Callback fail) const {
    RequestFrame::send(PostFrame, RequestFrame::commandUrl(platform::stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

} // namespace ekinora::accounts
