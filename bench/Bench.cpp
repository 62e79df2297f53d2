// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Measures the program next to what a user could run instead; scripts/bench.sh lays out STATE.
//
// bench STATE PORT RUNS [--json]: STATE holds bin/ with the programs, site/, which a web server serves on
// PORT of 127.0.0.1, and line.conf, with which nginx serves it on the same port of every address. Each figure
// is measured at least RUNS times.
#include <QCoreApplication>
#include <QFile>
#include <cstdio>
#include <fstream>
#include <functional>
#include <optional>
#include <system_error>
#include <thread>

#include <poll.h>
#include <unistd.h>

#include "CDelayedLine.h"
#include "CMeasuredProcess.h"
#include "CReport.h"
#include "CWindowWatch.h"
#include "ProductSet.h"
#include "support/LoopbackServer.h"
#include "support/Minisign.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Every figure with its bound.
constexpr const char* CURL = "curl -Z --parallel-max 6";
constexpr const char* DIALOG = "bare dialog";
constexpr Bound LINE_60{"60 products, round trip of 100 ms", "ms", CURL, 0.95};
constexpr Bound LINE_10{"10 products, round trip of 100 ms", "ms", CURL, 0.85};
constexpr Bound FURTHER{"each further product on loopback, of 600", "ms", CURL, 2.0};
constexpr Bound THOUGHT{"60 products, answers after 100 ms of thought", "ms", "one after the other", 0.2};
constexpr Bound SIGNED{"60 signed products on loopback", "ms", "60 unsigned", 1.1};
constexpr Bound START{"start to the window with 60 rows", "ms", DIALOG, 1.35};
constexpr Bound MEMORY_60{"peak memory, silent check of 60", "MiB", DIALOG, 1.25};
constexpr Bound MEMORY_600{"peak memory, silent check of 600", "MiB", DIALOG, 1.35};
constexpr Bound LIST_500{"list of 500, processor time", "ms", "at most", 1.0};
constexpr Bound LIST_5000{"list of 5,000, processor time", "ms", "12 times that of 500", 1.0};
constexpr Bound IDLE{"idle window, processor time in 10 s", "ms", "", 10.0};
constexpr Bound WAITING{"waiting 5 s, processor time of it", "ms", "at most", 1.0};

constexpr int IDLE_SECONDS = 10;
// Figures of some 30 ms are measured this many times more often, because the scheduler's choice of processors
// makes twice the difference that the measurement looks for.
constexpr int QUICK = 20;

class CBench {
public:
    CBench(const fs::path& state, int port, int runs) : state_(state), port_(port), runs_(runs) {
        ProductSet::Publish(state_ / "site", 600);
        for (const int count : {60, 500, 600, 5'000})
            Install(std::to_string(count), count, SiteAddress());
    }

    void Measure() {
        MeasureLine();
        MeasureFetching();
        MeasureSigned();
        MeasureSlowServer();
        MeasureStart();
        MeasureScale();
        MeasureMemory();
        MeasureWaiting();
    }

    const CReport& Report() const { return report_; }

private:
    using Command = std::vector<std::string>;

    void Add(const Bound& bound, double ours, double reference) {
        report_.Add({bound, ours, reference});
        std::fprintf(stderr, "%s: %g, %s: %g\n", bound.name, ours, bound.reference, reference);
    }
    void LeaveOut(const Bound& bound, const char* why) {
        report_.Add({bound, 0, 0, why});
        std::fprintf(stderr, "%s: left out: %s\n", bound.name, why);
    }
    std::string SiteAddress() const { return "http://127.0.0.1:" + std::to_string(port_); }
    std::string Tool(const char* name) const { return state_ / "bin" / name; }

    // Makes an installation of its own for each set of products, since the program looks beside itself.
    void Install(const std::string& name, int count, const std::string& address) {
        const fs::path folder = state_ / "sets" / name;
        fs::remove_all(folder);
        ProductSet::Install(folder, count, address);
        fs::create_directories(folder / "bin");
        fs::copy_file(Tool("VARDOProductUpdate"), folder / "bin" / "VARDOProductUpdate");
    }
    // Makes an unused home, and returns the command for the program; caches, such as that of fonts, are kept.
    Command Program(const std::string& set, const Command& arguments) {
        const fs::path home = state_ / "home";
        fs::remove_all(home);
        fs::create_directories(home);
        setenv("HOME", home.c_str(), 1);
        setenv("XDG_CACHE_HOME", (state_ / "cache").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", (home / "machine").c_str(), 1);
        Command command{state_ / "sets" / set / "bin" / "VARDOProductUpdate"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return command;
    }
    Usage SilentCheck(const std::string& set, int network = CMeasuredProcess::HERE) {
        return CMeasuredProcess::Run(Program(set, {"-silent"}), network);
    }
    // Fetches with curl what the check of a set fetches.
    static Usage Curl(int count, const std::string& address, int network = CMeasuredProcess::HERE) {
        return CMeasuredProcess::Run({"curl", "-sf", "--no-progress-meter", "-Z", "--parallel-max", "6",
                                      address + "/[0-" + std::to_string(count - 1) + "].xml"},
                                     network);
    }

    // Waits until another process has made the file.
    static void AwaitFile(const fs::path& file) {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (!fs::exists(file)) {
            if (std::chrono::steady_clock::now() > deadline)
                throw std::runtime_error("nobody has made " + file.string());
            std::this_thread::sleep_for(10ms);
        }
    }

    using Measurement = std::function<double()>;

    // The medians of measurements taken by turns, so that a slow phase of the machine slows all of them.
    static std::vector<double> MediansByTurns(int runs, const std::vector<Measurement>& measurements) {
        std::vector<std::vector<double>> values(measurements.size());
        for (int run = 0; run < runs; ++run)
            for (std::size_t i = 0; i < measurements.size(); ++i)
                values[i].push_back(measurements[i]());
        std::vector<double> medians;
        medians.reserve(values.size());
        for (const std::vector<double>& each : values)
            medians.push_back(Median(each));
        return medians;
    }
    double MedianOf(const Measurement& measurement) const {
        return MediansByTurns(runs_, {measurement}).front();
    }

    void MeasureLine() {
        std::optional<CDelayedLine> line;
        try {
            line.emplace();
        } catch (const std::system_error& error) {
            for (const Bound& bound : {LINE_60, LINE_10})
                LeaveOut(bound, error.what());
            return;
        }
        const CMeasuredProcess site({"nginx", "-p", state_, "-c", "line.conf", "-e", "line.log"},
                                    line->ServerNamespace());
        AwaitFile(state_ / "line.pid");
        const std::string address =
            std::string("http://") + CDelayedLine::SERVER + ":" + std::to_string(port_);
        Install("line 60", 60, address);
        Install("line 10", 10, address);
        const int here = line->ClientNamespace();
        const std::vector<double> walls =
            MediansByTurns(runs_, {[&] { return SilentCheck("line 60", here).wallMs; },
                                   [&] { return Curl(60, address, here).wallMs; },
                                   [&] { return SilentCheck("line 10", here).wallMs; },
                                   [&] { return Curl(10, address, here).wallMs; }});
        Add(LINE_60, walls[0], walls[1]);
        Add(LINE_10, walls[2], walls[3]);
    }

    // Measures what each further file costs as the difference of two sizes, so that the start does not count.
    void MeasureFetching() {
        const std::vector<double> walls =
            MediansByTurns(QUICK * runs_, {[this] { return SilentCheck("60").wallMs; },
                                           [this] { return SilentCheck("600").wallMs; },
                                           [this] { return Curl(60, SiteAddress()).wallMs; },
                                           [this] { return Curl(600, SiteAddress()).wallMs; }});
        Add(FURTHER, (walls[1] - walls[0]) / 540, (walls[3] - walls[2]) / 540);
    }

    // Publishes the same descriptions, each with the maker's signature, and installs their set.
    void SignSite(const std::string& set, int count) {
        const Minisign maker;
        Install(set, count, SiteAddress() + "/" + set);
        std::ofstream(state_ / "sets" / set / "share" / "VardoCatalogue.pub") << maker.Key();
        fs::create_directories(state_ / "site" / set);
        for (int i = 0; i < count; ++i) {
            const std::string path = "/" + set + "/" + std::to_string(i) + ".xml";
            const std::string signature = maker.Sign(ProductSet::Offer(), "path:" + path + " until:20991231");
            std::ofstream(state_ / ("site" + path)) << ProductSet::Offer() << "<!--minisign\n"
                                                    << signature << "-->\n";
        }
        SilentCheck(set);
        // Only a check that has accepted a description stores its date.
        if (ReadWholeFile(state_ / "home" / "config" / "VARDO Technologies.conf").find("LastChecked=") ==
            std::string::npos)
            throw std::runtime_error("the signatures were refused");
    }
    void MeasureSigned() {
        SignSite("signed", 60);
        const std::vector<double> walls = MediansByTurns(
            QUICK * runs_,
            {[this] { return SilentCheck("signed").wallMs; }, [this] { return SilentCheck("60").wallMs; }});
        Add(SIGNED, walls[0], walls[1]);
    }

    void MeasureSlowServer() {
        LoopbackServer server;
        LoopbackAnswer answer = LoopbackAnswer::Body(ProductSet::Offer());
        answer.delay = 100ms;
        server.Serve(LoopbackServer::ANY, answer);
        Install("slow", 60, server.Address("").toStdString());
        const double ours = MedianOf([this] { return SilentCheck("slow").wallMs; });
        Add(THOUGHT, ours, 60 * 100);
    }

    // The time until the window is there and the program has printed the line.
    double MappedMs(const Command& command, const std::string& line) const {
        CWindowWatch watch;
        const CMeasuredProcess process(command);
        std::string output;
        bool mapped = false;
        while (!mapped || output.find(line) == std::string::npos) {
            pollfd waits[] = {{watch.Descriptor(), POLLIN, 0}, {process.Output(), POLLIN, 0}};
            poll(waits, 2, 1000);
            mapped = watch.WasMapped() || mapped;
            if (waits[1].revents != 0 && !process.Read(output))
                throw std::runtime_error("a program ended without its window");
        }
        return process.Elapsed();
    }
    void MeasureStart() {
        // The rows are there when the check of the first product begins.
        const std::vector<double> walls =
            MediansByTurns(QUICK * runs_, {[this] { return MappedMs(Program("60", {}), "- Checking "); },
                                           [this] { return MappedMs({Tool("bare_dialog")}, ""); }});
        Add(START, walls[0], walls[1]);
    }

    double ScaleMs(int count) const {
        CMeasuredProcess process(
            {Tool("scale_benchmark"), std::to_string(count), state_ / "sets" / std::to_string(count)});
        process.Wait();
        return std::stod(process.LastLine());
    }
    void MeasureScale() {
        const std::vector<double> times =
            MediansByTurns(runs_, {[this] { return ScaleMs(500); }, [this] { return ScaleMs(5'000); }});
        Add(LIST_500, times[0], 250);
        Add(LIST_5000, times[1], 12 * times[0]);
    }

    void MeasureMemory() {
        const double bare = MedianOf([this] {
            return CMeasuredProcess::Run({Tool("bare_dialog"), "--quit"}).peakMiB;
        });
        Add(MEMORY_60, MedianOf([this] { return SilentCheck("60").peakMiB; }), bare);
        Add(MEMORY_600, MedianOf([this] { return SilentCheck("600").peakMiB; }), bare);
    }

    // The processor time of a process in milliseconds, from the clock ticks in proc(5).
    static double ProcessorMs(pid_t process) {
        QFile file(QStringLiteral("/proc/%1/stat").arg(process));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("the window is gone");
        const QList<QByteArray> fields = file.readAll().split(')').last().split(' ');
        return (fields[12].toDouble() + fields[13].toDouble()) * 1e3 /
               static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    double IdleMs() {
        CMeasuredProcess process(Program("60", {}));
        std::string output;
        while (output.find("- Done Product number 59") == std::string::npos)
            if (!process.Read(output))
                throw std::runtime_error("the check did not end");
        sleep(1);
        const double before = ProcessorMs(process.Id());
        sleep(IDLE_SECONDS);
        return ProcessorMs(process.Id()) - before;
    }
    void MeasureWaiting() {
        Add(IDLE, MedianOf([this] { return IdleMs(); }), 0);
        LoopbackServer server;
        LoopbackAnswer answer = LoopbackAnswer::Body(ProductSet::Offer());
        server.Serve("/0.xml", answer);
        answer.delay = 5s;
        server.Serve("/late/0.xml", answer);
        Install("one", 1, server.Address("").toStdString());
        Install("late", 1, server.Address("/late").toStdString());
        // After five idle seconds a program takes longer. By turns, one program ends after them, one starts.
        const std::vector<double> times =
            MediansByTurns(runs_, {[this] { return SilentCheck("late").processorMs; },
                                   [this] { return SilentCheck("one").processorMs; }});
        Add(WAITING, std::max(times[0] - times[1], 0.0), 20);
    }

    fs::path state_;
    int port_;
    int runs_;
    CReport report_;
};

}  // namespace

int main(int argc, char** argv) try {
    // The slow server lives in this process, and needs an application's event dispatcher.
    const QCoreApplication application(argc, argv);
    if (argc < 4)
        return 2;
    CBench bench(argv[1], std::atoi(argv[2]), std::atoi(argv[3]));
    bench.Measure();
    const bool json = argc > 4 && std::string(argv[4]) == "--json";
    const QString text = json ? bench.Report().AsJson() : bench.Report().AsTable();
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
