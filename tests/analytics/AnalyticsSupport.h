#pragma once

// The reference service in-process, and what its collector received.

#include "Log.h"
#include "core/Server.h"

#include <QMutex>
#include <QStringList>
#include <QTest>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <vector>

namespace analyticstest {

using Json = nlohmann::ordered_json;

class Service {
public:
    Service() : m_server(std::make_unique<ekinora::server::Server>(ekinora::server::ServerOptions{})) {
        m_server->start();
    }
    std::string base() const { return m_server->baseUrl(); }
    QString root() const { return QString::fromStdString(base()); }

    // The hits received after the given collector id, oldest first.
    std::vector<Json> hits(std::int64_t since = 0) const {
        httplib::Client client(base());
        auto reply = client.Get(("/_demo/hits?since=" + std::to_string(since)).c_str());
        if (!reply || reply->status != 200) return {};
        const Json body = Json::parse(reply->body);
        return body["data"]["hits"].get<std::vector<Json>>();
    }
    void refuseBatches(int status) const {
        httplib::Client client(base());
        auto reply = client.Post("/_demo/collector", Json{{"refuseBatches", status}}.dump(), "application/json");
        QVERIFY(reply && reply->status == 200);
    }

private:
    std::unique_ptr<ekinora::server::Server> m_server;
};

// Collects the analytics log lines for the length of a test.
class LogRecorder {
public:
    LogRecorder() {
        ekinora::analytics::setLogSink([this](const QString& line) {
            QMutexLocker guard(&m_mutex);
            m_lines << line;
        });
    }
    ~LogRecorder() { ekinora::analytics::setLogSink({}); }
    QStringList lines() const {
        QMutexLocker guard(&m_mutex);
        return m_lines;
    }
    bool has(const QString& line) const { return lines().contains(line); }
    int count(const QString& line) const { return int(lines().count(line)); }
    void clear() {
        QMutexLocker guard(&m_mutex);
        m_lines.clear();
    }

private:
    mutable QMutex m_mutex;
    QStringList m_lines;
};

} // namespace analyticstest
