#include "scene/NurbsCurve.h"

#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::SceneText;
using test::written;

/// Two loops, of one and of no edges: a line from (0, 0.5) to (1, 0.5) of weight 2 over 0..1.
void fill(NurbsCurve& trims)
{
    trims.addEdgeRange(0, 1);
    trims.addEdgeOrder(2);
    trims.addEdgeUVW(0, 1, 2);
    trims.addEdgeUVW(2, 1, 2);
    trims.addEdgeKnotCount(4);
    const std::size_t first = trims.edgeKnotCount();
    trims.addEdgeKnot(0);
    trims.addEdgeKnot(0);
    trims.addEdgeKnot(1);
    trims.extendEdgeKnots(first);
    trims.addTrim(1, 1);
    trims.addTrim(0, 0);
}

TEST(NurbsCurve, WritesEightArraysIntoTheOpenBlockInOrder)
{
    NurbsCurve trims;
    fill(trims);
    // doubles have sixteen decimals
    EXPECT_EQ(written(trims),
              "\"trim_nedges\" [ 1,0 ] ,\n"
              "\"trim_inside\" [ 1,0 ] ,\n"
              "\"edge_order\" [ 2 ] ,\n"
              "\"edge_nknots\" [ 4 ] ,\n"
              "\"edge_min\" [ 0.0000000000000000 ] ,\n"
              "\"edge_max\" [ 1.0000000000000000 ] ,\n"
              "\"edge_knot\" [ -1.0000000000000000,0.0000000000000000,1.0000000000000000,"
              "2.0000000000000000 ] ,\n"
              "\"edge_uvw\" [ 0.0000000000000000,1.0000000000000000,2.0000000000000000,"
              "2.0000000000000000,1.0000000000000000,2.0000000000000000 ] ,\n");
}

TEST(NurbsCurve, WritesEmptyArraysToo)
{
    NurbsCurve trims;
    EXPECT_EQ(written(trims), "\"trim_nedges\" [ ] ,\n"
                              "\"trim_inside\" [ ] ,\n"
                              "\"edge_order\" [ ] ,\n"
                              "\"edge_nknots\" [ ] ,\n"
                              "\"edge_min\" [ ] ,\n"
                              "\"edge_max\" [ ] ,\n"
                              "\"edge_knot\" [ ] ,\n"
                              "\"edge_uvw\" [ ] ,\n");
}

TEST(NurbsCurve, ExtendsTheKnotsOfTheLastEdgeOnly)
{
    NurbsCurve trims;
    for (const double knot : {5.0, 6.0}) {
        trims.addEdgeKnot(knot);
    }
    const std::size_t second = trims.edgeKnotCount();
    EXPECT_EQ(second, 2U);
    for (const double knot : {0.0, 1.0, 3.0}) {
        trims.addEdgeKnot(knot);
    }
    trims.extendEdgeKnots(second);
    EXPECT_EQ(trims.edgeKnots(), (std::vector<double>{5, 6, -1, 1, 3, 5}));
}

TEST(NurbsCurve, CountsFourBytesAnIntegerAndEightAFloat)
{
    NurbsCurve trims;
    EXPECT_EQ(trims.memorySize(), 0U);
    fill(trims);
    // integers: 2 + 2 + 1 + 1; floats: 1 + 1 + 4 + 6
    EXPECT_EQ(trims.memorySize(), 6U * 4 + 12U * 8);
    trims.clearData();
    EXPECT_EQ(trims.memorySize(), 0U);
    EXPECT_TRUE(trims.trimEdgeCounts().empty());
    EXPECT_TRUE(trims.edgeUVWs().empty());
}

TEST(NurbsCurve, HasNoDefinitionForm)
{
    SceneText scene;
    NurbsCurve trims;
    fill(trims);
    trims.define(scene.oo());
    EXPECT_FALSE(trims.isDefined());
    EXPECT_EQ(scene.text(), "");
    EXPECT_EQ(trims.edgeOrders().size(), 1U);
}

} // namespace
} // namespace orv
