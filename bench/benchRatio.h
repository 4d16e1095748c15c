// A console reporter that also keeps each benchmark's CPU time per iteration by name, so that a benchmark
// can print its ratio against the anchor measured in the same run. CPU time, not wall time: the machine
// is shared, and CPU time is steadier.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                ns[run.benchmark_name()] = run.GetAdjustedCPUTime();
    }
    std::map<std::string, double> ns;
};
