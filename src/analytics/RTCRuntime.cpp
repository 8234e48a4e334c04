#include "RTCRuntime.h"

#include "Log.h"
#include "RTCDispatchScheduler.h"
#include "RTCJSExportedInstructions.h"

#include <QFile>
#include <QJSEngine>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace ekinora::analytics {

RTCRuntime::RTCRuntime(const QString& containerId, const QByteArray& resource, RTCHitStore* hitStore,
                       RTCDispatchScheduler* dispatchScheduler, RTCDiglagi* diglagi, std::shared_ptr<Clock> clock)
    : m_containerId(containerId), m_clock(std::move(clock)),
      m_instructions(std::make_unique<RTCJSExportedInstructions>(containerId, hitStore, diglagi)) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(resource, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        log(QStringLiteral("Expected resource to be a JSON dictionary. Check the format of the default container. "
                           "Container ignored."));
        return;
    }
    m_scheduler = dispatchScheduler;
    m_engine = std::make_unique<QJSEngine>();
    QFile script(QStringLiteral(":/analytics/RTCRuntime.js"));
    if (!script.open(QIODevice::ReadOnly)) {
        log(QStringLiteral("RTCRuntime.js cannot be read"));
        return;
    }
    m_jsRuntime = m_engine->evaluate(QString::fromUtf8(script.readAll()), QStringLiteral("RTCRuntime.js"));
    if (!check(m_jsRuntime)) return;
    QJSEngine::setObjectOwnership(m_instructions.get(), QJSEngine::CppOwnership);
    const QJSValue initialized = m_jsRuntime.property(QStringLiteral("initializeRuntime"))
                                     .callWithInstance(m_jsRuntime, {m_engine->newQObject(m_instructions.get()),
                                                                     m_engine->toScriptValue(document.object().toVariantMap())});
    m_ready = check(initialized);
}

RTCRuntime::~RTCRuntime() = default;

bool RTCRuntime::check(const QJSValue& value) {
    // The engine's exception handler: a script error is logged and the call counts as failed.
    if (!value.isError() && !m_engine->hasError()) return true;
    const QJSValue error = value.isError() ? value : m_engine->catchError();
    log(QStringLiteral("JavaScript exception in container %1: %2 (line %3)")
            .arg(m_containerId, error.toString(), error.property(QStringLiteral("lineNumber")).toString()));
    return false;
}

bool RTCRuntime::evaluateEvent(const QString& name, const QVariantMap& parameters) {
    m_instructions->setCurrentEvent(name, parameters);
    bool prevented = false;
    if (m_ready) {
        QStringList shown;
        for (auto it = parameters.begin(); it != parameters.end(); ++it)
            shown << it.key() + QStringLiteral(" = ") + it.value().toString();
        log(QStringLiteral("Processing logged event: %1 with parameters: {%2}").arg(name, shown.join(QStringLiteral("; "))));
        const double timestamp = std::floor(m_clock->now() * 1000.0);
        const QJSValue result = m_jsRuntime.property(QStringLiteral("emitEvent"))
                                    .callWithInstance(m_jsRuntime, {QJSValue(name),
                                                                    parameters.isEmpty() ? QJSValue(QJSValue::NullValue)
                                                                                         : m_engine->toScriptValue(parameters),
                                                                    QJSValue(timestamp)});
        if (!check(result) || !result.hasProperty(QStringLiteral("dispatch")) ||
            !result.hasProperty(QStringLiteral("preventDefault"))) {
            log(QStringLiteral("Expected emitEvent to return an event result."));
        } else {
            const QJSValue dispatch = result.property(QStringLiteral("dispatch"));
            const QJSValue prevent = result.property(QStringLiteral("preventDefault"));
            if (dispatch.isBool() && prevent.isBool()) {
                prevented = prevent.toBool();
                if (dispatch.toBool() && m_scheduler) m_scheduler->start();
            }
        }
    }
    if (!prevented && allowPassthrough && sendMeasurementWithEventName) sendMeasurementWithEventName(name, parameters);
    m_instructions->clearCurrentEvent();
    return prevented;
}

} // namespace ekinora::analytics
