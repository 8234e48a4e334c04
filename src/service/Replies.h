#pragma once

#include "platform/Foundation.h"

#include <QJsonArray>

namespace ekinora::service {

// Readings of the service's envelope that several screens share.

// "status" as an integer.
int statusOf(const platform::Json& response);

// The first value of the reply's "errors" dictionary, as an alert shows it; "(null)" when there is
// none. "errors" that is not a dictionary stops the application, as asking it for its values did.
QString firstError(const platform::Json& response);

// addObjectsFromArray: every element of a list, nothing for nil.
QJsonArray listOf(const platform::Json& values);

// Product records with their names made plain ("<sup>&reg;</sup>" to "®", other tags gone).
QJsonArray plainProducts(const platform::Json& aps);

} // namespace ekinora::service
