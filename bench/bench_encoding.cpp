// Decoding a big UTF-16LE log to UTF-8 in the 64 KiB pieces the document uses, against the anchor of
// converting the same text from UTF-8 to the edit control's UTF-16, which every open already costs. The
// document decodes twice (a counting pass, then into a buffer of the exact size), so opening a UTF-16
// file costs about twice the ratio printed on top of a UTF-8 open.
#include <benchmark/benchmark.h>

#include "bench/benchRatio.h"

#include <cstdio>
#include <random>
#include <string>

#include "document/qwzEditText.h"
#include "foundation/utTextConversion.h"
#include "foundation/utTextEncoding.h"

namespace
{

// A log of about 16 MB of UTF-8: time-stamped lines, some with umlauts, Japanese and an emoji.
const std::string& logText()
{
    static const std::string text = [] {
        std::mt19937 rng(42);
        static const char* const extras[] = {"",
                                             " Gr\xC3\xBC\xC3\x9F"
                                             "e",
                                             " \xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", " \xF0\x9F\x98\x80"};
        std::string out;
        for (int n = 0; out.size() < (16u << 20); ++n)
            out += "2026-11-22 17:" + std::to_string(10 + n % 50) + ":00.123 [worker-" + std::to_string(rng() % 8) +
                   "]\tINFO\trequest " + std::to_string(n) + " served" + extras[rng() % 4] + "\r\n";
        return out;
    }();
    return text;
}

const std::string& utf16Bytes()
{
    static const std::string bytes = [] {
        const std::string& text = logText();
        return utEncodeText(utUtf8ToUtf16(text.data(), static_cast<int>(text.size())).str(), utEncoding::Utf16LE)
            .substr(2);
    }();
    return bytes;
}

void decodeUtf16(benchmark::State& state)
{
    const std::string& bytes = utf16Bytes();
    constexpr std::size_t piece = 64 * 1024;
    std::string out;
    for (auto _ : state) {
        utTextDecoder decoder(utEncoding::Utf16LE);
        out.clear();
        for (std::size_t at = 0; at < bytes.size(); at += piece)
            decoder.decode(bytes.data() + at, bytes.size() - at < piece ? bytes.size() - at : piece, out);
        decoder.finish(out);
        benchmark::DoNotOptimize(out.data());
    }
    if (out != logText())
        state.SkipWithError("the decoded text differs from the log");
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(logText().size()));
}

void convertForTheView(benchmark::State& state)
{
    const std::string& text = logText();
    for (auto _ : state) {
        qwzEditText wide;
        benchmark::DoNotOptimize(wide.assign(text.data(), text.size()));
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(text.size()));
}

} // namespace

BENCHMARK(decodeUtf16)->Unit(benchmark::kMillisecond);
BENCHMARK(convertForTheView)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    double ratio = reporter.ns["decodeUtf16"] / reporter.ns["convertForTheView"];
    const double target = 1.0;
    std::printf("\ndecode UTF-16 / convert on open: %.2f (target <= %.1f: %s)\n", ratio, target,
                ratio <= target ? "met" : "MISSED");
    return 0;
}
