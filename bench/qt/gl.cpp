// The OpenGL view at the format's limits (800 shapes of 80 points): the list build that follows
// every edit (the fills tessellated before), the same with every fill tessellated, and one GL frame with its read-back, beside the ordinary frame of the same project
// in the same run. A context without a display (Mesa's software renderer on a machine without a
// GPU), so the figures are the slowest a user sees.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

#include "../PaintProject.h"
#include "gl/OpenGl.h"
#include "qt/QtCanvas.h"
#include "render/GlView.h"

namespace {

using namespace fw;
using namespace fw::bench;
using fw::qt::QtCanvas;

struct Gl {
    HeadlessGlContext context;
    OpenGl gl;
    GlFramebuffer frame;
    GlTextureTable table;
    GlFillCache fills;
    bool ok = false;
};

Gl& Context()
{
    static Gl g;
    static const bool made = [] {
        std::string error;
        g.ok = g.context.Create(error) == 3 && GlSetup(g.gl) && g.frame.Resize(kWidth, kHeight);
        if (!g.ok)
            std::fprintf(stderr, "no OpenGL context: %s\n", error.c_str());
        return true;
    }();
    (void)made;
    return g;
}

Session& Project(double zoom)
{
    Session& s = FullProject();
    s.view.setZoom(zoom);
    s.editor.work = WorkingCopy{};
    // The shapes' default textures, from the program folder the build lays out.
    if (const char* home = std::getenv("FIELDWRIGHT_HOME"))
        s.config.TEXPath = std::string(home) + "/Texture/";
    return s;
}

void GlBuild(benchmark::State& state)
{
    Gl& g = Context();
    if (!g.ok) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    Session& s = Project(0.25);
    GlLoadTextures(s, g.gl, g.table);
    for (auto _ : state) {
        GlBuildList(s, g.gl, g.table, g.fills);
    }
}

// After a project is opened every fill goes through the tessellator once.
void GlBuildCold(benchmark::State& state)
{
    Gl& g = Context();
    if (!g.ok) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    Session& s = Project(0.25);
    GlLoadTextures(s, g.gl, g.table);
    for (auto _ : state) {
        g.fills.clear();
        GlBuildList(s, g.gl, g.table, g.fills);
    }
}

void GlTextures(benchmark::State& state)
{
    Gl& g = Context();
    if (!g.ok) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    Session& s = Project(0.25);
    for (auto _ : state) {
        GlLoadTextures(s, g.gl, g.table);
    }
    state.counters["textures"] = g.table.count();
}

void GlFrameReadBack(benchmark::State& state, double zoom)
{
    Gl& g = Context();
    if (!g.ok) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    Session& s = Project(zoom);
    GlLoadTextures(s, g.gl, g.table);
    GlBuildList(s, g.gl, g.table, g.fills);
    QtCanvas back(kWidth, kHeight);
    int stride = 0;
    std::uint32_t* bits = back.FrameBits(stride);
    for (auto _ : state) {
        GlFrame(s, g.gl);
        g.frame.Read(bits, stride);
        benchmark::DoNotOptimize(bits);
    }
}

void OrdinaryFrame(benchmark::State& state, double zoom)
{
    Session& s = Project(zoom);
    QtCanvas back(kWidth, kHeight);
    QtCanvas window(kWidth, kHeight);
    for (auto _ : state) {
        PaintFrame(s, window, back);
        benchmark::DoNotOptimize(window.Image().constBits());
    }
}

} // namespace

BENCHMARK(GlBuild)->Name("gl/build_list_800_shapes")->Unit(benchmark::kMillisecond);
BENCHMARK(GlBuildCold)->Name("gl/build_list_800_shapes_all_tessellated")->Unit(benchmark::kMillisecond);
BENCHMARK(GlTextures)->Name("gl/load_textures_800_shapes")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(GlFrameReadBack, z25, 0.25)->Name("gl/frame_and_read_back_25%")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OrdinaryFrame, z25, 0.25)->Name("reference/ordinary_frame_25%")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(GlFrameReadBack, z400, 4.0)->Name("gl/frame_and_read_back_400%")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(OrdinaryFrame, z400, 4.0)->Name("reference/ordinary_frame_400%")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
