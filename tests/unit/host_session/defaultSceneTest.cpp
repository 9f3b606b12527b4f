#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace {

class NewScene : public test::OpenScene {};

TEST_F(NewScene, HasFourHiddenCamerasInOrderAndNoGroundPlane)
{
    const auto& children = session.graph().node(host::session::kWorld).children;
    std::vector<std::string> names;
    for (const auto child : children) {
        names.push_back(session.graph().node(child).name);
        EXPECT_FALSE(session.isVisible(session.firstPathTo(child)));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"persp", "top", "front", "side"}));
    EXPECT_EQ(session.executeCommand("ls -shapes").valueOr({}),
              (std::vector<std::string>{"perspShape", "topShape", "frontShape", "sideShape"}));
}

TEST_F(NewScene, LooksDownTheAxesFromItsCameras)
{
    // The cameras' -z axes: persp towards the origin from (28 21 28), top down, front back, side
    // left.
    const auto view = [&](const char* name) {
        const host::Matrix4 matrix = session.inclusiveMatrix(path(name));
        return host::Vec3d{-matrix.m[2][0], -matrix.m[2][1], -matrix.m[2][2]};
    };
    const double distance = std::sqrt(28.0 * 28 + 21 * 21 + 28 * 28);
    EXPECT_NEAR(view("persp").x, -28 / distance, 1e-9);
    EXPECT_NEAR(view("persp").y, -21 / distance, 1e-9);
    EXPECT_NEAR(view("persp").z, -28 / distance, 1e-9);
    EXPECT_NEAR(view("top").y, -1, 1e-12);
    EXPECT_NEAR(view("front").z, -1, 1e-12);
    EXPECT_NEAR(view("side").x, -1, 1e-12);
    EXPECT_NEAR(number("perspShape", "centerOfInterest"), distance, 1e-8);
}

TEST_F(NewScene, FeedsBothDefaultGroupsFromLambert1)
{
    const auto fed = session.destinations(plug("lambert1", "outColor"));
    ASSERT_EQ(fed.size(), 2U);
    EXPECT_EQ(session.plugName(fed[0]), "initialShadingGroup.surfaceShader");
    EXPECT_EQ(session.plugName(fed[1]), "initialParticleSE.surfaceShader");
    EXPECT_EQ(number("lambert1", "colorR"), 0.5);
    EXPECT_NEAR(number("lambert1", "diffuse"), 0.8, 1e-7);
}

TEST_F(NewScene, PutsBothGroupsIntoTheRenderPartitionAndTheLayerUnderItsManager)
{
    const auto sets = plug("renderPartition", "sets");
    EXPECT_EQ(session.source(session.element(sets, 0)).node, node("initialShadingGroup"));
    EXPECT_EQ(session.source(session.element(sets, 1)).node, node("initialParticleSE"));
    EXPECT_EQ(session.source(plug("defaultLayer", "identification")).node, node("layerManager"));
    EXPECT_TRUE(session.isShadingGroup(node("initialShadingGroup")));
    EXPECT_FALSE(session.isShadingGroup(node("defaultLightSet")));
}

TEST_F(NewScene, NotesNothing)
{
    EXPECT_TRUE(session.diagnostics().entries().empty());
}

TEST_F(NewScene, GivesItsCamerasToAFileThatSharesThem)
{
    open(R"(createNode transform -s -n "persp";
            setAttr ".t" -type "double3" 1 2 3 ;
        createNode camera -s -n "perspShape" -p "persp";
            setAttr ".fl" 50;
        createNode transform -n "mine";)");
    EXPECT_EQ(session.graph().node(host::session::kWorld).children.size(), 5U);
    EXPECT_EQ(number("persp", "translateX"), 1);
    EXPECT_EQ(number("perspShape", "focalLength"), 50);
    EXPECT_EQ(number("perspShape", "visibility"), 0); // as it was
}

TEST_F(NewScene, KeepsItsNodesApartFromUnsharedOnesOfTheSameName)
{
    open("createNode lambert -n \"lambert1\";\n\tsetAttr \".dc\" 0.25;");
    EXPECT_NEAR(number("lambert1", "diffuse"), 0.8, 1e-7);
    EXPECT_EQ(number("lambert2", "diffuse"), 0.25); // the next free number
}

TEST_F(NewScene, GivesUpItsLayerToTheFirstOneThatAFileWrites)
{
    // Every file writes its default layer without calling it shared.
    open(R"(createNode displayLayerManager -n "layerManager"; setAttr ".cdl" 1;
        createNode displayLayer -n "defaultLayer"; setAttr ".do" 7;
        createNode displayLayer -n "more";
        createNode displayLayer -n "defaultLayer";)");
    std::vector<std::string> layers;
    for (host::graph::NodeId node = 0; node < session.graph().nodeCount(); ++node) {
        if (session.graph().node(node).type.name() == "displayLayer") {
            layers.push_back(session.graph().node(node).name);
        }
    }
    EXPECT_EQ(layers, (std::vector<std::string>{"defaultLayer", "more", "defaultLayer1"}));
    EXPECT_EQ(number("defaultLayer", "displayOrder"), 7);
    EXPECT_EQ(number("layerManager", "currentDisplayLayer"), 1);
    EXPECT_EQ(session.graph().findNode("layerManager1"), host::graph::kNoNode);
}

TEST_F(NewScene, DoesNotShareANodeOfAnotherTypeOrPlace)
{
    open(R"(createNode transform -n "group";
        createNode transform -s -n "persp" -p "group";
        createNode joint -s -n "top";)");
    EXPECT_TRUE(has("|group|persp"));
    EXPECT_EQ(typeName("top1"), "joint");
}

TEST_F(NewScene, IsReadyAtOnce)
{
    constexpr int kScenes = 50;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kScenes; ++i) {
        session.newScene();
    }
    const std::chrono::duration<double, std::milli> spent =
        std::chrono::steady_clock::now() - start;
    EXPECT_LT(spent.count() / kScenes, 20); // some 0.2 ms in a release build; sanitizers are slow
}

} // namespace
