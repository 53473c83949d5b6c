#include "editor/Transforms.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/Helpers.h"
#include "core/Numbers.h"
#include "editor/EditorCommon.h"
#include "editor/Undo.h"
#include "editor/WorkEdit.h"

namespace fw {

namespace {

constexpr double kPi = 3.14159265358979;

struct Centre {
    std::int32_t cx;
    std::int32_t cy;
};

Centre BoxCentre(const Limits& l)
{
    return {Round32((static_cast<double>(l[1]) - l[0]) / 2.0 + l[0]),
            Round32((static_cast<double>(l[3]) - l[2]) / 2.0 + l[2])};
}

template <class F>
void ForEachPosition(WorkingCopy& w, F f)
{
    for (std::size_t i = 0; i < w.WorkPoints.size(); ++i)
        for (std::size_t k = 0; k < w.WorkPoints[i].size(); ++k)
            w.WorkPoints[i][k] = f(w.WorkBasePoints[i][k]);
    for (std::size_t i = 0; i < w.WorkObjects.size(); ++i) {
        const Point p = f(Point{w.WorkBaseObjects[i].PosX, w.WorkBaseObjects[i].PosY});
        w.WorkObjects[i].PosX = p.X;
        w.WorkObjects[i].PosY = p.Y;
    }
}

void UpdateWorkLimits(WorkingCopy& w)
{
    w.WorkLimits = SelectionLimits(w.WorkPoints, w.WorkObjects, w.WorkShapeLast, w.WorkObjectLast);
}

// Least factor: the box keeps at least 2 world units, a drag past the far edge mirrors it.
double KeepLeastSize(double factor, double size)
{
    const double v = size * factor;
    if (v >= 0 && v < 2.0)
        return std::abs(2.0 / size);
    if (v < 0 && !(v < -2.0))
        return -std::abs(2.0 / size);
    return factor;
}

bool HasSelection(const Session& s)
{
    const CSelection& sel = s.editor.selection;
    return sel.sizeShape() + sel.sizeObject() + 2 > 0;
}

// UndoPrepare and the working copy loaded with the selection; false when nothing is selected.
bool PrepareWork(Session& s)
{
    if (!HasSelection(s))
        return false;
    UndoPrepare(s);
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    CopySelection(s, points, shapes, objects);
    const CSelection& sel = s.editor.selection;
    const Limits limits = sel.getLimits();
    WorkClear(s.editor.work);
    WorkBegin(s.editor.work, points, shapes, objects, sel.sizeShape(), sel.sizeObject(), limits);
    return true;
}

// UndoPrepare, load the working copy, transform, store the result, mark and paint.
template <class F>
void RunImmediate(Session& s, F transform)
{
    if (!PrepareWork(s))
        return;
    transform(s.editor.work);
    EndWorkingCopy(s);
    MarkChanged(s, true);
    RebuildGL(s);
    PaintFrame(s);
}

void BeginFreeEdit(Session& s, std::uint8_t state)
{
    if (!PrepareWork(s))
        return;
    s.editor.EditState = state;
    PaintFrame(s);
}

} // namespace

void WorkFlip(WorkingCopy& w, std::int32_t fx, std::int32_t fy)
{
    const Centre c = BoxCentre(w.WorkStartLimits);
    ForEachPosition(w, [&](const Point& p) {
        return Point{Add32((static_cast<std::int64_t>(p.X) - c.cx) * fx, c.cx),
                     Add32((static_cast<std::int64_t>(p.Y) - c.cy) * fy, c.cy)};
    });
    UpdateWorkLimits(w);
}

void WorkRescale(WorkingCopy& w, int handle, std::int32_t dx, std::int32_t dy, int fixed, double sx, double sy)
{
    const Limits& l = w.WorkStartLimits;
    const double width = static_cast<double>(l[1]) - l[0];
    const double height = static_cast<double>(l[3]) - l[2];
    if (width == 0 || height == 0)
        return;
    double ax = 0, ay = 0;
    if (fixed == 1) {
        const Centre c = BoxCentre(l);
        ax = c.cx;
        ay = c.cy;
    } else {
        double ddx = dx, ddy = dy;
        switch (handle) {
        case 1: case 3: case 5: ax = l[1]; ay = l[3]; ddx = -ddx; ddy = -ddy; break;
        case 2: case 6: ax = l[0]; ay = l[3]; ddy = -ddy; break;
        case 4: case 8: ax = l[0]; ay = l[2]; break;
        case 7: ax = l[1]; ay = l[2]; ddx = -ddx; break;
        default: return;
        }
        sx = ddx / width + 1.0;
        sy = ddy / height + 1.0;
    }
    sx = KeepLeastSize(sx, width);
    sy = KeepLeastSize(sy, height);
    ForEachPosition(w, [&](const Point& p) {
        return Point{Round32((p.X - ax) * sx + ax), Round32((p.Y - ay) * sy + ay)};
    });
    UpdateWorkLimits(w);
}

double WorkRotate(WorkingCopy& w, std::int32_t dx, std::int32_t span, int fixed, double angle)
{
    const Limits& l = w.WorkStartLimits;
    if (l[1] == l[0] || l[3] == l[2])
        return angle;
    const Centre c = BoxCentre(l);
    if (fixed != 1)
        angle = span != 0 ? static_cast<double>(dx) / span * 360.0 : 0.0;
    angle = std::clamp(angle, -359.0, 359.0);
    const double rad = angle * kPi / 180.0;
    const double sn = std::sin(rad);
    const double cs = std::cos(rad);
    ForEachPosition(w, [&](const Point& p) {
        const double x = static_cast<double>(p.X) - c.cx;
        const double y = static_cast<double>(p.Y) - c.cy;
        return Point{Round32(x * cs - y * sn + c.cx), Round32(x * sn + y * cs + c.cy)};
    });
    for (std::size_t i = 0; i < w.WorkObjects.size(); ++i) {
        const double base = w.WorkBaseObjects[i].Rotation;
        if (base < 0) {
            w.WorkObjects[i].Rotation = base;
            continue;
        }
        double r = base + angle;
        if (r >= 360)
            r -= 360.0;
        if (r < 0)
            r += 360.0;
        w.WorkObjects[i].Rotation = r;
    }
    UpdateWorkLimits(w);
    return angle;
}

int ShowTip(Session& s, const std::string& first, const std::string& second, int flag)
{
    if (flag == 0)
        return 0;
    return UiOf(s).ShowTip(first + "\n\n" + second, flag);
}

bool FormRotate(Session& s)
{
    TextForm form;
    form.name = "FormRotate";
    form.title = "Rotate selection";
    form.labels = {"Rotation:"};
    form.texts = {LocalReal(s.editor.LastRotation, s.decimalSeparator)};
    // A typed "," or "." becomes the system's decimal sign; nothing else is filtered.
    const std::string sign(2, s.decimalSeparator);
    form.keyFilter = [sign](int key) { return KeyMap(key, ",.", sign); };
    const ValueContext ctx = s.values();
    double value = 0;
    form.onOk = [&](TextForm& f) {
        return !f.texts.empty() && CheckDouble(ctx, f.texts[0], -360.0, 360.0, "the rotation", value);
    };
    if (!UiOf(s).RunTextForm(form))
        return false;
    s.editor.LastRotation = RoundHalfEven(value * 1000.0) / 1000.0;
    return true;
}

bool FormRescale(Session& s)
{
    TextForm form;
    form.name = "FormRescale";
    form.title = "Scale selection";
    form.labels = {"Horizontal:", "Vertical:"};
    form.texts = {LocalReal(s.config.scaleX * 100.0, s.decimalSeparator),
                  LocalReal(s.config.scaleY * 100.0, s.decimalSeparator)};
    form.checkCaption = "Maintain ratio";
    form.checked = s.config.keepAspect != 0;
    form.disabledWhileChecked = 1;
    const ValueContext ctx = s.values();
    std::int16_t h = 0, v = 0;
    form.onOk = [&](TextForm& f) {
        return f.texts.size() >= 2 && CheckInteger(ctx, f.texts[0], 0, 400, "the horizontal scaling", h) &&
               CheckInteger(ctx, f.texts[1], 0, 400, "the vertical scaling", v);
    };
    if (!UiOf(s).RunTextForm(form))
        return false;
    s.config.scaleX = h / 100.0;
    s.config.scaleY = v / 100.0;
    s.config.keepAspect = form.checked ? 1 : 0;
    return true;
}

void MnuEflipx(Session& s)
{
    RunImmediate(s, [](WorkingCopy& w) { WorkFlip(w, 1, -1); });
}

void MnuEflipy(Session& s)
{
    RunImmediate(s, [](WorkingCopy& w) { WorkFlip(w, -1, 1); });
}

void MnuEdrot(Session& s)
{
    if (!HasSelection(s) || !FormRotate(s) || s.editor.LastRotation == 0)
        return;
    const double angle = s.editor.LastRotation;
    RunImmediate(s, [&](WorkingCopy& w) { WorkRotate(w, 0, 0, 1, angle); });
}

void MnuEdscale(Session& s)
{
    if (!HasSelection(s) || !FormRescale(s))
        return;
    const double sx = s.config.scaleX;
    const double sy = s.config.keepAspect ? sx : s.config.scaleY;
    if (s.config.scaleX == 1.0 && s.config.scaleY == 1.0)
        return;
    RunImmediate(s, [&](WorkingCopy& w) { WorkRescale(w, 0, 0, 0, 1, sx, sy); });
}

void MnuErescale(Session& s) { BeginFreeEdit(s, 10); }
void MnuErotate(Session& s) { BeginFreeEdit(s, 12); }

void FreeEditTip(Session& s, int state)
{
    if (state == 11) {
        s.config.MessageScale = static_cast<std::uint8_t>(
            ShowTip(s, "Rescaling a selection directly affects its coordinates...",
                    "The selection may look different when scaled back. Only 'Undo' will restore the "
                    "selection accurately.",
                    s.config.MessageScale));
    } else {
        s.config.MessageRotate = static_cast<std::uint8_t>(
            ShowTip(s, "Rotating a selection directly affects its coordinates...",
                    "The selection may look different when rotated back. Only 'Undo' will restore the "
                    "selection accurately.",
                    s.config.MessageRotate));
    }
}

void MnuSconvertshapeto(Session& s)
{
    CSelection& sel = s.editor.selection;
    if (sel.sizeShape() < 0)
        return;
    std::vector<ShapeRecord> copies;
    for (int t : {kPoly, kWideLine, kDotLine, kTreeLine, kForest})
        copies.push_back(s.config.defaultShapes[DefaultShapeIndex(t)]);
    const int choice = UiOf(s).FormConvertShape(copies);
    int index = -1;
    switch (choice) {
    case kPoly: index = 0; break;
    case kWideLine: index = 1; break;
    case kDotLine: index = 2; break;
    case kTreeLine: index = 3; break;
    case kForest: index = 4; break;
    default: return;
    }
    if (index >= static_cast<int>(copies.size()))
        return;
    const ShapeRecord chosen = copies[index];
    MarkChanged(s, false);
    if (sel.sizeShape() > 0)
        s.config.MessageConvert = static_cast<std::uint8_t>(
            ShowTip(s, "This feature will convert the whole selection...",
                    "All settings of the selected shapes will be set to the same.", s.config.MessageConvert));
    for (auto i : sel.SelShapes()) {
        if (i >= s.stores.ShapeStore.size())
            continue;
        ShapeRecord& rec = s.stores.ShapeStore[i];
        rec = chosen;
        rec.gLimits = ComputeLimits(s.stores.PointStore[i]);
    }
    RebuildGL(s);
    PaintFrame(s);
}

} // namespace fw
