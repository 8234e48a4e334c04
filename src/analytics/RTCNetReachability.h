#pragma once

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

namespace ekinora::analytics {

// Whether the network can be reached, told once, asynchronously, on the queue that asked.
// 1: not reachable, 2: only the local network, 3: reachable, 4: reachable over a cellular network.
class RTCNetReachability {
public:
    enum Status { NotReachable = 1, LocalOnly = 2, ReachableViaWiFi = 3, ReachableViaWWAN = 4 };

    static bool isReachable(int status) { return status == ReachableViaWiFi || status == ReachableViaWWAN; }

    // Where the status comes from. By default the platform's network information (QNetworkInformation);
    // where it has no backend, or cannot tell, the network counts as reachable and a request decides.
    using Source = std::function<int()>;
    static void setSource(Source source); // empty: back to the default
    static int currentStatus();

    explicit RTCNetReachability(QObject* context);
    ~RTCNetReachability();

    // The callback runs on the context's thread, at most once, unless stopped before.
    void start(std::function<void(int)> callback);
    void stop();

private:
    QObject* m_context;
    std::shared_ptr<std::atomic<bool>> m_live;
};

} // namespace ekinora::analytics
