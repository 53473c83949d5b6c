// Bring to front and send to back against the plain quadratic reorder they replaced, on random
// stores and selections: duplicates, stale indices and objects included.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "core/Session.h"
#include "core/Stores.h"
#include "editor/Arrange.h"

namespace fw {
namespace {

// The order the program has always produced, written the obvious way: the selection searched
// for every shape, every record copied.
void ModelReorder(Session& s, bool selectedFirst)
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
    for (auto i : objects)
        if (i < st.ObjectStore.size())
            sel.addEntry(i, 1, st.ObjectStore[i].PosX, st.ObjectStore[i].PosX, st.ObjectStore[i].PosY,
                         st.ObjectStore[i].PosY);
}

// A store and a selection drawn from seed; the same seed gives the same session.
void Fill(Session& s, unsigned seed)
{
    std::mt19937 rng(seed);
    auto below = [&](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
    const int shapes = below(12);
    for (int i = 0; i < shapes; ++i) {
        ShapeRecord r;
        ResetShape(r, i % 2 ? kPoly : kWideLine);
        r.gComment = "s" + std::to_string(i);
        r.gKeep = below(3) - 1; // whatever an earlier command left
        PointList pts;
        for (int k = below(4) + 1; k > 0; --k)
            pts.push_back({below(2000) - 1000, below(2000) - 1000});
        AppendShape(s.stores, r, pts);
    }
    const int objects = below(4);
    for (int i = 0; i < objects; ++i) {
        ObjectRecord o;
        o.oType = kNdb;
        o.PosX = below(500);
        o.PosY = -below(500);
        s.stores.ObjectStore.push_back(o);
    }
    CSelection& sel = s.editor.selection;
    sel.reset();
    // Picks beyond the stores stand for indices left behind by an earlier change.
    for (int k = below(shapes + 4); k > 0; --k) {
        if (below(4) == 0) {
            sel.addEntry(below(objects + 2), 1, below(100), below(100) + 100, below(100), below(100) + 100);
        } else {
            const int i = below(shapes + 2);
            sel.addEntry(i, 0, below(100), below(100) + 100, below(100), below(100) + 100);
        }
    }
    sel.setState(static_cast<std::uint8_t>(below(3) + 1));
    sel.addPt(static_cast<std::uint16_t>(below(5)));
}

void ExpectSameSession(const Session& got, const Session& want, const std::string& what)
{
    SCOPED_TRACE(what);
    ASSERT_EQ(got.stores.ShapeStore.size(), want.stores.ShapeStore.size());
    for (std::size_t i = 0; i < want.stores.ShapeStore.size(); ++i) {
        const ShapeRecord& a = got.stores.ShapeStore[i];
        const ShapeRecord& b = want.stores.ShapeStore[i];
        EXPECT_EQ(a.gComment, b.gComment) << i;
        EXPECT_EQ(a.gKeep, b.gKeep) << i;
        EXPECT_EQ(a.gType, b.gType) << i;
        EXPECT_EQ(a.gLimits, b.gLimits) << i;
    }
    EXPECT_EQ(got.stores.PointStore, want.stores.PointStore);
    const CSelection& a = got.editor.selection;
    const CSelection& b = want.editor.selection;
    EXPECT_EQ(a.SelShapes(), b.SelShapes());
    EXPECT_EQ(a.SelObjects(), b.SelObjects());
    EXPECT_EQ(a.SelPoints(), b.SelPoints());
    EXPECT_EQ(a.SelLimits(), b.SelLimits());
    EXPECT_EQ(a.state(), b.state());
    EXPECT_EQ(got.dirty, want.dirty);
    EXPECT_EQ(got.canUndo, want.canUndo);
}

TEST(ArrangeOrder, FrontAndBackMatchThePlainReorderOnRandomSelections)
{
    for (unsigned seed = 1; seed <= 400; ++seed)
        for (bool front : {true, false}) {
            Session got;
            Session want;
            Fill(got, seed);
            Fill(want, seed);
            if (front)
                BringToFront(got);
            else
                SendToBack(got);
            ModelReorder(want, !front);
            ExpectSameSession(got, want, "seed " + std::to_string(seed) + (front ? " front" : " back"));
            if (HasFailure())
                return;
        }
}

} // namespace
} // namespace fw
