#include "files/ObjectBlocks.h"

#include "core/Numbers.h"
#include "files/KeyBlock.h"
#include "files/ValueReaders.h"

namespace fw {

namespace {

struct WordType {
    std::string_view word;
    int type;
};
constexpr WordType kObjectWords[] = {{"Runway(", kRunway}, {"Api(", kApi},         {"VOR(", kVor},
                                     {"NDB(", kNdb},       {"Init(", kInit},       {"Exclude(", kExclude},
                                     {"Sign(", kSign}};

// Where a key's value lives in the record.
enum Slot : int {
    SFlag = 0,      // + flag index
    SShort = 100,   // + short index
    SDouble = 200,  // + double index
    SText = 300,    // + text index
    SPosX = 400,
    SPosY,
    SRotation,
    SRunwayId,      // resolved after the block
    SSurface,
    SLight,
    SWriteOnlyThr,  // written from ThrOffN, never read
    SWriteOnlyExt,  // written from ExtN, never read
};

constexpr KeyRule Flag(std::string_view k, int i, int lo, int hi) { return {k, ValueKind::Byte, double(lo), double(hi), SFlag + i}; }
constexpr KeyRule Short(std::string_view k, int i, int lo, int hi) { return {k, ValueKind::Short, double(lo), double(hi), SShort + i}; }
constexpr KeyRule Dbl(std::string_view k, int i, double lo, double hi) { return {k, ValueKind::Double, lo, hi, SDouble + i}; }
constexpr KeyRule Text(std::string_view k, int i) { return {k, ValueKind::String, 0, 0, SText + i}; }
constexpr KeyRule kPosX{"PosX", ValueKind::Long, 0, 0, SPosX};
constexpr KeyRule kPosY{"PosY", ValueKind::Long, 0, 0, SPosY};
constexpr KeyRule kRot{"Rotation", ValueKind::Double, 0, 360, SRotation};

// Every table is in written order.
constexpr KeyRule kVorKeys[] = {kPosX, kPosY, Dbl("Frequency", 0, 0, 1000), Short("Range", 0, 1, 255),
                                Text("ID", 0), Text("Name", 1), Flag("DME", 0, 0, 1), Flag("Visible", 1, 0, 1)};
constexpr KeyRule kNdbKeys[] = {kPosX, kPosY, Dbl("Frequency", 0, 0, 1000), Short("Range", 0, 1, 255),
                                Text("ID", 0), Text("Name", 1), Flag("Visible", 0, 0, 1)};
constexpr KeyRule kExcludeKeys[] = {kPosX, kPosY, Short("Width", 0, 20, 10000), Short("Height", 1, 20, 10000),
                                    Flag("ExcludeObjects", 0, 0, 1), Flag("ExcludeVOR", 1, 0, 1),
                                    Flag("ExcludeNDB", 2, 0, 1)};
constexpr KeyRule kApiKeys[] = {kPosX, kPosY, kRot, Text("Path", 0), Short("Range", 0, 1, 32000),
                                Dbl("Elevation", 0, 1, 32000), Dbl("Scale", 1, 0.001, 32000),
                                Flag("DetailLevel", 0, 1, 4), Text("Param6", 1), Text("Param7", 2),
                                Text("Param8", 3), Text("Param9", 4), Text("Param15", 5), Text("Param16", 6),
                                Text("Param17", 7), Text("Param18", 8), Text("Param19", 9), Text("Param20", 10)};
constexpr KeyRule kInitKeys[] = {kPosX, kPosY, kRot, Text("Name", 0)};
constexpr KeyRule kSignKeys[] = {kPosX, kPosY, kRot, Text("Style", 1), Text("Caption", 0)};
constexpr KeyRule kRunwayKeys[] = {
    kPosX, kPosY, kRot, Short("Length", 4, 100, 20000), Short("Width", 5, 10, 2000),
    {"ID", ValueKind::String, 0, 0, SRunwayId},
    Flag("ShowBorderLine", 1, 0, 1), Flag("ShowCenterLine", 2, 0, 1), Flag("ShowID", 3, 0, 1),
    Flag("ShowTouchDownMarker", 4, 0, 1), Flag("ShowThresholdMarkers", 5, 0, 1),
    Flag("Show150Markers", 6, 0, 1), Flag("Show300Markers", 7, 0, 1),
    {"Surface", ValueKind::String, 0, 0, SSurface},
    Short("ThrOffN", 0, 0, 5000), {"ThrOffF", ValueKind::Short, 0, 0, SWriteOnlyThr},
    Short("ExtN", 1, 0, 5000), {"ExtF", ValueKind::Short, 0, 0, SWriteOnlyExt},
    Flag("EnableLights", 9, 0, 1),
    {"LightItensity", ValueKind::String, 0, 0, SLight},
    Flag("ShowCenterLights", 10, 0, 1), Flag("ShowTouchdownLights", 0, 0, 1),
    Flag("VasiBarsN", 15, 0, 32), Flag("VasiBarsF", 16, 0, 32), Flag("AprLN", 19, 0, 32),
    Flag("AprLF", 20, 0, 32), Flag("StrobesN", 21, 0, 10), Flag("StrobesF", 22, 0, 10),
    Flag("IlsEnabledN", 23, 0, 1), Flag("IlsEnabledF", 26, 0, 1),
    Text("IlsIdN", 0), Text("IlsNameN", 1), Dbl("IlsFreqN", 2, 108, 135.75), Short("IlsRangeN", 2, 1, 255),
    Dbl("IlsSlopeN", 0, 0, 30), Flag("IlsDmeN", 25, 0, 1),
    Text("IlsIdF", 2), Text("IlsNameF", 3), Dbl("IlsFreqF", 3, 108, 135.75), Short("IlsRangeF", 3, 1, 255),
    Dbl("IlsSlopeF", 1, 0, 30), Flag("IlsDmeF", 28, 0, 1),
    Flag("MarkerEnabledN", 31, 0, 1), Short("MarkerOuterN", 6, 0, 20000), Short("MarkerMiddleN", 7, 0, 20000),
    Short("MarkerInnerN", 8, 0, 20000), Flag("markerEnabledF", 32, 0, 1), Short("MarkerOuterF", 9, 0, 20000),
    Short("MarkerMiddleF", 10, 0, 20000), Short("MarkerInnerF", 11, 0, 20000),
};

constexpr std::string_view kSurfaceWritten[] = {"Mud", "Concrete", "Asphalt", "Grass1", "Grass2",
                                                "Grass3", "Asphalt2", "Snow", "Tar"};
// The reader looks for "tar" in lower case, so a Tar runway comes back as Asphalt.
constexpr std::string_view kSurfaceRead[] = {"Mud", "Concrete", "Asphalt", "Grass1", "Grass2",
                                             "Grass3", "Asphalt2", "Snow", "tar"};
constexpr char kDesignators[] = {'N', 'L', 'C', 'R'};

struct Table {
    const KeyRule* keys;
    std::size_t count;
};

Table TableOf(int type)
{
    switch (type) {
    case kRunway: return {kRunwayKeys, std::size(kRunwayKeys)};
    case kApi: return {kApiKeys, std::size(kApiKeys)};
    case kVor: return {kVorKeys, std::size(kVorKeys)};
    case kNdb: return {kNdbKeys, std::size(kNdbKeys)};
    case kInit: return {kInitKeys, std::size(kInitKeys)};
    case kExclude: return {kExcludeKeys, std::size(kExcludeKeys)};
    case kSign: return {kSignKeys, std::size(kSignKeys)};
    default: return {nullptr, 0};
    }
}

std::string RunwayId(const ObjectRecord& o)
{
    std::string id = FormatInt(o.RwyNumber());
    id += o.RwyDesignator() < 4 ? kDesignators[o.RwyDesignator()] : 'N';
    return id;
}

} // namespace

std::string_view ObjectWord(int type)
{
    for (const auto& w : kObjectWords)
        if (w.type == type)
            return w.word;
    return {};
}

int ObjectTypeOfWord(std::string_view token)
{
    if (token.empty() || token.back() != '(')
        return 0;
    for (const auto& w : kObjectWords)
        if (w.word == token)
            return w.type;
    return 0;
}

void WriteObjectBlock(CBufferS& out, const ObjectRecord& o)
{
    const Table table = TableOf(o.oType);
    if (!table.keys)
        return;
    out.addLine(std::string(ObjectWord(o.oType)));
    for (std::size_t i = 0; i < table.count; ++i) {
        const KeyRule& k = table.keys[i];
        const int f = k.field;
        if (f >= SFlag && f < SShort)
            out.addLine(IntLine(k.key, o.flags[f - SFlag]));
        else if (f >= SShort && f < SDouble)
            out.addLine(IntLine(k.key, o.shorts[f - SShort]));
        else if (f >= SDouble && f < SText)
            out.addLine(RealLine(k.key, o.doubles[f - SDouble]));
        else if (f >= SText && f < SPosX)
            out.addLine(QuotedLine(k.key, o.texts[f - SText]));
        else if (f == SPosX)
            out.addLine(IntLine(k.key, o.PosX));
        else if (f == SPosY)
            out.addLine(IntLine(k.key, o.PosY));
        else if (f == SRotation)
            out.addLine(RealLine(k.key, o.Rotation));
        else if (f == SRunwayId)
            out.addLine(QuotedLine(k.key, RunwayId(o)));
        else if (f == SSurface)
            out.addLine(QuotedLine(k.key, o.Surface() < 9 ? kSurfaceWritten[o.Surface()] : ""));
        else if (f == SLight)
            out.addLine(QuotedLine(k.key, o.LightIntensityLow ? "Low" : "High"));
        else if (f == SWriteOnlyThr)
            out.addLine(IntLine(k.key, o.ThrOffN()));
        else if (f == SWriteOnlyExt)
            out.addLine(IntLine(k.key, o.ExtN()));
    }
    out.addLine(")");
}

std::size_t ReadObjectKeys(const Tokens& t, std::size_t start, int type, ObjectRecord& o,
                           const std::string& programFolder)
{
    o = ObjectRecord{};
    ResetObject(o, type, programFolder);
    const Table table = TableOf(type);
    bool hasId = false, hasSurface = false, hasLight = false;
    std::string id, surface, light;

    auto match = [&](std::string_view tok) -> const KeyRule* {
        for (std::size_t i = 0; i < table.count; ++i) {
            const KeyRule& k = table.keys[i];
            if (k.key == tok)
                return k.field == SWriteOnlyThr || k.field == SWriteOnlyExt ? nullptr : &k;
        }
        return nullptr;
    };
    auto store = [&](const KeyRule& k, ParsedValue& v) {
        const int f = k.field;
        if (f >= SFlag && f < SShort)
            o.flags[f - SFlag] = static_cast<std::uint8_t>(v.i);
        else if (f >= SShort && f < SDouble)
            o.shorts[f - SShort] = static_cast<std::int16_t>(v.i);
        else if (f >= SDouble && f < SText)
            o.doubles[f - SDouble] = v.d;
        else if (f >= SText && f < SPosX)
            o.texts[f - SText] = v.s;
        else if (f == SPosX)
            o.PosX = static_cast<std::int32_t>(v.i);
        else if (f == SPosY)
            o.PosY = static_cast<std::int32_t>(v.i);
        else if (f == SRotation)
            o.Rotation = v.d;
        else if (f == SRunwayId) {
            id = v.s;
            hasId = true;
        } else if (f == SSurface) {
            surface = v.s;
            hasSurface = true;
        } else if (f == SLight) {
            light = v.s;
            hasLight = true;
        }
    };
    const std::size_t close = ReadKeys(t, start, match, store);

    if (type == kRunway) {
        if (hasId && id.size() >= 2) {
            std::uint8_t number = 0;
            if (ReadByteValue(std::string_view(id).substr(0, id.size() - 1), 0, 36, number))
                o.RwyNumber() = number;
            for (int i = 0; i < 4; ++i)
                if (id.back() == kDesignators[i])
                    o.RwyDesignator() = static_cast<std::uint8_t>(i);
        }
        if (hasLight) {
            if (light == "Low") {
                o.LightIntensityLow = -1;
                o.LightIntensityHigh = 0;
            } else if (light == "High") {
                o.LightIntensityLow = 0;
                o.LightIntensityHigh = -1;
            }
        }
        if (hasSurface) {
            for (int i = 0; i < 9; ++i)
                if (surface == kSurfaceRead[i])
                    o.Surface() = static_cast<std::uint8_t>(i);
        }
    }
    return close;
}

} // namespace fw
