#pragma once

// A platform for controller and frame tests: a manual clock, a memory store, a transport that records
// every request and answers from a script, a push seam the test drives, and an application whose ending
// is recorded instead of ending the process.

#include "platform/Platform.h"

#include <QJsonDocument>
#include <QStringList>
#include <functional>

namespace ekinora::testing {

using platform::HttpRequest;
using platform::HttpResponse;

// A JSON reply with HTTP 200 (or the given code) and "application/json".
HttpResponse jsonReply(const QJsonValue& body, int statusCode = 200, const QByteArray& contentType = "application/json");
HttpResponse rawReply(const QByteArray& body, int statusCode = 200, const QByteArray& contentType = "text/html");
HttpResponse redirectReply(const QByteArray& location, int statusCode = 302);
HttpResponse transportFailure();

// The first value of "do" in a request's query, else in its JSON body.
QString commandOf(const HttpRequest& request);
// All values of a query key, in order.
QStringList queryValues(const HttpRequest& request, const QString& key);

class ScriptedHttpClient : public platform::HttpClient {
    Q_OBJECT
public:
    using Script = std::function<HttpResponse(const HttpRequest&)>;
    using HttpClient::HttpClient;

    void send(const HttpRequest& request, platform::RedirectBlock redirect, platform::ResponseHandler done) override;

    // Answers for a command ("do"), or for a path ("/check"); the fallback answers everything else
    // (default: a transport failure).
    void on(const QString& commandOrPath, Script script) { m_scripts.insert(commandOrPath, std::move(script)); }
    void on(const QString& commandOrPath, const HttpResponse& reply) {
        on(commandOrPath, [reply](const HttpRequest&) { return reply; });
    }
    void fallback(Script script) { m_fallback = std::move(script); }

    // Delivers the replies of every request sent so far (and of those their callbacks send).
    int flush();
    int pendingCount() const { return int(m_pending.size()); }

    QList<HttpRequest> requests;
    QList<HttpRequest> requestsFor(const QString& command) const;

private:
    struct Pending {
        HttpRequest request;
        platform::RedirectBlock redirect;
        platform::ResponseHandler done;
        int hops = 0;
    };
    HttpResponse answer(const HttpRequest& request) const;
    QHash<QString, Script> m_scripts;
    Script m_fallback;
    QList<Pending> m_pending;
};

class ScriptedPush : public platform::PushService {
    Q_OBJECT
public:
    using PushService::PushService;
    void registerUserNotificationSettings(int types) override {
        settingsTypes = types;
        emit didRegisterUserNotificationSettings(types);
    }
    void registerForRemoteNotifications() override { ++remoteRegistrations; }
    int settingsTypes = -1;
    int remoteRegistrations = 0;
};

class FakePlatform {
public:
    FakePlatform();
    ~FakePlatform();

    platform::Platform* platform;
    platform::ManualScheduler* clock;
    platform::UserDefaults* store;
    ScriptedHttpClient* http;
    ScriptedPush* push;

    QStringList logs;
    QList<int> endings; // codes passed to the ending, in order
    QStringList posts;  // names posted on the notification centre

    // Advances the clock and delivers replies until nothing more is due.
    void run(int ms);
    bool logged(const QString& fragment) const;
    // The alert on top of the presented controllers, or null.
    platform::AlertController* alert() const;
};

} // namespace ekinora::testing
