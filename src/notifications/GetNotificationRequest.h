#pragma once

#include "service/RequestFrame.h"

namespace ekinora::notifications {

using service::Callback;
using service::Json;

// The notices of the signed-in user. The service keeps the read marks: "0" lists and marks, "1" only
// counts (the badge asks with "1" so that counting never touches the marks).
class GetNotificationRequest {
public:
    Json ignoreRead{QJsonValue::Undefined};

    // "ignore_read" when set, then "bearer" when a token is stored.
    service::Parameters dictionaryRepresentation() const;
    // GET "%@/?do=notifications" with the parameters in the query. success gets the reply as it comes,
    // its "status" unread; fail gets the decoded error body or nil.
    void getNotifications(Callback success, Callback fail) const;
};

} // namespace ekinora::notifications
