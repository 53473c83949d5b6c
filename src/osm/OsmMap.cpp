#include "osm/OsmMap.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

#include "core/Numbers.h"
#include "core/Stores.h"
#include "export/ScasmForms.h"

namespace fw {

namespace {

constexpr double kFeetPerMetre = 3.2808;
constexpr double kWorkArea = 10000;

enum class Kind { None, Runway, Taxiway, Taxilane, Apron, Forest };

const char* KindName(Kind k)
{
    switch (k) {
    case Kind::Runway: return "runway";
    case Kind::Taxiway: return "taxiway";
    case Kind::Taxilane: return "taxilane";
    case Kind::Apron: return "apron";
    case Kind::Forest: return "forest";
    case Kind::None: break;
    }
    return "multipolygon";
}

std::string Tag(const OsmTags& tags, const char* key)
{
    auto it = tags.find(key);
    return it == tags.end() ? std::string() : it->second;
}

Kind Classify(const OsmFeature& f)
{
    const std::string aeroway = Tag(f.tags, "aeroway");
    if (!f.relation) {
        if (aeroway == "runway")
            return Kind::Runway;
        if (aeroway == "taxiway")
            return Kind::Taxiway;
        if (aeroway == "taxilane")
            return Kind::Taxilane;
    }
    if (aeroway == "apron")
        return Kind::Apron;
    if (Tag(f.tags, "natural") == "wood" || Tag(f.tags, "landuse") == "forest")
        return Kind::Forest;
    return Kind::None;
}

// A positive number of metres from a width tag ("45", "22.5 m", "18,5"); nothing otherwise.
std::optional<double> Metres(std::string text)
{
    std::replace(text.begin(), text.end(), ',', '.');
    const char* first = text.data();
    const char* last = first + text.size();
    while (first < last && *first == ' ')
        ++first;
    double v = 0;
    auto [end, ec] = std::from_chars(first, last, v);
    if (ec != std::errc() || !std::isfinite(v) || v <= 0)
        return std::nullopt;
    std::string_view rest(end, static_cast<std::size_t>(last - end));
    while (!rest.empty() && rest.front() == ' ')
        rest.remove_prefix(1);
    if (!rest.empty() && rest != "m")
        return std::nullopt;
    return v;
}

// UTF-8 to the single-byte text the project keeps; what it can't hold becomes "?". Quotes and
// control characters would end the file's string, so they don't pass.
std::string ProjectText(std::string_view utf8)
{
    std::string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        int extra = c < 0x80 ? 0 : c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : -1;
        if (extra < 0 || (extra > 0 && i + extra >= utf8.size())) {
            out += '?';
            ++i;
            continue;
        }
        std::uint32_t cp = extra == 0 ? c : c & (0x3F >> extra);
        for (int k = 1; k <= extra; ++k)
            cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += extra + 1;
        if (cp == '"')
            out += '\'';
        else if (cp < 0x20 || cp == 0x7F)
            out += ' ';
        else if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
            out += static_cast<char>(cp);
        else
            out += '?';
    }
    return out;
}

std::string Comment(const OsmTags& tags)
{
    const std::string ref = Tag(tags, "ref");
    return ProjectText(ref.empty() ? Tag(tags, "name") : ref);
}

// The runway's number and designator from "04L/22R"; number 0 when the text has none.
std::pair<int, int> RunwayRef(const std::string& ref)
{
    std::size_t i = 0;
    while (i < ref.size() && ref[i] == ' ')
        ++i;
    int number = 0;
    std::size_t digits = 0;
    while (i < ref.size() && digits < 2 && ref[i] >= '0' && ref[i] <= '9') {
        number = number * 10 + (ref[i] - '0');
        ++i;
        ++digits;
    }
    if (digits == 0 || number > 36)
        return {0, 0};
    int designator = 0;
    if (i < ref.size()) {
        switch (ref[i]) {
        case 'L': case 'l': designator = 1; break;
        case 'C': case 'c': designator = 2; break;
        case 'R': case 'r': designator = 3; break;
        default: break;
        }
    }
    return {number, designator};
}

std::optional<std::uint8_t> Surface(std::string s)
{
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (s == "asphalt" || s == "paved")
        return kSurfaceAsphalt;
    if (s == "concrete")
        return kSurfaceConcrete;
    if (s == "grass")
        return kSurfaceGrass1;
    if (s == "dirt" || s == "ground" || s == "earth" || s == "sand")
        return kSurfaceMud;
    if (s == "snow")
        return kSurfaceSnow;
    return std::nullopt;
}

double Heading(const PlanePoint& from, const PlanePoint& to)
{
    double h = std::atan2(to.x - from.x, -(to.y - from.y)) * (180 / kExportPi);
    if (h < 0)
        h += 360;
    return h >= 360 ? h - 360 : h;
}

double AngleBetween(double a, double b)
{
    const double d = std::fmod(std::fabs(a - b), 360.0);
    return d > 180 ? 360 - d : d;
}

class Mapper {
public:
    Mapper(const MapContext& c, ImportBatch& out) : c_(c), out_(out) {}

    void Feature(const OsmFeature& f)
    {
        const Kind kind = Classify(f);
        if (kind == Kind::None) {
            (f.relation ? out_.report.otherRelations : out_.report.otherWays)++;
            return;
        }
        if (f.missingNode)
            return Skip(kind, kSkipMissingNode);
        std::vector<PlanePoint> world;
        for (const auto& g : f.points) {
            const PlanePoint p = ToWorld(c_.frame, g);
            if (!Inside(p))
                return Skip(kind, kSkipOutside);
            world.push_back(p);
        }
        if (kind == Kind::Runway)
            return Runway(f, world);
        if (kind == Kind::Taxiway || kind == Kind::Taxilane)
            return Line(f, kind, world);
        Area(f, kind, world);
    }

    void Finish()
    {
        for (auto* group : {&forests_, &aprons_, &lines_})
            for (auto& [points, shape] : *group) {
                out_.points.push_back(std::move(points));
                out_.shapes.push_back(std::move(shape));
            }
    }

    void Skip(Kind kind, const char* reason) { ++out_.report.skipped[{KindName(kind), reason}]; }

private:
    static bool Inside(const PlanePoint& p)
    {
        const double x = RoundHalfEven(p.x);
        const double y = RoundHalfEven(p.y);
        return std::isfinite(x) && std::isfinite(y) && std::fabs(x) <= kWorkArea && std::fabs(y) <= kWorkArea;
    }

    void Runway(const OsmFeature& f, const std::vector<PlanePoint>& w)
    {
        if (w.size() < 2)
            return Skip(Kind::Runway, kSkipFewPoints);
        if (f.closed)
            return Skip(Kind::Runway, kSkipRunwayArea);
        double metres = 0;
        for (std::size_t i = 1; i < w.size(); ++i)
            metres += std::hypot(w[i].x - w[i - 1].x, w[i].y - w[i - 1].y) / 2;
        const auto length = RoundToInt16(metres * kFeetPerMetre);
        if (!length)
            return Skip(Kind::Runway, kSkipTooLong);
        if (static_cast<int>(out_.objects.size()) >= c_.objectRoom)
            return Skip(Kind::Runway, kSkipObjectsFull);

        ObjectRecord o;
        ResetObject(o, kRunway, c_.programFolder);
        o.PosX = static_cast<std::int32_t>(RoundHalfEven((w.front().x + w.back().x) / 2));
        o.PosY = static_cast<std::int32_t>(RoundHalfEven((w.front().y + w.back().y) / 2));
        const auto [number, designator] = RunwayRef(Tag(f.tags, "ref"));
        double heading = Heading(w.front(), w.back());
        if (number > 0 && AngleBetween(heading, number * 10.0) > 90)
            heading = Heading(w.back(), w.front());
        o.Rotation = heading;
        o.Length() = *length;
        if (auto width = Metres(Tag(f.tags, "width")))
            if (auto feet = RoundToInt16(*width * kFeetPerMetre); feet && *feet > 0)
                o.RwyWidth() = *feet;
        o.RwyNumber() = static_cast<std::uint8_t>(number);
        o.RwyDesignator() = static_cast<std::uint8_t>(designator);
        if (auto surface = Surface(Tag(f.tags, "surface")))
            o.Surface() = *surface;
        out_.objects.push_back(std::move(o));
        ++out_.report.runways;
    }

    // The record a new shape of the type starts from: the configuration's default.
    ShapeRecord Default(int type, const OsmFeature& f) const
    {
        ShapeRecord s;
        const int index = DefaultShapeIndex(type);
        if (c_.config && index >= 0)
            s = c_.config->defaultShapes[static_cast<std::size_t>(index)];
        else
            ResetShape(s, type);
        s.gType = static_cast<std::uint8_t>(type);
        s.gComment = Comment(f.tags);
        return s;
    }

    // Rounded, with a point that repeats the one before it dropped.
    static PointList Rounded(const std::vector<PlanePoint>& w)
    {
        PointList pts;
        for (const auto& p : w) {
            const Point q{static_cast<std::int32_t>(RoundHalfEven(p.x)), static_cast<std::int32_t>(RoundHalfEven(p.y))};
            if (pts.empty() || !(pts.back() == q))
                pts.push_back(q);
        }
        return pts;
    }

    // At most maxPoints of its own points; a ring comes and goes with its first point repeated.
    PointList Fit(const PointList& pts, std::size_t maxPoints)
    {
        std::vector<PlanePoint> line;
        for (const auto& p : pts)
            line.push_back({static_cast<double>(p.X), static_cast<double>(p.Y)});
        const Simplified s = SimplifyToFit(line, maxPoints);
        if (s.kept.size() == pts.size())
            return pts;
        ++out_.report.simplified;
        out_.report.largestDeviation = std::max(out_.report.largestDeviation, s.deviation / 2);
        PointList out;
        for (auto i : s.kept)
            out.push_back(pts[i]);
        return out;
    }

    bool ShapeRoom(Kind kind)
    {
        const auto taken = forests_.size() + aprons_.size() + lines_.size();
        if (static_cast<int>(taken) < c_.shapeRoom)
            return true;
        Skip(kind, kSkipShapesFull);
        return false;
    }

    void Line(const OsmFeature& f, Kind kind, const std::vector<PlanePoint>& w)
    {
        PointList pts = Rounded(w);
        if (pts.size() < 2)
            return Skip(kind, kSkipFewPoints);
        if (!ShapeRoom(kind))
            return;
        ShapeRecord s = Default(kWideLine, f);
        const auto width = Metres(Tag(f.tags, "width"));
        s.gLineWidth = width ? *width : kind == Kind::Taxiway ? 15.0 : 8.0;
        lines_.emplace_back(Fit(pts, kMaxPoints), std::move(s));
        ++out_.report.taxiways;
    }

    void Area(const OsmFeature& f, Kind kind, const std::vector<PlanePoint>& w)
    {
        if (!f.closed)
            return Skip(kind, kSkipNotClosed);
        PointList ring = Rounded(w);
        if (ring.size() >= 2 && ring.front() == ring.back())
            ring.pop_back();
        if (ring.size() < 3)
            return Skip(kind, kSkipFewPoints);
        if (!ShapeRoom(kind))
            return;
        ring.push_back(ring.front());
        PointList pts = Fit(ring, kMaxPoints + 1);
        pts.pop_back();
        const int type = kind == Kind::Apron ? kPoly : kForest;
        auto& group = kind == Kind::Apron ? aprons_ : forests_;
        group.emplace_back(std::move(pts), Default(type, f));
        ++(kind == Kind::Apron ? out_.report.aprons : out_.report.forests);
    }

    const MapContext& c_;
    ImportBatch& out_;
    std::vector<std::pair<PointList, ShapeRecord>> forests_, aprons_, lines_;
};

std::string Plural(int n, const char* word)
{
    std::string s = std::to_string(n) + " " + word;
    if (n != 1)
        s += "s";
    return s;
}

} // namespace

WorldFrame MakeWorldFrame(double latitude, double longitude)
{
    const ExportScale scale = ComputeExportScale(latitude);
    return {latitude, longitude, scale.LonDegPerMetre, scale.LatDegPerMetre};
}

PlanePoint ToWorld(const WorldFrame& f, const GeoPoint& p)
{
    return {2 * (p.lon - f.longitude) / f.LonDegPerMetre, -2 * (p.lat - f.latitude) / f.LatDegPerMetre};
}

ImportBatch MapExtract(const OsmExtract& extract, const MapContext& context)
{
    ImportBatch out;
    Mapper m(context, out);
    for (const auto& f : extract.features)
        m.Feature(f);
    for (int i = 0; i < extract.brokenMultipolygons; ++i)
        m.Skip(Kind::None, kSkipBrokenRings);
    m.Finish();
    out.report.otherNodes += extract.otherNodes;
    out.report.otherWays += extract.otherWays;
    out.report.otherRelations += extract.otherRelations;
    return out;
}

std::string ImportReport::Text() const
{
    std::string t = "Imported: " + Plural(runways, "runway") + ", " + Plural(taxiways, "taxiway") + ", " +
                    Plural(aprons, "apron") + ", " + Plural(forests, "forest") + ".";
    if (simplified > 0) {
        char dev[32];
        std::snprintf(dev, sizeof dev, "%.2f", largestDeviation);
        t += "\nSimplified: " + Plural(simplified, "way") + " to the point limit, largest deviation " + dev + " m.";
    }
    for (const auto& [key, count] : skipped)
        t += "\nSkipped: " + Plural(count, key.first.c_str()) + ": " + key.second + ".";
    std::vector<std::string> others;
    if (otherNodes > 0)
        others.push_back(Plural(otherNodes, "node"));
    if (otherWays > 0)
        others.push_back(Plural(otherWays, "way"));
    if (otherRelations > 0)
        others.push_back(Plural(otherRelations, "relation"));
    for (std::size_t i = 0; i < others.size(); ++i)
        t += (i == 0 ? "\nSkipped: " : i + 1 == others.size() ? " and " : ", ") + others[i];
    if (!others.empty())
        t += " not in the mapping.";
    return t;
}

} // namespace fw
