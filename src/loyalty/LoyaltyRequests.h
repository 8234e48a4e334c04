#pragma once

#include "platform/Foundation.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace ekinora::loyalty {

// What the loyalty screens get back: the bytes of the reply, or nothing when no reply came.
struct Reply {
    bool hasBody = false; // false: no reply (transport failure) or a reply without bytes
    QByteArray body;
};
using ReplyHandler = std::function<void(const Reply&)>;

// Percent-encoding with the set allowed in a URL's query: letters, digits and "-._~!$&'()*+,;=:@/?"
// stay, everything else (the "%" too) is encoded as UTF-8 bytes. Nothing for a text that is not valid
// Unicode.
std::optional<QString> percentEncodedForQuery(const QString& text);

// The scan's address: the whole text assembled first, then encoded, so the "%" of "Bearer%20" is
// itself encoded again ("Bearer%2520"). A text that cannot be encoded stops the application.
QString scanAddress(const QString& token, const QString& code);

// GET of the scan: the token in the address and, with "Bearer ", in "Authorization".
void sendScan(const QString& token, const QString& code, ReplyHandler done);
// A hand-built GET: full address, 60 seconds, "Authorization" with the token as it is, no "Bearer ".
void sendWithBareToken(const QString& url, const QString& token, ReplyHandler done);

// Reading a reply as a tree. A member of anything but an object, or a missing one, is nil.
platform::Json sub(const platform::Json& value, const QString& key);
platform::Json sub(const platform::Json& value, std::initializer_list<QString> keys);
// The text form of a node: a string as it is, null or missing as "null", numbers and booleans as
// written, objects and arrays as indented JSON.
QString textOf(const platform::Json& value);
// The body as JSON; with fragments a bare string or number is accepted too. Nothing when it is not.
std::optional<platform::Json> parseBody(const QByteArray& body, bool fragmentsAllowed);

// A product name as the loyalty screens show it: every "<sup>&reg;</sup>" deleted outright.
QString loyaltyProductName(const QString& name);

} // namespace ekinora::loyalty
