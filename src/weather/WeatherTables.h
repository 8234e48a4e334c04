#pragma once

#include "platform/Foundation.h"

#include <QStringList>

namespace ekinora::weather {

// The condition text of each pictogram code, at position code - 1: 35 texts, repeats and all.
const QStringList& arrayWeatherTypes();

// The condition text of a code: nothing below 1; a code past the table is a fault of the caller and
// stops the application, as reading past a list does.
QString weatherTypeText(int code);

// The picture of a code on the service, with the code as it arrived in the record. There is only a
// day picture: night hours get it too.
QString weatherIconUrl(const platform::Json& pictocode);

// The compass text of a wind angle in degrees, tested as a 32-bit float: "Kuzey" from 337.5 round to
// below 22.5 (so a negative angle and one of 360 or more read "Kuzey"), "" for an angle that is not a
// number.
QString getDirectionForAngle(float angle);

// The second wind table, by code ("N", "NE", ...), with its own spellings. A code outside the list is a
// fault of the caller and stops the application.
QString localizeWindType(const QString& code);

} // namespace ekinora::weather
