#pragma once

#include "Clock.h"
#include "RAIHit.h"

#include <memory>
#include <mutex>

namespace ekinora::analytics {

class RAIBatchingDispatcher;

// A tracker's standing parameters. Values set once go with the next hit only.
class RAIModel {
public:
    void set(const QString& key, const QString& value);
    void setOnce(const QString& key, const QString& value);
    QString get(const QString& key) const;
    void remove(const QString& key);
    // The standing and the one-time values, merged with the call's own; the one-time values are spent.
    Parameters takeParametersMergedWith(const Parameters& parameters);
    // A screen view makes its screen name ("&cd") the screen of the hits that follow.
    void willSendScreenView(const Parameters& parameters);

private:
    Parameters m_standing;
    Parameters m_once;
};

// The tracker: rate limit, then over to the dispatcher.
class RAITrackerImpl {
public:
    RAITrackerImpl(const QString& trackingId, const QString& clientId, RAIBatchingDispatcher* dispatcher,
                   std::shared_ptr<Clock> clock = Clock::system());

    void set(const QString& key, const QString& value);
    QString get(const QString& key);
    // Queues one hit; "&t" names its type. Answers whether it was handed over.
    bool send(const Parameters& parameters);
    void setAllowIDFACollection(bool allow);
    bool allowIDFACollection() const;
    // The platform's advertising identifier; none on the desktop.
    void setAdvertisingIdentifier(const QString& identifier);

    // A burst of 60 hits, then one every 2 seconds. True: drop this hit.
    bool shouldRateLimit();

    double trackingCredits() const { return trackingCredits_; }

private:
    enum Usage : unsigned { UsageSet = 0, UsageGet = 1, UsageSend = 2, UsageSetIdfa = 3 };
    void queueModel(const Parameters& parameters);
    void noteUsage(Usage usage) { m_usage |= 1u << usage; }
    QString usageSequence() const;

    mutable std::mutex m_mutex;
    double trackingCredits_ = 60.0;
    double lastTrackTime_ = 0.0;
    RAIModel m_model;
    RAIBatchingDispatcher* m_dispatcher;
    std::shared_ptr<Clock> m_clock;
    bool m_allowIdfa = false;
    QString m_advertisingId;
    unsigned m_usage = 0;
};

} // namespace ekinora::analytics
