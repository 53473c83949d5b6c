// Reading and writing a project at the format's limits: 800 shapes of 80 points and 800
// objects, runways among them. A plain getline pass over the same file is the yardstick.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/Stores.h"
#include "files/ProjectFile.h"

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
BENCHMARK(BM_GetlinePass)->Unit(benchmark::kMillisecond);

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
BENCHMARK(BM_ReadProject)->Unit(benchmark::kMillisecond);

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
BENCHMARK(BM_ReadManyHeadBlocks)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_WriteProject(benchmark::State& state)
{
    Files& f = Shared();
    for (auto _ : state) {
        if (!fw::WriteProjectFile(f.output, f.data, nullptr))
            state.SkipWithError("the project was not written");
    }
}
BENCHMARK(BM_WriteProject)->Unit(benchmark::kMillisecond);

void BM_BuildProjectText(benchmark::State& state)
{
    Files& f = Shared();
    for (auto _ : state) {
        fw::CBufferS buffer;
        fw::BuildProjectText(buffer, f.data);
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(BM_BuildProjectText)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
