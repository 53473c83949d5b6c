// The plan view at the format's limits: 800 shapes of 80 points and 800 objects over the whole
// work area. The full frame at 25% and 400%, the overlay path while a selection is dragged, and
// for reference the same visible segments drawn straight onto the same surface.
#include <benchmark/benchmark.h>

#include "PaintProject.h"
#include "render/RasterCanvas.h"

namespace {

using namespace fw;
using namespace fw::bench;

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

// One pass of the reference: the white fill and the segments, and the present copy when asked.
// Out of line so that a profiler can count one pass.
[[gnu::noinline]] void ReferencePass(RasterCanvas& back, RasterCanvas* window, const std::vector<int>& segments)
{
    back.FillWhite(0, 0, kWidth, kHeight);
    for (std::size_t i = 0; i < segments.size(); i += 4) {
        back.MoveToEx(segments[i], segments[i + 1]);
        back.LineTo(segments[i + 2], segments[i + 3]);
    }
    if (window != nullptr)
        window->CopyFrom(back);
}

// The segments of the full frame, drawn again without the painters.
void Reference(benchmark::State& state, double zoom, bool outlines, bool present)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    const std::vector<int> segments = FrameSegments(s, outlines);
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        ReferencePass(back, present ? &window : nullptr, segments);
        benchmark::DoNotOptimize(back.Pixels().data());
    }
    state.counters["segments"] = static_cast<double>(segments.size() / 4);
}

// Dragging a selection of 40 shapes and 40 objects: one block copy and the ghost.
void OverlayDrag(benchmark::State& state)
{
    Session& s = FullProject();
    StartDrag(s);
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Pixels().data());
    }
    EndDrag(s);
}

// What every full frame costs before anything is drawn: the white fill and the present copy.
[[gnu::noinline]] void ClearAndPresentPass(RasterCanvas& back, RasterCanvas& window)
{
    back.FillWhite(0, 0, kWidth, kHeight);
    window.CopyFrom(back);
}

void ClearAndPresent(benchmark::State& state)
{
    RasterCanvas back(kWidth, kHeight);
    RasterCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        ClearAndPresentPass(back, window);
        benchmark::DoNotOptimize(window.Pixels().data());
    }
}

BENCHMARK(ClearAndPresent)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom25, 0.25)->Unit(benchmark::kMillisecond);
// Reference: the plain lines; Outlines: with the polygons' and handles' outlines; Present: with
// the copy to the window as well.
BENCHMARK_CAPTURE(Reference, zoom25, 0.25, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom25Outlines, 0.25, true, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom25OutlinesPresent, 0.25, true, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom400, 4.0, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom400Outlines, 4.0, true, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Reference, zoom400OutlinesPresent, 4.0, true, true)->Unit(benchmark::kMillisecond);
BENCHMARK(OverlayDrag)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
