// ekinora-server: the reference service on one port, with the demo accounts printed at start.

#include "core/Server.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <pthread.h>
#include <string>

namespace {

const char* Usage = "Kullanım: ekinora-server [seçenekler]\n"
                    "  --host HOST                dinlenecek adres (varsayılan 127.0.0.1)\n"
                    "  --port PORT                port (varsayılan 8470; 0 boş bir port seçer)\n"
                    "  --db PATH                  SQLite dosyası (varsayılan ./ekinora-server.db)\n"
                    "  --data-dir DIR             tohum verisinin klasörü\n"
                    "  --static-dir DIR           medya dosyalarının klasörü\n"
                    "  --maintenance [METİN]      `maintenance` komutu bakım bildirsin\n"
                    "  --probe-down [MESAJ]       \"/check\" hizmet dışı desin\n"
                    "  --popup on|off             kampanya açılır penceresi\n"
                    "  --version-published X      uygulamanın güncelleme denetiminin okuduğu sürüm\n"
                    "  --quiet                    istekleri ve SMS kodlarını yazma\n"
                    "  --demo                     tanıtım kipi: tanıtım hesaplarının sabit tokenları geçer,\n"
                    "                             `sms/get` gönderdiği kodu yanıtında da verir\n";

[[noreturn]] void fail(const std::string& message) {
    std::cerr << "ekinora-server: " << message << "\n\n" << Usage;
    std::exit(2);
}

} // namespace

int main(int argc, char** argv) {
    ekinora::server::ServerOptions options;
    options.port = 8470;
    options.dbPath = "ekinora-server.db";
    options.quiet = false;

    // The maintenance and probe switches are modes of one run: they start off unless asked for,
    // so a demo that ended in maintenance does not stay there. Popup and version persist.
    bool maintenance = false, probeDown = false;
    std::string maintenanceText, probeMessage;
    std::optional<bool> popup;
    std::optional<std::string> version;

    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) fail(arg + " bir değer bekliyor");
            return argv[++i];
        };
        auto optionalValue = [&]() -> std::string {
            if (i + 1 < argc && std::string(argv[i + 1]).rfind("--", 0) != 0) return argv[++i];
            return {};
        };
        if (arg == "--host")
            options.host = value();
        else if (arg == "--port") {
            const std::string text = value();
            char* end = nullptr;
            const long port = std::strtol(text.c_str(), &end, 10);
            if (text.empty() || *end || port < 0 || port > 65535) fail("geçersiz port: " + text);
            options.port = int(port);
        } else if (arg == "--db")
            options.dbPath = value();
        else if (arg == "--data-dir")
            options.dataDir = value();
        else if (arg == "--static-dir")
            options.staticDir = value();
        else if (arg == "--maintenance") {
            maintenance = true;
            maintenanceText = optionalValue();
        } else if (arg == "--probe-down") {
            probeDown = true;
            probeMessage = optionalValue();
        } else if (arg == "--popup") {
            const std::string state = value();
            if (state != "on" && state != "off") fail("--popup on ya da off bekliyor");
            popup = state == "on";
        } else if (arg == "--version-published")
            version = value();
        else if (arg == "--quiet")
            options.quiet = true;
        else if (arg == "--demo")
            options.demo = true;
        else if (arg == "--help" || arg == "-h") {
            std::cout << Usage;
            return 0;
        } else
            fail("bilinmeyen seçenek: " + arg);
    }

    // The serving threads inherit this mask, so the signals reach only sigwait below.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    const std::string host = options.host;
    const bool demo = options.demo;
    ekinora::server::Server server(std::move(options));
    try {
        server.setMaintenance(maintenance, maintenanceText);
        server.setProbeDown(probeDown, probeMessage);
        if (popup) server.setPopupActive(*popup);
        if (version) server.setPublishedVersion(*version);
        const int port = server.start();
        std::cout << "Ekinora referans servisi: http://" << host << ":" << port << "\n"
                  << (demo ? "Tanıtım kipi açık: sabit tokenlar geçer, SMS kodu yanıtta da verilir.\n"
                          : "Tanıtım kipi kapalı: giriş SMS koduyla (kod bu konsolda yazılır).\n")
                  << server.demoAccountsText() << std::flush;
    } catch (const std::exception& e) {
        std::cerr << "ekinora-server: " << e.what() << std::endl;
        return 1;
    }

    int received = 0;
    sigwait(&signals, &received);
    std::cout << "Durduruluyor (" << (received == SIGINT ? "SIGINT" : "SIGTERM") << ")" << std::endl;
    server.stop();
    return 0;
}
