// Reading, writing and opening a project at the format's limits: 800 shapes of 80 points and 800
// objects, runways and 3-D objects among them. The yardsticks, named "reference/...", run in the
// same program: a getline pass and a plain read of the same bytes for the reader, and one frame
// of the opened project on the same canvas for the open (a 60 Hz frame is 16.7 ms).
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/Stores.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "files/Recovery.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"
#include "support/ScriptedUi.h"

namespace {

fw::ProjectData LimitProject()
{
    fw::ProjectData d;
    d.version = 1;
    fw::ResetShowFlags(d.showFlags);
    d.showFlags.BackImagescale = 1;
    fw::ResetProject(d.project);
    const int shapeTypes[] = {fw::kPoly, fw::kWideLine, fw::kDotLine, fw::kTreeLine, fw::kForest};
    for (int i = 0; i < fw::kMaxShapes; ++i) {
        fw::ShapeRecord s;
        fw::ResetShape(s, shapeTypes[i % 5]);
        s.gComment = "shape number " + std::to_string(i);
        fw::PointList pts;
        for (int k = 0; k < fw::kMaxPoints; ++k) {
            const double a = k * 2 * 3.14159265358979 / fw::kMaxPoints;
            pts.push_back({static_cast<std::int32_t>(std::lround(i * 10 + 500 * std::cos(a))),
                           static_cast<std::int32_t>(std::lround(-i * 7 + 500 * std::sin(a)))});
        }
        fw::UpdateShapeGeometry(s, pts);
        d.shapes.push_back(s);
        d.points.push_back(pts);
    }
    const int objectTypes[] = {fw::kRunway, fw::kApi, fw::kVor, fw::kNdb, fw::kInit, fw::kExclude, fw::kSign};
    for (int i = 0; i < fw::kMaxObjects; ++i) {
        fw::ObjectRecord o;
        fw::ResetObject(o, objectTypes[i % 7], "/opt/fieldwright/");
        o.PosX = i * 13 - 5000;
        o.PosY = 5000 - i * 11;
        o.Rotation = i % 360 + 0.5;
        d.objects.push_back(o);
    }
    return d;
}

struct Files {
    Files()
    {
        folder = std::filesystem::temp_directory_path() / "fw_bench_files";
        std::filesystem::create_directories(folder);
        input = (folder / "limits.fwt").string();
        output = (folder / "written.fwt").string();
        data = LimitProject();
        fw::WriteProjectFile(input, data, nullptr);
    }
    ~Files() { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
    std::string input, output;
    fw::ProjectData data;
};

Files& Shared()
{
    static Files f;
    return f;
}

void BM_GetlinePass(benchmark::State& state)
{
    const std::string& path = Shared().input;
    for (auto _ : state) {
        std::ifstream in(path, std::ios::binary);
        std::string line;
        std::size_t lines = 0;
        while (std::getline(in, line))
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * std::filesystem::file_size(path));
}
BENCHMARK(BM_GetlinePass)->Name("reference/getline_pass")->Unit(benchmark::kMillisecond);

// The bytes alone: one read of the whole file into memory.
void BM_PlainRead(benchmark::State& state)
{
    const std::string& path = Shared().input;
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
    for (auto _ : state) {
        std::string bytes(size, '\0');
        std::FILE* f = std::fopen(path.c_str(), "rb");
        const std::size_t got = f ? std::fread(bytes.data(), 1, size, f) : 0;
        if (f)
            std::fclose(f);
        if (got != size)
            state.SkipWithError("the file did not read");
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK(BM_PlainRead)->Name("reference/plain_read")->Unit(benchmark::kMillisecond);

void BM_ReadProject(benchmark::State& state)
{
    const std::string& path = Shared().input;
    for (auto _ : state) {
        fw::ProjectData d;
        const bool ok = fw::ReadProjectFile(path, d, nullptr, "/opt/fieldwright/");
        if (!ok || d.shapes.size() != 800 || d.objects.size() != 800)
            state.SkipWithError("the project did not read back");
        benchmark::DoNotOptimize(d);
    }
    state.SetBytesProcessed(state.iterations() * std::filesystem::file_size(path));
}
BENCHMARK(BM_ReadProject)->Name("read/project_limits")->Unit(benchmark::kMillisecond);

// A 1 MB head of 90000 blocks of one kind that all close at the end: read in
// one pass it takes well under a second; a walk per block took 12 to 88 seconds.
void BM_ReadManyHeadBlocks(benchmark::State& state)
{
    const char* word = state.range(0) == 0 ? "Project(\r\n" : "Settings(\r\n";
    std::string text;
    for (int i = 0; i < 90000; ++i)
        text += word;
    text += ")\r\n";
    for (auto _ : state) {
        fw::ProjectData d;
        if (!fw::ReadProjectText(text, d, nullptr))
            state.SkipWithError("the head did not read");
        benchmark::DoNotOptimize(d);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_ReadManyHeadBlocks)->Name("read/many_head_blocks")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_WriteProject(benchmark::State& state)
{
    Files& f = Shared();
    for (auto _ : state) {
        if (!fw::WriteProjectFile(f.output, f.data, nullptr))
            state.SkipWithError("the project was not written");
    }
}
BENCHMARK(BM_WriteProject)->Name("write/project_limits")->Unit(benchmark::kMillisecond);

void BM_BuildProjectText(benchmark::State& state)
{
    Files& f = Shared();
    for (auto _ : state) {
        fw::CBufferS buffer;
        fw::BuildProjectText(buffer, f.data);
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(BM_BuildProjectText)->Name("write/build_project_text")->Unit(benchmark::kMillisecond);

// The same text joined as it is made: the bytes a save or a recovery copy writes.
void BM_ProjectText(benchmark::State& state)
{
    const fw::ProjectView view = fw::ViewOf(Shared().data);
    for (auto _ : state)
        benchmark::DoNotOptimize(fw::ProjectText(view));
}
BENCHMARK(BM_ProjectText)->Name("write/project_text_joined")->Unit(benchmark::kMillisecond);

// The open as File > recent runs it in the program: the save question (nothing changed), the
// read, each 3-D object's macro outline, the stores, the recent list, the recovery baseline and
// the first frame, on a 1024 by 768 canvas. A third of the objects are 3-D objects: most name
// the program's macros, the rest a macro beside the project.
struct OpenFlow {
    OpenFlow()
    {
        folder = std::filesystem::temp_directory_path() / "fw_bench_open";
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        const std::string program = FW_PROGRAM_DIR;
        const std::string ownMacro = (folder / "hangar.api").string();
        std::filesystem::copy_file(program + "API/fwt_building2.api", ownMacro);
        fw::ProjectData d = LimitProject();
        const char* macros[] = {"fwt_building1.api", "fwt_building2.api", "fwt_b737.api"};
        for (std::size_t i = 0; i < d.objects.size(); i += 3) {
            fw::ObjectRecord& o = d.objects[i];
            const std::int32_t x = o.PosX, y = o.PosY;
            fw::ResetObject(o, fw::kApi, program + "API/");
            o.PosX = x;
            o.PosY = y;
            o.Path() = i % 4 == 3 ? ownMacro : program + "API/" + macros[i % 3];
        }
        path = (folder / "airport.fwt").string();
        fw::WriteProjectFile(path, d, nullptr);

        s.programFolder = program;
        fw::ResetAtStart(s);
        fw::ResetConfig(s.config, program);
        s.ui = &ui;
        fw::StartRecovery(s, (folder / "recovery").string());
        s.recent.addPath(path);
        s.view.setSWidth(1024);
        s.view.setSHeight(768);
        s.view.reset();
        hooks.redrawOpened = [this](fw::Session& session) { fw::PaintFrame(session, window, back); };
    }
    ~OpenFlow() { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
    std::string path;
    fw::ScriptedUi ui;
    fw::Session s;
    fw::RasterCanvas window{1024, 768};
    fw::RasterCanvas back{1024, 768};
    fw::FlowHooks hooks;
};

OpenFlow& SharedOpen()
{
    static OpenFlow f;
    return f;
}

void BM_OpenRecent(benchmark::State& state)
{
    OpenFlow& f = SharedOpen();
    for (auto _ : state) {
        if (!fw::MnuFrecent(f.s, 0, f.hooks) || f.s.stores.ObjectStore.size() != 800 || !f.ui.Messages().empty())
            state.SkipWithError("the project did not open");
    }
}
BENCHMARK(BM_OpenRecent)->Name("open/recent_limits_3d_objects")->Unit(benchmark::kMillisecond);

void BM_OpenedFrame(benchmark::State& state)
{
    OpenFlow& f = SharedOpen();
    if (!fw::MnuFrecent(f.s, 0, f.hooks))
        state.SkipWithError("the project did not open");
    for (auto _ : state)
        fw::PaintFrame(f.s, f.window, f.back);
}
BENCHMARK(BM_OpenedFrame)->Name("reference/frame_of_opened_project")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
