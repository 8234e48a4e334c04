#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace ekinora::server {

// Seconds since the epoch. Time-limited records (SMS codes) read the time through this, so tests
// can move it forward.
using Clock = std::function<std::int64_t()>;

inline std::int64_t systemSeconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace ekinora::server
