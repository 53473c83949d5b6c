#include "editor/Selection.h"

#include <string>
#include <vector>

#include "editor/EditorCommon.h"

namespace fw {

namespace {

struct Hits {
    std::vector<int> shapes;
    std::vector<int> objects;
    bool empty() const { return shapes.empty() && objects.empty(); }
};

bool IsClick(double xMin, double xMax, double yMin, double yMax)
{
    return xMin == xMax && yMin == yMax;
}

} // namespace

bool TypeIsShown(const ShowFlagsRecord& f, int type)
{
    const std::uint8_t* flag = ShowFlagOf(const_cast<ShowFlagsRecord&>(f), type);
    return flag && *flag == 1;
}

std::int16_t SelectAt(Session& s, double xMin, double xMax, double yMin, double yMax, int mode)
{
    const bool click = IsClick(xMin, xMax, yMin, yMax);
    if (click) {
        const double w = 3.0 / s.view.zoom();
        xMin -= w;
        yMin -= w;
        xMax += w;
        yMax += w;
    }
    auto inside = [&](double x, double y) { return xMin <= x && x < xMax && yMin <= y && y < yMax; };

    Hits hits;
    const auto& st = s.stores;
    for (std::size_t i = 0; i < st.ShapeStore.size(); ++i) {
        if (i >= st.PointStore.size() || st.PointStore[i].empty())
            continue;
        const Point& p = st.PointStore[i][0];
        if (inside(p.X, p.Y) && TypeIsShown(s.showFlags, st.ShapeStore[i].gType))
            hits.shapes.push_back(static_cast<int>(i));
    }
    for (std::size_t i = 0; i < st.ObjectStore.size(); ++i) {
        const ObjectRecord& o = st.ObjectStore[i];
        if (inside(o.PosX, o.PosY) && TypeIsShown(s.showFlags, o.oType))
            hits.objects.push_back(static_cast<int>(i));
    }

    CSelection& sel = s.editor.selection;
    if (mode != 1) {
        if (hits.empty())
            return -1;
        for (int h : hits.shapes)
            for (auto e : sel.SelShapes())
                if (e == h)
                    return 1;
        for (int h : hits.objects)
            for (auto e : sel.SelObjects())
                if (e == h)
                    return 1;
        return 0;
    }

    if (hits.empty())
        return -1;
    auto addShape = [&](int i) {
        const auto& l = st.ShapeStore[i].gLimits;
        sel.addEntry(i, 0, l[0], l[1], l[2], l[3]);
    };
    auto addObject = [&](int i) {
        const auto& o = st.ObjectStore[i];
        sel.addEntry(i, 1, o.PosX, o.PosX, o.PosY, o.PosY);
    };
    if (!click) {
        sel.reset();
        for (int i : hits.shapes)
            addShape(i);
        for (int i : hits.objects)
            addObject(i);
        return 0;
    }
    const std::size_t total = hits.shapes.size() + hits.objects.size();
    if (total == 1) {
        sel.reset();
        if (!hits.shapes.empty()) {
            addShape(hits.shapes[0]);
            return static_cast<std::int16_t>(hits.shapes[0]);
        }
        addObject(hits.objects[0]);
        return static_cast<std::int16_t>(hits.objects[0]);
    }
    std::vector<std::string> names;
    for (int i : hits.shapes)
        names.push_back(st.ShapeStore[i].gComment + " - " + std::string(TypeName(st.ShapeStore[i].gType)));
    for (int i : hits.objects)
        names.push_back(std::string(TypeName(st.ObjectStore[i].oType)));
    int pick = UiOf(s).FormSelection(names);
    if (pick < 0 || pick >= static_cast<int>(total))
        pick = static_cast<int>(total) - 1; // the entry the list starts on
    sel.reset();
    if (pick < static_cast<int>(hits.shapes.size()))
        addShape(hits.shapes[pick]);
    else
        addObject(hits.objects[pick - hits.shapes.size()]);
    return 0;
}

std::int16_t SelectPointsAt(Session& s, double xMin, double xMax, double yMin, double yMax, int mode)
{
    CSelection& sel = s.editor.selection;
    if (sel.sizeShape() != 0)
        return 0;
    const int shape = sel.firstShape();
    if (shape >= static_cast<int>(s.stores.PointStore.size()))
        return 0;
    if (IsClick(xMin, xMax, yMin, yMax)) {
        const double w = 3.0 / s.view.zoom();
        xMin -= w;
        yMin -= w;
        xMax += w;
        yMax += w;
    }
    std::vector<int> hits;
    const PointList& pts = s.stores.PointStore[shape];
    for (std::size_t i = 0; i < pts.size(); ++i)
        if (xMin < pts[i].X && pts[i].X < xMax && yMin < pts[i].Y && pts[i].Y < yMax)
            hits.push_back(static_cast<int>(i));
    if (mode == 1) {
        if (!hits.empty()) {
            sel.resetPt();
            for (int h : hits)
                sel.addPt(static_cast<std::uint16_t>(h));
        }
        return 0;
    }
    if (hits.empty())
        return -1;
    for (auto p : sel.SelPoints())
        if (p == hits[0])
            return 1;
    return 0;
}

int TypeInSelection(const Session& s, int type)
{
    const CSelection& sel = s.editor.selection;
    if (type >= 1 && type <= 7) {
        for (auto i : sel.SelShapes())
            if (i < s.stores.ShapeStore.size() && s.stores.ShapeStore[i].gType == type)
                return 1;
        return 0;
    }
    if ((type >= 8 && type <= 13) || type == 15) {
        for (auto i : sel.SelObjects())
            if (i < s.stores.ObjectStore.size() && s.stores.ObjectStore[i].oType == type)
                return 1;
    }
    return 0;
}

void CopySelectionState(const CSelection& from, CSelection& to)
{
    to.reset();
    to.resetPt();
    const Limits l = from.getLimits();
    for (auto i : from.SelShapes())
        to.addEntry(i, 0, l[0], l[1], l[2], l[3]);
    for (auto i : from.SelObjects())
        to.addEntry(i, 1, l[0], l[1], l[2], l[3]);
    to.setState(from.state());
    if (from.state() == 2) {
        for (auto p : from.SelPoints())
            to.addPt(p);
    } else {
        to.addPt(0);
    }
}

} // namespace fw
