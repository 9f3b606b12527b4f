// Nodes written while the object layer has no scene API: nothing happens.
#include "scene/BezierCurves.h"
#include "scene/DefaultRTModule.h"
#include "scene/Diffuse.h"
#include "scene/FBXAnimation.h"
#include "scene/LightCamera.h"
#include "scene/NurbsCurve.h"
#include "scene/NurbsSurface.h"
#include "scene/OldSCeneapiLightMultiMaterial.h"
#include "scene/OrvGroup.h"
#include "scene/TriangleObject.h"
#include "sceneapi/PassThroughFactory.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

TEST(Detached, NodesWriteNothingAndStayUndefined)
{
    PassThroughFactory factory(nullptr);
    orvSceneapi_oo oo(factory);
    ASSERT_EQ(oo.sceneApi(), nullptr);

    TriangleObject mesh("mesh");
    mesh.addVertex(0, 0, 0);
    mesh.addTriangle(0, 0, 0);
    Diffuse coloured("coloured");
    coloured.setVertexColor(true);
    OldSCeneapiLightMultiMaterial textured("textured");
    textured.setTexture("a.png");
    OrvGroup group("group");
    group.setAttribute("a", "b");
    group.createTriangleObject("inside");
    FBXAnimation track("track", 0, 0, true);
    NurbsCurve trims;
    NurbsSurface surface("surface");
    surface.addUKnot(1);
    BezierCurves curves("curves");
    LightCamera camera("camera");
    DefaultRTModule module;

    LightNode* const nodes[] = {&mesh,  &coloured, &textured, &group,  &track,
                                &trims, &surface,  &curves,   &camera, &module};
    for (LightNode* node : nodes) {
        node->define(oo);
        EXPECT_FALSE(node->isDefined());
        node->write(oo);
    }
    EXPECT_EQ(mesh.memorySize(), 24U);
    EXPECT_EQ(surface.memorySize(), 8U);
    EXPECT_EQ(camera.writeEnvironment(oo), nullptr);
}

} // namespace
} // namespace orv
