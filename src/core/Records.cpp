#include "core/Records.h"

#include <algorithm>

namespace fw {

std::string_view TypeName(int type)
{
    switch (type) {
    case kPoly: return "Poly";
    case kTexPoly: return "TexPoly";
    case kWideLine: return "Line/Road";
    case kDotLine: return "DotLine";
    case kTreeLine: return "Tree line";
    case kFlatten: return "Flatten Polygon";
    case kForest: return "Voluminous forest";
    case kRunway: return "Runway";
    case kApi: return "3-D object (API macro)";
    case kVor: return "VOR";
    case kNdb: return "NDB";
    case kInit: return "Initial location";
    case kExclude: return "Exclude area";
    case kSign: return "Taxiway sign";
    default: return "Unknown shape type";
    }
}

bool IsShapeType(int type) { return type >= kPoly && type <= kForest; }
bool IsObjectType(int type) { return (type >= kRunway && type <= kExclude) || type == kSign; }

void ResetShape(ShapeRecord& s, int type)
{
    s.gType = static_cast<std::uint8_t>(type);
    if (type == kFlatten) {
        s.gComment.clear();
        s.gIsColored = 0;
        s.tDayPath.clear();
        s.mTexMap.fill(0);
        s.mBandHeight = 0;
        s.mNumBands = 0;
        s.vRange = 0;
        s.vTime = 0;
        return;
    }
    if (!IsShapeType(type))
        return;
    s.gComment = "[No comment]";
    s.vTime = 7;
    s.tSwitch = 0;
    s.tLoadflag.fill(0);
    switch (type) {
    case kPoly:
        s.gIsColored = 0;
        s.tDayPath = "Concrete.r8";
        s.cColor = RGB(180, 180, 160);
        s.cTransparency = 15;
        s.vRange = 10000;
        break;
    case kTexPoly:
        s.gIsColored = 0;
        s.tDayPath = "Concrete.r8";
        s.mTexMap.fill(-100);
        s.vRange = 10000;
        break;
    case kWideLine:
        s.gIsColored = 1;
        s.tDayPath = "taxi.bmp";
        s.cColor = RGB(160, 150, 10);
        s.cTransparency = 15;
        s.gLineWidth = 0.5;
        s.vRange = 500;
        break;
    case kDotLine:
        s.cColor = 17;
        s.gLineWidth = 30.0;
        s.vRange = 2000;
        break;
    case kTreeLine:
        s.gIsColored = 0;
        s.tDayPath = "Tree.bmp";
        s.mTexMap.fill(0);
        s.mBandHeight = 20.0;
        s.mNumBands = 8;
        s.vRange = 2000;
        break;
    default: // kForest
        s.mBandHeight = 20.0;
        s.vRange = 2000;
        break;
    }
}

void ResetObject(ObjectRecord& o, int type, const std::string& programFolder)
{
    o.oType = static_cast<std::uint8_t>(type);
    switch (type) {
    case kRunway:
        o.ShowTouchdownLights() = 0;
        o.ShowBorderLine() = 1;
        o.ShowCenterLine() = 1;
        o.ShowID() = 1;
        o.ShowTouchDownMarker() = 1;
        o.ShowThresholdMarkers() = 1;
        o.Show150Markers() = 0;
        o.Show300Markers() = 0;
        o.Surface() = kSurfaceAsphalt;
        o.EnableLights() = 1;
        o.ShowCenterLights() = 1;
        o.VasiBarsN() = 1;
        o.VasiBarsF() = 1;
        o.AprLN() = 2;
        o.AprLF() = 2;
        o.StrobesN() = 2;
        o.StrobesF() = 2;
        o.IlsEnabledN() = 0;
        o.IlsEnabledF() = 0;
        o.IlsGlideSlopeN() = 1;
        o.IlsGlideSlopeF() = 1;
        o.IlsDmeN() = 1;
        o.IlsDmeF() = 1;
        o.Ils3dObjectN() = 0;
        o.Ils3dObjectF() = 0;
        o.RwyNumber() = 0;
        o.RwyDesignator() = 0;
        o.MarkerEnabledN() = 0;
        o.markerEnabledF() = 0;
        o.ThrOffN() = 0;
        o.ExtN() = 0;
        o.IlsRangeN() = 32;
        o.IlsRangeF() = 32;
        o.Length() = 9000;
        o.RwyWidth() = 150;
        o.MarkerOuterN() = 1600;
        o.MarkerOuterF() = 1600;
        o.MarkerMiddleN() = 800;
        o.MarkerMiddleF() = 800;
        o.MarkerInnerN() = 400;
        o.MarkerInnerF() = 400;
        o.IlsSlopeN() = 3.0;
        o.IlsSlopeF() = 3.0;
        o.IlsFreqN() = 123.45;
        o.IlsFreqF() = 123.45;
        o.IlsIdN() = "ID";
        o.IlsIdF() = "ID";
        o.IlsNameN() = "Enter_Name";
        o.IlsNameF() = "Enter_Name";
        o.LightIntensityLow = 0;
        o.LightIntensityHigh = -1;
        break;
    case kApi: {
        o.Path() = programFolder + "fwt_building1.api";
        o.Range() = 5000;
        o.Rotation = 0;
        o.Elevation() = 0;
        o.Scale() = 1.0;
        o.DetailLevel() = 2;
        o.Param6() = "40";
        o.Param7() = "40";
        o.Param8() = "20";
        o.Param9() = "fwt_build01.bmp";
        o.Param15() = "1";
        for (int i = 6; i < kObjectTexts; ++i)
            o.texts[i].clear();
        static constexpr Point kOutline[] = {{-50, 50}, {50, 50},  {50, -50}, {-50, -50}, {-50, 50},
                                             {0, 50},   {-50, 0},  {-50, -50}, {50, 50},  {50, 0},
                                             {0, -50},  {50, -50}, {-50, -50}};
        o.DesignLast = 12;
        std::copy(std::begin(kOutline), std::end(kOutline), o.DesignPoints.begin());
        break;
    }
    case kVor:
        o.Frequency() = 108.0;
        o.Range() = 45;
        o.DME() = 1;
        o.VorVisible() = 0;
        o.ID() = "ID";
        o.NavName() = "Enter_Name";
        break;
    case kNdb:
        o.Frequency() = 200.0;
        o.Range() = 45;
        o.NdbVisible() = 0;
        o.ID() = "ID";
        o.NavName() = "Enter_Name";
        break;
    case kInit:
        o.InitName() = "Enter_Name";
        o.Rotation = 0;
        o.doubles = {123.4, 110.0, 110.0, 0.0};
        break;
    case kExclude:
        o.ExclWidth() = 1000;
        o.ExclHeight() = 1000;
        o.ExcludeObjects() = 1;
        o.ExcludeVOR() = 0;
        o.ExcludeNDB() = 0;
        break;
    case kSign:
        o.Caption().clear();
        o.Style() = "FlatLighted";
        o.Rotation = 0;
        break;
    default:
        break;
    }
}

void ResetProject(ProjectRecord& p)
{
    p.Name = "New";
    p.Comment = "[Enter comment]";
    p.Copyright = "[Enter name]";
    p.MagVar = 0;
    p.Altitude = 0;
    p.LatitudeDegree = 0;
    p.LongitudeDegree = 0;
    p.PolyScale = 1.0;
    p.LineScale = 0;
    p.DotLineScale = 0.5;
    p.UsePointReduction = 0;
    p.UseTextureLevels = 0;
    p.GroupLines = 0;
    p.Distance = {100, 200, 300};
    p.Texture = {};
    p.Color = {};
}

void ResetShowFlags(ShowFlagsRecord& f)
{
    f.ShowPoly = f.ShowTexPoly = f.ShowWideLine = f.ShowDotLine = f.ShowTreeLine = 1;
    f.ShowForest = f.ShowAPI = f.ShowSign = f.ShowRunway = f.ShowNav = f.ShowExclude = 1;
    f.ShowGrid = 1;
    f.ShowBackPicture = 0;
    f.BackImagePath.clear();
    f.BackImageLeft = 0;
    f.BackImageTop = 0;
}

std::uint8_t* ShowFlagOf(ShowFlagsRecord& f, int type)
{
    switch (type) {
    case kPoly: return &f.ShowPoly;
    case kTexPoly: return &f.ShowTexPoly;
    case kWideLine: return &f.ShowWideLine;
    case kDotLine: return &f.ShowDotLine;
    case kTreeLine: return &f.ShowTreeLine;
    case kForest: return &f.ShowForest;
    case kApi: return &f.ShowAPI;
    case kSign: return &f.ShowSign;
    case kRunway: return &f.ShowRunway;
    case kVor:
    case kNdb: return &f.ShowNav;
    case kFlatten:
    case kInit:
    case kExclude: return &f.ShowExclude;
    default: return nullptr;
    }
}

std::array<std::int32_t, 4> ComputeLimits(const PointList& pts)
{
    if (pts.empty())
        return {0, 0, 0, 0};
    std::array<std::int32_t, 4> l{pts[0].X, pts[0].X, pts[0].Y, pts[0].Y};
    for (std::size_t i = 1; i < pts.size(); ++i) {
        l[0] = std::min(l[0], pts[i].X);
        l[1] = std::max(l[1], pts[i].X);
        l[2] = std::min(l[2], pts[i].Y);
        l[3] = std::max(l[3], pts[i].Y);
    }
    return l;
}

namespace {
// An edge vector: the integer differences, each then divided by 100.0.
struct Edge {
    double x, y;
};
Edge EdgeOf(const Point& a, const Point& b)
{
    return {static_cast<double>(static_cast<std::int64_t>(b.X) - a.X) / 100.0,
            static_cast<double>(static_cast<std::int64_t>(b.Y) - a.Y) / 100.0};
}
int TurnSign(const Edge& u, const Edge& v)
{
    const double z = u.x * v.y - u.y * v.x;
    return z < 0 ? -1 : 1;
}
} // namespace

std::uint8_t ComputeConcavity(const PointList& p)
{
    const std::size_t count = p.size();
    if (count < 3 || count == 3)
        return 0;
    const std::size_t n = count - 1;
    // Each edge is worked out once and serves the turns at both its ends.
    const Edge first = EdgeOf(p[0], p[1]);
    Edge u = EdgeOf(p[1], p[2]);
    const int reference = TurnSign(first, u);
    for (std::size_t i = 1; i + 2 <= n; ++i) {
        const Edge v = EdgeOf(p[i + 1], p[i + 2]);
        if (TurnSign(u, v) != reference)
            return 1;
        u = v;
    }
    // u is now the edge from p[n - 1] to p[n].
    const Edge closing = EdgeOf(p[n], p[0]);
    if (TurnSign(u, closing) != reference)
        return 1;
    if (TurnSign(closing, first) != reference)
        return 1;
    return 0;
}

namespace {
constexpr std::array<std::int32_t, 10> kLayerValues{0, 8, 12, 16, 20, 24, 28, 32, 40, 60};
}

std::int32_t LayerToValue(std::uint8_t index)
{
    return index < kLayerValues.size() ? kLayerValues[index] : 0;
}

std::uint8_t LayerFromValue(std::int32_t value)
{
    for (std::size_t i = 0; i < kLayerValues.size(); ++i)
        if (kLayerValues[i] == value)
            return static_cast<std::uint8_t>(i);
    return 0;
}

} // namespace fw
