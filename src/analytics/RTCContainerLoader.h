#pragma once

#include "Clock.h"
#include "SerialQueue.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class QNetworkAccessManager;

namespace ekinora::analytics {

class RTCNetReachability;

// Finds a container's resource: a preview link's container, a saved download (fetched again first
// when older than 12 hours), the network when nothing is saved, and last, always, the default
// resource bundled with the library (":/container/<id>.json").
class RTCContainerLoader {
public:
    // Data, or none and an error text. Runs on the loader's queue.
    using LoadCallback = std::function<void(const QByteArray& data, const QString& error)>;

    struct Options {
        QString tagContainerBase;  // e.g. "http://127.0.0.1:8470/tags"
        QString libraryDirectory;  // the user's library directory; the saved resource lives below it
        std::shared_ptr<Clock> clock = Clock::system();
    };

    static constexpr double MaxSavedAge = 43200.0;

    // A preview link ("tagcontainer.c.<app>://preview/...?id=...&rtc_auth=...&rtc_preview=...").
    static void processURL(const QUrl& url);
    static QString previewQuery(const QString& containerId);
    static QString defaultContainerId();

    RTCContainerLoader(const QString& containerId, LoadCallback loadCallback, Options options);
    ~RTCContainerLoader();

    void start();
    QString resourceFilename() const;
    QString dataPath() const;
    // How the strategies were tried, for tests: their log names in order.
    QStringList attempted() const;

private:
    void tryNextStrategy();
    void loadDataFromFile(const QString& path);
    void loadDataFromNetwork();
    void loadDataFromNetworkWithQuery(const QString& query, bool saveDownload);
    void networkLoadHelperWithQuery(const QString& query, bool saveDownload);
    void addStrategy(const QString& name, std::function<void()> strategy);

    QString m_containerId;
    LoadCallback m_loadCallback;
    Options m_options;
    std::unique_ptr<SerialQueue> m_queue;
    QList<std::pair<QString, std::function<void()>>> m_strategies;
    QStringList m_attempted;
    std::unique_ptr<RTCNetReachability> m_reachability;
};

} // namespace ekinora::analytics
