// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Measures the program side by side with what anyone could use instead; scripts/bench.sh prepares what it
// needs.
//
// bench STATE PORT RUNS [--json]: STATE holds bin/ with the programs, site/, which a web server serves on
// PORT of 127.0.0.1, and text.json, what text_benchmarks printed. RUNS is how many times each figure is
// measured, at least.
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <cstdio>
#include <functional>

#include <poll.h>
#include <unistd.h>

#include "CMeasuredProcess.h"
#include "CReport.h"
#include "CWindowWatch.h"
#include "ProductSet.h"
#include "support/LoopbackServer.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int IDLE_SECONDS = 10;
// How many times as often is measured what takes some 30 ms: where the scheduler puts the processes makes
// twice the difference that is to be seen.
constexpr int QUICK = 20;

class Bench {
public:
    Bench(const fs::path& state, int port, int runs) : state_(state), port_(port), runs_(runs) {
        ProductSet::Publish(state_ / "site", 10'000);
        for (const int count : {60, 260, 1'000, 10'000})
            Install(std::to_string(count), count, SiteAddress());
    }

    void Measure() {
        MeasureFetching();
        MeasureSlowServer();
        MeasureStart();
        MeasureScale();
        MeasureMemory();
        AddTexts();
        MeasureWaiting();
    }

    const CReport& Report() const { return report_; }

private:
    using Command = std::vector<std::string>;

    void Add(const Figure& figure) {
        report_.Add(figure);
        std::fprintf(stderr, "%s: %g, %s: %g\n", qUtf8Printable(figure.name), figure.ours,
                     qUtf8Printable(figure.referenceName), figure.reference);
    }
    std::string SiteAddress() const { return "http://127.0.0.1:" + std::to_string(port_); }
    std::string Tool(const char* name) const { return state_ / "bin" / name; }

    // An installation of its own for each set of products: the program looks beside itself.
    void Install(const std::string& name, int count, const std::string& address) {
        const fs::path folder = state_ / "sets" / name;
        fs::remove_all(folder);
        ProductSet::Install(folder, count, address);
        fs::create_directories(folder / "bin");
        fs::copy_file(Tool("VARDOProductUpdate"), folder / "bin" / "VARDOProductUpdate");
    }
    // A program with a home that nobody has used; the caches of fonts and the like are kept, for all
    // programs.
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
    Usage SilentCheck(const std::string& set) { return CMeasuredProcess::Run(Program(set, {"-silent"})); }

    using Measurement = std::function<double()>;

    // The medians of measurements taken by turns: what slows the machine for a while slows all of them.
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

    // What each further file costs: the difference between two sizes, so that the start does not count.
    static constexpr int FEW = 60;
    static constexpr int MANY = 260;
    static double PerFurtherFile(double few, double many) { return (many - few) / (MANY - FEW); }
    double CurlEachMs(int count) const {
        double sum = 0;
        for (int i = 0; i < count; ++i)
            sum += CMeasuredProcess::Run({"curl", "-s", SiteAddress() + "/" + std::to_string(i) + ".xml"})
                       .wallMs;
        return sum;
    }
    double OneCurlMs(int count) const {
        return CMeasuredProcess::Run({"curl", "-s", "-H", "Connection: close",
                                      SiteAddress() + "/[0-" + std::to_string(count - 1) + "].xml"})
            .wallMs;
    }
    void MeasureFetching() {
        const std::vector<double> walls = MediansByTurns(
            QUICK * runs_, {[this] { return SilentCheck(std::to_string(FEW)).wallMs; },
                            [this] { return SilentCheck(std::to_string(MANY)).wallMs; },
                            [this] { return OneCurlMs(FEW); }, [this] { return OneCurlMs(MANY); }});
        const double ours = PerFurtherFile(walls[0], walls[1]);
        const double one = PerFurtherFile(walls[2], walls[3]);
        const double each = PerFurtherFile(MedianOf([this] { return CurlEachMs(FEW); }),
                                           MedianOf([this] { return CurlEachMs(MANY); }));
        Add({"fetch: each further product", "ms", ours, "curl process each", each, 1.0});
        Add({"fetch: each further product", "ms", ours, "one curl, new connections", one, 2.0});
    }

    void MeasureSlowServer() {
        LoopbackServer server;
        LoopbackAnswer answer = LoopbackAnswer::Body(ProductSet::Offer());
        answer.delay = 100ms;
        server.Serve(LoopbackServer::ANY, answer);
        Install("slow", 60, server.Address("").toStdString());
        const double ours = MedianOf([this] { return SilentCheck("slow").wallMs; });
        Add({"60 products, answers after 100 ms", "ms", ours, "one after the other", 60 * 100, 0.2});
    }

    // Until the window is there and, when a line is given, that line has been printed.
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
        Add({"start: to the window with 60 rows", "ms", walls[0], "bare dialog", walls[1], 1.35});
    }

    double ScaleMs(int count) const {
        CMeasuredProcess process(
            {Tool("scale_benchmark"), std::to_string(count), state_ / "sets" / std::to_string(count)});
        process.Wait();
        return std::stod(process.LastLine());
    }
    void MeasureScale() {
        const double thousand = MedianOf([this] { return ScaleMs(1'000); });
        const double tenThousand = MedianOf([this] { return ScaleMs(10'000); });
        Add({"scale: list of 1,000, processor time", "ms", thousand, "bound", 250, 1.0});
        Add({"scale: list of 10,000, processor time", "ms", tenThousand, "1,000", thousand, 12});
    }

    void MeasureMemory() {
        const double ours = MedianOf([this] { return SilentCheck("60").peakKiB; });
        const double bare = MedianOf([this] {
            return CMeasuredProcess::Run({Tool("bare_dialog"), "--quit"}).peakKiB;
        });
        const double large = MedianOf([this] { return SilentCheck("10000").peakKiB; });
        Add({"memory: silent check of 60, peak", "KiB", ours, "bare dialog", bare, 1.25});
        Add({"memory: each further product, of 10,000", "KiB", (large - ours) / 9'940, "", 0, 0});
    }

    // Every sample of every operation, next to each of the types that do the same.
    void AddTexts() {
        QFile file(QString::fromStdString(state_ / "text.json"));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("no text.json");
        QMap<QString, QMap<QString, double>> times;
        for (const auto& row : QJsonDocument::fromJson(file.readAll())["benchmarks"].toArray()) {
            const QJsonValue value = row;
            const QString name = value["run_name"].toString();
            if (value["aggregate_name"].toString() == "median")
                times[name.section('/', 0, -2)][name.section('/', -1)] = value["cpu_time"].toDouble();
        }
        for (auto operation = times.begin(); operation != times.end(); ++operation) {
            const bool isVersion = operation.key().startsWith("version ");
            const double ours = operation->take(isVersion ? "CVersionString" : "CAtlString");
            const double bound = isVersion || operation.key().startsWith("copy") ? 1.0 : 1.25;
            for (auto other = operation->begin(); other != operation->end(); ++other)
                Add({operation.key(), "ns", ours, other.key(), other.value(), bound});
        }
    }

    // In clock ticks of the system (proc(5)), as milliseconds.
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
        report_.Add(
            {"idle window: processor time in 10 s", "ms", MedianOf([this] { return IdleMs(); }), "", 0, 10});
        LoopbackServer server;
        LoopbackAnswer answer = LoopbackAnswer::Body(ProductSet::Offer());
        server.Serve("/0.xml", answer);
        answer.delay = 5s;
        server.Serve("/late/0.xml", answer);
        Install("one", 1, server.Address("").toStdString());
        Install("late", 1, server.Address("/late").toStdString());
        // A program that starts after five idle seconds takes longer than one after another: by turns.
        const std::vector<double> times =
            MediansByTurns(runs_, {[this] { return SilentCheck("late").processorMs; },
                                   [this] { return SilentCheck("one").processorMs; }});
        Add({"waiting 5 s: processor time of it", "ms", std::max(times[0] - times[1], 0.0), "bound", 20,
             1.0});
    }

    fs::path state_;
    int port_;
    int runs_;
    CReport report_;
};

}  // namespace

int main(int argc, char** argv) try {
    if (argc < 4)
        return 2;
    Bench bench(argv[1], std::atoi(argv[2]), std::atoi(argv[3]));
    bench.Measure();
    const bool json = argc > 4 && std::string(argv[4]) == "--json";
    const QString text = json ? bench.Report().AsJson() : bench.Report().AsTable();
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
