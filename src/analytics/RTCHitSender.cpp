#include "RTCHitSender.h"

#include "Log.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace ekinora::analytics {

RTCHitSender::RTCHitSender(const QList<RTCHit>& hits, Callback callback)
    : m_hits(hits), m_callback(std::move(callback)) {}

RTCHitSender::~RTCHitSender() {
    if (m_urlSession) m_urlSession->deleteLater();
}

int RTCHitSender::state() const {
    std::lock_guard guard(m_lock);
    return m_state;
}

QNetworkRequest RTCHitSender::requestFromHit(const RTCHit& hit) {
    QNetworkRequest request{QUrl(hit.URL)};
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(30000);
    for (auto it = hit.headers.begin(); it != hit.headers.end(); ++it)
        request.setRawHeader(it.key().toUtf8(), it.value().toString().toUtf8());
    return request;
}

void RTCHitSender::send() {
    Callback callNow;
    {
        std::lock_guard guard(m_lock);
        if (m_state != New) {
            log(QStringLiteral("Tag sender was started multiple times."));
            return;
        }
        if (m_hits.isEmpty()) {
            log(QStringLiteral("Tag sender found no hits to send."));
            m_state = Finished;
            callNow = m_callback;
        } else {
            m_state = Sending;
            m_pendingHitCount = int(m_hits.size());
            // One session for this send; it goes away with the sender.
            m_urlSession = new QNetworkAccessManager;
            m_urlSession->setCookieJar(nullptr);
            for (const RTCHit& hit : m_hits) {
                const QByteArray body = hit.body.toUtf8();
                QNetworkReply* reply =
                    m_urlSession->sendCustomRequest(requestFromHit(hit), hit.method.toUtf8(), body);
                QObject::connect(reply, &QNetworkReply::finished, m_urlSession, [this, reply, hit] {
                    reply->deleteLater();
                    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
                    // A transport error has no status and fails the hit like any status outside 2xx.
                    finishHit(hit, status >= 200 && status <= 299);
                });
            }
        }
    }
    if (callNow) callNow({}, {});
}

void RTCHitSender::finishHit(const RTCHit& hit, bool ok) {
    Callback callback;
    QList<RTCHit> successful, failed;
    {
        std::lock_guard guard(m_lock);
        (ok ? m_successfulHits : m_failedHits) << hit;
        if (--m_pendingHitCount <= 0 && m_state == Sending) {
            m_state = Finished;
            callback = m_callback;
            successful = m_successfulHits;
            failed = m_failedHits;
        }
    }
    if (callback) callback(successful, failed);
}

} // namespace ekinora::analytics
