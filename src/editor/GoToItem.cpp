#include "editor/GoToItem.h"

#include "editor/EditorCommon.h"

namespace fw {

bool GoToItem(Session& s, bool isShape, int index)
{
    const Stores& st = s.stores;
    const std::size_t count = isShape ? st.ShapeStore.size() : st.ObjectStore.size();
    if (s.editor.EditState != 0 || index < 0 || static_cast<std::size_t>(index) >= count)
        return false;
    CSelection& sel = s.editor.selection;
    sel.reset();
    std::int64_t x = 0;
    std::int64_t y = 0;
    int type = 0;
    if (isShape) {
        const ShapeRecord& r = st.ShapeStore[static_cast<std::size_t>(index)];
        const auto& l = r.gLimits;
        sel.addEntry(index, 0, l[0], l[1], l[2], l[3]);
        x = (static_cast<std::int64_t>(l[0]) + l[1]) / 2;
        y = (static_cast<std::int64_t>(l[2]) + l[3]) / 2;
        type = r.gType;
    } else {
        const ObjectRecord& o = st.ObjectStore[static_cast<std::size_t>(index)];
        sel.addEntry(index, 1, o.PosX, o.PosX, o.PosY, o.PosY);
        x = o.PosX;
        y = o.PosY;
        type = o.oType;
    }
    // A hidden item can't be clicked; going to it shows its type, as a delete shows the one it selects.
    if (std::uint8_t* flag = ShowFlagOf(s.showFlags, type))
        *flag = 1;
    s.view.setOffX(Add32(0, -x));
    s.view.setOffY(Add32(0, -y));
    RebuildGL(s);
    PaintFrame(s);
    return true;
}

} // namespace fw
