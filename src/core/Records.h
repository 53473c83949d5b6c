// Shape and object records: one layout for all shape types, one for all object types.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fw {

// Type codes. 14 stays unassigned.
enum : std::uint8_t {
    kPoly = 1,
    kTexPoly = 2,
    kWideLine = 3,
    kDotLine = 4,
    kTreeLine = 5,
    kFlatten = 6,
    kForest = 7,
    kRunway = 8,
    kApi = 9,
    kVor = 10,
    kNdb = 11,
    kInit = 12,
    kExclude = 13,
    kSign = 15,
};

// vTime bits
enum : std::uint8_t { kTimeDay = 1, kTimeNight = 2, kTimeDusk = 4 };

// Colours are 0x00BBGGRR.
constexpr std::int32_t RGB(int r, int g, int b) { return r | (g << 8) | (b << 16); }

struct Point {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

using PointList = std::vector<Point>;

struct ShapeRecord {
    std::uint8_t gType = 0;
    std::int32_t gKeep = 0;
    std::uint8_t gIsColored = 0;
    std::uint8_t gIsConcave = 0;
    std::uint8_t gLineType = 0;   // 0 Line, 1 Road, 2 Centerline15m, 3 Centerline20m
    std::uint8_t DotLineType = 0; // 0 isLine, 1 isPoint
    std::string gComment;
    double gLineWidth = 0;        // also gDotSpacing of a DotLine
    std::array<std::int32_t, 4> gLimits{}; // min X, max X, min Y, max Y
    std::uint8_t tSwitch = 0;
    std::array<std::uint8_t, 4> tLoadflag{}; // L, W, F, S
    std::string tDayPath;
    std::uint8_t cTransparency = 0;
    std::uint8_t cLighted = 0;
    std::int32_t cColor = 0;
    std::uint8_t mNumBands = 0;
    double mBandHeight = 0;
    std::uint8_t mSliderColor = 0;
    std::uint8_t ForestType = 0;  // 0 TreeDark, 1 Custom1
    // mTexMapX0, mTexMapY0, ... mTexMapX3, mTexMapY3; slot 1 is mSelectedBand of a TreeLine.
    std::array<std::int32_t, 8> mTexMap{};
    std::int16_t vRange = 0;
    std::uint8_t vTime = 0;
    std::uint8_t vNoPointReduction = 0;
    std::uint8_t vNoTextureLevels = 0;
    std::uint8_t vLayer = 0;      // index 0..9

    double& gDotSpacing() { return gLineWidth; }
    double gDotSpacing() const { return gLineWidth; }
    std::int32_t& mSelectedBand() { return mTexMap[1]; }
    std::int32_t mSelectedBand() const { return mTexMap[1]; }
    // Doubles compare by value: 0 equals -0.
    friend bool operator==(const ShapeRecord&, const ShapeRecord&) = default;
};

enum : std::uint8_t {
    kSurfaceMud = 0, kSurfaceConcrete, kSurfaceAsphalt, kSurfaceGrass1, kSurfaceGrass2,
    kSurfaceGrass3, kSurfaceAsphalt2, kSurfaceSnow, kSurfaceTar
};

constexpr int kObjectFlags = 33;
constexpr int kObjectShorts = 12;
constexpr int kObjectDoubles = 4;
constexpr int kObjectTexts = 11;
constexpr int kDesignPoints = 17;

// Generic slots; each type gives a slot its own meaning through the accessors below.
struct ObjectRecord {
    std::array<std::uint8_t, kObjectFlags> flags{};
    std::array<std::int16_t, kObjectShorts> shorts{};
    std::array<double, kObjectDoubles> doubles{};
    std::array<std::string, kObjectTexts> texts{};
    std::int16_t LightIntensityLow = 0;  // booleans, true is -1
    std::int16_t LightIntensityHigh = 0;
    std::array<Point, kDesignPoints> DesignPoints{};
    std::uint8_t DesignLast = 0;
    std::int32_t PosX = 0;
    std::int32_t PosY = 0;
    double Rotation = 0;
    std::uint8_t oType = 0;
    std::int32_t oKeep = 0;

#define FW_SLOT(name, arr, i) \
    auto& name() { return arr[i]; } \
    const auto& name() const { return arr[i]; }
    // Runway
    FW_SLOT(ShowTouchdownLights, flags, 0)
    FW_SLOT(ShowBorderLine, flags, 1)
    FW_SLOT(ShowCenterLine, flags, 2)
    FW_SLOT(ShowID, flags, 3)
    FW_SLOT(ShowTouchDownMarker, flags, 4)
    FW_SLOT(ShowThresholdMarkers, flags, 5)
    FW_SLOT(Show150Markers, flags, 6)
    FW_SLOT(Show300Markers, flags, 7)
    FW_SLOT(Surface, flags, 8)
    FW_SLOT(EnableLights, flags, 9)
    FW_SLOT(ShowCenterLights, flags, 10)
    FW_SLOT(Ils3dObjectN, flags, 13)
    FW_SLOT(Ils3dObjectF, flags, 14)
    FW_SLOT(VasiBarsN, flags, 15)
    FW_SLOT(VasiBarsF, flags, 16)
    FW_SLOT(AprLN, flags, 19)
    FW_SLOT(AprLF, flags, 20)
    FW_SLOT(StrobesN, flags, 21)
    FW_SLOT(StrobesF, flags, 22)
    FW_SLOT(IlsEnabledN, flags, 23)
    FW_SLOT(IlsGlideSlopeN, flags, 24)
    FW_SLOT(IlsDmeN, flags, 25)
    FW_SLOT(IlsEnabledF, flags, 26)
    FW_SLOT(IlsGlideSlopeF, flags, 27)
    FW_SLOT(IlsDmeF, flags, 28)
    FW_SLOT(RwyNumber, flags, 29)
    FW_SLOT(RwyDesignator, flags, 30)
    FW_SLOT(MarkerEnabledN, flags, 31)
    FW_SLOT(markerEnabledF, flags, 32)
    FW_SLOT(ThrOffN, shorts, 0)
    FW_SLOT(ExtN, shorts, 1)
    FW_SLOT(IlsRangeN, shorts, 2)
    FW_SLOT(IlsRangeF, shorts, 3)
    FW_SLOT(Length, shorts, 4)
    FW_SLOT(RwyWidth, shorts, 5)
    FW_SLOT(MarkerOuterN, shorts, 6)
    FW_SLOT(MarkerMiddleN, shorts, 7)
    FW_SLOT(MarkerInnerN, shorts, 8)
    FW_SLOT(MarkerOuterF, shorts, 9)
    FW_SLOT(MarkerMiddleF, shorts, 10)
    FW_SLOT(MarkerInnerF, shorts, 11)
    FW_SLOT(IlsSlopeN, doubles, 0)
    FW_SLOT(IlsSlopeF, doubles, 1)
    FW_SLOT(IlsFreqN, doubles, 2)
    FW_SLOT(IlsFreqF, doubles, 3)
    FW_SLOT(IlsIdN, texts, 0)
    FW_SLOT(IlsNameN, texts, 1)
    FW_SLOT(IlsIdF, texts, 2)
    FW_SLOT(IlsNameF, texts, 3)
    // Api
    FW_SLOT(DetailLevel, flags, 0)
    FW_SLOT(Range, shorts, 0)     // Api, VOR, NDB
    FW_SLOT(Elevation, doubles, 0)
    FW_SLOT(Scale, doubles, 1)
    FW_SLOT(Path, texts, 0)
    FW_SLOT(Param6, texts, 1)
    FW_SLOT(Param7, texts, 2)
    FW_SLOT(Param8, texts, 3)
    FW_SLOT(Param9, texts, 4)
    FW_SLOT(Param15, texts, 5)
    FW_SLOT(Param16, texts, 6)
    FW_SLOT(Param17, texts, 7)
    FW_SLOT(Param18, texts, 8)
    FW_SLOT(Param19, texts, 9)
    FW_SLOT(Param20, texts, 10)
    // VOR, NDB
    FW_SLOT(DME, flags, 0)        // VOR
    FW_SLOT(VorVisible, flags, 1) // VOR
    FW_SLOT(NdbVisible, flags, 0) // NDB
    FW_SLOT(Frequency, doubles, 0)
    FW_SLOT(ID, texts, 0)
    FW_SLOT(NavName, texts, 1)
    // Init
    FW_SLOT(InitName, texts, 0)
    // Exclude
    FW_SLOT(ExcludeObjects, flags, 0)
    FW_SLOT(ExcludeVOR, flags, 1)
    FW_SLOT(ExcludeNDB, flags, 2)
    FW_SLOT(ExclWidth, shorts, 0)
    FW_SLOT(ExclHeight, shorts, 1)
    // Sign
    FW_SLOT(Caption, texts, 0)
    FW_SLOT(Style, texts, 1)
#undef FW_SLOT
    friend bool operator==(const ObjectRecord&, const ObjectRecord&) = default;
};

struct ProjectRecord {
    std::string Name;
    std::string Comment;
    std::string Copyright;
    double MagVar = 0;
    double Altitude = 0;
    double LatitudeDegree = 0;
    double LongitudeDegree = 0;
    double PolyScale = 0;
    double LineScale = 0;
    double DotLineScale = 0;
    std::uint8_t UsePointReduction = 0;
    std::uint8_t UseTextureLevels = 0;
    std::uint8_t GroupLines = 0;
    std::array<std::int16_t, 3> Distance{}; // Distance1..3
    std::array<std::string, 4> Texture;     // Texture1..4
    std::array<std::int32_t, 4> Color{};    // Color1..4
    friend bool operator==(const ProjectRecord&, const ProjectRecord&) = default;
};

struct ShowFlagsRecord {
    std::uint8_t ShowPoly = 0;
    std::uint8_t ShowTexPoly = 0;
    std::uint8_t ShowWideLine = 0;
    std::uint8_t ShowDotLine = 0;
    std::uint8_t ShowTreeLine = 0;
    std::uint8_t ShowForest = 0;
    std::uint8_t ShowAPI = 0;
    std::uint8_t ShowSign = 0;
    std::uint8_t ShowRunway = 0;
    std::uint8_t ShowNav = 0;
    std::uint8_t ShowExclude = 0;
    std::uint8_t ShowGrid = 0;
    std::uint8_t ShowBackPicture = 0;
    std::string BackImagePath;
    double BackImagescale = 0;
    std::int32_t BackImageLeft = 0;
    std::int32_t BackImageTop = 0;
    friend bool operator==(const ShowFlagsRecord&, const ShowFlagsRecord&) = default;
};

// Display names; "Unknown shape type" for anything else.
std::string_view TypeName(int type);
bool IsShapeType(int type);
bool IsObjectType(int type);

// Reset routines: each sets only the fields its type names, callers start from a cleared record.
void ResetShape(ShapeRecord& s, int type);
// programFolder ends in a path separator; the Api default path is built on it.
void ResetObject(ObjectRecord& o, int type, const std::string& programFolder);
void ResetProject(ProjectRecord& p);
void ResetShowFlags(ShowFlagsRecord& f); // leaves BackImagescale alone

// The show flag that governs a record type, or nullptr for none.
std::uint8_t* ShowFlagOf(ShowFlagsRecord& f, int type);

std::array<std::int32_t, 4> ComputeLimits(const PointList& pts);
std::uint8_t ComputeConcavity(const PointList& pts);

std::int32_t LayerToValue(std::uint8_t index);
std::uint8_t LayerFromValue(std::int32_t value);

} // namespace fw
