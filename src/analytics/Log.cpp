#include "Log.h"

#include <cstdio>
#include <mutex>

namespace ekinora::analytics {

namespace {
std::mutex g_mutex;
LogSink g_sink;
} // namespace

void setLogSink(LogSink sink) {
    std::lock_guard guard(g_mutex);
    g_sink = std::move(sink);
}

void log(const QString& line) {
    std::lock_guard guard(g_mutex);
    if (g_sink) return g_sink(line);
    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
}

} // namespace ekinora::analytics
