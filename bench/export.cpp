// Export of a project at the format's limits: 800 shapes of 80 points, 800 objects. The file
// export is measured beside writing the very bytes it writes, through the same replacing write.
#include <benchmark/benchmark.h>

#include "Circle.h"

#include <cmath>
#include <filesystem>

#include "core/Config.h"
#include "core/Records.h"
#include "core/Stores.h"
#include "export/ExportDriver.h"
#include "files/TextFile.h"

namespace {

using namespace fw;

struct LimitProject {
    ProjectRecord project;
    ConfigRecord config;
    Stores stores;

    enum Kinds { kAllKinds, kPolygonsAndLines, kForestsOnly };

    // kPolygonsAndLines: the kinds of the first part of the export. kForestsOnly: the forests of
    // the whole project, as they stand there, and nothing else.
    explicit LimitProject(Kinds kinds = kAllKinds)
    {
        const bool allKinds = kinds != kPolygonsAndLines;
        ResetProject(project);
        project.LatitudeDegree = 48.5;
        project.LongitudeDegree = 11.25;
        project.UseTextureLevels = 1;
        project.Texture = {"Concrete.r8", "", "", ""};
        ResetConfig(config, "/opt/fieldwright/");
        const int types[] = {kPoly, kPoly, kWideLine, kDotLine, kTexPoly, kTreeLine, kForest};
        for (int i = 0; i < kMaxShapes; ++i) {
            const int type = types[i % (allKinds ? 7 : 5)];
            if (kinds == kForestsOnly && type != kForest)
                continue;
            const int count = type == kTexPoly ? 4 : kMaxPoints;
            const PointList pts = bench::Circle(count, i);
            ShapeRecord s;
            ResetShape(s, type);
            s.gIsColored = static_cast<std::uint8_t>(i % 2);
            s.vLayer = static_cast<std::uint8_t>(i % 3 == 0 ? 2 : 0);
            s.gLineType = static_cast<std::uint8_t>(i % 4);
            AppendShape(stores, s, pts);
        }
        const int objects[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
        for (int i = 0; kinds == kAllKinds && i < kMaxObjects; ++i) {
            AppendObject(stores, objects[i % 7], i * 10, -i * 10, i % 360, "/opt/fieldwright/");
            if (stores.ObjectStore.back().oType == kSign)
                stores.ObjectStore.back().Caption() = "A_B 12";
        }
    }

    ExportInput Input() const
    {
        return ExportInput{project, config, stores.PointStore, stores.ShapeStore, stores.ObjectStore, '.', nullptr};
    }
};

void BM_BuildExportText(benchmark::State& state)
{
    const LimitProject p;
    ExportBuffer buffer;
    for (auto _ : state) {
        BuildExportText(p.Input(), {}, buffer);
        benchmark::DoNotOptimize(buffer.text().data());
    }
    state.counters["lines"] = buffer.count();
}
BENCHMARK(BM_BuildExportText)->Unit(benchmark::kMillisecond);

void BM_BuildExportTextPolygonsAndLines(benchmark::State& state)
{
    const LimitProject p(LimitProject::kPolygonsAndLines);
    ExportBuffer buffer;
    for (auto _ : state) {
        BuildExportText(p.Input(), {}, buffer);
        benchmark::DoNotOptimize(buffer.text().data());
    }
    state.counters["lines"] = buffer.count();
}
BENCHMARK(BM_BuildExportTextPolygonsAndLines)->Unit(benchmark::kMillisecond);

// The forests alone: a seventh of the shapes.
void BM_BuildExportTextForests(benchmark::State& state)
{
    const LimitProject p(LimitProject::kForestsOnly);
    ExportBuffer buffer;
    for (auto _ : state) {
        BuildExportText(p.Input(), {}, buffer);
        benchmark::DoNotOptimize(buffer.text().data());
    }
    state.counters["lines"] = buffer.count();
}
BENCHMARK(BM_BuildExportTextForests)->Unit(benchmark::kMillisecond);

std::string BenchPath() { return (std::filesystem::temp_directory_path() / "fw_bench_export.txt").string(); }

void BM_ExportTextFile(benchmark::State& state)
{
    const LimitProject p;
    const std::string path = BenchPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(ExportTextFile(p.Input(), path, kExportText, {}));
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
    std::filesystem::remove(path);
}
BENCHMARK(BM_ExportTextFile)->Unit(benchmark::kMillisecond);

// The yardstick of the file export: the same bytes, built once beforehand, written with the same
// temporary file, permissions, rename and (no) sync as the export's own write.
void BM_WriteSameBytes(benchmark::State& state)
{
    const LimitProject p;
    ExportBuffer buffer;
    BuildExportText(p.Input(), {}, buffer);
    const std::string path = BenchPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(WriteTextReplacing(path, buffer.text(), false));
    state.counters["bytes"] = static_cast<double>(buffer.size());
    std::filesystem::remove(path);
}
BENCHMARK(BM_WriteSameBytes)->Name("reference/write_same_bytes")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
