#include "scene/BezierCurves.h"

#include "scene/Diffuse.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::SceneText;
using test::written;

TEST(BezierCurves, WritesAnEmptyBatchWithoutOrderRadiiColoursAndMaterial)
{
    BezierCurves curves("c");
    EXPECT_EQ(curves.getMaterial(), nullptr);
    EXPECT_EQ(written(curves), "object \"c\" {\n"
                               "geometry \"orv_curves\" {\n"
                               "\"radius\" 1,\n"
                               "\"fitToCubic\" off,\n"
                               "\"p\" [ ] ,\n"
                               "\"nvertices\" [ ] ,\n"
                               "}\n"
                               "}\n");
}

TEST(BezierCurves, WritesEverythingInOrder)
{
    BezierCurves curves("");
    curves.setRadius(0.5F);
    curves.setOrder(2);
    curves.enableFitToCubic();
    curves.addPoint(0, 0, 0);
    curves.addPoint(0, 1, 0);
    curves.addPoint(0, 2, 0.25F);
    curves.addPointRadius(0.125F);
    curves.addPointColor(1, 0.5F, 0);
    curves.addCurve(2);
    curves.addCurve(1);
    const auto material = std::make_shared<Diffuse>("diffuse");
    material->setColor(1, 0, 0);
    curves.setMaterial(material);
    EXPECT_EQ(written(curves), "object \"\" {\n"
                               "geometry \"orv_curves\" {\n"
                               "\"radius\" 0.5,\n"
                               "\"order\" 2,\n"
                               "\"fitToCubic\" on,\n"
                               "\"p\" [ 0 0 0,0 1 0,0 2 0.25 ] ,\n"
                               "\"nvertices\" [ 2,1 ] ,\n"
                               "\"pr\" [ 0.125 ] ,\n"
                               "\"pcol\" [ 1 0.5 0 ] ,\n"
                               "}\n"
                               "material \"diffuse\" {\n"
                               "surface \"orv_diffuse\" {\n"
                               "\"diffuse\" 1 0 0,\n"
                               "}\n"
                               "flags 4096\n"
                               "}\n"
                               "}\n");
}

TEST(BezierCurves, WritesAnOrderAboveZeroOnly)
{
    for (const int order : {-1, 0}) {
        BezierCurves curves("c");
        curves.setOrder(order);
        EXPECT_EQ(written(curves).find("\"order\""), std::string::npos) << order;
    }
    BezierCurves curves("c");
    curves.setOrder(1);
    EXPECT_NE(written(curves).find("\"order\" 1,\n"), std::string::npos);
}

TEST(BezierCurves, FitsToCubicUntilThatIsTakenBack)
{
    BezierCurves curves("c");
    curves.enableFitToCubic();
    curves.disableFitToCubic();
    EXPECT_NE(written(curves).find("\"fitToCubic\" off,\n"), std::string::npos);
}

TEST(BezierCurves, IsAlwaysWrittenInFull)
{
    SceneText scene;
    BezierCurves curves("c");
    curves.addPoint(1, 2, 3);
    curves.define(scene.oo());
    EXPECT_EQ(scene.text(), "");
    EXPECT_FALSE(curves.isDefined());
    curves.setDefinitionId(7);
    EXPECT_FALSE(curves.isDefined());
    EXPECT_NE(written(curves).find("\"p\" [ 1 2 3 ] ,\n"), std::string::npos);
}

TEST(BezierCurves, CountsFourBytesAValue)
{
    BezierCurves curves("c");
    EXPECT_EQ(curves.memorySize(), 0U);
    curves.addPoint(0, 0, 0);
    curves.addPointRadius(1);
    curves.addPointColor(0, 0, 0);
    curves.addCurve(1);
    EXPECT_EQ(curves.memorySize(), 4U * (3 + 1 + 3 + 1));
}

} // namespace
} // namespace orv
