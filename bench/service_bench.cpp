// Load on the reference service, in-process, on a fresh database file: client threads each keep one
// connection alive and send requests back to back for a fixed time. Prints requests a second,
// latency percentiles and errors for each scenario; the client shares the machine with the service.
// The "writes" scenario mixes in the writes of the app's areas (farms and their periods, questions,
// messages and their state); a soak (--soak S) runs it for S seconds against the service in a process
// of its own and prints that process's resident memory slice by slice.
// Usage: service_bench [--threads N] [--seconds S] [--warmup S] [--scenario farms|mixed|writes|all]
//                      [--soak S]
#include "core/Server.h"

#include <httplib.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Json = nlohmann::ordered_json;

struct Options {
    int threads = 4;
    double seconds = 5;
    double warmup = 1;
    std::string scenario = "all";
    double soak = 0;
};

struct Request {
    std::string target;
    httplib::Headers headers;
    std::string body; // a POST with this JSON body when not empty
};

const httplib::Headers Farmer = {{"Authorization", "Bearer demo-farmer-token"}};

// The farm list as the app asks for it: the token in the Authorization header.
std::vector<Request> farmList() {
    return {{"/api?do=farmer/produces", Farmer, {}}};
}

// What a signed-in farmer's home asks for, round-robin; the token once as a header, once as a parameter.
std::vector<Request> mixed() {
    return {
        {"/api?do=farmer/produces", Farmer, {}},
        {"/api?do=notifications&bearer=demo-farmer-token", {}, {}},
        {"/api?do=produces", {}, {}},
    };
}

// A signed-in farmer at work: the reads of the home and the writes of the areas, round-robin. The
// records written to are made (or found) first.
std::vector<Request> writes(int port) {
    httplib::Client client("127.0.0.1", port);
    auto call = [&](const std::string& command, const Json& body = nullptr) {
        auto r = body.is_null() ? client.Get("/api?do=" + command, Farmer)
                                : client.Post("/api?do=" + command, Farmer, body.dump(), "application/json");
        Json reply = r ? Json::parse(r->body, nullptr, false) : Json();
        return reply.is_object() ? reply["data"] : Json();
    };
    Json farms = call("farmer/produces")["farmerProduces"];
    const Json farm = farms.empty() ? call("produce/set", {{"produceId", 1}, {"range", 10}})["farmerProduce"]["id"]
                                    : farms[0]["id"];
    const Json subject = call("subject/add", {{"title", "Yük altında soru"}})["subject"]["id"];
    call("produce/set", {{"id", farm}, {"produceId", 1}, {"range", 10}});
    const Json period = call("produce/periods&id=" + farm.dump())["periods"][0]["id"];
    if (!farm.is_number() || !subject.is_number() || !period.is_number()) {
        std::fprintf(stderr, "the records of the writes scenario could not be made\n");
        std::exit(1);
    }
    return {
        {"/api?do=farmer/produces", Farmer, {}},
        {"/api?do=produce/set", Farmer, Json{{"id", farm}, {"produceId", 1}, {"range", "12,5"}, {"aps", "[]"}}.dump()},
        {"/api?do=notifications", Farmer, {}},
        {"/api?do=subject/add", Farmer, Json{{"title", "Yaprakta sararma"}, {"description", "Buğdayda alt yapraklar sarardı."}}.dump()},
        {"/api?do=subject/message/send", Farmer, Json{{"subjectId", subject}, {"text", "Fotoğrafı yarın gönderiyorum."}}.dump()},
        {"/api?do=produce/set-period", Farmer, Json{{"id", farm}, {"periodId", period}}.dump()},
        {"/api?do=subject/set-status", Farmer, Json{{"subjectId", subject}}.dump()},
        {"/api?do=produces", {}, {}},
    };
}

struct Totals {
    std::vector<double> latenciesMs;
    long errors = 0;
    std::map<std::string, std::pair<long, std::string>> failures; // by request: count, a reply
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
    std::vector<std::map<std::string, std::pair<long, std::string>>> failures(static_cast<size_t>(threads));
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
                auto result = r.body.empty() ? client.Get(r.target, r.headers)
                                             : client.Post(r.target, r.headers, r.body, "application/json");
                const auto took = std::chrono::duration<double, std::milli>(Clock::now() - started).count();
                mine.push_back(took);
                if (succeeded(result)) continue;
                ++errors[size_t(t)];
                auto& failure = failures[size_t(t)][r.target];
                if (!failure.first++) failure.second = result ? result->body.substr(0, 160) : httplib::to_string(result.error());
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
        for (const auto& [target, failure] : failures[size_t(t)]) {
            auto& sum = totals.failures[target];
            sum.first += failure.first;
            if (sum.second.empty()) sum.second = failure.second;
        }
    }
    std::sort(totals.latenciesMs.begin(), totals.latenciesMs.end());
    return totals;
}

double percentile(const std::vector<double>& sorted, double p) {
    if (sorted.empty()) return 0;
    const size_t rank = std::min(sorted.size() - 1, size_t(p / 100.0 * double(sorted.size())));
    return sorted[rank];
}

void printFailures(const Totals& t) {
    for (const auto& [target, failure] : t.failures)
        std::printf("  errors: %ld x %s -> %s\n", failure.first, target.c_str(), failure.second.c_str());
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
    printFailures(t);
    std::fflush(stdout);
}

// VmRSS of a process in MB; -1 when unreadable.
double residentMb(const std::string& pid = "self") {
    std::FILE* status = std::fopen(("/proc/" + pid + "/status").c_str(), "r");
    if (!status) return -1;
    char line[256];
    long kb = -1;
    while (std::fgets(line, sizeof line, status))
        if (std::sscanf(line, "VmRSS: %ld kB", &kb) == 1) break;
    std::fclose(status);
    return kb < 0 ? -1 : double(kb) / 1024.0;
}

// The service alone in a child process, so that the memory read is the service's and not the client
// threads' (their latency lists alone move the heap by megabytes). Forked before any thread starts.
struct ServiceProcess {
    pid_t pid = -1;
    int port = 0;
};

ServiceProcess startServiceProcess(const std::string& dbPath) {
    int fds[2];
    if (pipe(fds) != 0) {
        std::perror("pipe");
        std::exit(1);
    }
    const pid_t pid = fork();
    if (pid == 0) {
        close(fds[0]);
        ekinora::server::ServerOptions serverOptions;
        serverOptions.dbPath = dbPath;
        serverOptions.demo = true;
        ekinora::server::Server server(serverOptions);
        const int port = server.start();
        if (write(fds[1], &port, sizeof port) != sizeof port) _exit(1);
        for (;;) pause(); // until the bench ends it
    }
    close(fds[1]);
    ServiceProcess service{pid, 0};
    if (pid < 0 || read(fds[0], &service.port, sizeof service.port) != sizeof service.port) {
        std::fprintf(stderr, "the service process did not start\n");
        std::exit(1);
    }
    close(fds[0]);
    return service;
}

// The writes scenario for the whole time in ten slices, the service's resident memory after each:
// flat once its caches and the request log have filled (the first slices).
void soak(const std::string& dbPath, const Options& options) {
    const ServiceProcess service = startServiceProcess(dbPath);
    const std::string pid = std::to_string(service.pid);
    const std::vector<Request> requests = writes(service.port);
    const int slices = 10;
    const double slice = options.soak / slices;
    std::printf("soak: writes scenario, %d threads, %.0f s, the service in process %s\n", options.threads,
                options.soak, pid.c_str());
    long total = 0, errors = 0;
    double second = 0;
    for (int i = 1; i <= slices; ++i) {
        const Totals t = drive(service.port, requests, options.threads, slice);
        total += long(t.latenciesMs.size());
        errors += t.errors;
        const double rss = residentMb(pid);
        if (i == 2) second = rss;
        std::printf("  %5.0f s: %ld requests, %ld errors, p99 %.2f ms, service resident %.1f MB\n", slice * i, total,
                    errors, percentile(t.latenciesMs, 99), rss);
        printFailures(t);
        std::fflush(stdout);
    }
    std::printf("soak: the service's resident memory from the second slice to the end: %+.1f MB, errors %ld\n",
                residentMb(pid) - second, errors);
    kill(service.pid, SIGTERM);
    waitpid(service.pid, nullptr, 0);
}

[[noreturn]] void usage() {
    std::fprintf(stderr,
                 "usage: service_bench [--threads N] [--seconds S] [--warmup S] [--scenario farms|mixed|writes|all] "
                 "[--soak S]\n");
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
        else if (arg == "--soak")
            options.soak = std::atof(value.c_str());
        else
            usage();
    }
    if (options.threads < 1 || options.seconds <= 0 || options.warmup < 0 ||
        options.soak < 0 ||
        (options.scenario != "farms" && options.scenario != "mixed" && options.scenario != "writes" &&
         options.scenario != "all"))
        usage();

    // A database file, as the service runs in production (WAL), in a folder of its own.
    std::string pattern = (std::filesystem::temp_directory_path() / "service_bench.XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        std::perror("mkdtemp");
        return 1;
    }
    const std::filesystem::path dir = pattern;
    if (options.soak > 0) {
        soak((dir / "bench.db").string(), options);
    } else {
        ekinora::server::ServerOptions serverOptions;
        serverOptions.dbPath = (dir / "bench.db").string();
        serverOptions.demo = true; // the demo accounts' fixed tokens
        ekinora::server::Server server(serverOptions);
        const int port = server.start();
        std::printf("service on port %d, %u hardware threads; budget: 5000 req/s, p99 < 10 ms for the farm list\n",
                    port, std::thread::hardware_concurrency());
        const auto all = options.scenario == "all";
        if (all || options.scenario == "farms") run("farms", port, farmList(), options);
        if (all || options.scenario == "mixed") run("mixed", port, mixed(), options);
        if (all || options.scenario == "writes") run("writes", port, writes(port), options);
        std::printf("resident memory after the runs (service and clients): %.1f MB\n", residentMb());
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
    return 0;
}
