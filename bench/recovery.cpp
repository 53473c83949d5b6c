// The recovery keeper at the format's limits (800 shapes of 80 points, 800 objects): the look
// after input when nothing changed, and a look that writes the copy, against writing the same
// bytes through the same temporary file and rename, without waiting for the disk either.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "PaintProject.h"
#include "files/Recovery.h"
#include "files/TextFile.h"

namespace {

using namespace fw;

struct Keeper {
    Keeper()
    {
        folder = std::filesystem::temp_directory_path() / "fw_bench_recovery";
        std::filesystem::remove_all(folder);
        Session& s = bench::FullProject();
        StartRecovery(s, folder.string());
    }
    ~Keeper() { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
};

void LookUnchanged(benchmark::State& state)
{
    Keeper k;
    Session& s = bench::FullProject();
    s.stores.PointStore[0][0].X += 2;
    KeepRecovery(s);
    for (auto _ : state)
        KeepRecovery(s);
}

void LookAndWrite(benchmark::State& state)
{
    Keeper k;
    Session& s = bench::FullProject();
    for (auto _ : state) {
        s.stores.PointStore[0][0].X ^= 2;
        KeepRecovery(s);
    }
    state.counters["bytes"] = static_cast<double>(ProjectTextOf(s).size());
}

void WriteSameBytes(benchmark::State& state)
{
    Keeper k;
    const std::string text = ProjectTextOf(bench::FullProject());
    const std::string path = (k.folder / "same.fwt").string();
    for (auto _ : state)
        WriteTextReplacing(path, text, false);
}

void ProjectText(benchmark::State& state)
{
    Session& s = bench::FullProject();
    for (auto _ : state)
        benchmark::DoNotOptimize(ProjectTextOf(s));
}

} // namespace

BENCHMARK(LookUnchanged)->Name("recovery/look_nothing_changed")->Unit(benchmark::kMillisecond);
BENCHMARK(LookAndWrite)->Name("recovery/look_and_write_copy")->Unit(benchmark::kMillisecond);
BENCHMARK(WriteSameBytes)->Name("reference/write_same_bytes")->Unit(benchmark::kMillisecond);
BENCHMARK(ProjectText)->Name("recovery/project_text_alone")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
