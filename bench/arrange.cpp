// Arrange mode's bring to front and send to back at the format's limits (800 shapes of 80 points)
// and at eight times that, with every other shape selected in a scattered order. The yardstick is
// the least a reorder can do: moving every shape and its points once into new stores.
#include <benchmark/benchmark.h>

#include "Circle.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "core/Records.h"
#include "core/Session.h"
#include "core/Stores.h"
#include "editor/Arrange.h"

namespace {

using namespace fw;

void FillSession(Session& s, int shapes)
{
    for (int i = 0; i < shapes; ++i) {
        const PointList pts = bench::Circle(kMaxPoints, i);
        ShapeRecord r;
        ResetShape(r, kPoly);
        AppendShape(s.stores, r, pts);
    }
    // Every other shape, picked in a scattered order (the order the reorder keeps).
    CSelection& sel = s.editor.selection;
    sel.reset();
    const int half = shapes / 2;
    for (int k = 0; k < half; ++k) {
        const int i = 2 * ((k * 7919) % half);
        const auto& l = s.stores.ShapeStore[i].gLimits;
        sel.addEntry(i, 0, l[0], l[1], l[2], l[3]);
    }
}

// Front and back in turn, so every run moves the selected block across the whole store.
void BM_Reorder(benchmark::State& state)
{
    Session s;
    FillSession(s, static_cast<int>(state.range(0)));
    bool front = true;
    for (auto _ : state) {
        if (front)
            BringToFront(s);
        else
            SendToBack(s);
        front = !front;
        benchmark::DoNotOptimize(s.stores.ShapeStore.data());
    }
    state.counters["shapes"] = static_cast<double>(state.range(0));
}
BENCHMARK(BM_Reorder)->Arg(kMaxShapes)->Arg(8 * kMaxShapes)->Unit(benchmark::kMicrosecond);

void BM_MoveStores(benchmark::State& state)
{
    Session s;
    FillSession(s, static_cast<int>(state.range(0)));
    std::vector<ShapeRecord> shapes;
    std::vector<PointList> points;
    for (auto _ : state) {
        Stores& st = s.stores;
        shapes.clear();
        points.clear();
        shapes.reserve(st.ShapeStore.size());
        points.reserve(st.PointStore.size());
        for (std::size_t i = 0; i < st.ShapeStore.size(); ++i) {
            shapes.push_back(std::move(st.ShapeStore[i]));
            points.push_back(std::move(st.PointStore[i]));
        }
        st.ShapeStore.swap(shapes);
        st.PointStore.swap(points);
        benchmark::DoNotOptimize(st.ShapeStore.data());
    }
}
BENCHMARK(BM_MoveStores)
    ->Name("reference/move_stores_once")
    ->Arg(kMaxShapes)
    ->Arg(8 * kMaxShapes)
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
