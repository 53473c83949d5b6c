// The plan view at the format's limits: 800 shapes of 80 points and 800 objects over the whole
// work area. The full frame at 25% and 400%, the overlay path while a selection is dragged, and
// for reference the same visible segments drawn straight onto the same surface.
#include <benchmark/benchmark.h>

#include <random>

#include "core/Session.h"
#include "platform/RecordingCanvas.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"

namespace {

using namespace fw;

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

Session& FullProject()
{
    static Session s = [] {
        Session p;
        p.programFolder = "/opt/fw/";
        ResetConfig(p.config, p.programFolder);
        ResetAtStart(p);
        std::mt19937 rng(7);
        std::uniform_int_distribution<int> centre(-9000, 9000);
        std::uniform_int_distribution<int> step(-120, 120);
        const int shapeTypes[] = {kPoly, kTexPoly, kWideLine, kDotLine, kTreeLine, kForest, kPoly};
        for (int i = 0; i < kMaxShapes; ++i) {
            ShapeRecord r;
            const int type = shapeTypes[i % 7];
            ResetShape(r, type);
            const int points = type == kTexPoly ? kMaxTexPolyPoints : kMaxPoints;
            PointList pts;
            int x = centre(rng);
            int y = centre(rng);
            for (int k = 0; k < points; ++k) {
                x = std::clamp(x + step(rng), -10000, 10000);
                y = std::clamp(y + step(rng), -10000, 10000);
                pts.push_back({x, y});
            }
            AppendShape(p.stores, r, pts);
        }
        const int objectTypes[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
        std::uniform_real_distribution<double> heading(0, 360);
        for (int i = 0; i < kMaxObjects; ++i)
            AppendObject(p.stores, objectTypes[i % 7], centre(rng), centre(rng), heading(rng), p.programFolder);
        p.view.setSWidth(kWidth);
        p.view.setSHeight(kHeight);
        p.view.reset();
        return p;
    }();
    return s;
}

void FullFrame(benchmark::State& state, double zoom)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Pixels().data());
    }
}

// The segments the full frame sends to the surface, drawn again without the painters.
void Reference(benchmark::State& state, double zoom)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    RecordingCanvas rec(kWidth, kHeight);
    RecordingCanvas recWindow(kWidth, kHeight);
    PaintFrame(s, recWindow, rec);
    std::vector<int> segments;
    int cx = 0;
    int cy = 0;
    for (const auto& c : rec.calls) {
        if (c.op == "move") {
            cx = c.args[0];
            cy = c.args[1];
        } else if (c.op == "line") {
            segments.insert(segments.end(), {cx, cy, c.args[0], c.args[1]});
            cx = c.args[0];
            cy = c.args[1];
        }
    }
    RasterCanvas back(kWidth, kHeight);
    for (auto _ : state) {
        back.FillWhite(0, 0, kWidth, kHeight);
        for (std::size_t i = 0; i < segments.size(); i += 4) {
            back.MoveToEx(segments[i], segments[i + 1]);
            back.LineTo(segments[i + 2], segments[i + 3]);
        }
        benchmark::DoNotOptimize(back.Pixels().data());
    }
    state.counters["segments"] = static_cast<double>(segments.size() / 4);
}

// Dragging a selection of 40 shapes and 40 objects: one block copy and the ghost.
void OverlayDrag(benchmark::State& state)
{
    Session& s = FullProject();
    s.view.setZoom(0.25);
    WorkingCopy& w = s.editor.work;
    w = WorkingCopy{};
    for (int i = 0; i < 40; ++i) {
        w.WorkPoints.push_back(s.stores.PointStore[i]);
        w.WorkShapes.push_back(s.stores.ShapeStore[i]);
        w.WorkObjects.push_back(s.stores.ObjectStore[i]);
    }
    w.WorkShapeLast = 39;
    w.WorkObjectLast = 39;
    w.WorkLimits = {-9000, 9000, -9000, 9000};
    s.editor.EditState = 9;
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Pixels().data());
    }
    w = WorkingCopy{};
    s.editor.EditState = 0;
}

// What every full frame costs before anything is drawn: the white fill and the present copy.
void ClearAndPresent(benchmark::State& state)
{
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        back.FillWhite(0, 0, kWidth, kHeight);
        window.CopyFrom(back);
        benchmark::DoNotOptimize(window.Pixels().data());
    }
}

BENCHMARK(ClearAndPresent)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom25, 0.25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom25, 0.25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK(OverlayDrag)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
