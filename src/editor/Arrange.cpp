#include "editor/Arrange.h"

#include <algorithm>
#include <vector>

#include "editor/Commands.h"
#include "editor/EditorCommon.h"
#include "editor/Transforms.h"

namespace fw {

namespace {

void Reorder(Session& s, bool selectedFirst)
{
    Stores& st = s.stores;
    CSelection& sel = s.editor.selection;
    const int count = st.ShapeCount();
    std::vector<std::uint16_t> selected;
    for (auto i : sel.SelShapes())
        if (i < st.ShapeStore.size() && std::find(selected.begin(), selected.end(), i) == selected.end())
            selected.push_back(i);
    if (count == 0 || selected.empty() || static_cast<int>(selected.size()) >= count)
        return;
    for (auto& r : st.ShapeStore)
        r.gKeep = 0;
    for (auto i : selected)
        st.ShapeStore[i].gKeep = 1;

    std::vector<ShapeRecord> shapes;
    std::vector<PointList> points;
    auto takeOthers = [&] {
        for (int i = 0; i < count; ++i)
            if (st.ShapeStore[i].gKeep == 0) {
                shapes.push_back(st.ShapeStore[i]);
                points.push_back(st.PointStore[i]);
            }
    };
    auto takeSelected = [&] {
        for (auto i : selected) {
            shapes.push_back(st.ShapeStore[i]);
            points.push_back(st.PointStore[i]);
        }
    };
    if (selectedFirst) {
        takeSelected();
        takeOthers();
    } else {
        takeOthers();
        takeSelected();
    }
    const std::vector<std::uint16_t> objects = sel.SelObjects();
    st.ShapeStore = std::move(shapes);
    st.PointStore = std::move(points);

    sel.reset();
    const int first = selectedFirst ? 0 : count - static_cast<int>(selected.size());
    for (std::size_t k = 0; k < selected.size(); ++k) {
        const int index = first + static_cast<int>(k);
        const auto& l = st.ShapeStore[index].gLimits;
        sel.addEntry(index, 0, l[0], l[1], l[2], l[3]);
    }
    for (auto i : objects) {
        if (i >= st.ObjectStore.size())
            continue;
        const ObjectRecord& o = st.ObjectStore[i];
        sel.addEntry(i, 1, o.PosX, o.PosX, o.PosY, o.PosY);
    }
}

} // namespace

void BringToFront(Session& s) { Reorder(s, false); }
void SendToBack(Session& s) { Reorder(s, true); }

void ToolArrangeMode(Session& s)
{
    if (s.editor.EditState != 0)
        return;
    s.config.MessageLayer = static_cast<std::uint8_t>(
        ShowTip(s, "'Arrange Mode' lets you arrange the order of appearance of polygons...",
                "Note that layered polygons cannot be edited and thus will be invisible.", s.config.MessageLayer));
    Menu_ToolBarLayer(s);
    Menu_DisableLayer(s);
    s.view.setMMode(1);
    const CSelection& sel = s.editor.selection;
    if (sel.sizeShape() + sel.sizeObject() + 2 > 0)
        s.editor.selection.setState(1);
    PaintFrame(s);
}

void ToolEditMode(Session& s)
{
    Menu_EnableToolBar(s);
    Menu_Enable(s);
    s.view.setMMode(0);
    PaintFrame(s);
}

} // namespace fw
