#include <gtest/gtest.h>

#include "core/Records.h"
#include "core/Stores.h"

namespace fw {
namespace {

TEST(ShapeDefaults, ResetTouchesOnlyNamedFields)
{
    ShapeRecord s;
    s.vLayer = 5;
    s.cLighted = 1;
    ResetShape(s, kPoly);
    EXPECT_EQ(s.vLayer, 5);
    EXPECT_EQ(s.cLighted, 1);
}

TEST(Geometry, LimitsAndConcavity)
{
    PointList pts{{5, -3}, {-2, 7}, {9, 1}};
    auto l = ComputeLimits(pts);
    EXPECT_EQ(l, (std::array<std::int32_t, 4>{-2, 9, -3, 7}));

    // Three points are never concave, whatever the winding.
    EXPECT_EQ(ComputeConcavity({{0, 0}, {100, 0}, {0, 100}}), 0);
    EXPECT_EQ(ComputeConcavity({{0, 0}, {0, 100}, {100, 0}}), 0);
    // Square with a point in the middle of an edge: collinear counts as positive.
    PointList positive{{0, 0}, {100, 0}, {200, 0}, {200, 200}, {0, 200}};
    EXPECT_EQ(ComputeConcavity(positive), 0);
    PointList negative(positive.rbegin(), positive.rend());
    EXPECT_EQ(ComputeConcavity(negative), 1);
    // An L shape is concave.
    EXPECT_EQ(ComputeConcavity({{0, 0}, {200, 0}, {200, 100}, {100, 100}, {100, 200}, {0, 200}}), 1);
}

TEST(Layers, MapBothWays)
{
    EXPECT_EQ(LayerToValue(0), 0);
    EXPECT_EQ(LayerToValue(1), 8);
    EXPECT_EQ(LayerToValue(8), 40);
    EXPECT_EQ(LayerToValue(9), 60);
    EXPECT_EQ(LayerFromValue(60), 9);
    EXPECT_EQ(LayerFromValue(12), 2);
    EXPECT_EQ(LayerFromValue(13), 0);
}

TEST(Stores, CompactionKeepsOrderAndEmptiesArrays)
{
    Stores st;
    for (int i = 0; i < 4; ++i) {
        ShapeRecord s;
        ResetShape(s, kPoly);
        s.vRange = static_cast<std::int16_t>(i);
        AppendShape(st, s, {{i, i}, {i + 1, i}, {i, i + 1}});
    }
    AppendObject(st, kVor, 10, 20, 0, "");
    AppendObject(st, kNdb, 30, 40, 0, "");
    for (auto& s : st.ShapeStore)
        s.gKeep = 1;
    for (auto& o : st.ObjectStore)
        o.oKeep = 1;
    st.ShapeStore[1].gKeep = 0;
    st.ObjectStore[0].oKeep = 0;
    CompactStores(st);
    ASSERT_EQ(st.ShapeCount(), 3);
    EXPECT_EQ(st.ShapeStore[0].vRange, 0);
    EXPECT_EQ(st.ShapeStore[1].vRange, 2);
    EXPECT_EQ(st.PointStore[1][0], (Point{2, 2}));
    ASSERT_EQ(st.ObjectCount(), 1);
    EXPECT_EQ(st.ObjectStore[0].oType, kNdb);

    for (auto& s : st.ShapeStore)
        s.gKeep = 0;
    CompactStores(st);
    EXPECT_EQ(st.ShapeCount(), 0);
    EXPECT_TRUE(st.PointStore.empty());
    EXPECT_EQ(st.ObjectCount(), 1);
}

} // namespace
} // namespace fw
