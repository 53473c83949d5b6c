#include "dialogs/SettingsForms.h"

#include <algorithm>
#include <cmath>

#include "core/Numbers.h"
#include "ports/Ui.h"

namespace fw {

const std::vector<double>& PolyScaleValues()
{
    static const std::vector<double> v{1, 0.5, 0.25, 0.125};
    return v;
}
const std::vector<double>& LineScaleValues()
{
    static const std::vector<double> v{0, 0.25, 0.125};
    return v;
}
const std::vector<double>& DotLineScaleValues()
{
    static const std::vector<double> v{0.5, 0.25, 0.125};
    return v;
}

std::vector<std::string> ScaleTexts(const std::vector<double>& list, char sep, bool automaticFirst)
{
    std::vector<std::string> out;
    for (std::size_t i = 0; i < list.size(); ++i)
        out.push_back(automaticFirst && i == 0 ? std::string("<automatic>") : LocalReal(list[i], sep));
    return out;
}

const std::vector<std::string>& PolyScaleList()
{
    static const std::vector<std::string> v = ScaleTexts(PolyScaleValues(), '.', false);
    return v;
}
const std::vector<std::string>& LineScaleList()
{
    static const std::vector<std::string> v = ScaleTexts(LineScaleValues(), '.', true);
    return v;
}
const std::vector<std::string>& DotLineScaleList()
{
    static const std::vector<std::string> v = ScaleTexts(DotLineScaleValues(), '.', false);
    return v;
}

int ScalePosition(const std::vector<double>& list, double value)
{
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i] == value)
            return static_cast<int>(i);
    return -1;
}

void FormSettings::Show_(const ProjectRecord& p, bool newProject, char sep)
{
    values = FormValues();
    working = p;
    isNew = newProject;
    values["Text9"] = ShowNumber(p.MagVar, sep);
    values["Text8"] = ShowNumber(p.Altitude, sep);
    values["Text3"] = ShowNumber(p.LatitudeDegree, sep);
    values["Text5"] = ShowNumber(p.LongitudeDegree, sep);
    values["Text1"] = p.Name;
    values["Text4"] = p.Comment;
    values["Text7"] = p.Copyright;
    values.SetInt("Combo3", ScalePosition(PolyScaleValues(), p.PolyScale));
    values.SetInt("Combo4", ScalePosition(LineScaleValues(), p.LineScale));
    values.SetInt("Combo5", ScalePosition(DotLineScaleValues(), p.DotLineScale));
    values.SetTick("Check1", p.UsePointReduction != 0);
    values.SetTick("Check2", p.UseTextureLevels != 0);
}

OkResult FormSettings::Ok(const ValueContext& ctx, ProjectRecord& p) const
{
    double magVar = 0, altitude = 0, lat = 0, lon = 0;
    if (!CheckDouble(ctx, values.Text("Text9"), -40, 40, "the magnetic variation", magVar) ||
        !CheckDouble(ctx, values.Text("Text8"), -8000, 8000, "the altitude", altitude) ||
        !CheckDouble(ctx, values.Text("Text3"), -90, 90, "the latitude (degrees)", lat) ||
        !CheckDouble(ctx, values.Text("Text5"), -180, 179, "the longitude (degrees)", lon))
        return OkResult::Refused;
    p = working;
    p.Name = values.Text("Text1");
    p.Comment = values.Text("Text4");
    p.Copyright = values.Text("Text7");
    p.MagVar = magVar;
    p.Altitude = altitude;
    p.LatitudeDegree = lat;
    p.LongitudeDegree = lon;
    // A combo left without a selection keeps the stored scale.
    const auto scale = [this](const char* name, const std::vector<double>& list, double& field) {
        const int i = values.Int(name);
        if (values.Text(name) != "-1" && i >= 0 && i < static_cast<int>(list.size()))
            field = list[i];
    };
    scale("Combo3", PolyScaleValues(), p.PolyScale);
    scale("Combo4", LineScaleValues(), p.LineScale);
    scale("Combo5", DotLineScaleValues(), p.DotLineScale);
    p.UsePointReduction = values.Tick("Check1") ? 1 : 0;
    p.UseTextureLevels = values.Tick("Check2") ? 1 : 0;
    return OkResult::Stored;
}

void FormOptimize::Show_(const ProjectRecord& p)
{
    values = FormValues();
    for (int i = 0; i < 4; ++i)
        values["Text" + std::to_string(i + 1)] = p.Texture[i];
    for (int i = 0; i < 3; ++i)
        values.SetInt("Text" + std::to_string(i + 5), p.Distance[i]);
    colors = p.Color;
}

OkResult FormOptimize::Ok(const ValueContext& ctx, ProjectRecord& p) const
{
    std::array<std::int16_t, 3> d{};
    for (int i = 0; i < 3; ++i)
        if (!CheckInteger(ctx, values.Text("Text" + std::to_string(i + 5)), 0, 2000,
                          "visibility step " + std::to_string(i + 2), d[i]))
            return OkResult::Refused;
    p.Distance = d;
    for (int i = 0; i < 4; ++i)
        p.Texture[i] = values.Text("Text" + std::to_string(i + 1));
    p.Color = colors;
    return OkResult::Stored;
}

void FormOptimize::TakePickedTexture(int i, const std::string& answer)
{
    if (i < 0 || i >= 4 || answer.size() < 16)
        return;
    const std::string name = answer.substr(0, answer.size() - 16);
    const std::string field = answer.substr(answer.size() - 16);
    values["Text" + std::to_string(i + 1)] = name;
    if (field == "NoTex           ")
        return;
    const double colour = ParseFileNumber(field);
    if (auto c = RoundToInt32(colour))
        colors[i] = *c;
}

const std::array<std::string, 3>& PathPrompts()
{
    static const std::array<std::string, 3> prompts{
        "Browse to your FS2000 directory. This will let you access the default FS textures...",
        "Set your scenery release folder. Fieldwright will copy all files needed by scenery project here...",
        "Set Fieldwright's texture directory. 'TEXTURE' in Fieldwright's directory is the texture folder by default."};
    return prompts;
}

void FormOptions::Show_(const ConfigRecord& c)
{
    values = FormValues();
    for (int i = 0; i < 3; ++i)
        values.SetInt("Tg" + std::to_string(i + 1), c.GridDist[i]);
    gridColor = c.GridColor4;
    values.SetTick("Check1", c.EnableOpenGL != 0);
    values["Text1"] = c.FSPath;
    values["Text2"] = c.SceneryPath;
    values["Text3"] = c.TEXPath;
    defaults = c.defaultShapes;
}

OkResult FormOptions::Ok(const ValueContext& ctx, ConfigRecord& c, bool openGLActive) const
{
    std::array<std::int16_t, 3> g{};
    for (int i = 0; i < 3; ++i)
        if (!CheckInteger(ctx, values.Text("Tg" + std::to_string(i + 1)), 0, 1000,
                          "grid spacing " + std::to_string(i + 1), g[i]))
            return OkResult::Refused;
    c.GridDist = g;
    c.GridColor4 = gridColor;
    DeriveGridColors(c);
    c.EnableOpenGL = values.Tick("Check1") ? 1 : 0;
    c.FSPath = values.Text("Text1");
    c.SceneryPath = values.Text("Text2");
    c.TEXPath = values.Text("Text3");
    c.defaultShapes = defaults;
    if ((c.EnableOpenGL != 0) != openGLActive && ctx.ui)
        ctx.ui->Message("OpenGL rendering will only be enabled/disabled after restarting Fieldwright...",
                        MessageStyle::Information);
    return OkResult::Stored;
}

void FormOptions::TakeFolder(int i, const std::string& folder)
{
    if (i >= 0 && i < 3)
        values["Text" + std::to_string(i + 1)] = AddBackslash(folder);
}

// ---- Converter ----

const std::vector<std::string>& DistanceUnits()
{
    static const std::vector<std::string> v{"Meters (m)", "Kilometers (km)", "Feet (')", "Miles",
                                            "Nautical miles (nM)"};
    return v;
}

const std::vector<std::string>& AngleFormats()
{
    static const std::vector<std::string> v{"DD.DDDDDDDD", "DD MM.MMMMM", "DD MM SS.SS"};
    return v;
}

std::string ConvertDistance(const std::string& input, int in, int out, char sep)
{
    static const double kIn[5] = {1.0 / 1000, 1, (1 / 3.2808) / 1000, 1 / 0.62, 1 / 0.53976};
    static const double kOut[5] = {1000, 1, 3280.8, 0.62, 0.53976};
    std::string result = "Unable to convert value!";
    double v = 0;
    if (!CheckDouble(ValueContext{sep, nullptr}, input, 0, 100000, "", v))
        return result;
    if (in < 0 || in > 4 || out < 0 || out > 4)
        return "Input invalid!";
    const double r = v * kIn[in] * kOut[out];
    if (!std::isfinite(r))
        return "Input invalid!";
    return LocalReal(r, sep);
}

std::string ConvertAngle(const std::string& input, int format, char sep)
{
    const std::string wrong = "Value of wrong format!";
    std::vector<std::string> parts;
    {
        std::string cur;
        for (char c : input) {
            if (c == ' ') {
                if (!cur.empty())
                    parts.push_back(cur);
                cur.clear();
            } else {
                cur += c;
            }
        }
        if (!cur.empty())
            parts.push_back(cur);
    }
    if (parts.empty() || parts.size() > 3)
        return wrong;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i)
        if (parts[i].find_first_of(".,") != std::string::npos)
            return wrong;
    // The last part's mark, point or comma, is read as the system's separator.
    std::string& last = parts.back();
    for (char& c : last)
        if (c == '.' || c == ',')
            c = sep;

    std::string& deg = parts[0];
    if (!deg.empty()) {
        const char first = deg[0];
        if (first == 'N' || first == 'n' || first == 'E' || first == 'e')
            deg.erase(0, 1);
        else if (first == 'S' || first == 's' || first == 'W' || first == 'w')
            deg[0] = '-';
    }
    // "°" in Windows-1252, or its UTF-8 form.
    if (deg.size() >= 2 && deg.compare(deg.size() - 2, 2, "\xC2\xB0") == 0)
        deg.erase(deg.size() - 2);
    else if (!deg.empty() && deg.back() == '\xB0')
        deg.pop_back();
    if (parts.size() >= 2 && !parts[1].empty() && parts[1].back() == '\'')
        parts[1].pop_back();
    if (parts.size() == 3 && !parts[2].empty() && parts[2].back() == '"')
        parts[2].pop_back();

    const ValueContext silent{sep, nullptr};
    double d = 0, m = 0, s = 0;
    if (!CheckDouble(silent, deg, -180, 180, "", d))
        return wrong;
    if (parts.size() >= 2 && !CheckDouble(silent, parts[1], 0, 59.999999999999, "", m))
        return wrong;
    if (parts.size() == 3 && !CheckDouble(silent, parts[2], 0, 59.999999999999, "", s))
        return wrong;
    double value = std::fabs(d) + m / 60 + s / 3600;
    if (!deg.empty() && deg[0] == '-')
        value = -value;

    const double a = std::fabs(value);
    const std::string sign = value < 0 ? "-" : "";
    const double wholeDeg = std::trunc(a);
    const double minutes = (a - wholeDeg) * 60;
    const ValueContext ctx{sep, nullptr};
    switch (format) {
    case 0: return LocalReal(value, sep);
    case 1:
        return sign + LocalReal(wholeDeg, sep) + " " + LocalReal(FixFloat(minutes, 5, ctx), sep) + "'";
    case 2: {
        const double wholeMin = std::trunc(minutes);
        const double seconds = (minutes - wholeMin) * 60;
        return sign + LocalReal(wholeDeg, sep) + " " + LocalReal(wholeMin, sep) + "' " +
               LocalReal(FixFloat(seconds, 3, ctx), sep) + "\"";
    }
    default: return wrong;
    }
}

void FormConverter::Load_()
{
    values = FormValues();
    values["Text3"] = "";
    values.SetInt("InputUnit", 0);
    values.SetInt("OutputUnit", 0);
    values["Text4"] = "";
    values["Text1"] = "";
    values.SetInt("OutputFormat", 0);
    values["Text2"] = "";
}

void FormConverter::ConvertDist(char sep)
{
    values["Text4"] = ConvertDistance(values.Text("Text3"), values.Int("InputUnit"), values.Int("OutputUnit"), sep);
}

void FormConverter::ConvertLat(char sep)
{
    values["Text2"] = ConvertAngle(values.Text("Text1"), values.Int("OutputFormat"), sep);
}

} // namespace fw
