#pragma once

#include "RTCHit.h"

#include <QNetworkRequest>

#include <functional>
#include <mutex>

class QNetworkAccessManager;

namespace ekinora::analytics {

// Sends a list of tag hits at once and reports which went through. Made and started on a thread
// with an event loop (the scheduler's queue); the replies arrive there.
class RTCHitSender {
public:
    enum State { New = 1, Sending = 2, Finished = 3 };
    using Callback = std::function<void(const QList<RTCHit>& successful, const QList<RTCHit>& failed)>;

    RTCHitSender(const QList<RTCHit>& hits, Callback callback);
    ~RTCHitSender();

    void send();
    int state() const;
    static QNetworkRequest requestFromHit(const RTCHit& hit);

private:
    void finishHit(const RTCHit& hit, bool ok);

    mutable std::mutex m_lock;
    int m_state = New;
    QList<RTCHit> m_hits;
    Callback m_callback;
    QList<RTCHit> m_successfulHits;
    QList<RTCHit> m_failedHits;
    int m_pendingHitCount = 0;
    QNetworkAccessManager* m_urlSession = nullptr;
};

} // namespace ekinora::analytics
