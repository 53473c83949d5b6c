#include "files/ProjectFile.h"

#include "core/Session.h"

#include <optional>

#include "core/Stores.h"
#include "files/KeyBlock.h"
#include "files/ObjectBlocks.h"
#include "files/ShapeBlocks.h"
#include "files/ValueReaders.h"
#include "ports/Ui.h"

namespace fw {

namespace {

enum SettingsField {
    FShowPoly, FShowTexPoly, FShowWideLine, FShowDotLine, FShowTreeLine, FShowAPI, FShowRunway,
    FShowNav, FShowExclude, FShowGrid, FShowBackPicture, FBackImagePath, FBackImageTop,
    FBackImageLeft, FBackImagescale,
};

// In written order.
constexpr KeyRule kSettingsKeys[] = {
    {"ShowPoly", ValueKind::Byte, 0, 1, FShowPoly},
    {"ShowTexPoly", ValueKind::Byte, 0, 1, FShowTexPoly},
    {"ShowWideLine", ValueKind::Byte, 0, 1, FShowWideLine},
    {"ShowDotLine", ValueKind::Byte, 0, 1, FShowDotLine},
    {"ShowTreeLine", ValueKind::Byte, 0, 1, FShowTreeLine},
    {"ShowAPI", ValueKind::Byte, 0, 1, FShowAPI},
    {"ShowRunway", ValueKind::Byte, 0, 1, FShowRunway},
    {"ShowNav", ValueKind::Byte, 0, 1, FShowNav},
    {"ShowExclude", ValueKind::Byte, 0, 1, FShowExclude},
    {"ShowGrid", ValueKind::Byte, 0, 1, FShowGrid},
    {"ShowBackPicture", ValueKind::Byte, 0, 1, FShowBackPicture},
    {"BackImagePath", ValueKind::String, 0, 0, FBackImagePath},
    {"BackImageTop", ValueKind::Long, 0, 0, FBackImageTop},
    {"BackImageLeft", ValueKind::Long, 0, 0, FBackImageLeft},
    {"BackImagescale", ValueKind::Double, 0.01, 32, FBackImagescale},
};

enum ProjectField {
    FName, FCopyright, FComment, FMagVar, FAltitude, FLatitude, FLongitude, FPolyScale,
    FLineScale, FDotLineScale, FUsePointReduction, FUseTextureLevels, FGroupLines, FDistance1,
    FDistance2, FDistance3, FTexture1, FTexture2, FTexture3, FTexture4, FColor1, FColor2, FColor3,
    FColor4,
};

constexpr KeyRule kProjectKeys[] = {
    {"Name", ValueKind::String, 0, 0, FName},
    {"Copyright", ValueKind::String, 0, 0, FCopyright},
    {"Comment", ValueKind::String, 0, 0, FComment},
    {"MagVar", ValueKind::Double, -40, 40, FMagVar},
    {"Altitude", ValueKind::Double, -8000, 8000, FAltitude},
    {"LatitudeDegree", ValueKind::Double, -90, 90, FLatitude},
    {"LongitudeDegree", ValueKind::Double, -180, 180, FLongitude},
    {"PolyScale", ValueKind::Double, 0.001, 32, FPolyScale},
    {"LineScale", ValueKind::Double, 0, 32, FLineScale},
    {"DotLineScale", ValueKind::Double, 0.001, 32, FDotLineScale},
    {"UsePointReduction", ValueKind::Byte, 0, 1, FUsePointReduction},
    {"UseTextureLevels", ValueKind::Byte, 0, 1, FUseTextureLevels},
    {"GroupLines", ValueKind::Byte, 0, 1, FGroupLines},
    {"Distance1", ValueKind::Short, 0, 2000, FDistance1},
    {"Distance2", ValueKind::Short, 0, 2000, FDistance2},
    {"Distance3", ValueKind::Short, 0, 2000, FDistance3},
    {"Texture1", ValueKind::String, 0, 0, FTexture1},
    {"Texture2", ValueKind::String, 0, 0, FTexture2},
    {"Texture3", ValueKind::String, 0, 0, FTexture3},
    {"Texture4", ValueKind::String, 0, 0, FTexture4},
    {"Color1", ValueKind::Long, 0, 0, FColor1},
    {"Color2", ValueKind::Long, 0, 0, FColor2},
    {"Color3", ValueKind::Long, 0, 0, FColor3},
    {"Color4", ValueKind::Long, 0, 0, FColor4},
};

std::size_t ReadSettings(const Tokens& t, std::size_t start, ShowFlagsRecord& f)
{
    ResetShowFlags(f);
    return ReadKeys(
        t, start, [](std::string_view tok) { return FindKey(kSettingsKeys, tok); },
        [&](const KeyRule& k, ParsedValue& v) {
            const auto b = static_cast<std::uint8_t>(v.i);
            switch (k.field) {
            case FShowPoly: f.ShowPoly = b; break;
            case FShowTexPoly: f.ShowTexPoly = b; break;
            case FShowWideLine: f.ShowWideLine = b; break;
            case FShowDotLine: f.ShowDotLine = b; break;
            case FShowTreeLine: f.ShowTreeLine = b; break;
            case FShowAPI: f.ShowAPI = b; break;
            case FShowRunway: f.ShowRunway = b; break;
            case FShowNav: f.ShowNav = b; break;
            case FShowExclude: f.ShowExclude = b; break;
            case FShowGrid: f.ShowGrid = b; break;
            case FShowBackPicture: f.ShowBackPicture = b; break;
            case FBackImagePath: f.BackImagePath = v.s; break;
            case FBackImageTop: f.BackImageTop = static_cast<std::int32_t>(v.i); break;
            case FBackImageLeft: f.BackImageLeft = static_cast<std::int32_t>(v.i); break;
            case FBackImagescale: f.BackImagescale = v.d; break;
            default: break;
            }
        });
}

std::size_t ReadProject(const Tokens& t, std::size_t start, ProjectRecord& p)
{
    ResetProject(p);
    return ReadKeys(
        t, start, [](std::string_view tok) { return FindKey(kProjectKeys, tok); },
        [&](const KeyRule& k, ParsedValue& v) {
            switch (k.field) {
            case FName: p.Name = v.s; break;
            case FCopyright: p.Copyright = v.s; break;
            case FComment: p.Comment = v.s; break;
            case FMagVar: p.MagVar = v.d; break;
            case FAltitude: p.Altitude = v.d; break;
            case FLatitude: p.LatitudeDegree = v.d; break;
            case FLongitude: p.LongitudeDegree = v.d; break;
            case FPolyScale: p.PolyScale = v.d; break;
            case FLineScale: p.LineScale = v.d; break;
            case FDotLineScale: p.DotLineScale = v.d; break;
            case FUsePointReduction: p.UsePointReduction = static_cast<std::uint8_t>(v.i); break;
            case FUseTextureLevels: p.UseTextureLevels = static_cast<std::uint8_t>(v.i); break;
            case FGroupLines: p.GroupLines = static_cast<std::uint8_t>(v.i); break;
            case FDistance1: case FDistance2: case FDistance3:
                p.Distance[k.field - FDistance1] = static_cast<std::int16_t>(v.i);
                break;
            case FTexture1: case FTexture2: case FTexture3: case FTexture4:
                p.Texture[k.field - FTexture1] = v.s;
                break;
            case FColor1: case FColor2: case FColor3: case FColor4:
                p.Color[k.field - FColor1] = static_cast<std::int32_t>(v.i);
                break;
            default: break;
            }
        });
}

void Say(Ui* ui, const char* text, MessageStyle style)
{
    if (ui)
        ui->Message(text, style);
}

constexpr std::size_t kMaxPointsInList = 32768;
constexpr std::size_t kMaxRecords = 32767;
// The point walks of a damaged file can overlap and hand one list to many shapes; what all shapes
// hold together stays within the points the file has and this many more.
constexpr std::size_t kMaxSharedPoints = std::size_t{1} << 20;

// A word that opens a block of the format.
bool IsBlockWord(std::string_view tok)
{
    return tok == "Version(" || tok == "Settings(" || tok == "Project(" || ShapeTypeOfWord(tok) != 0 ||
           ObjectTypeOfWord(tok) != 0;
}

bool RunStages(const Tokens& t, ProjectData& d, Ui* ui, const std::string& programFolder)
{
    // A file without any token has nothing to read: it counts as a broken head.
    if (t.empty()) {
        Say(ui, kHeaderCorrupt, MessageStyle::Critical);
        return false;
    }
    const std::size_t n = t.size();
    // Stage 1: the head blocks, wherever they stand; a later block replaces an earlier one, so only
    // the last of each kind is read. (An earlier block's key loop that reaches the last block's
    // word goes on from there as the last block's loop does, so it fails exactly when that one
    // fails: reading the last alone gives the same outcome in one pass.)
    std::size_t lastSettings = kNoClose;
    std::size_t lastProject = kNoClose;
    bool anyBlock = false;
    for (std::size_t i = 0; i < n; ++i) {
        const std::string_view tok = t[i];
        if (tok.empty() || tok.back() != '(')
            continue;
        if (tok == "Version(") {
            std::int32_t v = 0;
            if (!(i + 1 < n && ReadLongValue(t[i + 1], v))) {
                Say(ui, kHeaderCorrupt, MessageStyle::Critical);
                return false;
            }
            d.version = v;
            anyBlock = true;
        } else if (tok == "Settings(") {
            lastSettings = i;
            anyBlock = true;
        } else if (tok == "Project(") {
            lastProject = i;
            anyBlock = true;
        } else if (!anyBlock && IsBlockWord(tok)) {
            anyBlock = true;
        }
    }
    // No block word at all: binary data, UTF-16 text, any file that is no project.
    if (!anyBlock || (lastSettings != kNoClose && ReadSettings(t, lastSettings + 1, d.showFlags) == kNoClose) ||
        (lastProject != kNoClose && ReadProject(t, lastProject + 1, d.project) == kNoClose)) {
        Say(ui, kHeaderCorrupt, MessageStyle::Critical);
        return false;
    }
    // Stage 2: a newer file is read all the same.
    if (d.version > 1)
        Say(ui, kNewerVersion, MessageStyle::Information);
    // Stage 3: shapes.
    std::size_t held = 0;
    std::optional<ShapePointWalks> walks;
    for (std::size_t i = 0; i < n; ++i) {
        const int type = ShapeTypeOfWord(t[i]);
        if (!type)
            continue;
        ShapeRecord shape;
        const std::size_t close = ReadShapeKeys(t, i + 1, type, shape);
        if (close == kNoClose) {
            Say(ui, kShapeCorrupt, MessageStyle::Critical);
            return false;
        }
        // The walk within the block costs what its key loop did; only a list that runs on past the
        // block needs the walks of the whole array, and only then can walks overlap.
        PointList points;
        PointWalkEnd end = ReadShapePointsWithin(t, i + 1, close, kMaxPointsInList, points);
        if (end == PointWalkEnd::PastBlock) {
            if (!walks)
                walks.emplace(t);
            end = walks->Read(i + 1, kMaxPointsInList, points) ? PointWalkEnd::Done : PointWalkEnd::TooMany;
        }
        // Point indices and the shape count are 16-bit: more can't be held.
        if (end == PointWalkEnd::TooMany || (!points.empty() && d.shapes.size() >= kMaxRecords) ||
            (walks && points.size() > walks->pointTokens() + kMaxSharedPoints - held)) {
            Say(ui, kShapeCorrupt, MessageStyle::Critical);
            return false;
        }
        if (!points.empty()) {
            held += points.size();
            UpdateShapeGeometry(shape, points);
            d.shapes.push_back(std::move(shape));
            d.points.push_back(std::move(points));
        }
        i = close;
    }
    // Stage 4: objects, walking every token again.
    for (std::size_t i = 0; i < n; ++i) {
        const int type = ObjectTypeOfWord(t[i]);
        if (!type)
            continue;
        ObjectRecord o;
        const std::size_t close = ReadObjectKeys(t, i + 1, type, o, programFolder);
        if (close == kNoClose || d.objects.size() >= kMaxRecords) {
            Say(ui, kObjectCorrupt, MessageStyle::Critical);
            return false;
        }
        d.objects.push_back(std::move(o));
        i = close;
    }
    return true;
}

void AddHead(CBufferS& out)
{
    out.addLine(";////////////////////////////////////////");
    out.addLine(";        Fieldwright Format /////////////");
    out.addLine(";                           /////////////");
    out.addLine("");
    out.addLine("");
    out.addLine("");
    out.addLine("");
    out.addLine("");
    out.addLine("Version(");
    out.addLine(" 1");
    out.addLine(")");
}

void AddRecords(CBufferS& out, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
                const std::vector<ObjectRecord>& objects)
{
    static const PointList kNone;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        out.addLine("");
        out.addLine("");
        out.addLine("");
        WriteShapeBlock(out, shapes[i], i < points.size() ? points[i] : kNone);
    }
    for (const auto& o : objects) {
        out.addLine("");
        out.addLine("");
        out.addLine("");
        WriteObjectBlock(out, o);
    }
}

bool WriteText(const std::string& path, std::string_view text, Ui* ui)
{
    std::string reason;
    if (WriteTextReplacing(path, text, true, &reason))
        return true;
    if (ui)
        ui->Message(WithFileReason(kWriteFailed, path, reason), MessageStyle::Critical);
    return false;
}

} // namespace

bool ReadProjectText(std::string_view text, ProjectData& out, Ui* ui, const std::string& programFolder)
{
    Tokens tokens;
    TokeniseText(text, tokens);
    ProjectData d;
    if (!RunStages(tokens, d, ui, programFolder))
        return false;
    out = std::move(d);
    return true;
}

bool ReadProjectFile(const std::string& path, ProjectData& out, Ui* ui, const std::string& programFolder)
{
    // Only a regular file of a size the format can hold is read; any other fails as a broken head,
    // with the file and the host's reason on a second line.
    std::string text;
    std::string reason;
    if (!ReadWholeFile(path, text, kMaxProjectBytes, &reason)) {
        if (ui)
            ui->Message(WithFileReason(kHeaderCorrupt, path, reason), MessageStyle::Critical);
        return false;
    }
    return ReadProjectText(text, out, ui, programFolder);
}

namespace {
// Lines a text will have, near enough to spare the buffer its regrowth.
std::size_t LineEstimate(const std::vector<PointList>& points, std::size_t shapes, std::size_t objects)
{
    std::size_t n = 100 + shapes * 30 + objects * 60;
    for (const auto& p : points)
        n += p.size();
    return n;
}
} // namespace

ProjectView ViewOf(const ProjectData& d)
{
    return {d.version, d.showFlags, d.project, d.points, d.shapes, d.objects};
}

void BuildProjectText(CBufferS& out, const ProjectData& d) { BuildProjectText(out, ViewOf(d)); }

void BuildProjectText(CBufferS& out, const ProjectView& d)
{
    out.reset();
    out.reserve(LineEstimate(d.points, d.shapes.size(), d.objects.size()));
    AddHead(out);
    const ShowFlagsRecord& f = d.showFlags;
    out.addLine("");
    out.addLine("");
    out.addLine("Settings(");
    out.addLine(IntLine("ShowPoly", f.ShowPoly));
    out.addLine(IntLine("ShowTexPoly", f.ShowTexPoly));
    out.addLine(IntLine("ShowWideLine", f.ShowWideLine));
    out.addLine(IntLine("ShowDotLine", f.ShowDotLine));
    out.addLine(IntLine("ShowTreeLine", f.ShowTreeLine));
    out.addLine(IntLine("ShowAPI", f.ShowAPI));
    out.addLine(IntLine("ShowRunway", f.ShowRunway));
    out.addLine(IntLine("ShowNav", f.ShowNav));
    out.addLine(IntLine("ShowExclude", f.ShowExclude));
    out.addLine(IntLine("ShowGrid", f.ShowGrid));
    out.addLine(IntLine("ShowBackPicture", f.ShowBackPicture));
    out.addLine(QuotedLine("BackImagePath", f.BackImagePath));
    out.addLine(IntLine("BackImageTop", f.BackImageTop));
    out.addLine(IntLine("BackImageLeft", f.BackImageLeft));
    out.addLine(RealLine("BackImagescale", f.BackImagescale));
    out.addLine(")");
    const ProjectRecord& p = d.project;
    out.addLine("");
    out.addLine("");
    out.addLine("Project(");
    out.addLine(QuotedLine("Name", p.Name));
    out.addLine(QuotedLine("Copyright", p.Copyright));
    out.addLine(QuotedLine("Comment", p.Comment));
    out.addLine(QuotedLine("Name", p.Name));
    out.addLine(RealLine("MagVar", p.MagVar));
    out.addLine(RealLine("Altitude", p.Altitude));
    out.addLine(RealLine("LatitudeDegree", p.LatitudeDegree));
    out.addLine(RealLine("LongitudeDegree", p.LongitudeDegree));
    out.addLine(RealLine("PolyScale", p.PolyScale));
    out.addLine(RealLine("LineScale", p.LineScale));
    out.addLine(RealLine("DotLineScale", p.DotLineScale));
    out.addLine(IntLine("UsePointReduction", p.UsePointReduction));
    out.addLine(IntLine("UseTextureLevels", p.UseTextureLevels));
    out.addLine(IntLine("GroupLines", p.GroupLines));
    for (int i = 0; i < 3; ++i)
        out.addLine(IntLine("Distance" + std::to_string(i + 1), p.Distance[i]));
    for (int i = 0; i < 4; ++i)
        out.addLine(QuotedLine("Texture" + std::to_string(i + 1), p.Texture[i]));
    for (int i = 0; i < 4; ++i)
        out.addLine(IntLine("Color" + std::to_string(i + 1), p.Color[i]));
    out.addLine(")");
    AddRecords(out, d.points, d.shapes, d.objects);
}

ProjectView ProjectViewOf(const Session& s)
{
    return {1, s.showFlags, s.project, s.stores.PointStore, s.stores.ShapeStore, s.stores.ObjectStore};
}

ProjectData ProjectDataOf(const Session& s)
{
    ProjectData data;
    data.version = 1;
    data.showFlags = s.showFlags;
    data.project = s.project;
    data.points = s.stores.PointStore;
    data.shapes = s.stores.ShapeStore;
    data.objects = s.stores.ObjectStore;
    return data;
}

bool WriteProjectFile(const std::string& path, const ProjectData& data, Ui* ui)
{
    return WriteProjectFile(path, ViewOf(data), ui);
}

std::string ProjectText(const ProjectView& data)
{
    CBufferS buffer{CBufferS::Joined{}};
    BuildProjectText(buffer, data);
    return std::move(buffer.text());
}

bool WriteProjectFile(const std::string& path, const ProjectView& data, Ui* ui)
{
    return WriteText(path, ProjectText(data), ui);
}

void BuildSelectionText(CBufferS& out, const std::vector<PointList>& points,
                        const std::vector<ShapeRecord>& shapes, const std::vector<ObjectRecord>& objects)
{
    out.reset();
    out.reserve(LineEstimate(points, shapes.size(), objects.size()));
    AddHead(out);
    AddRecords(out, points, shapes, objects);
}

bool WriteSelectionFile(const std::string& path, const std::vector<PointList>& points,
                        const std::vector<ShapeRecord>& shapes, const std::vector<ObjectRecord>& objects,
                        Ui* ui)
{
    CBufferS buffer{CBufferS::Joined{}};
    BuildSelectionText(buffer, points, shapes, objects);
    return WriteText(path, buffer.text(), ui);
}

std::string DoesNotExistMessage(const std::string& name)
{
    return "'" + name + "' does not exist!";
}

} // namespace fw
