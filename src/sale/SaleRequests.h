#pragma once

#include "platform/ViewController.h"
#include "service/InlineRequest.h"

#include <QByteArray>
#include <functional>
#include <optional>

namespace ekinora::sale {

using Json = platform::Json;
using Reply = service::InlineRequest::Response;

// A dealer command straight from its screen: ServiceBase and the path literal, "Authorization" with
// "Bearer " and the stored token (a missing token stops the application), the body JSON-encoded (none
// when it is empty). The screen is kept alive until the reply, which it reads itself.
void sendDealerCommand(platform::ViewController* screen, const QString& pathLiteral, const QByteArray& method,
                       const service::Parameters& body, std::function<void(const Reply&)> handle);

// The reply read by hand, as a tree: a missing member and a member of something that is no object read
// as JSON null, whose text is "null".
bool hasNoBody(const Reply& reply);
// The body as a tree, or nothing when it is not JSON.
std::optional<Json> treeOf(const Reply& reply);
Json at(const Json& tree, std::initializer_list<QString> keys);
QString textOf(const Json& node);
// "message"/"type" is exactly the text "warning".
bool isWarning(const Json& tree);

// The loyalty screens drop the registered mark's markup outright.
QString withoutRegisteredMark(QString name);

// The window's root takes back everything presented over it, animated.
void dismissEverything();

} // namespace ekinora::sale
