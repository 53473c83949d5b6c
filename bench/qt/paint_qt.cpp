// The full frame through QtCanvas at the format's limits, against one QPainter drawLines of the
// same visible segments on the same image, and the overlay path while a selection is dragged.
#include <benchmark/benchmark.h>

#include <QLine>
#include <QPainter>
#include <QVector>

#include <random>

#include "core/Session.h"
#include "platform/RecordingCanvas.h"
#include "platform/qt/QtCanvas.h"
#include "render/Paint.h"

namespace {

using namespace fw;
using fw::qt::QtCanvas;

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

void DrawLinesReference(benchmark::State& state, double zoom)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    RecordingCanvas rec(kWidth, kHeight);
    RecordingCanvas recWindow(kWidth, kHeight);
    PaintFrame(s, recWindow, rec);
    QVector<QLine> lines;
    QPoint at;
    for (const auto& c : rec.calls) {
        if (c.op == "move") {
            at = QPoint(c.args[0], c.args[1]);
        } else if (c.op == "line") {
            lines.append(QLine(at, QPoint(c.args[0], c.args[1])));
            at = QPoint(c.args[0], c.args[1]);
        }
    }
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
    s.view.setZoom(0.25);
    WorkingCopy& w = s.editor.work;
    for (int i = 0; i < 40; ++i) {
        w.WorkPoints.push_back(s.stores.PointStore[i]);
        w.WorkShapes.push_back(s.stores.ShapeStore[i]);
        w.WorkObjects.push_back(s.stores.ObjectStore[i]);
    }
    w.WorkShapeLast = 39;
    w.WorkObjectLast = 39;
    w.WorkLimits = {-9000, 9000, -9000, 9000};
    s.editor.EditState = 9;
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
    w = WorkingCopy{};
    s.editor.EditState = 0;
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
BENCHMARK_CAPTURE(DrawLinesReference, zoom25, 0.25)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FullFrame, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrawLinesReference, zoom400, 4.0)->Unit(benchmark::kMillisecond);
BENCHMARK(OverlayDrag)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
