#include "files/ProjectJson.h"

#include <charconv>
#include <cmath>
#include <algorithm>
#include <cstdint>

namespace fw {

namespace {

// 0x80..0x9F; the five unassigned bytes keep their own code.
constexpr std::uint16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, std::uint32_t cp)
{
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string Str(std::string_view bytes)
{
    std::string out = "\"";
    for (unsigned char c : bytes) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20 || c == 0x7F) {
                char buf[8];
                static const char hex[] = "0123456789abcdef";
                buf[0] = '\\'; buf[1] = 'u'; buf[2] = '0'; buf[3] = '0';
                buf[4] = hex[c >> 4]; buf[5] = hex[c & 15];
                out.append(buf, 6);
            } else if (c >= 0x80 && c < 0xA0) {
                AppendUtf8(out, kHigh[c - 0x80]);
            } else {
                AppendUtf8(out, c);
            }
        }
    }
    out += '"';
    return out;
}

std::string Int(std::int64_t v) { return std::to_string(v); }

class Obj {
public:
    explicit Obj(std::string& out) : out_(out) { out_ += '{'; }
    void raw(std::string_view key, const std::string& value)
    {
        if (!first_)
            out_ += ", ";
        first_ = false;
        out_ += '"';
        out_.append(key);
        out_ += "\":";
        out_ += value;
    }
    void end() { out_ += '}'; }

private:
    std::string& out_;
    bool first_ = true;
};

template <class Range, class F>
std::string List(const Range& r, F&& f)
{
    std::string s = "[";
    bool first = true;
    for (const auto& v : r) {
        if (!first)
            s += ',';
        first = false;
        s += f(v);
    }
    s += ']';
    return s;
}

std::string PointText(const Point& p) { return "[" + Int(p.X) + "," + Int(p.Y) + "]"; }

} // namespace

std::string Cp1252ToUtf8(std::string_view bytes)
{
    std::string out;
    for (unsigned char c : bytes) {
        if (c >= 0x80 && c < 0xA0)
            AppendUtf8(out, kHigh[c - 0x80]);
        else
            AppendUtf8(out, c);
    }
    return out;
}

std::string JsonNumber(double v)
{
    if (!std::isfinite(v))
        return "null";
    if (v == 0)
        v = 0; // no negative zero
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, res.ptr);
}

std::string ProjectToJson(const ProjectData& d)
{
    std::string out;
    out += "{\n  \"version\": " + Int(d.version) + ",\n  \"settings\": ";
    {
        const auto& f = d.showFlags;
        Obj o(out);
        o.raw("ShowPoly", Int(f.ShowPoly));
        o.raw("ShowTexPoly", Int(f.ShowTexPoly));
        o.raw("ShowWideLine", Int(f.ShowWideLine));
        o.raw("ShowDotLine", Int(f.ShowDotLine));
        o.raw("ShowTreeLine", Int(f.ShowTreeLine));
        o.raw("ShowForest", Int(f.ShowForest));
        o.raw("ShowAPI", Int(f.ShowAPI));
        o.raw("ShowSign", Int(f.ShowSign));
        o.raw("ShowRunway", Int(f.ShowRunway));
        o.raw("ShowNav", Int(f.ShowNav));
        o.raw("ShowExclude", Int(f.ShowExclude));
        o.raw("ShowGrid", Int(f.ShowGrid));
        o.raw("ShowBackPicture", Int(f.ShowBackPicture));
        o.raw("BackImagePath", Str(f.BackImagePath));
        o.raw("BackImagescale", JsonNumber(f.BackImagescale));
        o.raw("BackImageLeft", Int(f.BackImageLeft));
        o.raw("BackImageTop", Int(f.BackImageTop));
        o.end();
    }
    out += ",\n  \"project\": ";
    {
        const auto& p = d.project;
        Obj o(out);
        o.raw("Name", Str(p.Name));
        o.raw("Comment", Str(p.Comment));
        o.raw("Copyright", Str(p.Copyright));
        o.raw("MagVar", JsonNumber(p.MagVar));
        o.raw("Altitude", JsonNumber(p.Altitude));
        o.raw("LatitudeDegree", JsonNumber(p.LatitudeDegree));
        o.raw("LongitudeDegree", JsonNumber(p.LongitudeDegree));
        o.raw("PolyScale", JsonNumber(p.PolyScale));
        o.raw("LineScale", JsonNumber(p.LineScale));
        o.raw("DotLineScale", JsonNumber(p.DotLineScale));
        o.raw("UsePointReduction", Int(p.UsePointReduction));
        o.raw("UseTextureLevels", Int(p.UseTextureLevels));
        o.raw("GroupLines", Int(p.GroupLines));
        for (int i = 0; i < 3; ++i)
            o.raw("Distance" + std::to_string(i + 1), Int(p.Distance[i]));
        for (int i = 0; i < 4; ++i)
            o.raw("Texture" + std::to_string(i + 1), Str(p.Texture[i]));
        for (int i = 0; i < 4; ++i)
            o.raw("Color" + std::to_string(i + 1), Int(p.Color[i]));
        o.end();
    }
    out += ",\n  \"shapes\": [";
    for (std::size_t i = 0; i < d.shapes.size(); ++i) {
        const auto& s = d.shapes[i];
        out += i ? ",\n    " : "\n    ";
        Obj o(out);
        o.raw("gType", Int(s.gType));
        o.raw("gIsColored", Int(s.gIsColored));
        o.raw("gIsConcave", Int(s.gIsConcave));
        o.raw("gLineType", Int(s.gLineType));
        o.raw("DotLineType", Int(s.DotLineType));
        o.raw("gComment", Str(s.gComment));
        o.raw("gLineWidth", JsonNumber(s.gLineWidth));
        o.raw("gLimits", List(s.gLimits, [](auto v) { return Int(v); }));
        o.raw("tSwitch", Int(s.tSwitch));
        o.raw("tLoadflag", List(s.tLoadflag, [](auto v) { return Int(v); }));
        o.raw("tDayPath", Str(s.tDayPath));
        o.raw("cTransparency", Int(s.cTransparency));
        o.raw("cLighted", Int(s.cLighted));
        o.raw("cColor", Int(s.cColor));
        o.raw("mNumBands", Int(s.mNumBands));
        o.raw("mBandHeight", JsonNumber(s.mBandHeight));
        o.raw("mSliderColor", Int(s.mSliderColor));
        o.raw("ForestType", Int(s.ForestType));
        o.raw("mTexMap", List(s.mTexMap, [](auto v) { return Int(v); }));
        o.raw("vRange", Int(s.vRange));
        o.raw("vTime", Int(s.vTime));
        o.raw("vNoPointReduction", Int(s.vNoPointReduction));
        o.raw("vNoTextureLevels", Int(s.vNoTextureLevels));
        o.raw("vLayer", Int(s.vLayer));
        static const PointList kNone;
        o.raw("points", List(i < d.points.size() ? d.points[i] : kNone, PointText));
        o.end();
    }
    out += d.shapes.empty() ? "]" : "\n  ]";
    out += ",\n  \"objects\": [";
    for (std::size_t i = 0; i < d.objects.size(); ++i) {
        const auto& ob = d.objects[i];
        out += i ? ",\n    " : "\n    ";
        Obj o(out);
        o.raw("oType", Int(ob.oType));
        o.raw("PosX", Int(ob.PosX));
        o.raw("PosY", Int(ob.PosY));
        o.raw("Rotation", JsonNumber(ob.Rotation));
        o.raw("flags", List(ob.flags, [](auto v) { return Int(v); }));
        o.raw("shorts", List(ob.shorts, [](auto v) { return Int(v); }));
        o.raw("doubles", List(ob.doubles, [](auto v) { return JsonNumber(v); }));
        o.raw("texts", List(ob.texts, [](const std::string& v) { return Str(v); }));
        o.raw("LightIntensityLow", Int(ob.LightIntensityLow));
        o.raw("LightIntensityHigh", Int(ob.LightIntensityHigh));
        o.raw("DesignLast", Int(ob.DesignLast));
        const int last = std::min<int>(ob.DesignLast, kDesignPoints - 1);
        std::string pts = "[";
        for (int k = 0; k <= last; ++k) {
            if (k)
                pts += ',';
            pts += PointText(ob.DesignPoints[k]);
        }
        pts += ']';
        o.raw("DesignPoints", pts);
        o.end();
    }
    out += d.objects.empty() ? "]" : "\n  ]";
    out += "\n}\n";
    return out;
}

} // namespace fw
