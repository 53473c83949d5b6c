// The full frame through QtCanvas at the format's limits, against one QPainter drawLines of the
// same visible segments on the same image, and the overlay path while a selection is dragged.
#include <benchmark/benchmark.h>

#include <QLine>
#include <QPainter>
#include <QVector>

#include "../PaintProject.h"
#include "qt/QtCanvas.h"

namespace {

using namespace fw;
using namespace fw::bench;
using fw::qt::QtCanvas;

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

// The reference: the plain lines alone, or with them every edge of the polygons and rectangles
// that show (handles, fills' outlines), so that every segment the frame shows is drawn once.
void DrawLinesReference(benchmark::State& state, double zoom, bool outlines)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    const std::vector<int> segments = FrameSegments(s, outlines);
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

void OverlayDrag(benchmark::State& state)
{
    Session& s = FullProject();
    StartDrag(s);
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
    EndDrag(s);
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

BENCHMARK(ClearAndPresent)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom25, 0.25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawLinesReference, zoom25, 0.25, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawLinesReference, zoom25AllEdges, 0.25, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawLinesReference, zoom400, 4.0, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawLinesReference, zoom400AllEdges, 4.0, true)->Unit(benchmark::kMillisecond);
BENCHMARK(OverlayDrag)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
