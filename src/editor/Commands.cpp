#include "editor/Commands.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "core/Helpers.h"
#include "core/Numbers.h"
#include "editor/Arrange.h"
#include "editor/EditorCommon.h"
#include "editor/ImageFrame.h"
#include "editor/Selection.h"
#include "editor/Transforms.h"
#include "editor/Undo.h"
#include "editor/WorkEdit.h"

namespace fw {

const char* const kToolKeys[kToolButtons] = {
    "poly",     "texpoly", "wideline", "dotline", "treeline", "forest",  "api",
    "sign",     "runway",  "vor",      "ndb",     "location", "flatten", "exclude",
    "zoomIn",   "zoomOut", "mEdit",    "mLayer",  "mPreview"};

const char* const kTopMenuNames[kTopMenus] = {"MnuFile", "MnuEdit", "MnuSelection", "MnuBackground",
                                              "MnuHelp"};

namespace {

struct ZoomLevel {
    const char* command;
    double zoom;
};
constexpr ZoomLevel kZoomLevels[8] = {{"MnuC2625", 0.0625}, {"MnuC2125", 0.125}, {"MnuC225", 0.25},
                                      {"MnuC250", 0.5},     {"MnuC2100", 1.0},   {"MnuC2200", 2.0},
                                      {"MnuC2300", 3.0},    {"MnuC2400", 4.0}};

struct Toggle {
    const char* command;
    std::uint8_t ShowFlagsRecord::*flag;
    int types[3];
};
constexpr Toggle kToggles[] = {
    {"MnuBshowpoly", &ShowFlagsRecord::ShowPoly, {kPoly, 0, 0}},
    {"MnuBshowtexpoly", &ShowFlagsRecord::ShowTexPoly, {kTexPoly, 0, 0}},
    {"MnuBshowline", &ShowFlagsRecord::ShowWideLine, {kWideLine, 0, 0}},
    {"MnuBshowdotline", &ShowFlagsRecord::ShowDotLine, {kDotLine, 0, 0}},
    {"MnuBshowtreeline", &ShowFlagsRecord::ShowTreeLine, {kTreeLine, 0, 0}},
    {"MnuBshowforest", &ShowFlagsRecord::ShowForest, {kForest, 0, 0}},
    {"MnuBshow3d", &ShowFlagsRecord::ShowAPI, {kApi, 0, 0}},
    {"MnuBshowsign", &ShowFlagsRecord::ShowSign, {kSign, 0, 0}},
    {"MnuBshowrunway", &ShowFlagsRecord::ShowRunway, {kRunway, 0, 0}},
    {"MnuBshownavigation", &ShowFlagsRecord::ShowNav, {kVor, kNdb, 0}},
    {"MnuBshowexclude", &ShowFlagsRecord::ShowExclude, {kFlatten, kInit, kExclude}},
};

void SetZoom(Session& s, double zoom)
{
    s.view.setZoom(zoom);
    RebuildGL(s);
    PaintFrame(s);
}

void SetSelectionState(Session& s, std::uint8_t state)
{
    s.editor.selection.setState(state);
    RebuildGL(s);
    PaintFrame(s);
}

std::string Round3Text(double v, char sep) { return LocalReal(RoundHalfEven(v * 1000.0) / 1000.0, sep); }

} // namespace

void Menu_DisableToolBar(Session& s) { s.editor.toolEnabled.fill(false); }
void Menu_EnableToolBar(Session& s) { s.editor.toolEnabled.fill(true); }

void Menu_ToolBarLayer(Session& s)
{
    // The drawing and placing tools off; zoom and the three modes on.
    for (int i = 0; i < kToolButtons; ++i)
        s.editor.toolEnabled[i] = i >= 14;
}

void Menu_Disable(Session& s) { s.editor.topMenuEnabled.fill(false); }

void Menu_DisableLayer(Session& s)
{
    s.editor.topMenuEnabled.fill(false);
    s.editor.topMenuEnabled[2] = true;
}

void Menu_Enable(Session& s) { s.editor.topMenuEnabled.fill(true); }

std::string TopMenuOf(const std::string& c)
{
    if (c.rfind("MnuF", 0) == 0)
        return "MnuFile";
    if (c.rfind("MnuE", 0) == 0)
        return "MnuEdit";
    if (c.rfind("MnuS", 0) == 0)
        return "MnuSelection";
    if (c.rfind("MnuB", 0) == 0)
        return "MnuBackground";
    if (c.rfind("MnuH", 0) == 0)
        return "MnuHelp";
    return {};
}

void OpenTopMenu(Session& s, const std::string& menu)
{
    if (menu != "MnuEdit" && menu != "MnuSelection" && menu != "MnuBackground" && menu != "MnuHelp")
        return;
    WorkClear(s.editor.work);
    StopImageFrame(s);
    s.editor.EditState = 0;
    SetCanvasPointer(s, 0);
    PaintFrame(s);
}

void ZoomStep(Session& s, bool in)
{
    for (int i = 0; i < 8; ++i) {
        if (kZoomLevels[i].zoom != s.view.zoom())
            continue;
        const int next = in ? i + 1 : i - 1;
        if (next >= 0 && next < 8)
            SetZoom(s, kZoomLevels[next].zoom);
        return;
    }
}

void WheelZoom(Session& s, int steps, double x, double y)
{
    if (steps == 0 || s.editor.EditState != 0)
        return;
    COffset& view = s.view;
    int from = -1;
    for (int i = 0; i < 8; ++i)
        if (kZoomLevels[i].zoom == view.zoom())
            from = i;
    if (from < 0)
        return;
    const int to = std::clamp(from + std::clamp(steps, -8, 8), 0, 7);
    if (to == from)
        return;
    // The world point under the pixel is (pixel - centre) / zoom - offset; keep it at the new zoom.
    const double change = 1.0 / kZoomLevels[to].zoom - 1.0 / kZoomLevels[from].zoom;
    const auto held = [](double wanted, std::int32_t now) {
        const double lo = std::min(-10000, now);
        const double hi = std::max(10000, now);
        return Round32(std::clamp(wanted, lo, hi));
    };
    view.setOffX(held(view.offX() + (Round32(x) - static_cast<double>(view.centX())) * change, view.offX()));
    view.setOffY(held(view.offY() + (Round32(y) - static_cast<double>(view.centY())) * change, view.offY()));
    SetZoom(s, kZoomLevels[to].zoom);
}

void MnuSshapeproperties(Session& s)
{
    const CSelection& sel = s.editor.selection;
    if (sel.SelShapeCount() == 1 && sel.SelObjectCount() == 0) {
        const int i = sel.firstShape();
        if (i >= s.stores.ShapeCount() || s.stores.ShapeStore[i].gType == kFlatten)
            return;
        ShapeRecord copy = s.stores.ShapeStore[i];
        if (UiOf(s).ShapeProperties(copy, &s.stores.PointStore[i])) {
            s.stores.ShapeStore[i] = copy;
            MarkChanged(s, false);
        }
        RebuildGL(s, true);
        PaintFrame(s);
    } else if (sel.SelObjectCount() == 1 && sel.SelShapeCount() == 0) {
        const int i = sel.firstObject();
        if (i >= s.stores.ObjectCount())
            return;
        ObjectRecord copy = s.stores.ObjectStore[i];
        if (UiOf(s).ObjectProperties(copy)) {
            s.stores.ObjectStore[i] = copy;
            MarkChanged(s, false);
        }
        RebuildGL(s);
        PaintFrame(s);
    }
}

void MnuFsettings(Session& s)
{
    ProjectRecord copy = s.project;
    if (s.ui && s.ui->ProjectSettings(copy, false)) {
        s.project = std::move(copy);
        MarkChanged(s, false);
    }
}

bool RunCommand(Session& s, const std::string& name)
{
    for (const auto& z : kZoomLevels)
        if (name == z.command) {
            SetZoom(s, z.zoom);
            return true;
        }
    for (const auto& t : kToggles)
        if (name == t.command) {
            std::uint8_t& f = s.showFlags.*(t.flag);
            f = f == 1 ? 0 : 1;
            RebuildGL(s);
            PaintFrame(s);
            return true;
        }
    if (name == "MnuFsettings")
        MnuFsettings(s);
    else if (name == "MnuEundo")
        Undo(s);
    else if (name == "MnuEcopy")
        MnuEcopy(s);
    else if (name == "MnuEpaste")
        MnuEpaste(s);
    else if (name == "MnuEdelete")
        MnuEdelete(s);
    else if (name == "MnuEflipx")
        MnuEflipx(s);
    else if (name == "MnuEflipy")
        MnuEflipy(s);
    else if (name == "MnuErescale")
        MnuErescale(s);
    else if (name == "MnuErotate")
        MnuErotate(s);
    else if (name == "MnuEdscale")
        MnuEdscale(s);
    else if (name == "MnuEdrot")
        MnuEdrot(s);
    else if (name == "MnuSselectshape")
        SetSelectionState(s, 1);
    else if (name == "MnuSeditpoints")
        SetSelectionState(s, 2);
    else if (name == "MnuSdragshape")
        SetSelectionState(s, 3);
    else if (name == "MnuSshapeproperties")
        MnuSshapeproperties(s);
    else if (name == "MnuSconvertshapeto")
        MnuSconvertshapeto(s);
    else if (name == "MnuSback" || name == "MnuC3") {
        SendToBack(s);
        RebuildGL(s);
        PaintFrame(s);
    } else if (name == "MnuSfront" || name == "MnuC3bringtofront") {
        BringToFront(s);
        RebuildGL(s);
        PaintFrame(s);
    } else if (name == "MnuBshowall") {
        auto& f = s.showFlags;
        f.ShowPoly = f.ShowTexPoly = f.ShowWideLine = f.ShowDotLine = f.ShowTreeLine = 1;
        f.ShowAPI = f.ShowRunway = f.ShowNav = f.ShowExclude = 1;
        RebuildGL(s);
        PaintFrame(s);
    } else if (name == "MnuBedit") {
        MnuBedit(s);
    } else if (name == "MnuBshowbackground") {
        s.showFlags.ShowBackPicture = s.showFlags.ShowBackPicture == 1 ? 0 : 1;
        PaintFrame(s);
    } else if (name == "MnuBshowgrid") {
        s.showFlags.ShowGrid = s.showFlags.ShowGrid == 1 ? 0 : 1;
        RebuildGL(s);
        PaintFrame(s);
    } else if (name == "MnuC2centerHere") {
        s.view.setOffX(Add32(0, -static_cast<std::int64_t>(s.editor.memory.ContextPoint.X)));
        s.view.setOffY(Add32(0, -static_cast<std::int64_t>(s.editor.memory.ContextPoint.Y)));
        PaintFrame(s);
    } else if (name == "MnuHhelp") {
        const std::string help = s.programFolder + "Fieldwright.htm";
        if (!FileExists(help))
            UiOf(s).Message("Unable to find 'Fieldwright.htm'!", MessageStyle::Exclamation);
        else if (!UiOf(s).OpenExternal(help))
            UiOf(s).Message("No browser could be started to show 'Fieldwright.htm'!",
                            MessageStyle::Exclamation);
    } else if (name == "MnuHhomepage") {
        UiOf(s).OpenExternal(s.homePage);
    } else {
        return false;
    }
    return true;
}

MenuState ComputeMenuState(const Session& s)
{
    MenuState m;
    const EditorState& e = s.editor;
    const CSelection& sel = e.selection;
    for (int i = 0; i < kTopMenus; ++i)
        m.topMenus[kTopMenuNames[i]] = e.topMenuEnabled[i];
    for (int i = 0; i < kToolButtons; ++i)
        m.toolButtons[kToolKeys[i]] = e.toolEnabled[i];
    m.panel4 = e.statusLatitude;
    m.panel5 = e.statusLongitude;

    // 1 to 3: the rotation, the zoom and its check marks.
    if (e.EditState == 13)
        m.panel3 = "Rot: " + Round3Text(e.memory.RotateAngle, s.decimalSeparator) + "\xB0";
    m.panel6 = LocalReal(s.view.zoom() * 100.0, s.decimalSeparator) + " %";
    for (const auto& z : kZoomLevels)
        m.items[z.command].checked = z.zoom == s.view.zoom();

    const int shapes = sel.SelShapeCount();
    const int objects = sel.SelObjectCount();
    const int n = shapes + objects;
    auto set = [&](const char* item, bool enabled) { m.items[item].enabled = enabled; };
    auto check = [&](const char* item, bool checked) { m.items[item].checked = checked; };

    if (s.view.mMode() == 1) {
        for (const char* item : {"MnuSselectshape", "MnuSdragshape", "MnuSeditpoints", "MnuSshapeproperties",
                                 "MnuSconvertshapeto"})
            set(item, false);
        set("MnuSback", n >= 1);
        set("MnuSfront", n >= 1);
        return m;
    }

    const int recent = s.recent.nEntries() + 1;
    const char* recentItems[4] = {"MnuFrecent1", "MnuFrecent2", "MnuFrecent3", "MnuFrecent4"};
    for (int i = 0; i < 4; ++i)
        set(recentItems[i], recent >= i + 1);
    set("MnuFsaveselection", n >= 1);
    set("MnuFimportshape", s.stores.ShapeCount() <= kMaxShapes);
    const bool anything = s.stores.ShapeCount() + s.stores.ObjectCount() != 0;
    set("MnuFexport", anything);
    set("MnuFbgl", anything);
    set("MnuEcopy", n >= 1);
    set("MnuEdelete", n >= 1);
    const auto& box = sel.SelLimits(); // min X, min Y, max X, max Y
    const bool hasSize = box[0] != box[2] || box[1] != box[3];
    for (const char* item : {"MnuEflipx", "MnuEflipy", "MnuErescale", "MnuErotate", "MnuEdrot", "MnuEdscale"})
        set(item, n >= 1 && hasSize);
    set("MnuEpaste", s.canPaste == 1);
    set("MnuEundo", s.canUndo == 1);
    for (const char* item : {"MnuSselectshape", "MnuSdragshape", "MnuSback", "MnuSfront"})
        set(item, n >= 1);
    set("MnuSeditpoints", shapes == 1 && objects == 0);
    bool properties = n == 1;
    if (properties && shapes == 1) {
        const int i = sel.firstShape();
        properties = i < s.stores.ShapeCount() && s.stores.ShapeStore[i].gType != kFlatten;
    }
    set("MnuSshapeproperties", properties);
    set("MnuSconvertshapeto", shapes >= 1);
    const bool image = s.bitmap.loaded;
    set("MnuBremove", image);
    set("MnuBedit", image);
    set("MnuBshowbackground", image);
    for (const auto& t : kToggles) {
        bool locked = false;
        for (int type : t.types)
            if (type != 0 && TypeInSelection(s, type))
                locked = true;
        set(t.command, !locked);
        check(t.command, s.showFlags.*(t.flag) == 1);
    }

    check("MnuSselectshape", sel.state() == 1);
    check("MnuSeditpoints", sel.state() == 2);
    check("MnuSdragshape", sel.state() == 3);
    check("MnuBshowbackground", image && s.showFlags.ShowBackPicture == 1);
    check("MnuBedit", s.bitmap.ImageFrameActive == 1);
    check("MnuBshowgrid", s.showFlags.ShowGrid == 1);
    return m;
}

namespace {

constexpr double kPiStatus = 3.14159265358979;

// Whole degrees, a blank, decimal minutes with 5 decimals, "'", and the hemisphere letter.
std::string DegreesText(double v, char positive, char negative, char sep)
{
    const bool neg = v < 0;
    const double a = std::abs(v);
    double deg = std::floor(a);
    double minutes = RoundHalfEven((a - deg) * 60.0 * 100000.0) / 100000.0;
    if (minutes >= 60.0) {
        minutes -= 60.0;
        deg += 1;
    }
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.0f %.5f'", deg, minutes);
    std::string text = buf;
    for (auto& c : text)
        if (c == '.')
            c = sep;
    text += neg ? negative : positive;
    return text;
}

double DegreesPerMetre(double radius)
{
    const double a = 1 / radius;
    return std::atan(a / std::sqrt(1 - a * a)) * 180 / kPiStatus;
}

} // namespace

void StatusPosition(const Session& s, const Point& p, std::string& latitude, std::string& longitude)
{
    const double lat0 = s.project.LatitudeDegree;
    const double degLat = DegreesPerMetre(6370000.0);
    double r = std::sin(std::abs(std::abs(lat0) - 90.0) * kPiStatus / 180.0) * 6370000.0;
    if (r <= 0)
        r = 10.0;
    const double degLon = DegreesPerMetre(r);
    const double lon = RoundHalfEven((p.X / 2.0 * degLon + s.project.LongitudeDegree) * 1e6) / 1e6;
    const double lat = RoundHalfEven((-(p.Y / 2.0) * degLat + lat0) * 1e6) / 1e6;
    latitude = DegreesText(lat, 'N', 'S', s.decimalSeparator);
    longitude = DegreesText(lon, 'E', 'W', s.decimalSeparator);
}

} // namespace fw
