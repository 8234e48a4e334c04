#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ekinora::server {

// A request as it arrived, for tests that check what the app sent.
struct RecordedRequest {
    std::string method; // as sent, also "GET" for a GET that carried a body
    std::string path;   // decoded path
    std::string target; // path + "?" + raw query, exactly as received
    std::vector<std::pair<std::string, std::string>> headers; // names and values as received
    std::string body;
};

// The most recent requests: a service under load would otherwise grow by every request it serves.
class RequestLog {
public:
    static constexpr size_t Capacity = 10000;

    void add(RecordedRequest request) {
        std::lock_guard guard(m_mutex);
        if (m_requests.size() == Capacity) m_requests.pop_front();
        m_requests.push_back(std::move(request));
    }
    std::vector<RecordedRequest> all() const {
        std::lock_guard guard(m_mutex);
        return {m_requests.begin(), m_requests.end()};
    }
    void clear() {
        std::lock_guard guard(m_mutex);
        m_requests.clear();
    }

private:
    mutable std::mutex m_mutex;
    std::deque<RecordedRequest> m_requests;
};

} // namespace ekinora::server
