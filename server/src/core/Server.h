#pragma once

#include "core/Access.h"
#include "core/Clock.h"
#include "core/RequestLog.h"

#include <memory>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ekinora::server {

struct ServerOptions {
    std::string host = "127.0.0.1";
    int port = 0; // 0: any free port
    std::string dbPath = ":memory:";
    std::string dataDir;   // empty: the data folder of the source tree
    std::string staticDir; // empty: the static folder of the source tree
    bool quiet = true;     // false: one line per request and every SMS code on stdout
    // A demo's help, off for a real service: the demo accounts' fixed tokens work, and `sms/get`
    // puts the code it sends in its reply's "data"."code".
    bool demo = false;
    Clock clock;           // empty: the system clock
    // Receives every SMS code the service issues, as a gateway would (on the service's thread).
    std::function<void(const std::string& phone, const std::string& code)> smsGateway;
};

// The reference service on one port: the /api commands, "/check", the store page, bundled media
// and the demo controls. Usable in-process by tests.
class Server {
public:
    explicit Server(ServerOptions options);
    ~Server(); // stops

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Opens, migrates and seeds the database, binds, and serves on a background thread.
    // Returns the port; throws std::runtime_error on failure.
    int start();
    void stop();
    int port() const;
    std::string baseUrl() const; // "http://127.0.0.1:PORT"

    // The answer of the `maintenance` command; empty text: the default text.
    void setMaintenance(bool on, std::string text = {});
    // "/check"; empty message: the default message.
    void setProbeDown(bool down, std::string message = {});
    // The seeded campaign popup, for everybody.
    void setPopupActive(bool on);
    // The seeded campaign popup for the account of this phone only; false for an unknown phone.
    bool setPopupActiveFor(const std::string& phone, bool on);
    // Opens a registered dealer's account; false for a phone without a dealer account.
    bool activateDealer(const std::string& phone);
    // What the app's update check reads.
    void setPublishedVersion(std::string version);

    // The requests received, in order, the last 10 000 of them (the /_demo controls excepted).
    std::vector<RecordedRequest> requests() const;
    void clearRequests();

    // The /api commands with who may send them, by name.
    std::vector<std::pair<std::string, Access>> commands() const;
    // The largest body the command takes, in bytes.
    size_t bodyLimit(const std::string& command) const;

    // The lines printed at start: one per demo account with role, name, phone and, in demo mode, token.
    std::string demoAccountsText() const;

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace ekinora::server
