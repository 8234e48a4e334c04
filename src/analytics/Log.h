#pragma once

#include <QString>

#include <functional>

namespace ekinora::analytics {

// The analytics code logs plain lines with no levels; nothing in its logic depends on them.
// A sink receives every line (tests and the command-line tool); without one they go to stderr.
using LogSink = std::function<void(const QString&)>;

void setLogSink(LogSink sink);
void log(const QString& line);

} // namespace ekinora::analytics
