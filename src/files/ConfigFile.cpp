#include "files/ConfigFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "files/KeyBlock.h"
#include "files/ShapeBlocks.h"
#include "files/ValueReaders.h"

namespace fw {

namespace {

enum ConfigField {
    FBGL, FSCA, FAPI, FFS, FScenery, FTEX, FFWT, FBackPicture, FImport, FGridColor4, FGridDist1,
    FGridDist2, FGridDist3, FWinWidth, FWinHeight, FWinStatus, FEnableOpenGL, FMessageScale,
    FMessageRotate, FMessageConvert, FMessageDelete, FMessageLayer, FMessageCompile, FRecent,
};

// In written order; RecentFile comes behind them.
constexpr KeyRule kConfigKeys[] = {
    {"BGLPath", ValueKind::String, 0, 0, FBGL},
    {"SCAPath", ValueKind::String, 0, 0, FSCA},
    {"APIPath", ValueKind::String, 0, 0, FAPI},
    {"FSPath", ValueKind::String, 0, 0, FFS},
    {"SceneryPath", ValueKind::String, 0, 0, FScenery},
    {"TEXPath", ValueKind::String, 0, 0, FTEX},
    {"FWTPath", ValueKind::String, 0, 0, FFWT},
    {"BackPicturePath", ValueKind::String, 0, 0, FBackPicture},
    {"ImportPath", ValueKind::String, 0, 0, FImport},
    {"GridColor4", ValueKind::Long, 0, 0, FGridColor4},
    {"GridDist1", ValueKind::Short, 0, 32000, FGridDist1},
    {"GridDist2", ValueKind::Short, 0, 32000, FGridDist2},
    {"GridDist3", ValueKind::Short, 0, 32000, FGridDist3},
    {"WinWidth", ValueKind::Long, 0, 0, FWinWidth},
    {"WinHeight", ValueKind::Long, 0, 0, FWinHeight},
    {"WinStatus", ValueKind::Long, 0, 0, FWinStatus},
    {"EnableOpenGL", ValueKind::Byte, 0, 1, FEnableOpenGL},
    {"MessageScale", ValueKind::Byte, 0, 1, FMessageScale},
    {"MessageRotate", ValueKind::Byte, 0, 1, FMessageRotate},
    {"MessageConvert", ValueKind::Byte, 0, 1, FMessageConvert},
    {"MessageDelete", ValueKind::Byte, 0, 1, FMessageDelete},
    {"MessageLayer", ValueKind::Byte, 0, 1, FMessageLayer},
    {"MessageCompile", ValueKind::Byte, 0, 1, FMessageCompile},
    {"RecentFile", ValueKind::String, 0, 0, FRecent},
};

std::string* PathField(ConfigRecord& c, int field)
{
    switch (field) {
    case FBGL: return &c.BGLPath;
    case FSCA: return &c.SCAPath;
    case FAPI: return &c.APIPath;
    case FFS: return &c.FSPath;
    case FScenery: return &c.SceneryPath;
    case FTEX: return &c.TEXPath;
    case FFWT: return &c.FWTPath;
    case FBackPicture: return &c.BackPicturePath;
    case FImport: return &c.ImportPath;
    default: return nullptr;
    }
}

std::uint8_t* ByteField(ConfigRecord& c, int field)
{
    switch (field) {
    case FEnableOpenGL: return &c.EnableOpenGL;
    case FMessageScale: return &c.MessageScale;
    case FMessageRotate: return &c.MessageRotate;
    case FMessageConvert: return &c.MessageConvert;
    case FMessageDelete: return &c.MessageDelete;
    case FMessageLayer: return &c.MessageLayer;
    case FMessageCompile: return &c.MessageCompile;
    default: return nullptr;
    }
}

bool FolderWritable(const std::string& folder)
{
    return !folder.empty() && ::access(folder.c_str(), W_OK) == 0;
}

// Nobody saves into an installed program folder: the folders of the user's own files start at home.
void StartUserPathsAtHome(ConfigRecord& c, const std::string& programFolder)
{
    const char* home = std::getenv("HOME");
    if (home == nullptr || home[0] != '/' || !ProgramFolderInstalled(programFolder))
        return;
    std::string folder = home;
    if (folder.back() != '/')
        folder += '/';
    c.BGLPath = folder + "Export.bgl";
    c.SCAPath = folder + "Export.txt";
    c.FWTPath = c.ImportPath = c.BackPicturePath = c.SceneryPath = folder;
}

void ReadTokens(Session& s, const Tokens& given)
{
    static const Tokens kOneEmpty{std::string_view{}};
    const Tokens& t = given.empty() ? kOneEmpty : given;

    ConfigRecord c;
    ResetConfig(c, s.programFolder);
    StartUserPathsAtHome(c, s.programFolder);
    ReadKeys(
        t, 0, [](std::string_view tok) { return FindKey(kConfigKeys, tok); },
        [&](const KeyRule& k, ParsedValue& v) {
            if (std::string* p = PathField(c, k.field)) {
                *p = v.s;
            } else if (std::uint8_t* b = ByteField(c, k.field)) {
                *b = static_cast<std::uint8_t>(v.i);
            } else {
                switch (k.field) {
                case FGridColor4: c.GridColor4 = static_cast<std::int32_t>(v.i); break;
                case FGridDist1: case FGridDist2: case FGridDist3:
                    c.GridDist[k.field - FGridDist1] = static_cast<std::int16_t>(v.i);
                    break;
                case FWinWidth: c.WinWidth = static_cast<std::int32_t>(v.i); break;
                case FWinHeight: c.WinHeight = static_cast<std::int32_t>(v.i); break;
                case FWinStatus: c.WinStatus = static_cast<std::int32_t>(v.i); break;
                case FRecent: s.recent.addPath(v.s, s.ui); break;
                default: break;
                }
            }
        },
        false);
    DeriveGridColors(c);

    // The default shapes: built-in defaults, then every shape block found; points don't count.
    for (std::size_t i = 0; i < t.size(); ++i) {
        const int type = ShapeTypeOfWord(t[i]);
        const int slot = DefaultShapeIndex(type);
        if (slot < 0)
            continue;
        ShapeRecord shape;
        const std::size_t close = ReadShapeKeys(t, i + 1, type, shape);
        if (close == kNoClose)
            break;
        c.defaultShapes[slot] = shape;
        i = close;
    }
    s.config = std::move(c);
}

} // namespace

bool ProgramFolderInstalled(const std::string& programFolder)
{
    return ::access((programFolder + kInstalledMarkerName).c_str(), F_OK) == 0;
}

std::string UserFolder(const std::string& programFolder)
{
    // An installed folder stays untouched even for root, who could write there.
    const std::string local = programFolder + kConfigFileName;
    if (!ProgramFolderInstalled(programFolder) &&
        (::access(local.c_str(), W_OK) == 0 || (::access(local.c_str(), F_OK) != 0 && FolderWritable(programFolder))))
        return programFolder;
    std::string base;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg)
        base = xdg;
    else if (const char* home = std::getenv("HOME"); home && *home)
        base = std::string(home) + "/.config";
    else
        return programFolder;
    const std::string folder = base + "/Fieldwright/";
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    return folder;
}

std::string ConfigFilePath(const std::string& programFolder)
{
    return UserFolder(programFolder) + kConfigFileName;
}

void ReadConfigText(Session& s, std::string_view text)
{
    Tokens t;
    TokeniseText(text, t);
    ReadTokens(s, t);
}

void ReadConfigFile(Session& s, const std::string& path)
{
    std::string text;
    if (!ReadWholeFile(path, text, kMaxConfigBytes)) {
        std::error_code ec;
        if (!std::filesystem::exists(path, ec))
            std::ofstream(path, std::ios::binary); // a first start leaves an empty file
    }
    ReadConfigText(s, text);
}

void BuildConfigText(CBufferS& out, const Session& s)
{
    const ConfigRecord& c = s.config;
    out.reset();
    out.addLine("");
    out.addLine(";[SETTINGS]");
    out.addLine(QuotedLine("BGLPath", c.BGLPath));
    out.addLine(QuotedLine("SCAPath", c.SCAPath));
    out.addLine(QuotedLine("APIPath", c.APIPath));
    out.addLine(QuotedLine("FSPath", c.FSPath));
    out.addLine(QuotedLine("SceneryPath", c.SceneryPath));
    out.addLine(QuotedLine("TEXPath", c.TEXPath));
    out.addLine(QuotedLine("FWTPath", c.FWTPath));
    out.addLine(QuotedLine("BackPicturePath", c.BackPicturePath));
    out.addLine(QuotedLine("ImportPath", c.ImportPath));
    out.addLine(IntLine("GridColor4", c.GridColor4));
    for (int i = 0; i < 3; ++i)
        out.addLine(IntLine("GridDist" + std::to_string(i + 1), c.GridDist[i]));
    out.addLine(IntLine("WinWidth", c.WinWidth));
    out.addLine(IntLine("WinHeight", c.WinHeight));
    out.addLine(IntLine("WinStatus", c.WinStatus));
    out.addLine(IntLine("EnableOpenGL", c.EnableOpenGL));
    out.addLine(IntLine("MessageScale", c.MessageScale));
    out.addLine(IntLine("MessageRotate", c.MessageRotate));
    out.addLine(IntLine("MessageConvert", c.MessageConvert));
    out.addLine(IntLine("MessageDelete", c.MessageDelete));
    out.addLine(IntLine("MessageLayer", c.MessageLayer));
    out.addLine(IntLine("MessageCompile", c.MessageCompile));
    // Oldest first, so that adding them in file order gives the same list.
    for (int i = s.recent.nEntries(); i >= 0; --i)
        out.addLine(QuotedLine("RecentFile", s.recent.getEntry(i)));
    static const PointList kOnePoint{{0, 0}};
    for (const ShapeRecord& shape : c.defaultShapes) {
        out.addLine("");
        out.addLine("");
        out.addLine("");
        WriteShapeBlock(out, shape, kOnePoint);
    }
}

bool WriteConfigFile(const Session& s, const std::string& path)
{
    CBufferS buffer;
    BuildConfigText(buffer, s);
    return WriteLinesReplacing(path, buffer.lines());
}

} // namespace fw
