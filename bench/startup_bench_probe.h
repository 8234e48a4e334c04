#pragma once

// What the start-up benchmark reads inside a measured process: the time since the kernel started the
// process (not since main), the frames the window swaps and what each of them showed, and the resident
// memory of the process and of every process it started (the web engine's helpers).

#include <QByteArray>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <mutex>
#include <unistd.h>
#include <vector>

namespace startup {

// Milliseconds since the process was started, from its start time in /proc/self/stat (clock ticks
// since boot, so at most one tick early: the figure errs on the long side).
inline double sinceProcessStart() {
    static const double startMs = [] {
        QFile stat(QStringLiteral("/proc/self/stat"));
        if (!stat.open(QIODevice::ReadOnly)) return 0.0;
        const QByteArray line = stat.readAll();
        // The fields after the command name, which may hold blanks, start after its last ')'.
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        const double ticks = fields.value(19).toDouble(); // field 22 of the whole line
        return ticks * 1000.0 / double(sysconf(_SC_CLK_TCK));
    }();
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1e6 - startMs;
}

// Processor time this process has used so far, all its threads, in milliseconds: on a busy machine
// the wall-clock figures wait for a processor, this one does not.
inline double processorMs() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return double(used.tv_sec) * 1000.0 + double(used.tv_nsec) / 1e6;
}

inline long residentKiB(const QString& pid) {
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').value(0).toLong();
    return 0;
}

// This process and all its descendants.
inline QStringList processTree() {
    std::multimap<QString, QString> children;
    for (const QString& pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        if (pid.isEmpty() || !pid.at(0).isDigit()) continue;
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (!stat.open(QIODevice::ReadOnly)) continue;
        const QByteArray line = stat.readAll();
        const QByteArray ppid = line.mid(line.lastIndexOf(')') + 2).split(' ').value(1);
        children.emplace(QString::fromLatin1(ppid), pid);
    }
    QStringList tree{QString::number(getpid())};
    for (int i = 0; i < tree.size(); ++i) {
        auto range = children.equal_range(tree.at(i));
        for (auto it = range.first; it != range.second; ++it) tree << it->second;
    }
    return tree;
}

struct Memory {
    double appMB = 0;
    double treeMB = 0;
    int helpers = 0;       // processes started by this one
    bool webEngine = false; // the web engine's library is mapped
};

inline Memory memoryNow() {
    Memory m;
    const QStringList tree = processTree();
    long total = 0;
    for (const QString& pid : tree) total += residentKiB(pid);
    m.appMB = residentKiB(QStringLiteral("self")) / 1024.0;
    m.treeMB = total / 1024.0;
    m.helpers = int(tree.size()) - 1;
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (maps.open(QIODevice::ReadOnly)) m.webEngine = maps.readAll().contains("libQt6WebEngineCore");
    return m;
}

// The first item of that name, or the first visible one.
inline QQuickItem* findItem(QQuickItem* root, const QString& name, bool visibleOnly = false) {
    if (!root || (visibleOnly && !root->isVisible())) return nullptr;
    if (root->objectName() == name) return root;
    for (QQuickItem* child : root->childItems())
        if (QQuickItem* found = findItem(child, name, visibleOnly)) return found;
    return nullptr;
}

// Times the first frame in which each watched condition held. A condition is tested while the frame's
// scene is synchronised (the GUI thread is then still or blocked), and the frame counts when it is
// swapped.
class FrameProbe {
public:
    using Condition = std::function<bool()>;

    explicit FrameProbe(QQuickWindow* window) {
        QObject::connect(window, &QQuickWindow::beforeSynchronizing, window, [this] { synced(); }, Qt::DirectConnection);
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [this] { swapped(); }, Qt::DirectConnection);
    }
    // Returns the mark's number; the first condition should be added before the first frame.
    int watch(Condition condition) {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_conditions.push_back(std::move(condition));
        m_times.push_back(-1);
        m_processor.push_back(-1);
        return int(m_conditions.size()) - 1;
    }
    // -1 until seen.
    double at(int mark) const {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_times.at(size_t(mark));
    }
    // Processor time used by then; -1 until seen.
    double processorAt(int mark) const {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_processor.at(size_t(mark));
    }
    int frames() const { return m_frames; }

private:
    void synced() {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_synced.assign(m_conditions.size(), false);
        for (size_t i = 0; i < m_conditions.size(); ++i)
            if (m_times[i] < 0) m_synced[i] = m_conditions[i]();
    }
    void swapped() {
        const double now = sinceProcessStart();
        const double used = processorMs();
        std::lock_guard<std::mutex> lock(m_mutex);
        ++m_frames;
        for (size_t i = 0; i < m_synced.size(); ++i) {
            if (m_synced[i] && m_times[i] < 0) {
                m_times[i] = now;
                m_processor[i] = used;
            }
        }
        m_synced.clear();
    }

    mutable std::mutex m_mutex;
    std::vector<Condition> m_conditions;
    std::vector<double> m_times;
    std::vector<double> m_processor;
    std::vector<bool> m_synced;
    std::atomic<int> m_frames{0};
};

// Runs the event loop until the condition holds or the time is up; true if it held.
inline bool waitUntil(const std::function<bool()>& condition, int timeoutMs) {
    QEventLoop loop;
    QTimer tick;
    tick.setInterval(2);
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        if (condition()) loop.quit();
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    tick.start();
    if (!condition()) loop.exec();
    return condition();
}

// One line of key=value figures for the driver.
inline void report(const std::vector<std::pair<const char*, double>>& figures) {
    std::printf("figures");
    for (const auto& [key, value] : figures) std::printf(" %s=%.2f", key, value);
    std::printf("\n");
    std::fflush(stdout);
}

} // namespace startup
