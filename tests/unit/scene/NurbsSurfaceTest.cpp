#include "scene/NurbsSurface.h"

#include "scene/Diffuse.h"
#include "scene/NurbsCurve.h"
#include "scene/TriangleObject.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::Layout;
using test::SceneText;
using test::written;

const std::string kDefaultMaterial = "material \"default\" {\n"
                                     "surface \"orv_diffuse\" {\n"
                                     "\"diffuse\" 0.75 0.5 0.5,\n"
                                     "}\n"
                                     "flags 4096\n"
                                     "}\n";

/// A bilinear patch over 0..1 by 0..2, of one control point only: counts are nobody's concern here.
void fill(NurbsSurface& surface)
{
    surface.setRange(0, 1, 0, 2);
    surface.setOrder(2, 3);
    surface.padKnots();
    surface.addUKnot(0);
    surface.addUKnot(1);
    surface.addVKnot(0);
    surface.addVKnot(2);
    surface.extendKnots();
    surface.addControlPoint(0.5, -1, 2, 0.25);
}

const std::string kRange = "\"umin\" 0.0000000000000000,\n"
                           "\"umax\" 1.0000000000000000,\n"
                           "\"vmin\" 0.0000000000000000,\n"
                           "\"vmax\" 2.0000000000000000,\n"
                           "\"uorder\" 2,\n"
                           "\"vorder\" 3,\n";
const std::string kFilled =
    "geometry \"nurbs\" {\n" + kRange +
    "\"uknot\" [ -1.0000000000000000,0.0000000000000000,1.0000000000000000,2.0000000000000000 ] "
    ",\n"
    "\"vknot\" [ -2.0000000000000000,0.0000000000000000,2.0000000000000000,4.0000000000000000 ] "
    ",\n"
    "\"Pw\" [ 0.5000000000000000,-1.0000000000000000,2.0000000000000000,0.2500000000000000 ] ,\n";
const std::string kEmptyTrims = "\"trim_nedges\" [ ] ,\n"
                                "\"trim_inside\" [ ] ,\n"
                                "\"edge_order\" [ ] ,\n"
                                "\"edge_nknots\" [ ] ,\n"
                                "\"edge_min\" [ ] ,\n"
                                "\"edge_max\" [ ] ,\n"
                                "\"edge_knot\" [ ] ,\n"
                                "\"edge_uvw\" [ ] ,\n";

std::shared_ptr<TriangleObject> oneTriangle(const std::string& name)
{
    auto mesh = std::make_shared<TriangleObject>(name);
    mesh->addVertex(0, 0, 0);
    mesh->addTriangle(0, 0, 0);
    return mesh;
}

TEST(NurbsSurface, WritesUnsetRangeAndOrdersAndEmptyArrays)
{
    NurbsSurface surface("s");
    // 2^128 - 2^104, the largest single, in full; the smallest normal one vanishes in 16 decimals
    const std::string most = "340282346638528859811704183484516925440.0000000000000000";
    EXPECT_EQ(written(surface), "\ngroup \"s\" {\n"
                                "flags 65536\n"
                                "object \"s\" {\n"
                                "geometry \"nurbs\" {\n"
                                "\"umin\" " +
                                    most +
                                    ",\n"
                                    "\"umax\" 0.0000000000000000,\n"
                                    "\"vmin\" " +
                                    most +
                                    ",\n"
                                    "\"vmax\" 0.0000000000000000,\n"
                                    "\"uorder\" -1,\n"
                                    "\"vorder\" -1,\n"
                                    "\"uknot\" [ ] ,\n"
                                    "\"vknot\" [ ] ,\n"
                                    "\"Pw\" [ ] ,\n"
                                    "}\n" +
                                    kDefaultMaterial + "}\n}\n");
}

TEST(NurbsSurface, WritesRangeOrdersKnotsAndPoints)
{
    NurbsSurface surface("s");
    fill(surface);
    EXPECT_EQ(written(surface), "\ngroup \"s\" {\nflags 65536\nobject \"s\" {\n" + kFilled + "}\n" +
                                    kDefaultMaterial + "}\n}\n");
}

TEST(NurbsSurface, WritesTrimsAfterThePointsInTheSameBlock)
{
    NurbsSurface surface("s");
    fill(surface);
    surface.setTrims(std::make_shared<NurbsCurve>());
    EXPECT_EQ(written(surface), "\ngroup \"s\" {\nflags 65536\nobject \"s\" {\n" + kFilled +
                                    kEmptyTrims + "}\n" + kDefaultMaterial + "}\n}\n");
}

TEST(NurbsSurface, WritesTheMeshBeforeItselfInItsOwnMaterial)
{
    NurbsSurface surface("s");
    fill(surface);
    const auto mesh = oneTriangle("tessellation");
    mesh->setMaterial(std::make_shared<Diffuse>("of the mesh"));
    EXPECT_FALSE(surface.hasMesh());
    surface.setMesh(mesh);
    EXPECT_TRUE(surface.hasMesh());
    EXPECT_EQ(surface.getMesh(), mesh);
    EXPECT_EQ(mesh->getName(), "s");
    EXPECT_EQ(written(surface), "\ngroup \"s\" {\nflags 65536\n"
                                "object \"s\" {\n"
                                "geometry \"triangles\" {\n"
                                "\"vertices\" [ 0 0 0 ] ,\n"
                                "\"triangles\" [ 0,0,0 ] ,\n"
                                "}\n" +
                                    kDefaultMaterial + "}\nobject \"s\" {\n" + kFilled + "}\n" +
                                    kDefaultMaterial + "}\n}\n");
    EXPECT_EQ(mesh->getMaterial(), surface.getMaterial());
    // a material that is set later reaches the mesh with the next write
    surface.setMaterial(std::make_shared<Diffuse>("later"));
    written(surface);
    EXPECT_EQ(mesh->getMaterial(), surface.getMaterial());
}

TEST(NurbsSurface, AForgottenExtensionLeavesThePlaceholder)
{
    NurbsSurface surface("s");
    surface.addUKnot(1);
    surface.addVKnot(2);
    surface.padKnots();
    EXPECT_EQ(surface.uKnots(), (std::vector<double>{12648430, 1}));
    EXPECT_EQ(surface.vKnots(), (std::vector<double>{12648430, 2}));
    EXPECT_NE(written(surface).find("\"uknot\" [ 12648430.0000000000000000,1.0000000000000000 ] "),
              std::string::npos);
}

TEST(NurbsSurface, PadsAndExtendsKnots)
{
    NurbsSurface surface("s");
    surface.padKnots();
    for (const double knot : {0, 0, 1, 2, 2}) {
        surface.addUKnot(knot);
    }
    for (const double knot : {1, 2, 3}) {
        surface.addVKnot(knot);
    }
    surface.extendKnots();
    EXPECT_EQ(surface.uKnots(), (std::vector<double>{0, 0, 0, 1, 2, 2, 2}));
    EXPECT_EQ(surface.vKnots(), (std::vector<double>{0, 1, 2, 3, 4}));
}

TEST(NurbsSurface, DefinesItselfAndThenItsMesh)
{
    SceneText scene;
    NurbsSurface surface("s");
    fill(surface);
    const auto trims = std::make_shared<NurbsCurve>();
    trims->addEdgeOrder(2);
    surface.setTrims(trims);
    surface.setMesh(oneTriangle("tessellation"));
    surface.define(scene.oo());
    const std::string definitions = "#define object \"s\" {\n"
                                    "id 1\n" +
                                    kFilled +
                                    "\"trim_nedges\" [ ] ,\n"
                                    "\"trim_inside\" [ ] ,\n"
                                    "\"edge_order\" [ 2 ] ,\n"
                                    "\"edge_nknots\" [ ] ,\n"
                                    "\"edge_min\" [ ] ,\n"
                                    "\"edge_max\" [ ] ,\n"
                                    "\"edge_knot\" [ ] ,\n"
                                    "\"edge_uvw\" [ ] ,\n"
                                    "}\n}\n"
                                    "#define object \"s\" {\n"
                                    "id 2\n"
                                    "geometry \"triangles\" {\n"
                                    "\"vertices\" [ 0 0 0 ] ,\n"
                                    "\"triangles\" [ 0,0,0 ] ,\n"
                                    "}\n}\n";
    EXPECT_EQ(scene.text(), definitions);
    EXPECT_TRUE(surface.isDefined());
    EXPECT_EQ(surface.definitionId(), 1U);
    EXPECT_EQ(surface.getMesh()->definitionId(), 2U);
    EXPECT_EQ(surface.memorySize(), 0U);
    EXPECT_EQ(trims->memorySize(), 0U);

    surface.write(scene.oo());
    const auto instance = [](const std::string& id) {
        return "object \"s\" {\ngeometry \"instance\" {\n\"id\" " + id + ",\n}\n" +
               kDefaultMaterial + "}\n";
    };
    EXPECT_EQ(scene.text().substr(definitions.size()),
              "\ngroup \"s\" {\nflags 65536\n" + instance("2") + instance("1") + "}\n");
}

TEST(NurbsSurface, ASecondDefinitionHasTheRangeButNoData)
{
    SceneText scene;
    NurbsSurface surface("s");
    fill(surface);
    surface.define(scene.oo());
    const std::size_t first = scene.text().size();
    surface.define(scene.oo());
    EXPECT_EQ(scene.text().substr(first), "#define object \"s\" {\nid 2\ngeometry \"nurbs\" {\n" +
                                              kRange +
                                              "\"uknot\" [ ] ,\n"
                                              "\"vknot\" [ ] ,\n"
                                              "\"Pw\" [ ] ,\n"
                                              "}\n}\n");
    EXPECT_EQ(surface.definitionId(), 2U);
}

TEST(NurbsSurface, CountsEightBytesAValueAndTheTrims)
{
    NurbsSurface surface("s");
    fill(surface);
    EXPECT_EQ(surface.memorySize(), 8U * (4 + 4 + 4));
    const auto trims = std::make_shared<NurbsCurve>();
    trims->addEdgeOrder(2);
    surface.setTrims(trims);
    EXPECT_EQ(surface.getTrims(), trims);
    EXPECT_EQ(surface.memorySize(), 8U * (4 + 4 + 4) + 4);
    surface.clearData();
    EXPECT_EQ(surface.memorySize(), 4U);
}

TEST(NurbsSurface, StartsWithTheDefaultMaterialAndNothingElse)
{
    const NurbsSurface surface("s");
    const auto material = std::dynamic_pointer_cast<Diffuse>(surface.getMaterial());
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(material->getName(), "default");
    EXPECT_EQ(surface.getTrims(), nullptr);
    EXPECT_EQ(surface.getMesh(), nullptr);
    EXPECT_FALSE(surface.isDefined());
    EXPECT_EQ(surface.memorySize(), 0U);
}

TEST(NurbsSurface, TakesAnEmptyMeshAndAnEmptyMaterial)
{
    NurbsSurface surface("s");
    fill(surface);
    surface.setMesh(oneTriangle("m"));
    surface.setMesh(nullptr);
    surface.setMaterial(nullptr);
    EXPECT_EQ(written(surface),
              "\ngroup \"s\" {\nflags 65536\nobject \"s\" {\n" + kFilled + "}\n}\n}\n");
}

} // namespace
} // namespace orv
