#include "dialogs/ObjectForms.h"

#include <algorithm>
#include <cstdint>

#include "core/Numbers.h"
#include "core/SignCaption.h"
#include "ports/Ui.h"

namespace fw {

namespace {

// A runway dialog's whole number: CheckLong, which applies no bounds, so the bounds the
// dialog's table names are not applied either (a length of 99 feet is stored). The record's field is
// 16-bit: a number it can't hold is a wrong value, with the check's message, and nothing is stored.
bool CheckLong16(const ValueContext& ctx, const std::string& text, const std::string& name, std::int16_t& out)
{
    std::int32_t v = 0;
    if (!CheckLong(ctx, text, "", v) || v < INT16_MIN || v > INT16_MAX) {
        if (ctx.ui)
            ctx.ui->Message("You entered a wrong value for " + name + "!", MessageStyle::Information);
        return false;
    }
    out = static_cast<std::int16_t>(v);
    return true;
}

void Refuse(const ValueContext& ctx, const std::string& text)
{
    if (ctx.ui)
        ctx.ui->Message(text, MessageStyle::Information);
}

std::uint8_t Tick(const FormValues& v, const char* name) { return v.Tick(name) ? 1 : 0; }

std::string Pad2(int n) { return (n < 10 ? "0" : "") + std::to_string(n); }

} // namespace

// ---- NDB and VOR ----

void NavForm::Show_(const ObjectRecord& r, char sep)
{
    values = FormValues();
    values["Text1"] = ShowNumber(r.Frequency(), sep);
    values.SetInt("Text2", r.Range());
    values["Text3"] = r.ID();
    values["Text4"] = r.NavName();
    if (vor_) {
        values.SetTick("Check1", r.DME() != 0);
        values.SetTick("Check2", r.VorVisible() != 0);
    } else {
        values.SetTick("Check1", r.NdbVisible() != 0);
    }
}

OkResult NavForm::Ok(const ValueContext& ctx, ObjectRecord& r) const
{
    double freq = 0;
    std::int16_t range = 0;
    if (!CheckDouble(ctx, values.Text("Text1"), vor_ ? 108 : 200, vor_ ? 135.75 : 526.5, "the frequency", freq) ||
        !CheckInteger(ctx, values.Text("Text2"), 1, 255, "the range", range))
        return OkResult::Refused;
    if (values.Text("Text3").empty()) {
        Refuse(ctx, "Please enter an ID!");
        return OkResult::Refused;
    }
    if (values.Text("Text4").empty()) {
        Refuse(ctx, "Please enter a name!");
        return OkResult::Refused;
    }
    r.Frequency() = freq;
    r.Range() = range;
    r.ID() = values.Text("Text3");
    r.NavName() = values.Text("Text4");
    if (vor_) {
        r.DME() = Tick(values, "Check1");
        r.VorVisible() = Tick(values, "Check2");
    } else {
        r.NdbVisible() = Tick(values, "Check1");
    }
    return OkResult::Stored;
}

// ---- Exclude area and initial location ----

void FormOexclude::Show_(const ObjectRecord& r, char)
{
    values = FormValues();
    values.SetInt("Text1", r.ExclWidth());
    values.SetInt("Text2", r.ExclHeight());
    values.SetTick("Check1", r.ExcludeObjects() != 0);
    values.SetTick("Check2", r.ExcludeVOR() != 0);
    values.SetTick("Check3", r.ExcludeNDB() != 0);
}

OkResult FormOexclude::Ok(const ValueContext& ctx, ObjectRecord& r) const
{
    std::int16_t w = 0, h = 0;
    if (!CheckInteger(ctx, values.Text("Text1"), 20, 10000, "the width", w) ||
        !CheckInteger(ctx, values.Text("Text2"), 20, 10000, "the height", h))
        return OkResult::Refused;
    r.ExclWidth() = w;
    r.ExclHeight() = h;
    r.ExcludeObjects() = Tick(values, "Check1");
    r.ExcludeVOR() = Tick(values, "Check2");
    r.ExcludeNDB() = Tick(values, "Check3");
    return OkResult::Stored;
}

void FormInit::Show_(const ObjectRecord& r, char sep)
{
    values = FormValues();
    values["Text1"] = r.InitName();
    values["Text2"] = ShowNumber(r.Rotation, sep);
}

OkResult FormInit::Ok(const ValueContext& ctx, ObjectRecord& r) const
{
    double heading = 0;
    if (!CheckDouble(ctx, values.Text("Text2"), 0, 360, "the heading", heading))
        return OkResult::Refused;
    r.InitName() = values.Text("Text1");
    r.Rotation = heading;
    return OkResult::Stored;
}

// ---- Runway ----

const std::vector<std::string>& SurfaceList()
{
    static const std::vector<std::string> list{"[None]", "Mud",     "Concrete", "Asphalt", "Grass 1",
                                               "Grass 2", "Grass 3", "Asphalt",  "Snow",    "Tar"};
    return list;
}

const std::vector<std::string>& VasiList()
{
    static const std::vector<std::string> list{
        "[None]", "VASI 2 bars", "VASI 3 bars", "VASI 4 bars", "VASI 6 bars", "VASI 12 bars (both sides)",
        "VASI 16 bars (both sides)", "PAPI - 2 lights", "PAPI - 4 lights"};
    return list;
}

const std::vector<std::string>& ApproachLightList()
{
    static const std::vector<std::string> list{"[None]", "Flashing lights", "MALSF", "MALSR", "ALSF-1",
                                               "ALSF-2", "Strobes", "ICAO III - no red lights", "ICAO III"};
    return list;
}

const std::vector<std::string>& DesignatorList()
{
    static const std::vector<std::string> list{"", "L", "C", "R"};
    return list;
}

std::array<std::string, 2> RunwayEnds(int n, int designator)
{
    // 18 faces 36 and 36 faces 18.
    const int far = n <= 18 ? n + 18 : n - 18;
    const auto& d = DesignatorList();
    const std::string near = designator >= 0 && designator < 4 ? d[designator] : std::string();
    std::string farD = near;
    if (near == "L")
        farD = "R";
    else if (near == "R")
        farD = "L";
    return {Pad2(n) + near, Pad2(far) + farD};
}

namespace {
// The surface list's first row is its "[None]" heading; the surfaces follow it in code order.
constexpr int kSurfaceRowOffset = 1;

const char* const kRunwayTicks[] = {
    "ShowTouchdownLights", "ShowBorderLine", "ShowCenterLine", "ShowID", "ShowTouchDownMarker",
    "ShowThresholdMarkers", "Show150Markers", "Show300Markers", "EnableLights", "ShowCenterLights",
    "Ils3dObjectN", "Ils3dObjectF", "IlsEnabledN", "IlsGlideSlopeN", "IlsDmeN", "IlsEnabledF",
    "IlsGlideSlopeF", "IlsDmeF", "MarkerEnabledN", "markerEnabledF"};

std::uint8_t& RunwayTick(ObjectRecord& r, const std::string& name)
{
    if (name == "ShowTouchdownLights") return r.ShowTouchdownLights();
    if (name == "ShowBorderLine") return r.ShowBorderLine();
    if (name == "ShowCenterLine") return r.ShowCenterLine();
    if (name == "ShowID") return r.ShowID();
    if (name == "ShowTouchDownMarker") return r.ShowTouchDownMarker();
    if (name == "ShowThresholdMarkers") return r.ShowThresholdMarkers();
    if (name == "Show150Markers") return r.Show150Markers();
    if (name == "Show300Markers") return r.Show300Markers();
    if (name == "EnableLights") return r.EnableLights();
    if (name == "ShowCenterLights") return r.ShowCenterLights();
    if (name == "Ils3dObjectN") return r.Ils3dObjectN();
    if (name == "Ils3dObjectF") return r.Ils3dObjectF();
    if (name == "IlsEnabledN") return r.IlsEnabledN();
    if (name == "IlsGlideSlopeN") return r.IlsGlideSlopeN();
    if (name == "IlsDmeN") return r.IlsDmeN();
    if (name == "IlsEnabledF") return r.IlsEnabledF();
    if (name == "IlsGlideSlopeF") return r.IlsGlideSlopeF();
    if (name == "IlsDmeF") return r.IlsDmeF();
    if (name == "MarkerEnabledN") return r.MarkerEnabledN();
    return r.markerEnabledF();
}
} // namespace

void FormRunway::Show_(const ObjectRecord& r, char sep)
{
    values = FormValues();
    ObjectRecord copy = r;
    for (const char* t : kRunwayTicks)
        values.SetTick(t, RunwayTick(copy, t) != 0);
    values.SetInt("Surface", r.Surface() + kSurfaceRowOffset);
    values.SetInt("VasiBarsN", r.VasiBarsN());
    values.SetInt("VasiBarsF", r.VasiBarsF());
    values.SetInt("AprLN", r.AprLN());
    values.SetInt("AprLF", r.AprLF());
    values.SetInt("StrobesN", r.StrobesN());
    values.SetInt("StrobesF", r.StrobesF());
    values.SetInt("RwyNumber", r.RwyNumber());
    values.SetInt("RwyDesignator", r.RwyDesignator());
    values.SetInt("ThrOffN", r.ThrOffN());
    values.SetInt("ExtN", r.ExtN());
    values.SetInt("IlsRangeN", r.IlsRangeN());
    values.SetInt("IlsRangeF", r.IlsRangeF());
    values.SetInt("Length", r.Length());
    values.SetInt("Width", r.RwyWidth());
    values.SetInt("MarkerOuterN", r.MarkerOuterN());
    values.SetInt("MarkerMiddleN", r.MarkerMiddleN());
    values.SetInt("MarkerInnerN", r.MarkerInnerN());
    values.SetInt("MarkerOuterF", r.MarkerOuterF());
    values.SetInt("MarkerMiddleF", r.MarkerMiddleF());
    values.SetInt("MarkerInnerF", r.MarkerInnerF());
    values["IlsSlopeN"] = ShowNumber(r.IlsSlopeN(), sep);
    values["IlsSlopeF"] = ShowNumber(r.IlsSlopeF(), sep);
    values["IlsFreqN"] = ShowNumber(r.IlsFreqN(), sep);
    values["IlsFreqF"] = ShowNumber(r.IlsFreqF(), sep);
    values["IlsIdN"] = r.IlsIdN();
    values["IlsNameN"] = r.IlsNameN();
    values["IlsIdF"] = r.IlsIdF();
    values["IlsNameF"] = r.IlsNameF();
    values["Heading"] = ShowNumber(r.Rotation, sep);
    values.SetInt("LightIntensity", r.LightIntensityHigh ? 1 : 0);
}

std::array<std::string, 2> FormRunway::Rwy_caption() const
{
    const auto ends = RunwayEnds(std::clamp(values.Int("RwyNumber"), 0, 36), values.Int("RwyDesignator"));
    return {"Runway " + ends[0] + ":", "Runway " + ends[1] + ":"};
}

OkResult FormRunway::Ok(const ValueContext& ctx, ObjectRecord& r) const
{
    const auto T = [this](const char* n) { return values.Text(n); };
    double slopeN = 0, slopeF = 0, heading = 0, freqN = 0, freqF = 0;
    std::int16_t length = 0, width = 0, thr = 0, ext = 0, rangeN = 0, rangeF = 0;
    std::uint8_t strobesN = 0, strobesF = 0;
    std::array<std::int16_t, 6> markers{};
    static const char* const kMarkers[6] = {"MarkerOuterN", "MarkerMiddleN", "MarkerInnerN",
                                            "MarkerOuterF", "MarkerMiddleF", "MarkerInnerF"};
    static const char* const kMarkerNames[3] = {"the Outer marker (Om)", "the middle marker (Mm)",
                                                "the inner marker (Im)"};
    if (!CheckDouble(ctx, T("IlsSlopeN"), 0, 10, "the first slope angle", slopeN) ||
        !CheckDouble(ctx, T("IlsSlopeF"), 0, 10, "the second slope angle", slopeF) ||
        !CheckLong16(ctx, T("Length"), "the runway length", length) ||
        !CheckLong16(ctx, T("Width"), "the runway width", width) ||
        !CheckDouble(ctx, T("Heading"), 0, 359.9999, "the runway heading", heading) ||
        !CheckByte(ctx, T("StrobesN"), 0, 10, "the approach light strobes", strobesN) ||
        !CheckByte(ctx, T("StrobesF"), 0, 10, "the approach light strobes", strobesF))
        return OkResult::Refused;
    for (int i = 0; i < 6; ++i)
        if (!CheckLong16(ctx, T(kMarkers[i]), kMarkerNames[i % 3], markers[i]))
            return OkResult::Refused;
    if (!CheckLong16(ctx, T("IlsRangeN"), "the ILS range", rangeN) ||
        !CheckLong16(ctx, T("IlsRangeF"), "the ILS range", rangeF) ||
        !CheckDouble(ctx, T("IlsFreqN"), 108, 135.75, "the ILS frequency", freqN) ||
        !CheckDouble(ctx, T("IlsFreqF"), 108, 135.75, "the ILS frequency", freqF) ||
        !CheckLong16(ctx, T("ThrOffN"), "the runway threshold", thr) ||
        !CheckLong16(ctx, T("ExtN"), "the runway extension", ext))
        return OkResult::Refused;

    for (const char* t : kRunwayTicks)
        RunwayTick(r, t) = Tick(values, t);
    const int surfaceRow = values.Int("Surface");
    if (surfaceRow >= kSurfaceRowOffset && surfaceRow < static_cast<int>(SurfaceList().size()))
        r.Surface() = static_cast<std::uint8_t>(surfaceRow - kSurfaceRowOffset);
    const auto listValue = [this](const char* n, int count) {
        return static_cast<std::uint8_t>(std::clamp(values.Int(n), 0, count - 1));
    };
    r.VasiBarsN() = listValue("VasiBarsN", static_cast<int>(VasiList().size()));
    r.VasiBarsF() = listValue("VasiBarsF", static_cast<int>(VasiList().size()));
    r.AprLN() = listValue("AprLN", static_cast<int>(ApproachLightList().size()));
    r.AprLF() = listValue("AprLF", static_cast<int>(ApproachLightList().size()));
    r.StrobesN() = strobesN;
    r.StrobesF() = strobesF;
    r.RwyNumber() = listValue("RwyNumber", 37);
    r.RwyDesignator() = listValue("RwyDesignator", 4);
    r.ThrOffN() = thr;
    r.ExtN() = ext;
    r.IlsRangeN() = rangeN;
    r.IlsRangeF() = rangeF;
    r.Length() = length;
    r.RwyWidth() = width;
    r.MarkerOuterN() = markers[0];
    r.MarkerMiddleN() = markers[1];
    r.MarkerInnerN() = markers[2];
    r.MarkerOuterF() = markers[3];
    r.MarkerMiddleF() = markers[4];
    r.MarkerInnerF() = markers[5];
    r.IlsSlopeN() = slopeN;
    r.IlsSlopeF() = slopeF;
    r.IlsFreqN() = freqN;
    r.IlsFreqF() = freqF;
    r.IlsIdN() = T("IlsIdN");
    r.IlsNameN() = T("IlsNameN");
    r.IlsIdF() = T("IlsIdF");
    r.IlsNameF() = T("IlsNameF");
    r.Rotation = heading;
    const bool high = values.Int("LightIntensity") == 1;
    r.LightIntensityHigh = high ? -1 : 0;
    r.LightIntensityLow = high ? 0 : -1;
    return OkResult::Stored;
}

// ---- Taxiway signs ----

SignBuffer ParseSignCaption(const std::string& caption)
{
    SignBuffer buffer;
    const std::vector<SignCaptionPanel> panels = ParseCaption(caption);
    for (std::size_t i = 0; i < panels.size() && i < buffer.size(); ++i) {
        buffer[i].type = panels[i].type;
        buffer[i].items = panels[i].slot;
    }
    return buffer;
}

std::string BufferToString(const SignBuffer& buffer)
{
    std::string caption;
    for (const SignPanelBuffer& p : buffer) {
        if (p.type != "Direction" && p.type != "RwyInstruction" && p.type != "Location")
            continue;
        std::string joined;
        for (const std::string& item : p.items)
            joined += item;
        if (joined.empty())
            continue;
        caption += " " + p.type;
        for (const std::string& item : p.items)
            if (!item.empty())
                caption += "_" + item;
    }
    return caption;
}

const std::vector<std::string>& SignStyleList()
{
    static const std::vector<std::string> list{"Flat", "Flat - lighted"};
    return list;
}

std::string SignCellType(const SignPanelBuffer& panel, int item)
{
    if (panel.type == "RwyInstruction" && item != 1)
        return "RwyInstructionArrow";
    return panel.type;
}

std::vector<std::string> SignCells(const std::string& cellType)
{
    std::vector<std::string> cells;
    const std::vector<std::string> arrows{"ArrowLeft", "ArrowRight", "ArrowUp", "ArrowLeftUp", "ArrowRightUp"};
    if (cellType == "Direction" || cellType == "Location") {
        for (char c = 'A'; c <= 'Z'; ++c)
            cells.emplace_back(1, c);
        for (int i = 1; i <= 17; ++i)
            cells.push_back(std::to_string(i));
        if (cellType == "Direction")
            cells.insert(cells.end(), arrows.begin(), arrows.end());
    } else if (cellType == "RwyInstruction") {
        for (int i = 1; i <= 36; ++i)
            cells.push_back(std::to_string(i));
    } else if (cellType == "RwyInstructionArrow") {
        cells = arrows;
    }
    return cells;
}

SheetRect SignCellOnSheet(const std::string& cellType, int i)
{
    // In a drawing of 256 by 256 per quadrant: position, size and quadrant.
    int cx = 0, cy = 0, cw = 32, quadrant = 1;
    if (cellType == "RwyInstruction") {
        cw = 64;
        if (i < 32) {
            quadrant = 2;
            cx = (i % 4) * 64;
            cy = (i / 4) * 32;
        } else {
            cx = (i - 32) * 64;
            cy = 224;
        }
    } else if (cellType == "RwyInstructionArrow") {
        cx = 96 + 32 * i;
        cy = 192;
    } else {
        quadrant = cellType == "Location" ? 3 : 1;
        cx = (i % 8) * 32;
        cy = (i / 8) * 32;
    }
    return {cx / 2 + (quadrant == 2 ? 128 : 0), cy / 2 + (quadrant == 3 ? 128 : 0), cw / 2, 16};
}

void FormSign::Show_(const ObjectRecord& r, char sep)
{
    values = FormValues();
    values["Heading"] = ShowNumber(r.Rotation, sep);
    values.SetInt("Style", r.Style() == "Flat" ? 0 : 1);
    buffer = ParseSignCaption(r.Caption());
    // The whole caption as text too, for answers that give it in one piece.
    values["Caption"] = r.Caption();
    for (int i = 0; i < 5; ++i) {
        const std::string& t = buffer[i].type;
        values.SetInt("Type" + std::to_string(i + 1),
                      t == "Direction" ? 0 : t == "RwyInstruction" ? 1 : t == "Location" ? 2 : 3);
    }
}

void FormSign::SetPanelType(int panel, int option)
{
    if (panel < 0 || panel >= 5)
        return;
    static const char* const kTypes[4] = {"Direction", "RwyInstruction", "Location", ""};
    option = std::clamp(option, 0, 3);
    values.SetInt("Type" + std::to_string(panel + 1), option);
    buffer[panel].type = kTypes[option];
}

OkResult FormSign::Ok(const ValueContext& ctx, ObjectRecord& r) const
{
    double heading = 0;
    if (!CheckDouble(ctx, values.Text("Heading"), 0, 360, "the heading", heading))
        return OkResult::Refused;
    r.Rotation = heading;
    r.Style() = values.Int("Style") == 0 ? "Flat" : "FlatLighted";
    r.Caption() = BufferToString(buffer);
    return OkResult::Stored;
}

} // namespace fw
