// The store on disk survives the app being killed while it writes: a child process signs in and out
// over and over, each change followed by the store's synchronize, and is killed at random moments.
// The file must read back whole, in the state of the last change it confirmed or of the one under way.

#include "FakePlatform.h"
#include "service/LocalStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace ekinora;
using namespace ekinora::service;

namespace {

// Change n: every fourth a logout, the others a sign-in whose token and record name n.
void change(int n) {
    if (n % 4 == 0) return LocalStore::logoutReset();
    auto& d = LocalStore::defaults();
    d.setString(StoreKey::Token, QStringLiteral("token-%1").arg(n));
    LocalStore::setUserInfo(QJsonObject{{"n", n}, {"type", "farmer"}, {"fullname", QString(2000, QChar(0x15f))}});
    d.synchronize();
}

// Writes changes from `first` on until killed, printing each one's number once it is synchronized.
int writeUntilKilled(const QString& ini, int first) {
    platform::Platform platform(new platform::ManualScheduler, new platform::UserDefaults(ini),
                                new testing::ScriptedHttpClient, new testing::ScriptedPush);
    for (int n = first;; ++n) {
        change(n);
        std::printf("%d\n", n);
        std::fflush(stdout);
    }
}

// Whether the store holds exactly what change n left.
bool holds(const platform::UserDefaults& d, int n) {
    if (n % 4 == 0)
        return !d.contains(StoreKey::Token) && !d.contains(StoreKey::UserInfo) &&
               d.stringForKey(StoreKey::IsLogout) == QLatin1String("YES") &&
               d.jsonForKey(StoreKey::WeatherKeys).toArray() == LocalStore::defaultWeatherKeys();
    const QJsonObject record = d.jsonForKey(StoreKey::UserInfo).toObject();
    return d.stringForKey(StoreKey::Token) == QStringLiteral("token-%1").arg(n) && record.value("n").toInt() == n &&
           record.value("fullname").toString().size() == 2000;
}

} // namespace

class StoreKillTest : public QObject {
    Q_OBJECT
private slots:
    void killedWhileWritingLosesNothingConfirmed() {
        QTemporaryDir dir;
        const QString ini = dir.filePath("settings.ini");
        int confirmed = 0; // the last change the store confirmed, over all runs
        const int kills = qEnvironmentVariableIntValue("EKINORA_STORE_KILLS") > 0
                              ? qEnvironmentVariableIntValue("EKINORA_STORE_KILLS")
                              : 6;
        int changes = 0;
        for (int round = 0; round < kills; ++round) {
            const int first = (round + 1) * 100000 + 1;
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {"--write", ini, QString::number(first)});
            QVERIFY(writer.waitForStarted());
            QTest::qWait(int(QRandomGenerator::global()->bounded(100, 600)));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            const QList<QByteArray> lines = writer.readAllStandardOutput().split('\n');
            int last = 0;
            for (const QByteArray& line : lines)
                if (!line.isEmpty()) last = line.toInt(), ++changes;
            const int underWay = last ? last + 1 : first;
            if (last) confirmed = last;

            platform::UserDefaults store(ini);
            const bool whole = confirmed == 0 || holds(store, confirmed) || holds(store, underWay);
            QVERIFY2(whole, qPrintable(QStringLiteral("kill %1: neither change %2 nor %3").arg(round).arg(confirmed).arg(underWay)));
            if (holds(store, underWay)) confirmed = underWay;
        }
        QVERIFY(changes > 0);
        // What a killed write leaves behind besides the store: its lock, which the next writer takes over.
        const QStringList left = QDir(dir.path()).entryList(QDir::Files);
        qInfo("%d kills after %d confirmed changes; files left: %s", kills, changes,
              qPrintable(left.join(", ")));
    }
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--write") return writeUntilKilled(QString::fromLocal8Bit(argv[2]), atoi(argv[3]));
    StoreKillTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_store_kill.moc"
