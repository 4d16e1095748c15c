// Catalog lookups and loading against glibc's gettext on the same msgfmt catalogs, in the same run.
// Catalogs of 100, 1,000 and 10,000 UI-like messages are generated, compiled by msgfmt with and without
// a hash table, and every lookup is checked against the expected translation before anything is timed.
// With "--lookups N [hit|miss] [hash|nohash]" it only runs N lookups on a 1,000-message catalog (callgrind).
#include <benchmark/benchmark.h>

#include "bench/benchRatio.h"

#include <libintl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "foundation/utTextConversion.h"
#include "nls/nlsDataBase.h"
#include "nls/nlsFileKind.h"

namespace
{

const char* const words[] = {
    "file",     "document",  "window",  "toolbar",  "status",   "bar",      "print",    "preview", "page",
    "line",     "column",    "find",    "replace",  "next",     "previous", "match",    "case",    "whole",
    "word",     "save",      "open",    "close",    "recent",   "changes",  "version",  "check",   "update",
    "download", "server",    "network", "settings", "language", "help",     "contents", "about",   "copy",
    "cut",      "paste",     "undo",    "redo",     "select",   "all",      "font",     "size",    "zoom",
    "in",       "out",       "the",     "current",  "selected", "new",      "name",     "path",    "folder",
    "cannot",   "be",        "found",   "failed",   "to",       "load",     "read",     "write",   "invalid",
    "number",   "enter",     "value",   "between",  "and",      "of",       "for",      "with",    "without",
    "catalog",  "message",   "error",   "warning",  "please",   "try",      "again",    "later",   "installed",
    "latest",   "available", "license", "product",  "build",    "date",     "user",     "display", "dialog",
};

struct Message {
    std::string id, str;
};

// Deterministic, unique, sentence-like UI texts with an occasional printf conversion.
std::vector<Message> makeMessages(size_t count)
{
    std::mt19937 rng(12345);
    const size_t nWords = sizeof words / sizeof *words;
    std::set<std::string> seen;
    std::vector<Message> out;
    while (out.size() < count) {
        size_t length = 3 + rng() % 6;
        std::string id;
        for (size_t i = 0; i < length; ++i)
            id += std::string(i ? " " : "") + words[rng() % nWords];
        id[0] = char(std::toupper(static_cast<unsigned char>(id[0])));
        switch (rng() % 4) {
        case 0:
            id += ".";
            break;
        case 1:
            id += " %s.";
            break;
        case 2:
            id += "...";
            break;
        default:
            break;
        }
        if (!seen.insert(id).second)
            continue;
        std::string str = "\xc3\x9c" + id; // a leading U-umlaut: unmistakably translated
        std::reverse(str.begin() + 2, str.end() - (id.back() == '.' ? 1 : 0));
        std::replace(str.begin(), str.end(), '%', 'S'); // keep conversions well-formed: %s -> s% -> sS
        if (id.find("%s") != std::string::npos)
            str += " %s";
        out.push_back({id, str});
    }
    return out;
}

std::string poQuote(const std::string& s)
{
    std::string out = "\"";
    for (char c : s)
        out += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return out + "\"";
}

struct Catalog {
    size_t size;
    bool hashed;
    std::string domain, path;
    std::vector<Message> messages;
    std::unique_ptr<nlsDataBase> db;
    std::vector<std::string> misses;
};

std::string workDir;
std::vector<std::unique_ptr<Catalog>> catalogs;

bool run(const std::string& command)
{
    return std::system(command.c_str()) == 0;
}

void fail(const std::string& what)
{
    std::fprintf(stderr, "bench_catalog: %s\n", what.c_str());
    std::exit(1);
}

Catalog& build(size_t size, bool hashed)
{
    auto c = std::make_unique<Catalog>();
    c->size = size;
    c->hashed = hashed;
    c->domain = "bench" + std::to_string(size) + (hashed ? "h" : "n");
    c->messages = makeMessages(size);
    std::string po = workDir + "/" + c->domain + ".po";
    std::FILE* f = std::fopen(po.c_str(), "w");
    std::fprintf(f, "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n");
    for (const Message& m : c->messages)
        std::fprintf(f, "msgid %s\nmsgstr %s\n\n", poQuote(m.id).c_str(), poQuote(m.str).c_str());
    std::fclose(f);
    std::string dir = workDir + "/bench/LC_MESSAGES";
    run("mkdir -p " + dir);
    c->path = dir + "/" + c->domain + ".mo";
    if (!run("msgfmt " + std::string(hashed ? "" : "--no-hash ") + "-o " + c->path + " " + po))
        fail("msgfmt failed for " + po);
    c->db = std::make_unique<nlsDataBase>(c->path.c_str());
    if (c->db->failed() || c->db->hashed() != hashed)
        fail("our loader refused " + c->path);
    bindtextdomain(c->domain.c_str(), workDir.c_str());
    bind_textdomain_codeset(c->domain.c_str(), "UTF-8");
    for (const Message& m : c->messages)
        c->misses.push_back(m.id + "!"); // as long as a hit, and absent
    std::mt19937 rng(7);
    std::shuffle(c->messages.begin(), c->messages.end(), rng);
    catalogs.push_back(std::move(c));
    return *catalogs.back();
}

// Both implementations must give every expected answer before any timing counts.
void verify(const Catalog& c)
{
    for (const Message& m : c.messages) {
        const char* ours = c.db->translate(m.id.c_str());
        const char* theirs = dgettext(c.domain.c_str(), m.id.c_str());
        if (m.str != ours || m.str != theirs)
            fail(c.domain + ": \"" + m.id + "\" gave \"" + ours + "\" and \"" + theirs + "\", expected \"" + m.str +
                 "\"");
    }
    for (const std::string& key : c.misses) {
        if (c.db->translate(key.c_str()) != key.c_str() || dgettext(c.domain.c_str(), key.c_str()) != key.c_str())
            fail(c.domain + ": the miss \"" + key + "\" was translated");
    }
}

void ourHits(benchmark::State& state, const Catalog* c)
{
    size_t i = 0, n = c->messages.size();
    for (auto _ : state) {
        benchmark::DoNotOptimize(c->db->translate(c->messages[i].id.c_str()));
        i = i + 1 == n ? 0 : i + 1;
    }
}

void glibcHits(benchmark::State& state, const Catalog* c)
{
    size_t i = 0, n = c->messages.size();
    for (auto _ : state) {
        benchmark::DoNotOptimize(dgettext(c->domain.c_str(), c->messages[i].id.c_str()));
        i = i + 1 == n ? 0 : i + 1;
    }
}

void ourMisses(benchmark::State& state, const Catalog* c)
{
    size_t i = 0, n = c->misses.size();
    for (auto _ : state) {
        benchmark::DoNotOptimize(c->db->translate(c->misses[i].c_str()));
        i = i + 1 == n ? 0 : i + 1;
    }
}

void glibcMisses(benchmark::State& state, const Catalog* c)
{
    size_t i = 0, n = c->misses.size();
    for (auto _ : state) {
        benchmark::DoNotOptimize(dgettext(c->domain.c_str(), c->misses[i].c_str()));
        i = i + 1 == n ? 0 : i + 1;
    }
}

void checkedLoad(benchmark::State& state, const Catalog* c)
{
    for (auto _ : state) {
        nlsDataBase db(c->path.c_str());
        benchmark::DoNotOptimize(db.messageCount());
    }
}

// The anchor: the same open, status and read that the loader makes, without any check.
void plainRead(benchmark::State& state, const Catalog* c)
{
    for (auto _ : state) {
        nlsFileHandle f = nlsOpenFile(c->path.c_str(), "rb");
        platform::Status status;
        nlsStat(c->path.c_str(), status);
        size_t size = size_t(status.size);
        unsigned char* image = static_cast<unsigned char*>(std::malloc(size));
        size_t got = std::fread(image, 1, size, f.get());
        benchmark::DoNotOptimize(image[got - 1]);
        std::free(image);
    }
}

std::string name(const char* what, const Catalog& c)
{
    return std::string(what) + "/" + std::to_string(c.size) + (c.hashed ? "/hash" : "/nohash");
}

void registerAll()
{
    for (const auto& owned : catalogs) {
        const Catalog* c = owned.get();
        benchmark::RegisterBenchmark(name("ours_hit", *c).c_str(), ourHits, c);
        benchmark::RegisterBenchmark(name("glibc_hit", *c).c_str(), glibcHits, c);
        benchmark::RegisterBenchmark(name("ours_miss", *c).c_str(), ourMisses, c);
        benchmark::RegisterBenchmark(name("glibc_miss", *c).c_str(), glibcMisses, c);
        benchmark::RegisterBenchmark(name("load_checked", *c).c_str(), checkedLoad, c)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(name("load_plain", *c).c_str(), plainRead, c)->Unit(benchmark::kMicrosecond);
    }
}

int printRatios(const RatioReporter& r)
{
    int missed = 0;
    std::printf("\n%-16s %12s %12s %12s %10s\n", "catalog", "hit/glibc", "miss/glibc", "load/plain", "targets");
    for (const auto& owned : catalogs) {
        const Catalog& c = *owned;
        auto at = [&](const char* what) {
            auto it = r.ns.find(name(what, c));
            return it == r.ns.end() ? std::nan("") : it->second; // filtered out
        };
        double hit = at("ours_hit") / at("glibc_hit"), miss = at("ours_miss") / at("glibc_miss");
        double load = at("load_checked") / at("load_plain");
        double hitTarget = c.size >= 10000 ? 0.25 : c.size >= 1000 ? 0.4 : 1e9;
        bool met = hit <= hitTarget && miss <= 0.25 && load <= 1.1;
        missed += !met;
        std::printf("%-16s %12.3f %12.3f %12.3f %10s   (ours %.1f/%.1f ns, glibc %.1f/%.1f ns)\n",
                    (std::to_string(c.size) + (c.hashed ? " hash" : " nohash")).c_str(), hit, miss, load,
                    met ? "met" : "MISSED", at("ours_hit"), at("ours_miss"), at("glibc_hit"), at("glibc_miss"));
    }
    std::printf("targets: hit <= 0.4x glibc at 1,000 and 0.25x at 10,000; miss <= 0.25x; load <= 1.1x plain read\n");
    return missed;
}

void setUp()
{
    // TMPDIR is the bench build's folder when make runs it
    const char* tmp = std::getenv("TMPDIR");
    std::string dir = std::string(tmp && *tmp ? tmp : "/tmp") + "/bench_catalog.XXXXXX";
    if (!mkdtemp(dir.data()))
        fail("no temporary directory");
    workDir = dir;
    // glibc reads catalogs only under a non-"C" locale; LANGUAGE names our directory
    if (!std::setlocale(LC_ALL, "C.UTF-8"))
        fail("C.UTF-8 is not available");
    setenv("LANGUAGE", "bench", 1);
}

void tearDown()
{
    catalogs.clear();
    run("rm -rf " + workDir);
}

// Lookups on the 1,000-message catalog for instruction counting; not inlined so that callgrind can
// collect exactly this function.
__attribute__((noinline)) size_t runLookups(const Catalog& c, size_t count, bool misses)
{
    size_t found = 0, n = c.messages.size();
    for (size_t i = 0; i < count; ++i) {
        const char* key = misses ? c.misses[i % n].c_str() : c.messages[i % n].id.c_str();
        found += c.db->translate(key) != key;
    }
    return found;
}

} // namespace

int main(int argc, char** argv)
{
    setUp();
    // --lookups N [hit|miss] [hash|nohash]
    if (argc >= 3 && std::strcmp(argv[1], "--lookups") == 0) {
        const bool misses = argc > 3 && std::strcmp(argv[3], "miss") == 0;
        const bool hashed = !(argc > 4 && std::strcmp(argv[4], "nohash") == 0);
        Catalog& c = build(1000, hashed);
        verify(c);
        const size_t count = std::strtoul(argv[2], nullptr, 10);
        const size_t found = runLookups(c, count, misses);
        tearDown();
        return found == (misses ? 0 : count) ? 0 : 1;
    }
    for (size_t size : {100, 1000, 10000})
        for (bool hashed : {true, false})
            verify(build(size, hashed));
    registerAll();
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    int missed = printRatios(reporter);
    std::printf("%d of %zu catalogs missed a target\n", missed, catalogs.size());
    benchmark::Shutdown();
    tearDown();
    return 0;
}
