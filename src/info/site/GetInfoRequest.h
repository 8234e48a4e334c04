#pragma once

#include "InfoElement.h"
#include "platform/Foundation.h"

#include <functional>

namespace ekinora::info::site {

// The decoded document, process-wide: emptied before each load, filled by a decoded reply.
extern QList<InfoElement> infoElements;

// The product site's document of the accordion: a GET with no header, outside the service's envelope.
class GetInfoRequest {
public:
    // The reply's JSON, kept.
    platform::Json json;

    // On a reply, the decoded list and no error, or an error text when the data doesn't decode. A
    // failed transfer is printed and calls nothing.
    using Completion = std::function<void(const QList<InfoElement>& list, const QString& error)>;
    void getInfo(Completion completion);

    static QString url();
};

} // namespace ekinora::info::site
