#pragma once

#include "RAIHit.h"

#include <QSet>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace ekinora::analytics {

class RAITrackerImpl;

// The bridge from a container's rules to the tracker: a tag is a dictionary
//   {"type": "event" | "view" | "transaction" | "ecommerce",
//    "trackingId": "...", "fields": {"&ec": "...", ...}, "allowIdfaCollection": bool,
//    "useEcommerceDataLayer": bool, "ecommerce": {...},
//    "transactionMap": {...}, "transactionItemMap": {...}}
// and the event's data is the data layer of the event being evaluated.
class RTCDiglagi {
public:
    using TrackerFactory = std::function<std::shared_ptr<RAITrackerImpl>(const QString& trackingId)>;

    explicit RTCDiglagi(TrackerFactory openTracker);

    void sendTag(const QVariantMap& tag, const QVariantMap& eventData);

    // Values of the anonymising field ("&aip") that turn it off: the field is then left out.
    static const QSet<QString>& turnOffAnonymizeIpValues();
    static Parameters raFieldsWithAnalyticsFields(const QVariantMap& fields);
    static QVariantList getArrayOfDictionariesFromObject(const QVariant& object, QString* error);

    void sendTransactionHitToTracker(RAITrackerImpl& tracker, const Parameters& fields, const QVariantMap& eventData,
                                     const QVariantMap& transactionMap, const QVariantMap& transactionItemMap);
    void sendDetailedCommerceHitToTracker(RAITrackerImpl& tracker, const Parameters& fields,
                                          const QVariantMap& ecommerceData);

private:
    TrackerFactory m_openTracker;
};

} // namespace ekinora::analytics
