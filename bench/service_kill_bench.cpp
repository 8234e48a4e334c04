// The reference service killed (SIGKILL) at random moments under a write load, and started again on
// the same database file, over and over. After each kill the database must open and pass its
// integrity check, every write the service confirmed must be there, and no write may be half there:
// a farm's size and its products are changed in one transaction, so they always agree.
// Prints the figures; exits 1 when anything confirmed was lost or half written.
// Usage: service_kill_bench [--kills N] [--threads N] [--seed N] [--server PATH]
#include "core/Database.h"

#include <httplib.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

#ifndef EKINORA_SERVER_BINARY
#define EKINORA_SERVER_BINARY "ekinora-server"
#endif

namespace {

using Json = nlohmann::ordered_json;
using ekinora::server::Database;

struct Options {
    int kills = 20;
    int threads = 4;
    unsigned seed = 0;
    std::string server = EKINORA_SERVER_BINARY;
};

// A service process on the database, started in demo mode on a free port.
struct Service {
    pid_t pid = -1;
    int port = 0;
};

Service start(const Options& options, const std::string& db) {
    int out[2];
    if (pipe(out) != 0) std::exit(3);
    Service s;
    s.pid = fork();
    if (s.pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        close(out[1]);
        execl(options.server.c_str(), options.server.c_str(), "--port", "0", "--db", db.c_str(), "--quiet", "--demo",
              static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    // The first line names the address: "... http://127.0.0.1:PORT".
    std::string line;
    char c;
    while (read(out[0], &c, 1) == 1 && c != '\n')
        line += c;
    close(out[0]); // the rest of its output goes nowhere
    const auto colon = line.rfind(':');
    s.port = colon == std::string::npos ? 0 : std::atoi(line.c_str() + colon + 1);
    if (s.port <= 0) {
        std::fprintf(stderr, "the service did not start: %s\n", line.c_str());
        std::exit(3);
    }
    return s;
}

void kill9(Service& s) {
    kill(s.pid, SIGKILL);
    waitpid(s.pid, nullptr, 0);
}

// What one load thread had confirmed, and what it had in flight when the service died.
struct Ledger {
    std::string token;
    std::int64_t farm = 0;
    int confirmedSize = 0, pendingSize = 0;
    std::vector<std::pair<std::int64_t, std::string>> subjects; // id, title
    std::vector<std::pair<std::int64_t, std::string>> messages; // id, text
};

int sizeProducts(int size) {
    return size % 3 + 1;
}

// Writes back to back until the service goes away: a farm's size with as many products as the size
// says, a question, a message in it.
void load(int port, Ledger& ledger, const std::vector<std::int64_t>& aps, int round, std::atomic<long>& confirmed) {
    httplib::Client client("127.0.0.1", port);
    client.set_keep_alive(true);
    client.set_connection_timeout(2);
    const httplib::Headers auth = {{"Authorization", "Bearer " + ledger.token}};
    auto post = [&](const std::string& command, const Json& body) -> Json {
        auto r = client.Post(("/api/?do=" + command).c_str(), auth, body.dump(), "application/json");
        if (!r) return nullptr;
        Json reply = Json::parse(r->body, nullptr, false);
        return reply.is_object() && reply.value("status", 0) == 200 ? reply : Json(nullptr);
    };
    for (int n = 0;; ++n) {
        const int size = (ledger.confirmedSize % 9000) + 1;
        Json farm = {{"produceId", 1}, {"range", size}, {"aps", Json::array()}};
        for (int i = 0; i < sizeProducts(size); ++i)
            farm["aps"].push_back(aps[size_t(i)]);
        if (ledger.farm) farm["id"] = ledger.farm;
        ledger.pendingSize = size;
        Json reply = post("produce/set", farm);
        if (reply.is_null()) return;
        ledger.farm = reply["data"]["farmerProduce"]["id"].get<std::int64_t>();
        ledger.confirmedSize = size;
        ++confirmed;

        const std::string title = "Yük " + std::to_string(round) + "-" + std::to_string(n);
        reply = post("subject/add", {{"title", title}, {"description", "Dayanıklılık denemesi"}});
        if (reply.is_null()) return;
        const auto subject = reply["data"]["subject"]["id"].get<std::int64_t>();
        ledger.subjects.emplace_back(subject, title);
        ++confirmed;

        const std::string text = "Mesaj " + title;
        reply = post("subject/message/send", {{"subjectId", subject}, {"text", text}});
        if (reply.is_null()) return;
        ledger.messages.emplace_back(reply["data"]["message"]["id"].get<std::int64_t>(), text);
        ++confirmed;
    }
}

struct Findings {
    long lost = 0, halfWritten = 0;
    bool intact = true;
};

Findings check(const std::string& path, const std::vector<Ledger>& ledgers) {
    Findings f;
    Database db(path);
    const auto integrity = db.queryRow("PRAGMA integrity_check");
    f.intact = integrity && integrity->begin().value() == "ok";
    for (const auto& l : ledgers) {
        for (const auto& [id, title] : l.subjects)
            if (db.scalar("SELECT COUNT(*) FROM subjects WHERE id = ? AND title = ?", {id, title}) != 1) ++f.lost;
        for (const auto& [id, text] : l.messages)
            if (db.scalar("SELECT COUNT(*) FROM messages WHERE id = ? AND text = ?", {id, text}) != 1) ++f.lost;
        if (!l.farm) continue;
        const auto farm = db.queryRow("SELECT size_dekar FROM farms WHERE id = ?", {l.farm});
        if (!farm) {
            ++f.lost;
            continue;
        }
        const int size = int(farm->at("size_dekar").get<double>());
        if (size != l.confirmedSize && size != l.pendingSize) ++f.lost;
        if (db.scalar("SELECT COUNT(*) FROM farm_aps WHERE farm_id = ?", {l.farm}) != sizeProducts(size))
            ++f.halfWritten;
    }
    // A message never outlives its question.
    f.halfWritten += db.scalar("SELECT COUNT(*) FROM messages m LEFT JOIN subjects s ON s.id = m.subject_id"
                               " WHERE s.id IS NULL");
    return f;
}

[[noreturn]] void usage() {
    std::fprintf(stderr, "usage: service_kill_bench [--kills N] [--threads N] [--seed N] [--server PATH]\n");
    std::exit(2);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    options.seed = unsigned(std::random_device{}());
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) usage();
        const std::string value = argv[++i];
        if (arg == "--kills")
            options.kills = std::atoi(value.c_str());
        else if (arg == "--threads")
            options.threads = std::atoi(value.c_str());
        else if (arg == "--seed")
            options.seed = unsigned(std::strtoul(value.c_str(), nullptr, 10));
        else if (arg == "--server")
            options.server = value;
        else
            usage();
    }
    if (options.kills < 1 || options.threads < 1) usage();
    signal(SIGPIPE, SIG_IGN);

    std::string pattern = (std::filesystem::temp_directory_path() / "service_kill.XXXXXX").string();
    if (!mkdtemp(pattern.data())) return 3;
    const std::filesystem::path dir = pattern;
    const std::string path = (dir / "kill.db").string();
    std::mt19937 random(options.seed);

    // One farmer a thread, each with a token, added beside the running service.
    Service service = start(options, path);
    std::vector<Ledger> ledgers(size_t(options.threads));
    std::vector<std::int64_t> aps;
    {
        Database db(path);
        for (const auto& row : db.query("SELECT id FROM aps ORDER BY id LIMIT 3"))
            aps.push_back(row["id"].get<std::int64_t>());
        const auto place = *db.queryRow("SELECT city_id, id FROM counties LIMIT 1");
        for (int t = 0; t < options.threads; ++t) {
            db.execute("INSERT INTO users (phone, fullname, type, city_id, county_id, menu) VALUES (?, ?, 'farmer', ?, ?, '[0]')",
                       {"0599000" + std::to_string(1000 + t), "Yük Çiftçisi " + std::to_string(t),
                        place.at("city_id").get<std::int64_t>(), place.at("id").get<std::int64_t>()});
            ledgers[size_t(t)].token = "kill-load-" + std::to_string(t);
            db.execute("INSERT INTO tokens (token, user_id) VALUES (?, ?)", {ledgers[size_t(t)].token, db.lastInsertId()});
        }
    }
    if (aps.size() < 3) return 3;

    std::printf("kill -9 under a write load: %d kills, %d writing threads, seed %u\n", options.kills, options.threads,
                options.seed);
    std::atomic<long> confirmed{0};
    Findings total;
    int survived = 0;
    const auto started = std::chrono::steady_clock::now();
    for (int round = 0; round < options.kills; ++round) {
        if (round > 0) service = start(options, path);
        std::vector<std::thread> writers;
        for (auto& ledger : ledgers)
            writers.emplace_back(load, service.port, std::ref(ledger), std::cref(aps), round, std::ref(confirmed));
        std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution<int>(50, 600)(random)));
        kill9(service);
        for (auto& w : writers)
            w.join();

        const Findings f = check(path, ledgers);
        total.lost += f.lost;
        total.halfWritten += f.halfWritten;
        total.intact = total.intact && f.intact;
        if (f.intact && !f.lost && !f.halfWritten) ++survived;
        else
            std::printf("kill %d: integrity %s, %ld lost, %ld half written\n", round + 1, f.intact ? "ok" : "FAILED",
                        f.lost, f.halfWritten);
    }
    // Started once more, the service answers from what it kept.
    service = start(options, path);
    httplib::Client client("127.0.0.1", service.port);
    auto farms = client.Get("/api/?do=farmer/produces", {{"Authorization", "Bearer " + ledgers[0].token}});
    const bool answers = farms && farms->body.rfind("{\"status\":200", 0) == 0;
    kill(service.pid, SIGTERM);
    waitpid(service.pid, nullptr, 0);

    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::printf("%d of %d kills survived with nothing lost: %ld confirmed writes checked, %ld lost, %ld half written, "
                "integrity %s, restarted service %s; %.1f s\n",
                survived, options.kills, confirmed.load(), total.lost, total.halfWritten, total.intact ? "ok" : "FAILED",
                answers ? "answers" : "DOES NOT ANSWER", seconds);
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
    return survived == options.kills && answers ? 0 : 1;
}
