// Load on the reference service, in-process, on a fresh database file: client threads each keep one
// connection alive and send requests back to back for a fixed time. Prints requests a second,
// latency percentiles and errors for each scenario; the client shares the machine with the service.
// Usage: service_bench [--threads N] [--seconds S] [--warmup S] [--scenario farms|mixed|all]
#include "core/Server.h"

#include <httplib.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>

namespace {

using Clock = std::chrono::steady_clock;

struct Options {
    int threads = 4;
    double seconds = 5;
    double warmup = 1;
    std::string scenario = "all";
};

struct Request {
    std::string target;
    httplib::Headers headers;
};

// The farm list as the app asks for it: the token in the Authorization header.
std::vector<Request> farmList() {
    return {{"/api?do=farmer/produces", {{"Authorization", "Bearer demo-farmer-token"}}}};
}

// What a signed-in farmer's home asks for, round-robin; the token once as a header, once as a parameter.
std::vector<Request> mixed() {
    return {
        {"/api?do=farmer/produces", {{"Authorization", "Bearer demo-farmer-token"}}},
        {"/api?do=notifications&bearer=demo-farmer-token", {}},
        {"/api?do=produces", {}},
    };
}

struct Totals {
    std::vector<double> latenciesMs;
    long errors = 0;
    double elapsedSeconds = 0;
    double cpuSeconds = 0; // the whole process: service and clients
};

// User and system time of the process so far. On a shared machine the rate varies with the other
// load; the time a request costs varies much less.
double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// A reply counts when the transport worked and the envelope says 200.
bool succeeded(const httplib::Result& result) {
    return result && result->status == 200 && result->body.rfind("{\"status\":200,", 0) == 0;
}

Totals drive(int port, const std::vector<Request>& requests, int threads, double seconds) {
    std::atomic<bool> stop{false};
    std::vector<std::vector<double>> latencies(static_cast<size_t>(threads));
    std::vector<long> errors(static_cast<size_t>(threads), 0);
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            httplib::Client client("127.0.0.1", port);
            client.set_keep_alive(true);
            client.set_tcp_nodelay(true);
            auto& mine = latencies[size_t(t)];
            mine.reserve(200000);
            size_t next = size_t(t);
            while (!stop.load(std::memory_order_relaxed)) {
                const Request& r = requests[next++ % requests.size()];
                const auto started = Clock::now();
                auto result = client.Get(r.target, r.headers);
                const auto took = std::chrono::duration<double, std::milli>(Clock::now() - started).count();
                mine.push_back(took);
                if (!succeeded(result)) ++errors[size_t(t)];
            }
        });
    }
    const auto started = Clock::now();
    const double cpuStarted = cpuSeconds();
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    stop = true;
    for (auto& w : workers)
        w.join();

    Totals totals;
    totals.elapsedSeconds = std::chrono::duration<double>(Clock::now() - started).count();
    totals.cpuSeconds = cpuSeconds() - cpuStarted;
    for (int t = 0; t < threads; ++t) {
        totals.latenciesMs.insert(totals.latenciesMs.end(), latencies[size_t(t)].begin(),
                                  latencies[size_t(t)].end());
        totals.errors += errors[size_t(t)];
    }
    std::sort(totals.latenciesMs.begin(), totals.latenciesMs.end());
    return totals;
}

double percentile(const std::vector<double>& sorted, double p) {
    if (sorted.empty()) return 0;
    const size_t rank = std::min(sorted.size() - 1, size_t(p / 100.0 * double(sorted.size())));
    return sorted[rank];
}

void run(const char* name, int port, const std::vector<Request>& requests, const Options& options) {
    drive(port, requests, options.threads, options.warmup);
    const Totals t = drive(port, requests, options.threads, options.seconds);
    const auto count = t.latenciesMs.size();
    std::printf("%-6s threads %d, %.1f s: %zu requests, %.0f req/s, latency ms p50 %.2f p90 %.2f p99 %.2f "
                "max %.2f, errors %ld, cpu %.0f us/request\n",
                name, options.threads, t.elapsedSeconds, count, double(count) / t.elapsedSeconds,
                percentile(t.latenciesMs, 50), percentile(t.latenciesMs, 90), percentile(t.latenciesMs, 99),
                count ? t.latenciesMs.back() : 0.0, t.errors, count ? t.cpuSeconds * 1e6 / double(count) : 0.0);
    std::fflush(stdout);
}

// VmRSS of the process, which holds the service, in MB; -1 when unreadable.
double residentMb() {
    std::FILE* status = std::fopen("/proc/self/status", "r");
    if (!status) return -1;
    char line[256];
    long kb = -1;
    while (std::fgets(line, sizeof line, status))
        if (std::sscanf(line, "VmRSS: %ld kB", &kb) == 1) break;
    std::fclose(status);
    return kb < 0 ? -1 : double(kb) / 1024.0;
}

[[noreturn]] void usage() {
    std::fprintf(stderr,
                 "usage: service_bench [--threads N] [--seconds S] [--warmup S] [--scenario farms|mixed|all]\n");
    std::exit(2);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) usage();
        const std::string value = argv[++i];
        if (arg == "--threads")
            options.threads = std::atoi(value.c_str());
        else if (arg == "--seconds")
            options.seconds = std::atof(value.c_str());
        else if (arg == "--warmup")
            options.warmup = std::atof(value.c_str());
        else if (arg == "--scenario")
            options.scenario = value;
        else
            usage();
    }
    if (options.threads < 1 || options.seconds <= 0 || options.warmup < 0 ||
        (options.scenario != "farms" && options.scenario != "mixed" && options.scenario != "all"))
        usage();

    // A database file, as the service runs in production (WAL), in a folder of its own.
    std::string pattern = (std::filesystem::temp_directory_path() / "service_bench.XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        std::perror("mkdtemp");
        return 1;
    }
    const std::filesystem::path dir = pattern;
    {
        ekinora::server::ServerOptions serverOptions;
        serverOptions.dbPath = (dir / "bench.db").string();
        ekinora::server::Server server(serverOptions);
        const int port = server.start();
        std::printf("service on port %d, %u hardware threads; budget: 5000 req/s, p99 < 10 ms for the farm list\n",
                    port, std::thread::hardware_concurrency());
        if (options.scenario != "mixed") run("farms", port, farmList(), options);
        if (options.scenario != "farms") run("mixed", port, mixed(), options);
        std::printf("resident memory after the runs: %.1f MB\n", residentMb());
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
    return 0;
}
