// Export of a project at the format's limits: 800 shapes of 80 points, 800 objects.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>

#include "core/Config.h"
#include "core/Records.h"
#include "core/Stores.h"
#include "export/ExportDriver.h"

namespace {

using namespace fw;

struct LimitProject {
    ProjectRecord project;
    ConfigRecord config;
    Stores stores;

    // allKinds false: only polygons and lines, the kinds of the first part of the export.
    explicit LimitProject(bool allKinds = true)
    {
        ResetProject(project);
        project.LatitudeDegree = 48.5;
        project.LongitudeDegree = 11.25;
        project.UseTextureLevels = 1;
        project.Texture = {"Concrete.r8", "", "", ""};
        ResetConfig(config, "/opt/fieldwright/");
        const int types[] = {kPoly, kPoly, kWideLine, kDotLine, kTexPoly, kTreeLine, kForest};
        for (int i = 0; i < kMaxShapes; ++i) {
            const int type = types[i % (allKinds ? 7 : 5)];
            const int count = type == kTexPoly ? 4 : kMaxPoints;
            PointList pts;
            for (int k = 0; k < count; ++k) {
                const double a = 2 * 3.14159265358979 * k / count;
                pts.push_back({static_cast<std::int32_t>(std::lround(2000 * std::cos(a))) + i,
                               static_cast<std::int32_t>(std::lround(2000 * std::sin(a))) - i});
            }
            ShapeRecord s;
            ResetShape(s, type);
            s.gIsColored = static_cast<std::uint8_t>(i % 2);
            s.vLayer = static_cast<std::uint8_t>(i % 3 == 0 ? 2 : 0);
            s.gLineType = static_cast<std::uint8_t>(i % 4);
            AppendShape(stores, s, pts);
        }
        const int objects[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
        for (int i = 0; allKinds && i < kMaxObjects; ++i) {
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
    const LimitProject p(false);
    ExportBuffer buffer;
    for (auto _ : state) {
        BuildExportText(p.Input(), {}, buffer);
        benchmark::DoNotOptimize(buffer.text().data());
    }
    state.counters["lines"] = buffer.count();
}
BENCHMARK(BM_BuildExportTextPolygonsAndLines)->Unit(benchmark::kMillisecond);

void BM_ExportTextFile(benchmark::State& state)
{
    const LimitProject p;
    const std::string path = (std::filesystem::temp_directory_path() / "fw_bench_export.txt").string();
    for (auto _ : state)
        benchmark::DoNotOptimize(ExportTextFile(p.Input(), path, kExportText, {}));
    std::filesystem::remove(path);
}
BENCHMARK(BM_ExportTextFile)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
