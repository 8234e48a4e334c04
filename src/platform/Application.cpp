#include "Application.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

namespace ekinora::platform {

namespace {
Application* g_shared = nullptr;
}

Application::Application(QObject* parent) : QObject(parent) {
    g_shared = this;
    m_version = QCoreApplication::applicationVersion();
}

Application::~Application() {
    if (g_shared == this) g_shared = nullptr;
}

Application* Application::shared() { return g_shared; }

void Application::setApplicationIconBadgeNumber(int n) {
    if (m_badge == n) return;
    m_badge = n;
    emit applicationIconBadgeNumberChanged();
}

bool Application::openURL(const QUrl& url) {
    log(QStringLiteral("openURL %1").arg(url.toString()));
    emit urlOpened(url);
    return m_opener ? m_opener(url) : false;
}

bool Application::canOpenURL(const QUrl& url) const {
    if (m_checker) return m_checker(url);
    static const QStringList known{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto"),
                                   QStringLiteral("tel")};
    return known.contains(url.scheme().toLower());
}

int Application::supportedInterfaceOrientations() const {
    return m_orientation ? m_orientation() : OrientationMaskPortrait;
}

void Application::log(const QString& line) {
    if (m_echo) {
        const QByteArray bytes = line.toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
    emit logged(line);
}

void Application::terminate(int code, const QString& reason) {
    log(QStringLiteral("terminating with code %1: %2").arg(code).arg(reason));
    emit terminated(code, reason);
    if (m_beforeEnding) m_beforeEnding();
    if (m_ending) {
        m_ending(code);
        return;
    }
    std::fflush(stdout);
    std::exit(code);
}

void Application::fatalStop(const QString& reason) {
    if (g_shared) g_shared->terminate(FaultExitCode, reason);
    else {
        std::fprintf(stderr, "%s\n", reason.toUtf8().constData());
        std::exit(FaultExitCode);
    }
    // Only a test's ending comes back here.
    throw FatalStop(FaultExitCode, reason);
}

} // namespace ekinora::platform
