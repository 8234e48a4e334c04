#include "RTCContainerLoader.h"

#include "Log.h"
#include "RTCNetReachability.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QUrlQuery>

#include <map>
#include <mutex>

namespace ekinora::analytics {

namespace {

std::mutex g_previewMutex;
std::map<QString, QString>& previewQueries() {
    static std::map<QString, QString> queries;
    return queries;
}

} // namespace

void RTCContainerLoader::processURL(const QUrl& url) {
    log(QStringLiteral("processing URL: %1").arg(url.toString()));
    if (!url.scheme().startsWith(QLatin1String("tagcontainer.c.")) || !url.host().startsWith(QLatin1String("preview")))
        return;
    const QUrlQuery query(url);
    const QString id = query.queryItemValue(QStringLiteral("id"), QUrl::FullyDecoded);
    if (id.isEmpty()) return;
    const QString auth = query.queryItemValue(QStringLiteral("rtc_auth"), QUrl::FullyDecoded);
    const QString preview = query.queryItemValue(QStringLiteral("rtc_preview"), QUrl::FullyDecoded);
    std::lock_guard guard(g_previewMutex);
    if (!auth.isEmpty() && !preview.isEmpty())
        previewQueries()[id] = url.query(QUrl::FullyEncoded);
    else if (query.hasQueryItem(QStringLiteral("rtc_preview")) && preview.isEmpty())
        previewQueries().erase(id);
}

QString RTCContainerLoader::previewQuery(const QString& containerId) {
    std::lock_guard guard(g_previewMutex);
    auto it = previewQueries().find(containerId);
    return it == previewQueries().end() ? QString() : it->second;
}

QString RTCContainerLoader::defaultContainerId() {
    const QStringList files = QDir(QStringLiteral(":/container")).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    return files.isEmpty() ? QString() : QFileInfo(files.first()).completeBaseName();
}

RTCContainerLoader::RTCContainerLoader(const QString& containerId, LoadCallback loadCallback, Options options)
    : m_containerId(containerId), m_loadCallback(std::move(loadCallback)), m_options(std::move(options)),
      m_queue(std::make_unique<SerialQueue>(QStringLiteral("TagContainerLoadQueue"))) {}

RTCContainerLoader::~RTCContainerLoader() {
    m_queue->sync([this] {
        m_strategies.clear();
        m_reachability.reset();
    });
}

QString RTCContainerLoader::dataPath() const {
    return QDir(m_options.libraryDirectory).filePath(QStringLiteral("Application Support/Reipri/TagContainer"));
}

QString RTCContainerLoader::resourceFilename() const {
    return QDir(dataPath()).filePath(QStringLiteral("v5resource") + m_containerId);
}

QStringList RTCContainerLoader::attempted() const {
    QStringList copy;
    m_queue->sync([&] { copy = m_attempted; });
    return copy;
}

void RTCContainerLoader::addStrategy(const QString& name, std::function<void()> strategy) {
    m_strategies.append({name, [this, name, strategy = std::move(strategy)] {
                             if (!name.isEmpty()) log(name);
                             m_attempted << (name.isEmpty() ? QStringLiteral("network") : name);
                             strategy();
                         }});
}

void RTCContainerLoader::start() {
    m_queue->async([this] {
        m_strategies.clear();
        const QString preview = previewQuery(m_containerId);
        if (!preview.isEmpty()) {
            addStrategy(QStringLiteral("Attempting to load preview container for %1").arg(m_containerId),
                        [this, preview] { loadDataFromNetworkWithQuery(preview, false); });
        } else if (QFileInfo::exists(resourceFilename())) {
            const QString file = resourceFilename();
            QFileInfo info(file);
            info.setCaching(false);
            if (!info.isReadable()) {
                log(QStringLiteral("Retrieving container file attributes failed: %1").arg(file));
            } else {
                const QDateTime modified = info.lastModified();
                const double age = modified.isValid() ? m_options.clock->now() - modified.toMSecsSinceEpoch() / 1000.0 : -1;
                if (!modified.isValid() || age > MaxSavedAge)
                    addStrategy(QStringLiteral("Attempting to load container %1 from network").arg(m_containerId),
                                [this] { loadDataFromNetwork(); });
            }
            addStrategy(QStringLiteral("Attempting to load saved version of container %1").arg(m_containerId),
                        [this, file] { loadDataFromFile(file); });
        } else {
            addStrategy(QString(), [this] { loadDataFromNetwork(); });
        }
        addStrategy(QStringLiteral("Attempting to load default version of container %1").arg(m_containerId), [this] {
            loadDataFromFile(QStringLiteral(":/container/%1.json").arg(m_containerId));
        });
        tryNextStrategy();
    });
}

void RTCContainerLoader::tryNextStrategy() {
    if (m_strategies.isEmpty()) {
        m_loadCallback({}, QStringLiteral("No container resources found"));
        return;
    }
    auto strategy = m_strategies.takeFirst().second;
    m_queue->async(std::move(strategy));
}

void RTCContainerLoader::loadDataFromFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        log(QStringLiteral("Loading container resource failed: %1").arg(file.errorString()));
        return tryNextStrategy();
    }
    m_loadCallback(file.readAll(), QString());
}

void RTCContainerLoader::loadDataFromNetwork() {
    loadDataFromNetworkWithQuery(QString(), true);
}

void RTCContainerLoader::loadDataFromNetworkWithQuery(const QString& query, bool saveDownload) {
    m_reachability = std::make_unique<RTCNetReachability>(m_queue->context());
    m_reachability->start([this, query, saveDownload](int status) {
        m_reachability.reset();
        if (!RTCNetReachability::isReachable(status)) {
            log(QStringLiteral("Network not reachable while loading container %1").arg(m_containerId));
            return tryNextStrategy();
        }
        networkLoadHelperWithQuery(query, saveDownload);
    });
}

void RTCContainerLoader::networkLoadHelperWithQuery(const QString& query, bool saveDownload) {
    QString address = m_options.tagContainerBase + QStringLiteral("/rtc/ios?");
    address += query.isEmpty()
                   ? QStringLiteral("id=%1").arg(QString::fromUtf8(QUrl::toPercentEncoding(m_containerId)))
                   : query;
    QNetworkRequest request{QUrl(address)};
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(30000);
    // An ephemeral session: no cache, no cookies, gone after this task.
    auto* session = new QNetworkAccessManager;
    session->moveToThread(m_queue->thread());
    session->setCookieJar(nullptr);
    QNetworkReply* reply = session->get(request);
    QObject::connect(reply, &QNetworkReply::finished, m_queue->context(), [this, reply, session, saveDownload] {
        reply->deleteLater();
        session->deleteLater();
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (!status.isValid()) {
            log(QStringLiteral("Fetching container from network failed: %1").arg(reply->errorString()));
            return tryNextStrategy();
        }
        const QByteArray body = reply->readAll();
        const int code = status.toInt();
        if (code < 200 || code > 299 || body.isEmpty()) {
            log(QStringLiteral("Can not retrieve container from network. Response: %1").arg(code));
            return tryNextStrategy();
        }
        if (saveDownload) {
            bool saved = QDir().mkpath(dataPath());
            if (!saved) log(QStringLiteral("Creating container data directory failed: %1").arg(dataPath()));
            QSaveFile file(resourceFilename());
            saved = saved && file.open(QIODevice::WriteOnly) && file.write(body) == body.size() && file.commit();
            if (!saved)
                log(QStringLiteral(
                    "Saving downloaded container to file system failed.Downloaded container will still be used"));
        }
        m_loadCallback(body, QString());
    });
}

} // namespace ekinora::analytics
