#include "editor/Arrange.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "editor/Commands.h"
#include "editor/EditorCommon.h"
#include "editor/Transforms.h"

namespace fw {

namespace {

// The selected shapes, in the order they were picked and each once, go to the front (drawn
// last) or to the back as one block; the others keep their order. Every shape's gKeep is left
// saying whether it moved. Linear: a flag per shape stands in for searching the selection.
void Reorder(Session& s, bool selectedFirst)
{
    Stores& st = s.stores;
    CSelection& sel = s.editor.selection;
    const int count = st.ShapeCount();
    std::vector<std::uint8_t> picked(st.ShapeStore.size(), 0);
    std::vector<std::uint16_t> selected;
    for (auto i : sel.SelShapes())
        if (i < st.ShapeStore.size() && picked[i] == 0) {
            picked[i] = 1;
            selected.push_back(i);
        }
    if (count == 0 || selected.empty() || static_cast<int>(selected.size()) >= count)
        return;
    for (std::size_t i = 0; i < st.ShapeStore.size(); ++i)
        st.ShapeStore[i].gKeep = picked[i];

    // Each shape is taken once, so its record and points can be moved rather than copied.
    std::vector<ShapeRecord> shapes;
    std::vector<PointList> points;
    shapes.reserve(static_cast<std::size_t>(count));
    points.reserve(static_cast<std::size_t>(count));
    auto take = [&](std::size_t i) {
        shapes.push_back(std::move(st.ShapeStore[i]));
        points.push_back(std::move(st.PointStore[i]));
    };
    auto takeOthers = [&] {
        for (int i = 0; i < count; ++i)
            if (picked[static_cast<std::size_t>(i)] == 0)
                take(static_cast<std::size_t>(i));
    };
    auto takeSelected = [&] {
        for (auto i : selected)
            take(i);
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
