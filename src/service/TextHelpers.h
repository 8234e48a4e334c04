#pragma once

#include <QString>

namespace ekinora::service {

// A registered product name as the service writes it, made fit for a plain label: the registered mark
// becomes "®" and the other superscript tags go.
QString plainProductName(const QString& name);


} // namespace ekinora::service
