#include "host/geometry/mesh/boolean/Solid.h"
#include "host/geometry/mesh/boolean/HalfEdges.h"

#include <gtest/gtest.h>

namespace host::geometry {
namespace {

/// Half of a unit cube's corner: its volume is a sixth.
Solid tetrahedron(const Vec3d& at)
{
    return {{at, at + Vec3d{1, 0, 0}, at + Vec3d{0, 1, 0}, at + Vec3d{0, 0, 1}},
            {{{0, 2, 1}, 0}, {{0, 1, 3}, 1}, {{0, 3, 2}, 2}, {{1, 2, 3}, 3}}};
}

TEST(Solid, volume)
{
    EXPECT_DOUBLE_EQ(volumeOf(tetrahedron({})), 1.0 / 6);
    EXPECT_NEAR(volumeOf(tetrahedron({1e6, -1e6, 1e6})), 1.0 / 6, 1e-12);
    Solid turned = tetrahedron({});
    for (SolidTriangle& triangle : turned.triangles) {
        std::swap(triangle.corners[0], triangle.corners[1]);
    }
    EXPECT_DOUBLE_EQ(volumeOf(turned), -1.0 / 6);
    EXPECT_EQ(volumeOf({}), 0);
}

TEST(Solid, boxes)
{
    const SolidBox box = boxOf(tetrahedron({2, 3, 4}));
    EXPECT_EQ(box.low, (Vec3d{2, 3, 4}));
    EXPECT_EQ(box.high, (Vec3d{3, 4, 5}));
    EXPECT_TRUE(boxOf({}).isEmpty());
    EXPECT_FALSE(areApart(box, boxOf(tetrahedron({3, 3, 4})))); // they touch
    EXPECT_TRUE(areApart(box, boxOf(tetrahedron({3.5, 3, 4}))));
    EXPECT_TRUE(areApart(box, boxOf(tetrahedron({2, 3, 5.5}))));
    EXPECT_TRUE(areApart(box, SolidBox{}));
    EXPECT_EQ(boxOfBoth(box, SolidBox{}).high, box.high);
}

TEST(HalfEdges, knowWhatLiesBeyond)
{
    const Solid solid = tetrahedron({});
    const HalfEdges sides(solid.triangles);
    ASSERT_TRUE(sides.isClosed());
    ASSERT_EQ(sides.count(), 12u);
    for (std::uint32_t side = 0; side < 12; ++side) {
        EXPECT_EQ(sides.beyond(sides.beyond(side)), side);
        EXPECT_EQ(sides.start(sides.beyond(side)), sides.end(side));
    }
    EXPECT_EQ(sides.beyond(0), 8u); // 0 2 in the first triangle, 2 0 in the third, its last side
}

TEST(HalfEdges, openAndDoubledSurfaces)
{
    Solid solid = tetrahedron({});
    solid.triangles.pop_back();
    EXPECT_FALSE(HalfEdges(solid.triangles).isClosed());
    solid = tetrahedron({});
    std::swap(solid.triangles[0].corners[0], solid.triangles[0].corners[1]);
    EXPECT_FALSE(HalfEdges(solid.triangles).isClosed());
    solid = tetrahedron({});
    const auto once = solid.triangles;
    solid.triangles.insert(solid.triangles.end(), once.begin(), once.end());
    EXPECT_FALSE(HalfEdges(solid.triangles).isClosed());
    EXPECT_TRUE(HalfEdges({}).isClosed());
}

} // namespace
} // namespace host::geometry
