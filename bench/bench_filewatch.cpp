// What watching a log costs, twice a second for as long as it is shown: a look at a file that did not change,
// against the anchor of the one status call that any look must make; and a look at a log that grew by a line,
// against the anchor of reading that line back with the C library.
#include <benchmark/benchmark.h>

#include "bench/benchRatio.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "document/qwzFileWatch.h"
#include "foundation/utTextConversion.h"
#include "platform/platform.h"

namespace
{

const std::string line = "2026-11-22 17:10:00.123 [worker-3]\tINFO\trequest 4711 served in 12 ms\r\n";

// A 16 MB log in the run's scratch folder, made afresh for each benchmark.
std::string makeLog(const char* name)
{
    const char* dir = std::getenv("TMPDIR");
    std::string path = std::string(dir ? dir : "/tmp") + "/" + name;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    for (std::size_t n = 0; n < (16u << 20); n += line.size())
        std::fwrite(line.data(), 1, line.size(), f);
    std::fclose(f);
    return path;
}

void appendLine(const std::string& path)
{
    std::FILE* f = std::fopen(path.c_str(), "ab");
    std::fwrite(line.data(), 1, line.size(), f);
    std::fclose(f);
}

void lookUnchanged(benchmark::State& state)
{
    std::string path = makeLog("unchanged.log");
    qwzFileWatch watch{utString(path.c_str())};
    watch.knowFromDisk();
    std::string added;
    for (auto _ : state)
        benchmark::DoNotOptimize(watch.look(added));
    std::remove(path.c_str());
}

void statAnchor(benchmark::State& state)
{
    std::string path = makeLog("stat.log");
    utUtf8ToUtf16 name{utString(path.c_str())};
    platform::Status status;
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::stat(name.c_str(), status));
    std::remove(path.c_str());
}

void lookGrownByALine(benchmark::State& state)
{
    std::string path = makeLog("grown.log");
    qwzFileWatch watch{utString(path.c_str())};
    watch.knowFromDisk();
    std::string added;
    for (auto _ : state) {
        appendLine(path);
        added.clear();
        benchmark::DoNotOptimize(watch.look(added));
    }
    std::remove(path.c_str());
}

void readLineAnchor(benchmark::State& state)
{
    std::string path = makeLog("read.log");
    long long end = 16 << 20;
    std::string back(line.size(), '\0');
    for (auto _ : state) {
        appendLine(path);
        std::FILE* f = std::fopen(path.c_str(), "rb");
        end = platform::fileLength(f);
        platform::seek(f, end - static_cast<long long>(line.size()));
        benchmark::DoNotOptimize(std::fread(back.data(), 1, back.size(), f));
        std::fclose(f);
    }
    std::remove(path.c_str());
}

} // namespace

BENCHMARK(lookUnchanged)->Unit(benchmark::kMicrosecond);
BENCHMARK(statAnchor)->Unit(benchmark::kMicrosecond);
BENCHMARK(lookGrownByALine)->Unit(benchmark::kMicrosecond);
BENCHMARK(readLineAnchor)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double unchanged = reporter.ns["lookUnchanged"] / reporter.ns["statAnchor"];
    double grown = reporter.ns["lookGrownByALine"] / reporter.ns["readLineAnchor"];
    std::printf("\nlook at an unchanged log / one status call: %.2f (target <= 1.5: %s)\n", unchanged,
                unchanged <= 1.5 ? "met" : "MISSED");
    std::printf("look at a log grown by a line / appending and reading the line back: %.2f (target <= 2.0: %s)\n",
                grown, grown <= 2.0 ? "met" : "MISSED");
    return 0;
}
