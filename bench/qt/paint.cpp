// The full frame through QtCanvas at the format's limits, and the overlay path while a selection
// is dragged, each beside references over the same visible segments on the same kind of image:
// a plain line walk (a textbook Bresenham into the image's bits) and QPainter's drawLines.
#include <benchmark/benchmark.h>

#include <QLine>
#include <QPainter>
#include <QVector>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "../PaintProject.h"
#include "qt/QtCanvas.h"

namespace {

using namespace fw;
using namespace fw::bench;
using fw::qt::QtCanvas;

constexpr double kZoom6 = 0.0625;

void FullFrame(benchmark::State& state, double zoom)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
}

// One pass of the reference, out of line so that a profiler can count one pass.
[[gnu::noinline]] void DrawLinesPass(QPainter& painter, const QImage& image, const QVector<QLine>& lines)
{
    painter.fillRect(image.rect(), Qt::white);
    painter.drawLines(lines);
}

// The segments the frame draws at a zoom: the plain lines alone, or with them every edge of the
// polygons and rectangles that show (handles, fills' outlines).
std::vector<int> SegmentsAt(double zoom, bool outlines)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    return FrameSegments(s, outlines);
}

void DrawLinesReference(benchmark::State& state, double zoom, bool outlines)
{
    const std::vector<int> segments = SegmentsAt(zoom, outlines);
    QVector<QLine> lines;
    for (std::size_t i = 0; i < segments.size(); i += 4)
        lines.append(QLine(segments[i], segments[i + 1], segments[i + 2], segments[i + 3]));
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::black, 1));
    for (auto _ : state) {
        DrawLinesPass(painter, image, lines);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["segments"] = lines.size();
}

// A textbook Bresenham over x0 y0 x1 y1 segments into RGB32 rows, one bounds test per pixel and
// the last pixel left out.
[[gnu::noinline]] void WalkLines(QImage& image, const std::vector<int>& segments)
{
    auto* bits = reinterpret_cast<std::uint32_t*>(image.bits());
    const std::size_t stride = static_cast<std::size_t>(image.bytesPerLine()) / 4;
    const auto w = static_cast<unsigned>(image.width());
    const auto h = static_cast<unsigned>(image.height());
    for (std::size_t i = 0; i < segments.size(); i += 4) {
        int x = segments[i];
        int y = segments[i + 1];
        const int x1 = segments[i + 2];
        const int y1 = segments[i + 3];
        const int dx = std::abs(x1 - x);
        const int dy = -std::abs(y1 - y);
        const int sx = x < x1 ? 1 : -1;
        const int sy = y < y1 ? 1 : -1;
        int err = dx + dy;
        while (x != x1 || y != y1) {
            if (static_cast<unsigned>(x) < w && static_cast<unsigned>(y) < h)
                bits[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)] = 0xFF000000u;
            const int e2 = 2 * err;
            if (e2 >= dy) {
                err += dy;
                x += sx;
            }
            if (e2 <= dx) {
                err += dx;
                y += sy;
            }
        }
    }
}

// The pixels the walk steps over, on the surface or not.
std::int64_t WalkedPixels(const std::vector<int>& segments)
{
    std::int64_t n = 0;
    for (std::size_t i = 0; i < segments.size(); i += 4)
        n += std::max(std::abs(segments[i + 2] - segments[i]), std::abs(segments[i + 3] - segments[i + 1]));
    return n;
}

// The plain line walk over every segment the full frame draws, after the same white fill.
void LineWalkReference(benchmark::State& state, double zoom)
{
    const std::vector<int> segments = SegmentsAt(zoom, true);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    for (auto _ : state) {
        image.fill(Qt::white);
        WalkLines(image, segments);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["segments"] = static_cast<double>(segments.size() / 4);
}

void OverlayDrag(benchmark::State& state, double zoom, int count)
{
    Session& s = FullProject();
    StartDrag(s, zoom, count);
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    PaintFrame(s, window, back);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
    EndDrag(s);
}

// The overlay's reference: the whole back buffer copied to the window, then the plain line walk
// over the segments of the drag ghost. Without the copy it is the walk alone: no overlay that
// sets the ghost's pixels one by one does better.
void OverlayLineWalkReference(benchmark::State& state, double zoom, int count, bool copy = true)
{
    Session& s = FullProject();
    StartDrag(s, zoom, count);
    const std::vector<int> segments = FrameSegments(s, true);
    EndDrag(s);
    QImage back(kWidth, kHeight, QImage::Format_RGB32);
    back.fill(Qt::white);
    QImage window(kWidth, kHeight, QImage::Format_RGB32);
    for (auto _ : state) {
        if (copy)
            std::copy(back.constBits(), back.constBits() + back.sizeInBytes(), window.bits());
        WalkLines(window, segments);
        benchmark::DoNotOptimize(window.constBits());
    }
    state.counters["segments"] = static_cast<double>(segments.size() / 4);
    state.counters["pixels"] = static_cast<double>(WalkedPixels(segments));
}

// What every full frame costs before anything is drawn: the white fill and the present copy.
[[gnu::noinline]] void ClearAndPresentPass(QtCanvas& back, QtCanvas& window)
{
    back.FillWhite(0, 0, kWidth, kHeight);
    window.CopyFrom(back);
    window.Image();
}

void ClearAndPresent(benchmark::State& state)
{
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        ClearAndPresentPass(back, window);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
}

// Each case beside its references, in the order they are reported.
const int registered = [] {
    benchmark::RegisterBenchmark("ClearAndPresent", ClearAndPresent)->Unit(benchmark::kMillisecond);
    const struct {
        const char* name;
        double zoom;
    } zooms[] = {{"zoom25", 0.25}, {"zoom400", 4.0}, {"zoom6.25", kZoom6}};
    for (const auto& z : zooms) {
        const std::string name = z.name;
        const double zoom = z.zoom;
        benchmark::RegisterBenchmark(("FullFrame/" + name).c_str(), [zoom](benchmark::State& st) { FullFrame(st, zoom); })
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("reference/lineWalk/" + name).c_str(),
                                     [zoom](benchmark::State& st) { LineWalkReference(st, zoom); })
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("reference/drawLines/" + name).c_str(),
                                     [zoom](benchmark::State& st) { DrawLinesReference(st, zoom, false); })
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("reference/drawLinesAllEdges/" + name).c_str(),
                                     [zoom](benchmark::State& st) { DrawLinesReference(st, zoom, true); })
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("OverlayDrag/forty/zoom25", [](benchmark::State& st) { OverlayDrag(st, 0.25, 40); })
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("reference/lineWalk/overlayForty/zoom25",
                                 [](benchmark::State& st) { OverlayLineWalkReference(st, 0.25, 40); })
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("OverlayDrag/everything/zoom6.25",
                                 [](benchmark::State& st) { OverlayDrag(st, kZoom6, kMaxShapes); })
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("reference/lineWalk/overlayEverything/zoom6.25",
                                 [](benchmark::State& st) { OverlayLineWalkReference(st, kZoom6, kMaxShapes); })
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("reference/lineWalkOnly/overlayEverything/zoom6.25",
                                 [](benchmark::State& st) { OverlayLineWalkReference(st, kZoom6, kMaxShapes, false); })
        ->Unit(benchmark::kMicrosecond);
    return 0;
}();

} // namespace

BENCHMARK_MAIN();
