// The runtime's services and containers on the fake platform: the manual clock, the store on disk, the
// notification centre, controls, the lifecycle through the containers, presentation, overlays,
// storyboard and segues, lifetimes, and redirections.

#include "FakePlatform.h"
#include "platform/AlertController.h"
#include "platform/Controls.h"
#include "platform/NavigationController.h"
#include "platform/Overlays.h"
#include "platform/SideMenuViewController.h"
#include "platform/Storyboard.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace ekinora;
using namespace ekinora::platform;
using namespace ekinora::testing;

#define VERIFY_FATAL(...)                                                                                          \
    do {                                                                                                           \
        const qsizetype before = fake->endings.size();                                                             \
        QVERIFY_THROWS_EXCEPTION(FatalStop, __VA_ARGS__);                                                          \
        QCOMPARE(fake->endings.size(), before + 1);                                                                \
        QCOMPARE(fake->endings.last(), Application::FaultExitCode);                                                \
    } while (false)

namespace {

// A container that goes releases its screens from its destructor, so deletions come in waves.
void runDeferredDeletes() {
    for (int wave = 0; wave < 4; ++wave) QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A screen that writes its lifecycle into a journal as "name:event".
class Screen : public ViewController {
    Q_OBJECT
public:
    Screen(const QString& name, QStringList* journal) : m_name(name), m_journal(journal) {}

    void viewDidLoad() override { note("load"); }
    void viewWillAppear(bool) override { note("willAppear"); }
    void viewDidAppear(bool) override { note("didAppear"); }
    void viewWillDisappear(bool) override { note("willDisappear"); }
    void viewDidDisappear(bool) override { note("didDisappear"); }
    void prepareForSegue(const StoryboardSegue& segue, QObject* sender) override {
        note(QStringLiteral("prepare ") + segue.identifier +
             (segue.destination->isViewLoaded() ? QStringLiteral(" loaded") : QStringLiteral(" unloaded")));
        lastSegue = segue;
        lastSender = sender;
    }

    StoryboardSegue lastSegue;
    QObject* lastSender = nullptr;

private:
    void note(const QString& event) { m_journal->append(m_name + u':' + event); }
    QString m_name;
    QStringList* m_journal;
};

class Observer : public QObject {
    Q_OBJECT
public:
    int refreshes = 0;
    QList<Notification> received;
    std::function<void()> onRefresh;

public slots:
    void refreshList() {
        ++refreshes;
        if (onRefresh) onRefresh();
    }
    void userChanged(ekinora::platform::Notification note) { received << note; }
};

class Target : public QObject {
    Q_OBJECT
public:
    QStringList calls;

public slots:
    void save() { calls << QStringLiteral("save"); }
    void tapped(QObject* sender) { calls << QStringLiteral("tapped ") + sender->objectName(); }
};

// The entries of one screen in the journal, without its name.
QStringList of(const QStringList& journal, const QString& name) {
    QStringList out;
    for (const QString& line : journal)
        if (line.startsWith(name + u':')) out << line.mid(name.size() + 1);
    return out;
}

} // namespace

class RuntimeTest : public QObject {
    Q_OBJECT
    FakePlatform* fake = nullptr;
    QStringList journal;

    Window& window() { return fake->platform->window(); }
    NotificationCenter& center() { return fake->platform->notificationCenter(); }
    qint64 elapsed(const QDateTime& start) { return start.msecsTo(fake->clock->now()); }

    // A visible root screen in the window.
    Screen* showRoot() {
        auto* root = new Screen(QStringLiteral("root"), &journal);
        window().setRootViewController(root);
        window().makeKeyAndVisible();
        fake->clock->advance(0);
        journal.clear();
        return root;
    }
    // A visible navigation stack in the window, inside the side menu if one is given.
    NavigationController* showStack(const QList<ViewController*>& screens,
                                    SideMenuViewController* side = nullptr) {
        auto* nav = new NavigationController;
        nav->setViewControllers(screens);
        if (side) side->setContentViewController(nav);
        window().setRootViewController(side ? static_cast<ViewController*>(side) : nav);
        window().makeKeyAndVisible();
        fake->clock->advance(0);
        journal.clear();
        return nav;
    }

private slots:
    void init() {
        journal.clear();
        Storyboard::clear();
        fake = new FakePlatform;
    }
    void cleanup() {
        delete fake;
        fake = nullptr;
        Storyboard::clear();
    }

    // --- The manual clock

    void timersFallDueInTimeOrder() {
        ManualScheduler& clock = *fake->clock;
        const QDateTime start = clock.now();
        QStringList fired;
        auto note = [&](const char* what) { fired << QStringLiteral("%1@%2").arg(what).arg(elapsed(start)); };
        clock.after(300, [&] { note("late"); });
        clock.every(100, [&] { note("tick"); });
        clock.after(100, [&] {
            note("early");
            // A callback may schedule, even for the moment it runs in.
            clock.after(50, [&] { note("later"); });
            clock.after(0, [&] { note("sameMoment"); });
        });
        clock.after(0, [&] { note("now"); });
        clock.advance(300);
        // At the same moment, the one scheduled first fires first.
        QCOMPARE(fired, QStringList({"now@0", "tick@100", "early@100", "sameMoment@100", "later@150",
                                     "tick@200", "late@300", "tick@300"}));
        QCOMPARE(elapsed(start), 300);
        QCOMPARE(clock.pending(), 1);
    }

    void cancelledTimersStaySilent() {
        ManualScheduler& clock = *fake->clock;
        int once = 0, repeated = 0, victim = 0;
        const auto onceId = clock.after(1000, [&] { ++once; });
        clock.cancel(onceId);
        // A repeating timer that stops itself on its second fire.
        Scheduler::Id repeatingId = 0;
        repeatingId = clock.every(100, [&] {
            if (++repeated == 2) clock.cancel(repeatingId);
        });
        // One callback cancels another that falls due in the same advance.
        const auto victimId = clock.after(250, [&] { ++victim; });
        clock.after(200, [&] { clock.cancel(victimId); });
        clock.cancel(987654); // unknown: nothing happens
        clock.advance(5000);
        QCOMPARE(once, 0);
        QCOMPARE(repeated, 2);
        QCOMPARE(victim, 0);
        QCOMPARE(clock.pending(), 0);
    }

    // --- The store on disk

    void storeRoundTripsThroughTheIniFile() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("store.ini"));
        const QString turkish = QStringLiteral("Çiğdem Şahin Öztürk, İğdır ĞÜŞİÖÇ ğüşıöç");
        // What an INI file treats specially: comments, quotes, escapes, sections, padding, a leading @.
        const QString awkward = QStringLiteral("@ad  ; not a comment # \"quoted\" \\ [General] a=b\nsecond line ");
        const QJsonObject user{{"name", "Ali Veli"},
                               {"photo", QJsonValue::Null},
                               {"note", "a, b; c=d"},
                               {"fields", QJsonArray{1, QJsonValue::Null, "x,y"}},
                               {"points", 1250.5}};
        {
            UserDefaults store(file);
            store.setString(QStringLiteral("userName"), turkish);
            store.setString(QStringLiteral("emptyText"), QStringLiteral(""));
            store.setJson(QStringLiteral("user"), user);
            store.setJson(QStringLiteral("fieldList"), QJsonArray{QJsonObject{{"id", 3}}, QJsonValue::Null});
            store.setString(QStringLiteral("smsToken"), QStringLiteral("gone soon"));
            store.setString(QStringLiteral("awkward"), awkward);
            store.synchronize();
        }
        {
            UserDefaults store(file);
            QCOMPARE(store.stringForKey(QStringLiteral("userName")), turkish);
            QCOMPARE(store.stringForKey(QStringLiteral("awkward")), awkward);
            QVERIFY(store.contains(QStringLiteral("emptyText")));
            QVERIFY(!store.stringForKey(QStringLiteral("emptyText")).isNull());
            QCOMPARE(store.stringForKey(QStringLiteral("emptyText")), QString(""));
            const Json again = store.jsonForKey(QStringLiteral("user"));
            QCOMPARE(again, Json(user));
            QVERIFY(isNullObject(member(again, QStringLiteral("photo"))));
            QVERIFY(isNil(member(again, QStringLiteral("phone"))));
            QCOMPARE(store.jsonForKey(QStringLiteral("fieldList")),
                     Json(QJsonArray{QJsonObject{{"id", 3}}, QJsonValue::Null}));
            // A text that is not JSON is nil as a record, and an absent key is nil as both.
            QVERIFY(isNil(store.jsonForKey(QStringLiteral("userName"))));
            QVERIFY(store.stringForKey(QStringLiteral("absent")).isNull());
            QVERIFY(isNil(store.jsonForKey(QStringLiteral("absent"))));

            store.removeObjectForKey(QStringLiteral("smsToken"));
            store.setJson(QStringLiteral("fieldList"), nil());
            store.synchronize();
        }
        UserDefaults store(file);
        QVERIFY(!store.contains(QStringLiteral("smsToken")));
        QVERIFY(!store.contains(QStringLiteral("fieldList")));
        QVERIFY(store.contains(QStringLiteral("user")));

        QFile ini(file);
        QVERIFY(ini.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(ini.readAll());
        // Texts stay texts under their own keys: nothing is written as a serialised variant.
        const QRegularExpression plainKey(QStringLiteral("^userName="), QRegularExpression::MultilineOption);
        QVERIFY(text.contains(plainKey));
        QVERIFY(!text.contains(QStringLiteral("@Variant")));
        QVERIFY(!text.contains(QStringLiteral("@ByteArray")));
    }

    // --- The notification centre

    void observersAreCalledBySelectorForTheirSender() {
        Observer list, profile;
        QObject sender, other;
        center().addObserver(&list, QStringLiteral("refreshList"), QStringLiteral("FarmsChanged"));
        center().addObserver(&profile, QStringLiteral("userChanged"), QStringLiteral("UserChanged"), &sender);
        center().postNotificationName(QStringLiteral("FarmsChanged"));
        QCOMPARE(list.refreshes, 1);
        // An observer for one sender ignores the others and posts without one.
        center().postNotificationName(QStringLiteral("UserChanged"), &other);
        center().postNotificationName(QStringLiteral("UserChanged"));
        QVERIFY(profile.received.isEmpty());

        center().postNotificationName(QStringLiteral("UserChanged"), &sender);
        QCOMPARE(profile.received.size(), 1);
        QCOMPARE(profile.received.first().name, QStringLiteral("UserChanged"));
        QCOMPARE(profile.received.first().object, &sender);
        QCOMPARE(list.refreshes, 1);
    }

    void observerAddedTwiceIsCalledTwiceUntilRemoved() {
        Observer observer;
        center().addObserver(&observer, QStringLiteral("refreshList"), QStringLiteral("FarmsChanged"));
        center().addObserver(&observer, QStringLiteral("refreshList"), QStringLiteral("FarmsChanged"));
        center().addObserver(&observer, QStringLiteral("refreshList"), QStringLiteral("Other"));
        center().postNotificationName(QStringLiteral("FarmsChanged"));
        QCOMPARE(observer.refreshes, 2);

        center().removeObserver(&observer, QStringLiteral("FarmsChanged"));
        center().postNotificationName(QStringLiteral("FarmsChanged"));
        QCOMPARE(observer.refreshes, 2);
        center().postNotificationName(QStringLiteral("Other"));
        QCOMPARE(observer.refreshes, 3);

        center().removeObserver(&observer);
        center().postNotificationName(QStringLiteral("Other"));
        QCOMPARE(observer.refreshes, 3);
        QCOMPARE(center().observerCount(QStringLiteral("Other")), 0);
    }

    void destroyedObserverIsSkipped() {
        auto* gone = new Observer;
        center().addObserver(gone, QStringLiteral("refreshList"), QStringLiteral("FarmsChanged"));
        delete gone;
        QCOMPARE(center().observerCount(QStringLiteral("FarmsChanged")), 0);
        center().postNotificationName(QStringLiteral("FarmsChanged"));

        // An observer destroyed by one called before it in the same post.
        Observer first;
        auto* second = new Observer;
        first.onRefresh = [&] { delete second; };
        center().addObserver(&first, QStringLiteral("refreshList"), QStringLiteral("Logout"));
        center().addObserver(second, QStringLiteral("refreshList"), QStringLiteral("Logout"));
        center().postNotificationName(QStringLiteral("Logout"));
        QCOMPARE(first.refreshes, 1);
        QVERIFY(fake->endings.isEmpty());
    }

    // A selector the receiver lacks, or a route the screen lacks, stops the application.
    void unknownSelectorsAndSeguesStop() {
        Observer observer;
        center().addObserver(&observer, QStringLiteral("reloadWeather"), QStringLiteral("CityChanged"));
        VERIFY_FATAL(center().postNotificationName(QStringLiteral("CityChanged")));
        QVERIFY(fake->logged(QStringLiteral("reloadWeather")));
        QVERIFY(fake->logged(QStringLiteral("unrecognized selector")));

        Target target;
        Button button(QStringLiteral("btnSend"));
        button.addTarget(&target, QStringLiteral("sendMessage"));
        VERIFY_FATAL(button.tap());
        QVERIFY(fake->logged(QStringLiteral("sendMessage")));

        auto* source = new Screen(QStringLiteral("source"), &journal);
        NavigationController* nav = showStack({source});
        VERIFY_FATAL(source->performSegueWithIdentifier(QStringLiteral("showNowhere")));
        QVERIFY(fake->logged(QStringLiteral("showNowhere")));
        QCOMPARE(nav->depth(), 1);
        QVERIFY(!Storyboard::instantiateViewControllerWithIdentifier(QStringLiteral("noSuchVC")));
        QVERIFY(fake->logged(QStringLiteral("noSuchVC")));
    }

    // --- Controls

    void textFieldDelegateVetoesChanges() {
        TextField field(QStringLiteral("txtLoginPhone"));
        QList<std::tuple<TextField*, int, int, QString>> asked;
        // Ten digits at most, digits only.
        field.setShouldChange([&](TextField* f, int location, int length, const QString& replacement) {
            asked << std::make_tuple(f, location, length, replacement);
            for (QChar c : replacement)
                if (!c.isDigit()) return false;
            return f->text().size() - length + replacement.size() <= 10;
        });
        field.userType(QStringLiteral("532a12345678901"));
        QCOMPARE(field.text(), QStringLiteral("5321234567"));
        QCOMPARE(asked.size(), 15);
        QCOMPARE(asked.first(), std::make_tuple(&field, 0, 0, QStringLiteral("5")));
        QCOMPARE(asked.at(3), std::make_tuple(&field, 3, 0, QStringLiteral("a")));

        QVERIFY(!field.userEdit(10, 0, QStringLiteral("8")));
        QCOMPARE(field.text(), QStringLiteral("5321234567"));
        QVERIFY(field.userEdit(9, 1, QString())); // backspace
        QCOMPARE(field.text(), QStringLiteral("532123456"));
        QVERIFY(field.userEdit(0, 3, QStringLiteral("505")));
        QCOMPARE(field.text(), QStringLiteral("505123456"));
        QCOMPARE(asked.last(), std::make_tuple(&field, 0, 3, QStringLiteral("505")));
        // The screen's own assignments do not ask the delegate.
        const auto before = asked.size();
        field.setText(QStringLiteral("abc"));
        QCOMPARE(field.text(), QStringLiteral("abc"));
        QCOMPARE(asked.size(), before);

        int returns = 0;
        field.setShouldReturn([&](TextField*) { return ++returns > 0; });
        field.userReturn();
        QCOMPARE(returns, 1);
    }

    void buttonActionsAccumulate() {
        Target target;
        Button button(QStringLiteral("btnSave"));
        button.addTarget(&target, QStringLiteral("save"));
        button.addTarget(&target, QStringLiteral("tapped"));
        button.addTarget(&target, QStringLiteral("save")); // a pair it has already: kept once
        auto* gone = new Target;
        button.addTarget(gone, QStringLiteral("save"));
        delete gone;
        button.tap();
        QCOMPARE(target.calls, QStringList({"save", "tapped btnSave"}));

        target.calls.clear();
        button.setHidden(true);
        button.tap();
        button.setHidden(false);
        button.setEnabled(false);
        button.tap();
        button.setEnabled(true);
        button.setUserInteractionEnabled(false);
        button.tap();
        QVERIFY(target.calls.isEmpty());
        button.setUserInteractionEnabled(true);
        button.tap();
        QCOMPARE(target.calls.size(), 2);
    }

    // --- The lifecycle through the containers

    void lifecycleThroughNavigationInsideSideMenu() {
        auto* home = new Screen(QStringLiteral("home"), &journal);
        auto* menu = new Screen(QStringLiteral("menu"), &journal);
        auto* nav = new NavigationController;
        nav->setViewControllers({home});
        auto* side = new SideMenuViewController;
        side->setLeftMenuViewController(menu);
        side->setContentViewController(nav);
        window().setRootViewController(side);
        QVERIFY(of(journal, "home").isEmpty());
        window().makeKeyAndVisible();
        // The first appearance waits for the event loop: whatever the caller does next comes first.
        QVERIFY(of(journal, "home").isEmpty());
        fake->run(0);
        QCOMPARE(of(journal, "home"), QStringList({"load", "willAppear", "didAppear"}));
        QVERIFY(!of(journal, "menu").contains("willAppear"));

        journal.clear();
        auto* detail = new Screen(QStringLiteral("detail"), &journal);
        nav->pushViewController(detail);
        QCOMPARE(journal.count("detail:load"), 1);
        QVERIFY(journal.indexOf("detail:load") < journal.indexOf("detail:willAppear"));
        journal.removeAll("detail:load");
        QCOMPARE(journal, QStringList({"home:willDisappear", "detail:willAppear", "home:didDisappear", "detail:didAppear"}));
        QCOMPARE(nav->topViewController(), detail);
        QCOMPARE(detail->navigationController(), nav);
        QCOMPARE(detail->sideMenuViewController(), side);
        QVERIFY(detail->isVisible());
        QVERIFY(!home->isVisible());

        journal.clear();
        QPointer<Screen> popped(detail);
        QCOMPARE(nav->popViewControllerAnimated(), detail);
        QCOMPARE(journal, QStringList({"detail:willDisappear", "home:willAppear", "detail:didDisappear", "home:didAppear"}));
        QCOMPARE(nav->topViewController(), home);
        QVERIFY(!detail->navigationController());
        // Popping the last screen does nothing.
        QVERIFY(!nav->popViewControllerAnimated());
        runDeferredDeletes();
        QVERIFY(!popped);

        journal.clear();
        side->presentLeftMenuViewController();
        side->presentLeftMenuViewController();
        QVERIFY(side->isMenuVisible());
        QCOMPARE(of(journal, "menu"), QStringList({"willAppear", "didAppear"}));
        side->hideMenuViewController();
        QVERIFY(!side->isMenuVisible());
        QCOMPARE(of(journal, "menu"), QStringList({"willAppear", "didAppear", "willDisappear", "didDisappear"}));
    }

    void replacingTheStackKeepsScreensThatStay() {
        auto* home = new Screen(QStringLiteral("home"), &journal);
        auto* list = new Screen(QStringLiteral("list"), &journal);
        NavigationController* nav = showStack({home, list});

        QPointer<Screen> watchList(list);
        auto* form = new Screen(QStringLiteral("form"), &journal);
        nav->setViewControllers({home, form});
        QCOMPARE(of(journal, "list"), QStringList({"willDisappear", "didDisappear"}));
        QCOMPARE(of(journal, "form"), QStringList({"load", "willAppear", "didAppear"}));
        QVERIFY(of(journal, "home").isEmpty());
        // The screen that stays is still in the stack and alive; the one that left is freed.
        QCOMPARE(home->navigationController(), nav);
        runDeferredDeletes();
        QVERIFY(!watchList);
        QPointer<Screen> watchHome(home);
        QCOMPARE(nav->popViewControllerAnimated(), form);
        // A screen below the top loads only when it first shows.
        QCOMPARE(of(journal, "home"), QStringList({"load", "willAppear", "didAppear"}));
        runDeferredDeletes();
        QVERIFY(watchHome);
        QCOMPARE(home->navigationController(), nav);
        QSignalSpy stack(nav, &NavigationController::stackChanged);
        home->setTitle(QStringLiteral("Ana Sayfa"));
        QCOMPARE(stack.size(), 1);
        QCOMPARE(nav->topTitle(), QStringLiteral("Ana Sayfa"));
    }

    void replacingTheSideMenuContentSwapsScreens() {
        auto* home = new Screen(QStringLiteral("home"), &journal);
        auto* side = new SideMenuViewController;
        QPointer<NavigationController> oldNav(showStack({home}, side));
        QPointer<Screen> oldHome(home);
        auto* news = new Screen(QStringLiteral("news"), &journal);
        auto* newsNav = new NavigationController;
        newsNav->setViewControllers({news});
        side->setContentViewController(newsNav);
        QCOMPARE(of(journal, "home"), QStringList({"willDisappear", "didDisappear"}));
        QCOMPARE(of(journal, "news"), QStringList({"load", "willAppear", "didAppear"}));
        QCOMPARE(news->sideMenuViewController(), side);
        QCOMPARE(news->navigationController(), newsNav);
        runDeferredDeletes();
        QVERIFY(!oldNav);
        QVERIFY(!oldHome);
    }

    // --- Presentation

    void secondPresentationIsRefused() {
        Screen* root = showRoot();
        AlertController* first = AlertController::simple(QStringLiteral("Uyarı"), QStringLiteral("Bağlantı yok"),
                                                         QStringLiteral("Tamam"));
        int completions = 0;
        QVERIFY(root->presentViewController(first, true, [&] { ++completions; }));
        QCOMPARE(completions, 1);
        QCOMPARE(window().presentedControllers(), QList<ViewController*>({first}));
        QCOMPARE(root->presentedViewController(), first);
        QCOMPARE(first->presentingViewController(), root);

        QSignalSpy refused(&window(), &Window::presentationRefused);
        QPointer<AlertController> second = AlertController::simple(QStringLiteral("Hata"), QString(), QStringLiteral("Tamam"));
        QVERIFY(!root->presentViewController(second, true, [&] { ++completions; }));
        QCOMPARE(completions, 1);
        QVERIFY(fake->logged(QStringLiteral("Attempt to present")));
        QCOMPARE(refused.size(), 1);
        QCOMPARE(window().presentedControllers(), QList<ViewController*>({first}));
        // The refused controller is dropped; the one on screen stays.
        runDeferredDeletes();
        QVERIFY(!second);
        QCOMPARE(fake->alert(), first);
    }

    void alertButtonDismissesThenRunsItsHandler() {
        Screen* root = showRoot();
        AlertController* alert =
            AlertController::alertControllerWithTitle(QStringLiteral("Çıkış"), QStringLiteral("Emin misiniz?"));
        bool ran = false, clearInHandler = false, followUpShown = false;
        alert->addAction(QStringLiteral("Vazgeç"), AlertController::Cancel);
        alert->addAction(QStringLiteral("Evet"), AlertController::Default, [&] {
            ran = true;
            clearInHandler = window().presentedControllers().isEmpty() && !root->presentedViewController();
            // A handler commonly presents the next alert on the same screen.
            followUpShown = root->presentViewController(
                AlertController::simple(QStringLiteral("Bilgi"), QStringLiteral("Çıkış yapıldı"), QStringLiteral("Tamam")));
        });
        QVERIFY(root->presentViewController(alert));
        QPointer<AlertController> watch(alert);
        alert->tapButton(1);
        QVERIFY(ran);
        QVERIFY(clearInHandler);
        QVERIFY(followUpShown);
        QVERIFY(fake->alert());
        QCOMPARE(fake->alert()->title(), QStringLiteral("Bilgi"));
        runDeferredDeletes();
        QVERIFY(!watch);

        // A button without a handler only closes.
        fake->alert()->tapButton(0);
        QVERIFY(window().presentedControllers().isEmpty());
        QVERIFY(!root->presentedViewController());
    }

    void presentedControllerPresentsAnAlert() {
        Screen* root = showRoot();
        auto* modal = new Screen(QStringLiteral("modal"), &journal);
        QVERIFY(root->presentViewController(modal));
        QCOMPARE(of(journal, "modal"), QStringList({"load", "willAppear", "didAppear"}));
        AlertController* alert = AlertController::simple(QStringLiteral("Uyarı"), QStringLiteral("Kod hatalı"),
                                                         QStringLiteral("Tamam"));
        QVERIFY(modal->presentViewController(alert));
        QCOMPARE(window().presentedControllers(), QList<ViewController*>({modal, alert}));
        QCOMPARE(fake->alert(), alert);

        alert->tapButton(0);
        QCOMPARE(window().presentedControllers(), QList<ViewController*>({modal}));
        QVERIFY(!modal->presentedViewController());
        QCOMPARE(root->presentedViewController(), modal);
        QVERIFY(!fake->alert());

        // Dismissing from the bottom takes everything above away.
        QPointer<Screen> watchModal(modal);
        QVERIFY(modal->presentViewController(AlertController::simple(QString(), QStringLiteral("x"), QStringLiteral("Tamam"))));
        journal.clear();
        int completions = 0;
        root->dismissViewControllerAnimated(true, [&] { ++completions; });
        QCOMPARE(completions, 1);
        QVERIFY(window().presentedControllers().isEmpty());
        QCOMPARE(of(journal, "modal"), QStringList({"willDisappear", "didDisappear"}));
        runDeferredDeletes();
        QVERIFY(!watchModal);
        QVERIFY(!root->presentedViewController());
    }

    void progressHudHidesOnceAndAfterItsDelay() {
        Screen* root = showRoot();
        ProgressHUD* first = ProgressHUD::showHUDAddedTo(root);
        ProgressHUD* second = ProgressHUD::showHUDAddedTo(root);
        QCOMPARE(window().hudCount(), 2);
        first->hideAnimated(true);
        QCOMPARE(window().hudCount(), 1);
        first->hideAnimated(true); // a second hide changes nothing
        QCOMPARE(window().hudCount(), 1);

        second->hideAnimated(true, 1.5);
        fake->clock->advance(1499);
        QCOMPARE(window().hudCount(), 1);
        fake->clock->advance(1);
        QCOMPARE(window().hudCount(), 0);

        // A delayed hide of a HUD already hidden and gone does nothing.
        ProgressHUD* third = ProgressHUD::showHUDAddedTo(root);
        third->hideAnimated(true, 2.0);
        third->hideAnimated(true);
        runDeferredDeletes();
        fake->clock->advance(2000);
        QCOMPARE(window().hudCount(), 0);
    }

    // --- Storyboard and segues

    void seguePreparesBeforeTheDestinationAppears() {
        Storyboard::registerIdentifier(QStringLiteral("detailVC"),
                                       [this] { return new Screen(QStringLiteral("detail"), &journal); });
        auto* source = new Screen(QStringLiteral("source"), &journal);
        NavigationController* nav = showStack({source});
        source->addSegue(QStringLiteral("showDetail"), ViewController::SegueKind::Show, QStringLiteral("detailVC"));

        QObject sender;
        source->performSegueWithIdentifier(QStringLiteral("showDetail"), &sender);
        QCOMPARE(journal.first(), QStringLiteral("source:prepare showDetail unloaded"));
        QCOMPARE(of(journal, "detail"), QStringList({"load", "willAppear", "didAppear"}));
        QCOMPARE(nav->topViewController(), source->lastSegue.destination);
        QCOMPARE(source->lastSegue.source, source);
        QCOMPARE(source->lastSender, &sender);
        QVERIFY(window().presentedControllers().isEmpty());

        // A presenting route shows its destination above the screen.
        auto* top = static_cast<Screen*>(nav->topViewController());
        top->addSegue(QStringLiteral("showPopup"), ViewController::SegueKind::Present, QStringLiteral("detailVC"));
        top->performSegueWithIdentifier(QStringLiteral("showPopup"));
        QCOMPARE(nav->depth(), 2);
        QCOMPARE(window().presentedControllers(), QList<ViewController*>({top->lastSegue.destination}));
    }

    // --- Lifetimes

    void strongHandleKeepsAPoppedScreenAlive() {
        NavigationController* nav = showStack({new Screen(QStringLiteral("home"), &journal)});
        auto* detail = new Screen(QStringLiteral("detail"), &journal);
        nav->pushViewController(detail);
        QPointer<Screen> watch(detail);

        // A request in flight holds its screen.
        QString seenTitle;
        HttpRequest request;
        request.url = "http://svc.test/api/?do=farmList";
        fake->http->send(request, {}, [self = strong(detail), &seenTitle](const HttpResponse&) {
            self->setTitle(QStringLiteral("Tarlalarım"));
            seenTitle = self->title();
        });
        nav->popViewControllerAnimated();
        runDeferredDeletes();
        QVERIFY(watch);

        fake->http->flush();
        QCOMPARE(seenTitle, QStringLiteral("Tarlalarım"));
        runDeferredDeletes();
        QVERIFY(!watch);

        // The same with a plain handle: the last one to go frees the screen.
        auto* other = new Screen(QStringLiteral("other"), &journal);
        QPointer<Screen> watchOther(other);
        other->retain();
        {
            Strong<Screen> handle(other);
            Strong<Screen> copy(handle);
            other->release();
            runDeferredDeletes();
            QVERIFY(watchOther);
        }
        runDeferredDeletes();
        QVERIFY(!watchOther);
    }

    // --- Redirections

    void redirectionAfterPostBecomesGet() {
        HttpRequest post;
        post.method = "POST";
        post.url = "http://svc.test/api/?do=login";
        post.setHeader("Content-Type", "application/json");
        post.setHeader("Content-Length", "7");
        post.setHeader("Authorization", "Bearer abc");
        post.body = "{\"a\":1}";

        const HttpRequest found = HttpClient::proposedRedirect(post, redirectReply("http://svc.test/api/v2/?do=login", 302));
        QCOMPARE(found.method, QByteArray("GET"));
        QVERIFY(found.body.isEmpty());
        QVERIFY(!found.hasHeader("content-type"));
        QVERIFY(!found.hasHeader("Content-Length"));
        QCOMPARE(found.header("Authorization"), QByteArray("Bearer abc"));
        QCOMPARE(found.url, QByteArray("http://svc.test/api/v2/?do=login"));

        HttpRequest put = post;
        put.method = "PUT";
        QCOMPARE(HttpClient::proposedRedirect(put, redirectReply("/x", 303)).method, QByteArray("GET"));

        for (int code : {307, 308}) {
            const HttpRequest kept = HttpClient::proposedRedirect(post, redirectReply("https://svc.test/api/", code));
            QCOMPARE(kept.method, QByteArray("POST"));
            QCOMPARE(kept.body, post.body);
            QCOMPARE(kept.header("Content-Type"), QByteArray("application/json"));
            QCOMPARE(kept.url, QByteArray("https://svc.test/api/"));
        }
    }

    void redirectionResolvesRelativeLocations_data() {
        QTest::addColumn<QByteArray>("location");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("absolute path") << QByteArray("/v2/login?x=1") << QByteArray("http://svc.test/v2/login?x=1");
        QTest::newRow("relative path") << QByteArray("next?y=2") << QByteArray("http://svc.test/api/next?y=2");
        QTest::newRow("other host") << QByteArray("//cdn.test/a.png") << QByteArray("http://cdn.test/a.png");
        QTest::newRow("encoded") << QByteArray("/ara?q=%C3%A7ift%C3%A7i&k=a%2Bb%26c")
                                 << QByteArray("http://svc.test/ara?q=%C3%A7ift%C3%A7i&k=a%2Bb%26c");
    }
    void redirectionResolvesRelativeLocations() {
        QFETCH(QByteArray, location);
        QFETCH(QByteArray, expected);
        HttpRequest get;
        get.url = "http://svc.test/api/?do=login";
        QCOMPARE(HttpClient::proposedRedirect(get, redirectReply(location, 301)).url, expected);
    }
};

QTEST_GUILESS_MAIN(RuntimeTest)
#include "tst_runtime.moc"
