// Dealers selling at once on the reference service, in-process on loopback, on a fresh database:
// each dealer thread opens a sale for a farmer, adds package codes, reads the list and confirms it,
// round after round. Part of every round's codes are the same for all dealers, so they race for
// them. Bounded by time and by rounds. Prints requests a second and latency percentiles per command,
// then checks the database: no code on two confirmed sales, no code credited twice, each farmer's
// points equal to what his confirmed sales hold.
// Usage: sale_bench [--dealers N] [--seconds S] [--rounds R]
#include "core/Database.h"
#include "core/Server.h"
#include "loyalty/Loyalty.h"

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Json = nlohmann::ordered_json;
using ekinora::server::loyalty::serialNumber;

struct Options {
    int dealers = 8;
    double seconds = 5;
    int rounds = 100; // per dealer
};

constexpr int Farmers = 8;
constexpr int Shared = 2;        // codes a round takes from the pool all dealers race for
constexpr int Own = 3;           // codes a round takes from the dealer's own slice
constexpr int FirstCode = 100;   // below: the demo's packages
constexpr int SharedCodes = 400; // codes FirstCode .. FirstCode+SharedCodes-1 are raced for

struct Stats {
    std::map<std::string, std::vector<double>> latencies; // by command
    long errors = 0;     // transport failures or a status that is neither 200 nor 400
    long refusals = 0;   // warnings: mostly a code another dealer holds or sold
    long confirmed = 0;
    long rounds = 0;
};

double percentile(const std::vector<double>& sorted, double p) {
    if (sorted.empty()) return 0;
    return sorted[std::min(sorted.size() - 1, size_t(p / 100.0 * double(sorted.size())))];
}

[[noreturn]] void usage() {
    std::fprintf(stderr, "usage: sale_bench [--dealers N] [--seconds S] [--rounds R]\n");
    std::exit(2);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) usage();
        const std::string value = argv[++i];
        if (arg == "--dealers") options.dealers = std::atoi(value.c_str());
        else if (arg == "--seconds") options.seconds = std::atof(value.c_str());
        else if (arg == "--rounds") options.rounds = std::atoi(value.c_str());
        else usage();
    }
    if (options.dealers < 1 || options.dealers > 64 || options.seconds <= 0 || options.rounds < 1) usage();
    // Each dealer's own slice must fit among the seeded plant-protection codes.
    const int ownSlice = (ekinora::server::loyalty::FirstSeedBagCode - FirstCode - SharedCodes) / options.dealers;
    options.rounds = std::min(options.rounds, ownSlice / Own);

    std::string pattern = (std::filesystem::temp_directory_path() / "sale_bench.XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        std::perror("mkdtemp");
        return 1;
    }
    const std::filesystem::path dir = pattern;
    int failures = 0;
    {
        ekinora::server::ServerOptions serverOptions;
        serverOptions.dbPath = (dir / "bench.db").string();
        serverOptions.host = "127.0.0.1";
        ekinora::server::Server server(serverOptions);
        const int port = server.start();
        ekinora::server::Database db(serverOptions.dbPath);

        // Dealers and farmers of the bench, with tokens and QR codes of their own.
        std::vector<std::string> dealerTokens, farmerQrs;
        for (int d = 0; d < options.dealers; ++d) {
            db.execute("INSERT INTO users (phone, fullname, type) VALUES (?, ?, 'dealer')",
                       {"0544" + std::to_string(1000000 + d), "Bayi " + std::to_string(d)});
            dealerTokens.push_back("sale-bench-dealer-" + std::to_string(d));
            db.execute("INSERT INTO tokens (token, user_id) VALUES (?, ?)", {dealerTokens.back(), db.lastInsertId()});
        }
        for (int f = 0; f < Farmers; ++f) {
            db.execute("INSERT INTO users (phone, fullname, type) VALUES (?, ?, 'farmer')",
                       {"0555" + std::to_string(1000000 + f), "Çiftçi " + std::to_string(f)});
            farmerQrs.push_back("EKNQBENCH" + std::to_string(f));
            db.execute("INSERT INTO loyalty_qr_codes (user_id, code) VALUES (?, ?)", {db.lastInsertId(), farmerQrs.back()});
        }
        std::printf("service on 127.0.0.1:%d, %d dealers, %d farmers, at most %d rounds a dealer or %.1f s\n", port,
                    options.dealers, Farmers, options.rounds, options.seconds);

        std::vector<Stats> stats(size_t(options.dealers));
        std::vector<std::thread> workers;
        const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                 std::chrono::duration<double>(options.seconds));
        const auto started = Clock::now();
        for (int d = 0; d < options.dealers; ++d)
            workers.emplace_back([&, d] {
                Stats& mine = stats[size_t(d)];
                httplib::Client client("127.0.0.1", port);
                client.set_keep_alive(true);
                client.set_tcp_nodelay(true);
                const httplib::Headers headers = {{"Authorization", "Bearer " + dealerTokens[size_t(d)]}};
                auto send = [&](const std::string& command, const std::string& target, const Json* body) -> Json {
                    const auto t0 = Clock::now();
                    auto result = body ? client.Post(target, headers, body->dump(), "application/json; charset=UTF-8")
                                       : client.Get(target, headers);
                    mine.latencies[command].push_back(
                        std::chrono::duration<double, std::milli>(Clock::now() - t0).count());
                    if (!result || result->status != 200) {
                        ++mine.errors;
                        return nullptr;
                    }
                    Json reply = Json::parse(result->body, nullptr, false);
                    const int status = reply.is_object() ? reply.value("status", 0) : 0;
                    if (status == 400) ++mine.refusals;
                    else if (status != 200) ++mine.errors;
                    return reply;
                };
                for (int round = 0; round < options.rounds && Clock::now() < deadline; ++round) {
                    const Json create{{"type", round % 5 == 4 ? "award" : "sales"},
                                      {"qrCode", farmerQrs[size_t((d + round) % Farmers)]},
                                      {"do", "dealer/create-transaction"}};
                    const Json created = send("create", "/api/?do=dealer/create-transaction", &create);
                    if (!created.is_object() || !created["data"].is_object()) continue;
                    const std::string hash = created["data"].value("TransactionId", "");
                    std::vector<int> codes;
                    for (int j = 0; j < Shared; ++j)
                        codes.push_back(FirstCode + (round * Shared + j) % SharedCodes);
                    for (int j = 0; j < Own; ++j)
                        codes.push_back(FirstCode + SharedCodes + d * ownSlice + round * Own + j);
                    for (int n : codes) {
                        const Json add{{"hash", hash}, {"serialNumber", serialNumber(n)}};
                        send("add", "/api/?do=dealer/add-agricultural-pesticide-code", &add);
                    }
                    const Json none = Json::object();
                    send("list", "/api/?do=dealer/agricultural-pesticide-list", &none);
                    const Json done = send("confirm", "/api/?do=dealer/confirm-agricultural-pesticide&hash=" + hash, nullptr);
                    if (done.is_object() && done.value("status", 0) == 200) ++mine.confirmed;
                    ++mine.rounds;
                }
            });
        for (auto& w : workers)
            w.join();
        const double elapsed = std::chrono::duration<double>(Clock::now() - started).count();

        std::map<std::string, std::vector<double>> all;
        Stats total;
        for (const auto& s : stats) {
            for (const auto& [command, list] : s.latencies)
                all[command].insert(all[command].end(), list.begin(), list.end());
            total.errors += s.errors;
            total.refusals += s.refusals;
            total.confirmed += s.confirmed;
            total.rounds += s.rounds;
        }
        std::vector<double> every;
        for (auto& [command, list] : all) {
            std::sort(list.begin(), list.end());
            every.insert(every.end(), list.begin(), list.end());
            std::printf("  %-8s %6zu requests, latency ms p50 %.2f p90 %.2f p99 %.2f max %.2f\n", command.c_str(),
                        list.size(), percentile(list, 50), percentile(list, 90), percentile(list, 99),
                        list.empty() ? 0.0 : list.back());
        }
        std::sort(every.begin(), every.end());
        std::printf("all      %6zu requests in %.2f s: %.0f req/s, p50 %.2f p90 %.2f p99 %.2f ms; %ld rounds, "
                    "%ld confirmed, %ld refusals, %ld errors\n",
                    every.size(), elapsed, double(every.size()) / elapsed, percentile(every, 50),
                    percentile(every, 90), percentile(every, 99), total.rounds, total.confirmed, total.refusals,
                    total.errors);
        server.stop();

        // The checks, on the database the service left.
        const auto twice = db.scalar("SELECT COUNT(*) FROM (SELECT t.serial FROM loyalty_transaction_codes t"
                                     " JOIN loyalty_transactions x ON x.id = t.transaction_id AND x.state = 'confirmed'"
                                     " GROUP BY t.serial HAVING COUNT(*) > 1)");
        const auto sold = db.scalar("SELECT COUNT(*) FROM package_codes WHERE sold_in IS NOT NULL"
                                    " AND sold_in IN (SELECT id FROM loyalty_transactions WHERE hash NOT LIKE 'd3m0%')");
        const auto creditedTwice =
            db.scalar("SELECT COUNT(*) FROM (SELECT serial FROM loyalty_ledger GROUP BY serial HAVING COUNT(*) > 1)");
        // Points of each bench farmer against the codes of his confirmed sales.
        const auto mismatched = db.scalar(
            "SELECT COUNT(*) FROM users u WHERE u.phone LIKE '0555%' AND"
            " (SELECT COALESCE(SUM(points), 0) FROM loyalty_ledger WHERE user_id = u.id) !="
            " (SELECT COALESCE(SUM(l.points + l.campaign_points), 0) FROM loyalty_transactions x"
            "  JOIN loyalty_transaction_codes t ON t.transaction_id = x.id JOIN package_codes c ON c.serial = t.serial"
            "  JOIN loyalty_products l ON l.product_id = c.product_id"
            "  WHERE x.farmer_id = u.id AND x.state = 'confirmed' AND x.type = 'sales')");
        const auto heldByClosed = db.scalar("SELECT COUNT(*) FROM package_codes c JOIN loyalty_transactions x"
                                            " ON x.id = c.held_by WHERE x.state != 'open'");
        std::printf("check: %lld codes sold, %lld on two confirmed sales, %lld credited twice, %lld farmers whose "
                    "points differ from their sales, %lld held by a closed transaction\n",
                    static_cast<long long>(sold), static_cast<long long>(twice), static_cast<long long>(creditedTwice),
                    static_cast<long long>(mismatched), static_cast<long long>(heldByClosed));
        if (twice || creditedTwice || mismatched || heldByClosed) failures = 1;
        std::printf("%s\n", failures ? "CHECK FAILED" : "check passed");
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
    return failures;
}
