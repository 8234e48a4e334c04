#pragma once

#include "Clock.h"

#include <QByteArray>
#include <QJSValue>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

class QJSEngine;

namespace ekinora::analytics {

class RTCDiglagi;
class RTCDispatchScheduler;
class RTCHitStore;
class RTCJSExportedInstructions;

// Evaluates events by the container's rules on a script engine. Lives on the thread that made it.
class RTCRuntime {
public:
    RTCRuntime(const QString& containerId, const QByteArray& resource, RTCHitStore* hitStore,
               RTCDispatchScheduler* dispatchScheduler, RTCDiglagi* diglagi = nullptr,
               std::shared_ptr<Clock> clock = Clock::system());
    ~RTCRuntime();

    // Whether the resource was a container and the script stands.
    bool isReady() const { return m_ready; }

    // Answers whether the rules prevented the event.
    bool evaluateEvent(const QString& name, const QVariantMap& parameters);

    // An event that no rule prevents goes on to event measurement when passthrough is allowed.
    bool allowPassthrough = false;
    std::function<void(const QString& name, const QVariantMap& parameters)> sendMeasurementWithEventName;

private:
    bool check(const QJSValue& value);

    QString m_containerId;
    RTCDispatchScheduler* m_scheduler = nullptr;
    std::shared_ptr<Clock> m_clock;
    std::unique_ptr<QJSEngine> m_engine;
    std::unique_ptr<RTCJSExportedInstructions> m_instructions;
    QJSValue m_jsRuntime;
    bool m_ready = false;
};

} // namespace ekinora::analytics
