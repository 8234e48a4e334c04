#include "FarmerProductRequest.h"

#include "platform/Foundation.h"

#include <charconv>
#include <cstdlib>
#include <string>

namespace ekinora::farms {

using namespace platform;
using service::RequestFrame;

namespace {
const service::FrameSpec GetFrame{"GET", true, true, true};
const service::FrameSpec PostFrame{"POST", true, true, true};

// A single-precision number as the platform writes it: its shortest form, so 12.3 goes out as 12.3.
double floatNumber(float f) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, f).ptr;
    return std::strtod(std::string(text, end).c_str(), nullptr);
}
} // namespace

service::Parameters FarmerProductRequest::dictionaryRepresentation() const {
    service::Parameters p;
    RequestFrame::add(p, QStringLiteral("id"), objectID);
    RequestFrame::add(p, QStringLiteral("produceId"), produceID);
    RequestFrame::add(p, QStringLiteral("periodId"), periodID);
    RequestFrame::add(p, QStringLiteral("farmerprio"), farmerPriority);
    if (count(apsList) > 0) {
        // The list is written out as text without quotes and that text is not used: the ids go out as
        // the list itself.
        QString unused = QString::fromUtf8(encodeJson(apsList)).remove(QLatin1Char('"'));
        Q_UNUSED(unused);
        RequestFrame::add(p, QStringLiteral("aps"), apsList);
    }
    // The size field's text as a number: "" and a text that is not a number both go out as 0.
    if (!range.isUndefined()) RequestFrame::add(p, QStringLiteral("range"), floatNumber(floatValue(range)));
    RequestFrame::addBearer(p);
    return p;
}

void FarmerProductRequest::requestData(Callback success, Callback fail) const {
    RequestFrame::send(GetFrame, RequestFrame::commandUrl(stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

void FarmerProductRequest::addProduct(Callback success, Callback fail) const {
    RequestFrame::send(PostFrame, RequestFrame::commandUrl(stringOrNull(doParam)), dictionaryRepresentation(),
                       std::move(success), std::move(fail));
}

} // namespace ekinora::farms
