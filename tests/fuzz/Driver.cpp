// The child's side: a batch of runs on one screen. Each run builds a fresh platform (manual clock,
// memory store), shows the screen in a side menu's navigation stack, lets the popup poll ask once, then
// taps what the screen offers, chosen by the seed, while the reference service's replies reach it
// mutated. Every step is announced on standard output before it runs, so that the parent can say where
// a crash happened.

#include "Driver.h"

#include "Ekinora.h"
#include "FakePlatform.h"
#include "Mutator.h"
#include "ReplyFuzz.h"
#include "core/Server.h"
#include "platform/AlertController.h"
#include "platform/CollectionView.h"
#include "platform/NavigationController.h"
#include "platform/Platform.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"
#include "platform/WebView.h"
#include "platform/Window.h"
#include "service/AppDelegate.h"
#include "service/LocalStore.h"
#include "service/ServiceRoots.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaMethod>
#include <QMap>
#include <QSet>
#include <QTimeZone>
#include <QUrl>
#include <cstdio>
#include <httplib.h>
#include <memory>

namespace ekinora::fuzz {

using namespace platform;

quint64 mixSeed(quint64 a, quint64 b) {
    quint64 z = a + 0x9E3779B97F4A7C15ull * (b + 1);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

quint64 textSeed(const QString& text) {
    quint64 h = 1469598103934665603ull;
    for (char c : text.toUtf8()) h = (h ^ quint8(c)) * 1099511628211ull;
    return h;
}

namespace {

void say(const QString& line) {
    const QByteArray bytes = line.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// One line per report: texts keep no tabs or line breaks.
QString flat(QString text) {
    text.replace(u'\n', u' ').replace(u'\t', u' ');
    return text.left(300);
}

// The reference service in this process, with a fixed clock so that its replies repeat.
class Service {
public:
    Service() {
        server::ServerOptions options;
        options.clock = [] { return std::int64_t(1795424400); }; // 2026-11-23 09:00 in Türkiye
        m_server = std::make_unique<server::Server>(options);
        m_server->start();
        m_server->setPopupActive(true);
        m_base = QString::fromStdString(m_server->baseUrl());
        m_client = std::make_unique<httplib::Client>("127.0.0.1", m_server->port());
        m_client->set_read_timeout(10, 0);
    }
    QString base() const { return m_base; }

    // The service's answer; addresses elsewhere (pictures on other hosts, videos) find no network.
    HttpResponse forward(const HttpRequest& request) {
        const QUrl url = QUrl::fromEncoded(request.url);
        if (url.host() != QLatin1String("127.0.0.1") || url.port() != m_server->port()) return testing::transportFailure();
        const QByteArray key = request.method + ' ' + request.url + ' ' + request.body;
        if (auto it = m_cache.constFind(key); it != m_cache.constEnd()) return *it;
        httplib::Request out;
        out.method = request.method.toStdString();
        out.path = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority).toStdString();
        if (out.path.empty()) out.path = "/";
        for (const auto& [name, value] : request.headers) out.headers.emplace(name.toStdString(), value.toStdString());
        out.body = request.body.toStdString();
        HttpResponse reply;
        if (auto result = m_client->send(out)) {
            reply.transportOk = true;
            reply.statusCode = result->status;
            for (const auto& [name, value] : result->headers)
                reply.headers.append({QByteArray::fromStdString(name), QByteArray::fromStdString(value)});
            reply.body = QByteArray::fromStdString(result->body);
        } else {
            reply = testing::transportFailure();
        }
        reply.url = request.url;
        m_cache.insert(key, reply);
        return reply;
    }

    // The account's record as the sign-in keeps it.
    QJsonObject userRecord(const QString& token) {
        HttpRequest r;
        r.url = (m_base + QStringLiteral("/api/?do=farmer/profile&bearer=") + token).toUtf8();
        r.setHeader("Authorization", "Bearer " + token.toUtf8());
        QJsonObject data = QJsonDocument::fromJson(forward(r).body).object().value(QStringLiteral("data")).toObject();
        data.insert(QStringLiteral("token"), token);
        return data;
    }

private:
    std::unique_ptr<server::Server> m_server;
    std::unique_ptr<httplib::Client> m_client;
    QString m_base;
    QHash<QByteArray, HttpResponse> m_cache;
};

// The transport: each request is answered at once by the service, the answer mutated or not, and
// handed to the screen when the clock reaches its time.
class FuzzHttp : public HttpClient {
public:
    FuzzHttp(Service& service, Mutator& mutator, double chance) : m_service(service), m_mutator(mutator), m_chance(chance) {}

    void send(const HttpRequest& request, RedirectBlock redirect, ResponseHandler done) override {
        const Mutated m = m_mutator.mutate(m_service.forward(request), m_chance);
        if (!m.kind.isEmpty()) {
            QString command = testing::commandOf(request);
            if (command.isEmpty()) command = QUrl::fromEncoded(request.url).path();
            say(QStringLiteral("MUT %1\t%2").arg(flat(m.kind), flat(command)));
        }
        m_pending.append(Pending{request, std::move(redirect), std::move(done), now + m.delayMs, m.reply, 0});
    }

    // Hands over every answer that is due, in the order the requests went out.
    int deliverDue() {
        int delivered = 0;
        for (int i = 0; i < m_pending.size();) {
            if (m_pending.at(i).due > now) {
                ++i;
                continue;
            }
            Pending p = m_pending.takeAt(i);
            if (p.reply.isRedirect() && p.hops < MaxRedirects) {
                HttpRequest next = proposedRedirect(p.request, p.reply);
                if (p.redirect) next = p.redirect(next, p.reply);
                m_pending.insert(i, Pending{next, std::move(p.redirect), std::move(p.done), now, m_service.forward(next), p.hops + 1});
                continue;
            }
            p.done(p.reply);
            ++delivered;
            i = 0; // a callback may have sent more
        }
        return delivered;
    }
    bool idle() const { return m_pending.isEmpty(); }

    qint64 now = 0;

private:
    struct Pending {
        HttpRequest request;
        RedirectBlock redirect;
        ResponseHandler done;
        qint64 due;
        HttpResponse reply;
        int hops;
    };
    Service& m_service;
    Mutator& m_mutator;
    double m_chance;
    QList<Pending> m_pending;
};

struct Action {
    QString name;
    std::function<void()> perform;
};

// The names a screen's arrangement calls on its controller: "controller.name()" and the quoted names
// it hands to "controller[name]()" (a button that only triggers an action bears the action's name).
QSet<QString> arrangementActions(const ViewController* c) {
    static QHash<QUrl, QSet<QString>> cache;
    const QUrl source = c->viewSource();
    if (auto it = cache.constFind(source); it != cache.constEnd()) return *it;
    QFile file(source.scheme() == QLatin1String("qrc") ? u':' + source.path() : source.toLocalFile());
    QSet<QString> names;
    if (file.open(QIODevice::ReadOnly)) {
        const QString text = QString::fromUtf8(file.readAll());
        static const QRegularExpression call(QStringLiteral(R"(controller\.(\w+)\(\s*\))"));
        static const QRegularExpression quoted(QStringLiteral(R"re("(\w+)")re"));
        for (const auto& re : {call, quoted})
            for (auto m = re.globalMatch(text); m.hasNext();) names.insert(m.next().captured(1));
    }
    cache.insert(source, names);
    return names;
}

const QStringList Texts{QStringLiteral("05321000101"), QStringLiteral("123456"), QString::fromUtf8("Deneme Çiftçi"),
                        QStringLiteral("%@%d"), QString::fromUtf8("şğü İ 🌾")};

class Run {
public:
    Run(Service& service, const QString& screen, quint64 seed, int steps, const QMap<QString, QJsonObject>& users)
        : m_rng(seed), m_mutator(m_rng), m_screen(screen), m_steps(steps) {
        m_clock = new ManualScheduler;
        m_clock->setNow(QDateTime(QDate(2026, 11, 23), QTime(9, 0), QTimeZone(3 * 3600)));
        m_http = new FuzzHttp(service, m_mutator, 0.5);
        m_platform = new Platform(m_clock, new UserDefaults, m_http, new PushService, nullptr);
        Application& app = m_platform->application();
        app.setEchoLog(false);
        app.setUrlOpener([](const QUrl&) { return true; });
        app.setEnding([this](int) { m_stopped = true; });
        QObject::connect(&app, &Application::terminated, [this](int, const QString& reason) { m_reason = reason; });
        const QJsonObject user = users.value(users.keys().at(int(m_rng() % quint64(users.size()))));
        m_platform->defaults().setString(service::StoreKey::Token, user.value(QStringLiteral("token")).toString());
        service::LocalStore::setUserInfo(user);
        m_delegate = new service::AppDelegate;
    }

    // The ending's kind and reason.
    QPair<QString, QString> play() {
        step(QStringLiteral("show"), [this] { show(); });
        if (!m_shown) return finish();
        // The popup poll runs over every screen.
        step(QStringLiteral("popup poll"), [this] { m_delegate->showPopup(); });
        for (int i = 0; i < m_steps && !ended(); ++i) {
            QList<Action> actions;
            step(QStringLiteral("look"), [&] { actions = available(); }, false);
            if (ended() || actions.isEmpty()) break;
            const Action& a = actions.at(int(m_rng() % quint64(actions.size())));
            step(a.name, a.perform);
        }
        // Slow answers arrive, whatever is on screen by then.
        if (!ended()) step(QStringLiteral("wait for slow answers"), [this] { settle(100000); });
        return finish();
    }

private:
    bool ended() const { return m_stopped || !m_exception.isEmpty(); }

    // The screen where the application shows it: in the root's side menu, as the left menu, as the
    // content, or on top of the content's stack.
    void show() {
        auto* root = qobject_cast<SideMenuViewController*>(
            Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("RootViewController")));
        if (!root) throw std::runtime_error("no root");
        ViewController* screen = root;
        const auto identifierOf = [](const ViewController* c) { return c ? c->property("storyboardIdentifier").toString() : QString(); };
        bool asMenu = false;
        if (m_screen == identifierOf(root->leftMenuViewController())) {
            screen = root->leftMenuViewController();
            asMenu = true;
        } else if (m_screen != identifierOf(root)) {
            screen = Storyboard::instantiateViewControllerWithIdentifier(m_screen);
            if (!screen) throw std::runtime_error("no screen");
            auto* nav = qobject_cast<NavigationController*>(screen);
            if (!nav) {
                nav = new NavigationController;
                nav->setViewControllers({screen});
            }
            root->setContentViewController(nav);
        }
        m_platform->window().setRootViewController(root);
        m_platform->window().makeKeyAndVisible();
        if (asMenu) root->presentLeftMenuViewController();
        m_shown = true;
        say(QStringLiteral("SHOWN %1").arg(screen->className()));
    }

    // An indicator on screen takes the touches, except those of what is presented over it (an alert
    // that came while it waits); one on a presented controller takes them all.
    bool touchesBlocked() const {
        const Window& w = m_platform->window();
        if (w.presentedHudCount() > 0) return true;
        return (w.hudCount() > 0 || w.waitVisible()) && w.presentedControllers().isEmpty();
    }

    // The controller a person would be touching now.
    ViewController* front() const {
        const QList<ViewController*> presented = m_platform->window().presentedControllers();
        for (int i = int(presented.size()) - 1; i >= 0; --i)
            if (presented.at(i)) return presented.at(i);
        ViewController* c = m_platform->window().rootViewController();
        if (auto* menu = qobject_cast<SideMenuViewController*>(c)) {
            if (menu->isMenuVisible() && menu->leftMenuViewController()) return menu->leftMenuViewController();
            c = menu->contentViewController();
        }
        if (auto* nav = qobject_cast<NavigationController*>(c)) c = nav->topViewController();
        return c;
    }

    QList<Action> available() {
        QList<Action> actions;
        if (touchesBlocked()) {
            actions << Action{QStringLiteral("wait under the indicator"), [] {}};
            return actions;
        }
        if (AlertController* alert = m_platform->window().visibleAlert()) {
            const QStringList titles = alert->buttonTitles();
            for (int i = 0; i < titles.size(); ++i)
                actions << Action{QStringLiteral("alert button '%1'").arg(flat(titles.at(i))), [alert, i] { alert->tapButton(i); }};
            return actions;
        }
        ViewController* c = front();
        if (!c) return actions;
        const QString owner = c->className();
        if (!m_reached.contains(owner)) {
            m_reached.insert(owner);
            say(QStringLiteral("REACHED %1").arg(owner));
        }
        QList<Button*> buttons = c->findChildren<Button*>();
        if (c->rightBarButtonItem() && !buttons.contains(c->rightBarButtonItem())) buttons << c->rightBarButtonItem();
        for (Button* b : buttons) {
            if (!b->isEnabled() || !b->userInteractionEnabled() || b->isHidden() || !b->targetCount()) continue;
            QPointer<Button> p(b);
            actions << Action{QStringLiteral("tap %1.%2").arg(owner, b->objectName()), [p] { if (p) p->tap(); }};
        }
        for (TextField* f : c->findChildren<TextField*>()) {
            if (!f->isEnabled() || f->isHidden()) continue;
            QPointer<TextField> p(f);
            const QString text = Texts.at(int(m_rng() % quint64(Texts.size())));
            actions << Action{QStringLiteral("type into %1.%2").arg(owner, f->objectName()), [p, text] {
                                  if (!p) return;
                                  p->becomeFirstResponder();
                                  p->userType(text);
                              }};
        }
        for (TableView* t : c->findChildren<TableView*>()) {
            if (t->isHidden()) continue;
            QPointer<TableView> p(t);
            auto* grid = qobject_cast<CollectionView*>(t);
            const int n = qMin(grid ? grid->numberOfItemsInSection(0) : t->numberOfRows(0), 40);
            if (n <= 0) continue;
            const int row = int(m_rng() % quint64(n));
            actions << Action{QStringLiteral("select %1.%2[%3]").arg(owner, t->objectName()).arg(row), [p, row] {
                                  if (auto* g = qobject_cast<CollectionView*>(p.data())) g->selectItem(0, row);
                                  else if (p) p->selectRow(row, 0);
                              }};
        }
        // Actions that the arrangement's buttons call by name, without arguments (those with a sender
        // are reached through the controls above).
        const QSet<QString> named = arrangementActions(c);
        const QMetaObject* meta = c->metaObject();
        QSet<QByteArray> seen;
        for (int i = ViewController::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
            const QMetaMethod m = meta->method(i);
            if (m.access() != QMetaMethod::Public || m.parameterCount() != 0) continue;
            if (m.methodType() != QMetaMethod::Slot && m.methodType() != QMetaMethod::Method) continue;
            const QByteArray name = m.name();
            if (!named.contains(QString::fromLatin1(name)) || seen.contains(name)) continue;
            seen.insert(name);
            QPointer<ViewController> p(c);
            actions << Action{QStringLiteral("call %1.%2").arg(owner, QString::fromLatin1(name)), [p, name] {
                                  if (p) QMetaObject::invokeMethod(p.data(), name.constData(), Qt::DirectConnection);
                              }};
        }
        if (auto* nav = c->navigationController(); nav && nav->depth() > 1 && nav->topViewController() == c)
            actions << Action{QStringLiteral("back from %1").arg(owner), [nav = QPointer<NavigationController>(nav)] {
                                  if (nav) nav->goBack();
                              }};
        return actions;
    }

    // The pages that web views on screen were given finish loading (now and then they fail), as the
    // arrangement would report.
    void finishPages() {
        QList<ViewController*> shown = m_platform->window().presentedControllers();
        shown << front();
        for (ViewController* c : shown) {
            if (!c) continue;
            for (WebView* web : c->findChildren<WebView*>()) {
                if (web->loadSerial() <= m_finishedLoads.value(web, 0)) continue;
                m_finishedLoads.insert(web, web->loadSerial());
                if (m_rng() % 10) web->navigationFinished();
                else web->navigationFailed();
            }
        }
    }

    // Replies that are due reach the screen, timers fire, and released screens go, over `ms` of clock.
    void settle(int ms) {
        for (int t = 0; t <= ms; t += 250) {
            m_http->deliverDue();
            if (t == 500) finishPages();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (ended()) return;
            m_clock->advance(250);
            m_http->now += 250;
        }
        m_http->deliverDue();
    }

    // An announced step is followed by three seconds of clock.
    void step(const QString& name, const std::function<void()>& body, bool announce = true, bool wait = true) {
        if (announce) say(QStringLiteral("STEP %1").arg(flat(name)));
        try {
            body();
            if (announce && wait && !ended()) settle(3000);
        } catch (const FatalStop& stop) {
            m_stopped = true;
            m_reason = stop.reason;
        } catch (const std::exception& e) {
            m_exception = QString::fromUtf8(e.what());
        } catch (...) {
            m_exception = QStringLiteral("unknown exception");
        }
    }

    QPair<QString, QString> finish() {
        // After a stop the process would be gone: what is left is neither torn down nor released later.
        if (ended()) QCoreApplication::removePostedEvents(nullptr);
        else {
            step(QStringLiteral("close"), [this] {
                delete m_delegate;
                delete m_platform;
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            }, true, false);
        }
        if (m_stopped) return {QStringLiteral("stop"), m_reason};
        if (!m_exception.isEmpty()) return {QStringLiteral("exception"), m_exception};
        return {QStringLiteral("survived"), QString()};
    }

    std::mt19937_64 m_rng;
    Mutator m_mutator;
    QString m_screen;
    int m_steps;
    ManualScheduler* m_clock;
    FuzzHttp* m_http;
    Platform* m_platform;
    service::AppDelegate* m_delegate;
    bool m_shown = false;
    bool m_stopped = false;
    QString m_reason;
    QString m_exception;
    QSet<QString> m_reached;
    QHash<const WebView*, int> m_finishedLoads;
};

} // namespace

int runBatch(const BatchOptions& options) {
    Ekinora::registerScreens();
    Service service;
    service::Roots::configure(service.base());
    QMap<QString, QJsonObject> users;
    for (const char* role : {"farmer", "loyalty", "dealer"}) {
        const QString token = QStringLiteral("demo-%1-token").arg(QLatin1String(role));
        users.insert(QLatin1String(role), service.userRecord(token));
    }
    const quint64 screenSeed = mixSeed(options.seed, textSeed(options.screen));
    for (int i = options.first; i < options.first + options.runs; ++i) {
        say(QStringLiteral("RUN %1").arg(i));
        Run run(service, options.screen, mixSeed(screenSeed, quint64(i)), options.steps, users);
        const auto [kind, reason] = run.play();
        say(QStringLiteral("END %1\t%2").arg(kind, flat(reason)));
    }
    return 0;
}

} // namespace ekinora::fuzz
