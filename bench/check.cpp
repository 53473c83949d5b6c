// The design check of a project at the format's limits (800 shapes of 80 points, 800 objects of
// every kind), beside the export of the same project, which the check runs inside itself.
#include <benchmark/benchmark.h>

#include "Circle.h"

#include <cmath>
#include <memory>

#include "check/DesignCheck.h"
#include "core/Session.h"
#include "core/Stores.h"
#include "export/Compile.h"
#include "export/ExportDriver.h"
#include "export/ScasmCheck.h"

namespace {

using namespace fw;

const std::string kProgram = FW_PROGRAM_DIR;

// Every shape a circle of its type's most points, so that every outline is walked to its end.
const Session& LimitSession()
{
    static const Session s = [] {
        Session p;
        p.programFolder = kProgram;
        ResetProject(p.project);
        p.project.LatitudeDegree = 48.5;
        p.project.LongitudeDegree = 11.25;
        ResetConfig(p.config, kProgram);
        p.config.TEXPath = kProgram + "Texture/";
        const int types[] = {kPoly, kPoly, kWideLine, kDotLine, kTexPoly, kTreeLine, kForest};
        for (int i = 0; i < kMaxShapes; ++i) {
            const int type = types[i % 7];
            const int count = type == kTexPoly ? kMaxTexPolyPoints : kMaxPoints;
            const PointList pts = bench::Circle(count, i);
            ShapeRecord r;
            ResetShape(r, type);
            r.gIsColored = static_cast<std::uint8_t>(i % 2);
            r.vLayer = static_cast<std::uint8_t>(i % 3 == 0 && type <= kDotLine ? 2 : 0);
            r.gLineType = static_cast<std::uint8_t>(i % 4);
            AppendShape(p.stores, r, pts);
        }
        const int objects[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
        for (int i = 0; i < kMaxObjects; ++i) {
            AppendObject(p.stores, objects[i % 7], i * 10, -i * 10, i % 360, kProgram);
            ObjectRecord& o = p.stores.ObjectStore.back();
            if (o.oType == kSign)
                o.Caption() = "Direction_ArrowLeft_A Location_B";
            if (o.oType == kApi)
                o.Path() = kProgram + "API/fwt_building1.api";
        }
        return p;
    }();
    return s;
}

// What the window runs after a change: the host's set-up and the whole check.
void BM_CheckDesign(benchmark::State& state)
{
    const Session& s = LimitSession();
    std::size_t problems = 0;
    for (auto _ : state) {
        const auto found = CheckDesign(s, ProbeCompilerSetup(s.programFolder, CompilerCommand{}));
        problems = found.size();
        benchmark::DoNotOptimize(found.data());
    }
    state.counters["problems"] = static_cast<double>(problems);
}
BENCHMARK(BM_CheckDesign)->Unit(benchmark::kMillisecond);

// What the window's thread pays for a check after a change: the copy of the design the check's own
// thread reads (the Problems panel's snapshot). The check itself runs beside the frames.
void BM_PanelSnapshot(benchmark::State& state)
{
    const Session& s = LimitSession();
    for (auto _ : state) {
        auto copy = CheckSnapshot(s);
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(BM_PanelSnapshot)->Unit(benchmark::kMillisecond);

// The reference: the export of the same project, as "Generate SCASM files..." builds it.
void BM_ExportReference(benchmark::State& state)
{
    const Session& s = LimitSession();
    ExportBuffer buffer;
    for (auto _ : state) {
        BuildExportText(ExportInputOf(s), {}, buffer);
        benchmark::DoNotOptimize(buffer.text().data());
    }
    state.counters["lines"] = buffer.count();
}
BENCHMARK(BM_ExportReference)->Unit(benchmark::kMillisecond);

// The part of the check that reads the text the export wrote.
void BM_StructureOfTheText(benchmark::State& state)
{
    const Session& s = LimitSession();
    ExportBuffer buffer;
    BuildExportText(ExportInputOf(s), {}, buffer);
    const std::string text(buffer.text());
    for (auto _ : state)
        benchmark::DoNotOptimize(CheckScasmText(text).data());
}
BENCHMARK(BM_StructureOfTheText)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
