#include "FakePlatform.h"

#include "platform/AlertController.h"

#include <QJsonObject>
#include <QUrl>
#include <QUrlQuery>

namespace ekinora::testing {

using namespace platform;

HttpResponse jsonReply(const QJsonValue& body, int statusCode, const QByteArray& contentType) {
    return rawReply(encodeJson(body), statusCode, contentType);
}

HttpResponse rawReply(const QByteArray& body, int statusCode, const QByteArray& contentType) {
    HttpResponse r;
    r.transportOk = true;
    r.statusCode = statusCode;
    r.headers = {{"Content-Type", contentType}};
    r.body = body;
    return r;
}

HttpResponse redirectReply(const QByteArray& location, int statusCode) {
    HttpResponse r;
    r.transportOk = true;
    r.statusCode = statusCode;
    r.headers = {{"Location", location}};
    return r;
}

HttpResponse transportFailure() {
    HttpResponse r;
    r.errorText = QStringLiteral("Connection refused");
    return r;
}

QStringList queryValues(const HttpRequest& request, const QString& key) {
    const QUrl url = QUrl::fromEncoded(request.url);
    return QUrlQuery(url).allQueryItemValues(key, QUrl::FullyDecoded);
}

QString commandOf(const HttpRequest& request) {
    const QStringList values = queryValues(request, QStringLiteral("do"));
    if (!values.isEmpty()) return values.first();
    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    return body.value(QStringLiteral("do")).toString();
}

void ScriptedHttpClient::send(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done) {
    requests.append(request);
    m_pending.append(Pending{request, std::move(redirect), std::move(done), 0});
}

HttpResponse ScriptedHttpClient::answer(const HttpRequest& request) const {
    const QString command = commandOf(request);
    if (!command.isEmpty() && m_scripts.contains(command)) return m_scripts.value(command)(request);
    const QString path = QUrl::fromEncoded(request.url).path();
    if (m_scripts.contains(path)) return m_scripts.value(path)(request);
    return m_fallback ? m_fallback(request) : transportFailure();
}

int ScriptedHttpClient::flush() {
    int delivered = 0;
    while (!m_pending.isEmpty()) {
        Pending p = m_pending.takeFirst();
        const HttpResponse response = answer(p.request);
        if (response.isRedirect() && p.hops < MaxRedirects) {
            HttpRequest next = proposedRedirect(p.request, response);
            if (p.redirect) next = p.redirect(next, response);
            requests.append(next);
            m_pending.prepend(Pending{next, std::move(p.redirect), std::move(p.done), p.hops + 1});
            continue;
        }
        p.done(response);
        ++delivered;
    }
    return delivered;
}

QList<HttpRequest> ScriptedHttpClient::requestsFor(const QString& command) const {
    QList<HttpRequest> list;
    for (const auto& r : requests)
        if (commandOf(r) == command || QUrl::fromEncoded(r.url).path() == command) list << r;
    return list;
}

FakePlatform::FakePlatform()
    : clock(new ManualScheduler), store(new UserDefaults), http(new ScriptedHttpClient), push(new ScriptedPush) {
    platform = new Platform(clock, store, http, push, nullptr);
    Application& app = platform->application();
    app.setEchoLog(false);
    app.setBundleShortVersion(QStringLiteral("1.4.0"));
    app.setEnding([this](int code) { endings.append(code); });
    app.setUrlOpener([](const QUrl&) { return true; });
    QObject::connect(&app, &Application::logged, [this](const QString& line) { logs.append(line); });
    QObject::connect(&platform->notificationCenter(), &NotificationCenter::posted,
                     [this](const QString& name) { posts.append(name); });
}

FakePlatform::~FakePlatform() { delete platform; }

void FakePlatform::run(int ms) {
    http->flush();
    clock->advance(ms);
    while (http->flush() > 0) {
    }
}

bool FakePlatform::logged(const QString& fragment) const {
    for (const auto& line : logs)
        if (line.contains(fragment)) return true;
    return false;
}

AlertController* FakePlatform::alert() const { return platform->window().visibleAlert(); }

} // namespace ekinora::testing
