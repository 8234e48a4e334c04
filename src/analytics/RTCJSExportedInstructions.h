#pragma once

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <mutex>

namespace ekinora::analytics {

class RTCDiglagi;
class RTCHitStore;

// What a container's script may do, and nothing more: queue a hit, encode and encrypt texts, send a
// tag through the analytics bridge, and log.
class RTCJSExportedInstructions : public QObject {
    Q_OBJECT
public:
    RTCJSExportedInstructions(const QString& containerId, RTCHitStore* hitStore, RTCDiglagi* diglagi,
                              QObject* parent = nullptr);

    void setCurrentEvent(const QString& name, const QVariantMap& parameters);
    void clearCurrentEvent();

    // Queues a hit in the tag hit store; methods "GET", "HEAD", "POST", "PUT". An empty uniqueId: none.
    Q_INVOKABLE bool queueHit(const QString& url, const QString& method, const QVariantMap& headers,
                              const QString& body, const QString& uniqueId);
    // Input formats "text", "base16", "base64", "base64url"; output the last three.
    Q_INVOKABLE QString encodeString(const QString& input, const QString& inputFormat, const QString& outputFormat,
                                     bool padding);
    // specification: algorithm "/" mode ("AES/CBC"); key and iv in base16; input read in its format,
    // the cipher text given in the output format. "" when anything is wrong.
    Q_INVOKABLE QString encryptString(const QString& specification, const QString& keyHex, const QString& ivHex,
                                      const QString& input, const QString& inputFormat, const QString& outputFormat);
    // A tag for the bridge, with the current event's parameters as its data layer.
    Q_INVOKABLE void sendDiglagiTag(const QVariantMap& tag);
    Q_INVOKABLE void logMessage(const QString& message);

    static QByteArray decode(const QString& input, const QString& format, bool* ok);
    static QString encode(const QByteArray& data, const QString& format, bool padding, bool* ok);

private:
    QString m_containerId;
    RTCHitStore* m_hitStore;
    RTCDiglagi* m_diglagi;
    std::mutex m_mutex;
    QString m_eventName;
    QVariantMap m_eventParameters;
};

} // namespace ekinora::analytics
