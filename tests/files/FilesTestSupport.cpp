#include "FilesTestSupport.h"

#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/wait.h>

#include "files/ProjectFlows.h"
#include "files/TextFile.h"

namespace fw::test {

std::string ReadText(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

void WriteText(const std::string& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
}

std::string Crlf(const std::string& lf)
{
    std::string out;
    for (char c : lf) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

ScratchFolder::ScratchFolder()
{
    std::random_device rd;
    root_ = std::filesystem::temp_directory_path() / ("fw_files_" + std::to_string(rd()) + std::to_string(rd()));
    std::filesystem::create_directories(root_);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ec;
    std::filesystem::permissions(root_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(root_, ec);
}

std::vector<std::string> TokensOf(std::string_view line)
{
    Tokens t;
    TokeniseLine(line, t);
    return {t.begin(), t.end()};
}

ScopedEnv::ScopedEnv(const char* name, const std::string& value) : name_(name)
{
    if (const char* old = std::getenv(name))
        old_ = old;
    setenv(name, value.c_str(), 1);
}

ScopedEnv::~ScopedEnv()
{
    if (old_)
        setenv(name_, old_->c_str(), 1);
    else
        unsetenv(name_);
}

void StartIn(Session& s, Ui& ui, const ScratchFolder& dir)
{
    s.programFolder = dir.folder();
    s.ui = &ui;
    StartSession(s, dir.path("Fieldwright.cfg"));
}

void Edit(Session& s)
{
    ShapeRecord sh;
    ResetShape(sh, kPoly);
    AppendShape(s.stores, sh, {{1, 1}, {5, 1}, {5, 5}});
    s.dirty = 1;
}

CliRun RunCli(const ScratchFolder& dir, const std::string& args)
{
    const std::string out = dir.path("stdout"), err = dir.path("stderr");
    const std::string cmd = std::string("timeout -k 5 60 '") + FW_CLI + "' " + args + " >'" + out + "' 2>'" + err +
                            "' </dev/null";
    const int status = std::system(cmd.c_str());
    CliRun r;
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = ReadText(out);
    r.err = ReadText(err);
    return r;
}

ProjectData SampleProject(const std::string& programFolder)
{
    ProjectData d;
    d.version = 1;
    ResetShowFlags(d.showFlags);
    auto& f = d.showFlags;
    f.ShowTexPoly = f.ShowGrid = 0;
    f.ShowBackPicture = 1;
    f.BackImagePath = "C:\\pictures\\airfield.bmp";
    f.BackImagescale = 2.5;
    f.BackImageLeft = -120;
    f.BackImageTop = 340;
    ResetProject(d.project);
    auto& p = d.project;
    p.Name = "Kleinfeld";
    p.Comment = "Grass strip";
    p.Copyright = "J. Doe";
    p.MagVar = -2.5;
    p.Altitude = 412;
    p.LatitudeDegree = 47.123456;
    p.LongitudeDegree = -8.75;
    p.PolyScale = 0.5;
    p.LineScale = 0.25;
    p.DotLineScale = 0.125;
    p.UsePointReduction = p.UseTextureLevels = p.GroupLines = 1;
    p.Distance = {150, 600, 1800};
    p.Texture = {"a.bmp", "b.bmp", "c.r8", ""};
    p.Color = {1, 255, 65280, 16711680};

    auto shape = [&](int type, PointList pts, const char* comment) -> ShapeRecord& {
        ShapeRecord s;
        ResetShape(s, type);
        if (comment)
            s.gComment = comment;
        d.shapes.push_back(s);
        d.points.push_back(std::move(pts));
        return d.shapes.back();
    };
    {
        auto& s = shape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}}, "apron");
        s.gIsColored = 1;
        s.tDayPath = "apron.bmp";
        s.tLoadflag = {1, 0, 1, 0};
        s.cColor = RGB(10, 20, 30);
        s.cTransparency = 7;
        s.cLighted = 1;
        s.vRange = 3000;
        s.vTime = kTimeDay | kTimeDusk;
        s.vLayer = 3;
        s.vNoPointReduction = s.vNoTextureLevels = 1;
    }
    {
        auto& s = shape(kTexPoly, {{-50, -50}, {50, -50}, {50, 50}, {-50, 50}}, "marking");
        s.tDayPath = "mark.bmp";
        s.tLoadflag = {0, 1, 0, 1};
        s.tSwitch = 1;
        s.mTexMap = {1, 2, 3, 4, 5, 6, 7, -8};
        s.mSliderColor = 200;
        s.vRange = 5000;
        s.vTime = kTimeNight;
        s.vLayer = 9;
        s.vNoTextureLevels = 1;
    }
    {
        auto& s = shape(kWideLine, {{0, 0}, {500, -20}}, "taxiway A");
        s.gIsColored = 0;
        s.gLineWidth = 12.75;
        s.gLineType = 2;
        s.tDayPath = "asphalt.bmp";
        s.tLoadflag = {1, 1, 1, 1};
        s.cColor = RGB(1, 2, 3);
        s.cTransparency = 3;
        s.vRange = 800;
        s.vTime = kTimeDay | kTimeNight | kTimeDusk;
        s.vNoPointReduction = 1;
    }
    {
        auto& s = shape(kDotLine, {{10, 10}, {20, 30}, {-40, 50}}, "edge lights");
        s.gDotSpacing() = 0.5;
        s.DotLineType = 1;
        s.cColor = 5;
        s.vRange = 1500;
        s.vTime = kTimeNight | kTimeDusk;
        s.vLayer = 1;
    }
    {
        auto& s = shape(kTreeLine, {{0, 0}, {0, 200}, {30, 400}}, "poplars");
        s.tDayPath = "poplar.bmp";
        s.tLoadflag = {0, 0, 1, 1};
        s.tSwitch = 1;
        s.mNumBands = 5;
        s.mSelectedBand() = 3;
        s.mBandHeight = 17.5;
        s.vRange = 2500;
        s.vTime = kTimeDay;
    }
    shape(kFlatten, {{-100, -100}, {100, -100}, {0, 100}}, nullptr);
    {
        auto& s = shape(kForest, {{200, 200}, {300, 200}, {300, 300}, {250, 350}, {200, 300}}, "wood");
        s.ForestType = 1;
        s.mBandHeight = 25;
        s.vRange = 4000;
        s.vTime = kTimeDay | kTimeNight;
    }
    for (std::size_t i = 0; i < d.shapes.size(); ++i)
        UpdateShapeGeometry(d.shapes[i], d.points[i]);

    auto object = [&](int type, std::int32_t x, std::int32_t y, double rotation) -> ObjectRecord& {
        ObjectRecord o;
        ResetObject(o, type, programFolder);
        o.PosX = x;
        o.PosY = y;
        if (rotation >= 0)
            o.Rotation = rotation;
        d.objects.push_back(o);
        return d.objects.back();
    };
    {
        // Each end of the runway differs from the other and from the defaults.
        auto& o = object(kRunway, -300, 400, 87.5);
        o.Length() = 5200;
        o.RwyWidth() = 98;
        o.RwyNumber() = 9;
        o.RwyDesignator() = 1;
        o.ShowBorderLine() = o.ShowCenterLine() = o.ShowID() = 0;
        o.ShowTouchDownMarker() = o.ShowThresholdMarkers() = 0;
        o.Show150Markers() = o.Show300Markers() = 1;
        o.Surface() = kSurfaceGrass2;
        o.ThrOffN() = 300;
        o.ExtN() = 150;
        o.EnableLights() = 0;
        o.LightIntensityLow = -1;
        o.LightIntensityHigh = 0;
        o.ShowCenterLights() = 0;
        o.ShowTouchdownLights() = 1;
        o.VasiBarsN() = 4, o.VasiBarsF() = 32;
        o.AprLN() = 7, o.AprLF() = 0;
        o.StrobesN() = 10, o.StrobesF() = 3;
        o.IlsEnabledN() = o.IlsEnabledF() = 1;
        o.IlsIdN() = "IKL", o.IlsIdF() = "IKF";
        o.IlsNameN() = "Kleinfeld_09", o.IlsNameF() = "Kleinfeld_27";
        o.IlsFreqN() = 109.35, o.IlsFreqF() = 135.75;
        o.IlsRangeN() = 18, o.IlsRangeF() = 255;
        o.IlsSlopeN() = 2.75, o.IlsSlopeF() = 0;
        o.IlsDmeN() = o.IlsDmeF() = 0;
        o.MarkerEnabledN() = o.markerEnabledF() = 1;
        o.MarkerOuterN() = 20000, o.MarkerOuterF() = 7000;
        o.MarkerMiddleN() = 1000, o.MarkerMiddleF() = 900;
        o.MarkerInnerN() = 0, o.MarkerInnerF() = 300;
    }
    {
        auto& o = object(kApi, 120, -80, 45);
        o.Path() = "C:\\scenery\\hangar.api";
        o.Range() = 32000;
        o.Elevation() = 3.5;
        o.Scale() = 0.25;
        o.DetailLevel() = 4;
        for (int i = 1; i < kObjectTexts; ++i)
            o.texts[i] = "p" + std::to_string(i);
    }
    {
        auto& o = object(kVor, 5000, -5000, -1);
        o.Frequency() = 113.9;
        o.Range() = 130;
        o.ID() = "KLV";
        o.NavName() = "Kleinfeld_VOR";
        o.DME() = 0;
        o.VorVisible() = 1;
    }
    {
        auto& o = object(kNdb, -7000, 100, -1);
        o.Frequency() = 375.5;
        o.Range() = 25;
        o.ID() = "KN";
        o.NavName() = "Kleinfeld_NDB";
        o.NdbVisible() = 1;
    }
    object(kInit, 10, 20, 270).InitName() = "Kleinfeld_Apron";
    {
        auto& o = object(kExclude, 0, 0, -1);
        o.ExclWidth() = 20;
        o.ExclHeight() = 10000;
        o.ExcludeObjects() = 0;
        o.ExcludeVOR() = o.ExcludeNDB() = 1;
    }
    auto& sign = object(kSign, 33, -44, 359.5);
    sign.Caption() = "A_B 09-27";
    sign.Style() = "Flat";
    return d;
}

} // namespace fw::test
