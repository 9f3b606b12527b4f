#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericData.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MPlugArray.h>

#include <gtest/gtest.h>

namespace {

constexpr const char* kTextured = "createNode lambert -n \"l\";\n"
                                  "\tsetAttr \".dc\" 0.25;\n"
                                  "createNode shadingEngine -n \"sg1\";\n"
                                  "createNode shadingEngine -n \"sg2\";\n"
                                  "createNode file -n \"f\";\n"
                                  "\tsetAttr \".ftn\" -type \"string\" \"textures/wood.png\";\n"
                                  "createNode place2dTexture -n \"p\";\n"
                                  "\tsetAttr \".tf\" -type \"float2\" 0.5 0.75;\n"
                                  "connectAttr \"f.oc\" \"l.c\";\n"
                                  "connectAttr \"p.o\" \"f.uv\";\n"
                                  "connectAttr \"l.oc\" \"sg1.ss\";\n"
                                  "connectAttr \"l.oc\" \"sg2.ss\";\n";

TEST(MPlug, NamesItselfWithIndices)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n");
    EXPECT_EQ(plugNamed("t", "tx").name(), "t.translateX");
    const MPlug groups = plugNamed("m", "instObjGroups");
    EXPECT_TRUE(groups.isArray());
    const MPlug element = groups.elementByLogicalIndex(2);
    EXPECT_TRUE(element.isElement());
    EXPECT_FALSE(element.isArray());
    EXPECT_EQ(element.logicalIndex(), 2u);
    EXPECT_EQ(element.name(), "m.instObjGroups[2]");
    EXPECT_TRUE(element.attribute() == groups.attribute());
}

TEST(MPlug, IsMadeOfANodeAndAnAttributeOfItsType)
{
    const OpenedScene scene(kTextured);
    const MFnDependencyNode lambert1(nodeNamed("lambert1"));
    const MPlug plug(nodeNamed("l"), lambert1.attribute("outColor"));
    EXPECT_EQ(plug.name(), "l.outColor");
    EXPECT_TRUE(plug.node() == nodeNamed("l"));
    EXPECT_TRUE(plug.attribute() == lambert1.attribute("outColor"));
    EXPECT_TRUE(MPlug(nodeNamed("p"), lambert1.attribute("diffuse")).isNull());
    EXPECT_TRUE(MPlug(nodeNamed("l"), MObject()).isNull());
    EXPECT_TRUE(MPlug(MObject(), lambert1.attribute("diffuse")).isNull());
}

TEST(MPlug, TellsOfAnyConnectionWhateverIsAskedFor)
{
    const OpenedScene scene(kTextured);
    MPlugArray plugs;
    const MPlug outColor = plugNamed("l", "outColor");
    EXPECT_TRUE(outColor.connectedTo(plugs, false, true));
    ASSERT_EQ(plugs.length(), 2u);
    EXPECT_EQ(plugs[0].name(), "sg1.surfaceShader");
    EXPECT_EQ(plugs[1].name(), "sg2.surfaceShader");
    EXPECT_TRUE(outColor.connectedTo(plugs, true, false)) << "true, with an empty array";
    EXPECT_EQ(plugs.length(), 0u);
    EXPECT_TRUE(outColor.connectedTo(plugs, true, true));
    EXPECT_EQ(plugs.length(), 2u);
    const MPlug color = plugNamed("l", "color");
    EXPECT_TRUE(color.isConnected());
    EXPECT_TRUE(color.connectedTo(plugs, true, true));
    ASSERT_EQ(plugs.length(), 1u);
    EXPECT_EQ(plugs[0].name(), "f.outColor");
    EXPECT_FALSE(plugNamed("l", "diffuse").connectedTo(plugs, true, true));
    EXPECT_EQ(plugs.length(), 0u);
}

TEST(MPlug, PutsItsSourceBeforeItsDestinations)
{
    const OpenedScene scene("createNode transform -n \"a\";\n"
                            "createNode transform -n \"b\";\n"
                            "createNode transform -n \"c\";\n"
                            "connectAttr \"b.tx\" \"c.tx\";\n"
                            "connectAttr \"a.tx\" \"b.tx\";\n");
    MPlugArray plugs;
    EXPECT_TRUE(plugNamed("b", "tx").connectedTo(plugs, true, true));
    ASSERT_EQ(plugs.length(), 2u);
    EXPECT_EQ(plugs[0].name(), "a.translateX");
    EXPECT_EQ(plugs[1].name(), "c.translateX");
}

TEST(MPlug, DoesNotTakeAChildsConnectionForItsOwn)
{
    const OpenedScene scene("createNode transform -n \"a\";\n"
                            "createNode transform -n \"b\";\n"
                            "connectAttr \"a.tx\" \"b.tx\";\n");
    MPlugArray plugs;
    const MPlug translate = plugNamed("b", "translate");
    EXPECT_FALSE(translate.connectedTo(plugs, true, true));
    EXPECT_FALSE(translate.isConnected());
    EXPECT_TRUE(translate.child(0).connectedTo(plugs, true, true));
    EXPECT_EQ(plugs.length(), 1u);
}

TEST(MPlug, GivesNumbersOfAllKinds)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "\tsetAttr \".t\" -type \"double3\" 1 -2.5 3;\n"
                            "\tsetAttr \".r\" -type \"double3\" 180 0 0;\n"
                            "\tsetAttr \".ro\" 5;\n\tsetAttr \".v\" no;\n");
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(plugNamed("t", "ty").asDouble(&status), -2.5);
    EXPECT_TRUE(status);
    EXPECT_EQ(plugNamed("t", "ty").asFloat(), -2.5f);
    EXPECT_EQ(plugNamed("t", "tx").asInt(), 1);
    EXPECT_NEAR(plugNamed("t", "rx").asDouble(), 3.14159265358979, 1e-12) << "radians";
    EXPECT_EQ(plugNamed("t", "ro").asShort(), 5);
    EXPECT_FALSE(plugNamed("t", "v").asBool(&status));
    EXPECT_TRUE(status);
    EXPECT_EQ(plugNamed("t", "sx").asDouble(), 1) << "the default";
    double number = 0;
    EXPECT_TRUE(plugNamed("t", "tz").getValue(number));
    EXPECT_EQ(number, 3);
}

TEST(MPlug, GivesLengthsInCentimetresWhateverTheWorkingUnit)
{
    const OpenedScene scene("currentUnit -l meter -a degree -t film;\n"
                            "createNode transform -n \"t\";\n"
                            "\tsetAttr \".tx\" 2;\n");
    EXPECT_EQ(plugNamed("t", "tx").asDouble(), 200);
}

TEST(MPlug, FailsToGiveWhatItDoesNotHold)
{
    const OpenedScene scene(kTextured);
    MStatus status;
    double number = 7;
    EXPECT_EQ(plugNamed("l", "color").getValue(number), MStatus::kInvalidParameter);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(plugNamed("f", "fileTextureName").getValue(number), MStatus::kInvalidParameter);
    EXPECT_EQ(plugNamed("l", "diffuse").asString(&status), "");
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(plugNamed("l", "diffuse").asMObject(&status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(plugNamed("l", "diffuse").child(0, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(plugNamed("l", "diffuse").elementByLogicalIndex(0, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}

TEST(MPlug, GivesTexts)
{
    const OpenedScene scene(kTextured);
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(plugNamed("f", "fileTextureName").asString(&status), "textures/wood.png");
    EXPECT_TRUE(status);
    MString value;
    EXPECT_TRUE(plugNamed("f", "ftn").getValue(value));
    EXPECT_EQ(value, "textures/wood.png");
}

TEST(MPlug, GivesAnyElementAndCountsThoseThatHoldSomething)
{
    const OpenedScene scene("createNode displayLayer -n \"layer1\";\n"
                            "connectAttr \"layerManager.dli[5]\" \"layer1.id\";\n");
    const MPlug array = plugNamed("layerManager", "displayLayerId");
    ASSERT_EQ(array.numElements(), 2u) << "0 is the default layer's";
    EXPECT_EQ(array.elementByPhysicalIndex(0).logicalIndex(), 0u);
    EXPECT_EQ(array.elementByPhysicalIndex(1).logicalIndex(), 5u);
    EXPECT_TRUE(array.elementByLogicalIndex(5).isConnected());
    MStatus status(MStatus::kFailure);
    EXPECT_FALSE(array.elementByLogicalIndex(7, &status).isNull());
    EXPECT_TRUE(status) << "no element is refused";
    EXPECT_TRUE(array.elementByPhysicalIndex(99, &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_TRUE(array.elementByLogicalIndex(0xffffffffu, &status).isNull());
    EXPECT_FALSE(status);
}

TEST(MPlug, IsNullWhenAnotherSceneIsOpened)
{
    const OpenedScene scene(kTextured);
    const MPlug plug = plugNamed("l", "diffuse");
    ASSERT_TRUE(openFile(scene.file));
    EXPECT_TRUE(plug.isNull());
    EXPECT_EQ(plug.asDouble(), 0);
    EXPECT_TRUE(plug.node().isNull());
}

TEST(MFnNumericData, GivesThreeFloatsOfAColour)
{
    const OpenedScene scene("createNode lambert -n \"l\";\n"
                            "\tsetAttr \".c\" -type \"float3\" 0.25 0.5 0.75;\n");
    MStatus status(MStatus::kFailure);
    const MObject object = plugNamed("l", "color").asMObject(&status);
    ASSERT_TRUE(status);
    EXPECT_EQ(object.apiType(), MFn::kData3Float);
    const MFnNumericData data(object, &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(data.numericType(), MFnNumericData::k3Float);
    float r = 0;
    float g = 0;
    float b = 0;
    EXPECT_TRUE(data.getData(r, g, b));
    EXPECT_EQ(r, 0.25f);
    EXPECT_EQ(g, 0.5f);
    EXPECT_EQ(b, 0.75f);
    EXPECT_TRUE(data.getData3Float(r, g, b));
}

TEST(MFnNumericData, RefusesAnotherTypeOrCount)
{
    const OpenedScene scene(kTextured);
    const MFnNumericData frame(plugNamed("p", "translateFrame").asMObject());
    EXPECT_EQ(frame.numericType(), MFnNumericData::k2Float);
    float u = 0;
    float v = 0;
    EXPECT_TRUE(frame.getData(u, v));
    EXPECT_EQ(u, 0.5f);
    EXPECT_EQ(v, 0.75f);
    double x = 9;
    double y = 9;
    EXPECT_EQ(frame.getData(x, y), MStatus::kInvalidParameter);
    EXPECT_EQ(x, 9);
    float w = 9;
    EXPECT_EQ(frame.getData(u, v, w), MStatus::kInvalidParameter);
    EXPECT_EQ(w, 9);
}

TEST(MFnNumericData, GivesThreeDoublesOfATranslation)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "\tsetAttr \".t\" -type \"double3\" 1 2 3;\n");
    const MFnNumericData data(plugNamed("t", "translate").asMObject());
    double x = 0;
    double y = 0;
    double z = 0;
    EXPECT_TRUE(data.getData(x, y, z));
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
    EXPECT_EQ(z, 3);
}

TEST(MFnNumericData, GivesTheDefaultsOfALambert)
{
    const OpenedScene scene;
    float r = 0;
    float g = 0;
    float b = 0;
    ASSERT_TRUE(MFnNumericData(plugNamed("lambert1", "color").asMObject()).getData(r, g, b));
    EXPECT_EQ(r, 0.5f);
    EXPECT_EQ(g, 0.5f);
    EXPECT_EQ(b, 0.5f);
    EXPECT_EQ(plugNamed("lambert1", "diffuse").asFloat(), 0.8f);
    ASSERT_TRUE(MFnNumericData(plugNamed("lambert1", "transparency").asMObject()).getData(r, g, b));
    EXPECT_EQ(r, 0);
}

TEST(MFnNumericData, GivesTheDefaultColourOfATextureThatFeedsAColour)
{
    const OpenedScene scene("createNode lambert -n \"l\";\n"
                            "createNode lambert -n \"m\";\n"
                            "createNode file -n \"fresh\";\n"
                            "createNode file -n \"f\";\n"
                            "\tsetAttr \".dc\" -type \"float3\" 0.5 1 0.25;\n"
                            "\tsetAttr \".cg\" -type \"float3\" 0.5 0.5 0.5;\n"
                            "\tsetAttr \".co\" -type \"float3\" 0.125 0 0;\n"
                            "connectAttr \"f.oc\" \"l.c\";\n"
                            "connectAttr \"fresh.oc\" \"m.c\";\n");
    float r = 0;
    float g = 0;
    float b = 0;
    ASSERT_TRUE(MFnNumericData(plugNamed("l", "color").asMObject()).getData(r, g, b));
    EXPECT_EQ(r, 0.375f); // 0.5 * 0.5 + 0.125
    EXPECT_EQ(g, 0.5f);
    EXPECT_EQ(b, 0.125f);
    ASSERT_TRUE(MFnNumericData(plugNamed("m", "color").asMObject()).getData(r, g, b));
    EXPECT_EQ(r, 0.5f);
    EXPECT_EQ(b, 0.5f);
}

MItDependencyGraph upstream(MPlug plug, MFn::Type filter, MStatus* status)
{
    return MItDependencyGraph(plug, filter, MItDependencyGraph::kUpstream,
                              MItDependencyGraph::kBreadthFirst, MItDependencyGraph::kNodeLevel,
                              status);
}

TEST(MItDependencyGraph, FindsTheTextureOfAColour)
{
    const OpenedScene scene(kTextured);
    MStatus status(MStatus::kFailure);
    auto found = upstream(plugNamed("l", "color"), MFn::kFileTexture, &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(found.disablePruningOnFilter());
    ASSERT_FALSE(found.isDone());
    EXPECT_TRUE(found.currentItem() == nodeNamed("f"));
    EXPECT_TRUE(found.thisNode() == nodeNamed("f"));
    EXPECT_TRUE(found.next());
    EXPECT_TRUE(found.isDone());
}

TEST(MItDependencyGraph, FailsAndIsDoneWhenNothingMatches)
{
    const OpenedScene scene(kTextured);
    MStatus status;
    const auto found = upstream(plugNamed("lambert1", "color"), MFn::kFileTexture, &status);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(found.isDone());
    EXPECT_TRUE(found.currentItem().isNull());
    const auto ofAnotherPlug = upstream(plugNamed("l", "diffuse"), MFn::kFileTexture, &status);
    EXPECT_EQ(status, MStatus::kFailure);
}

TEST(MItDependencyGraph, FollowsConnectionsIntoTheChildrenOfACompound)
{
    const OpenedScene scene("createNode lambert -n \"l\";\n"
                            "createNode file -n \"f\";\n"
                            "connectAttr \"f.oa\" \"l.cg\";\n");
    MStatus status(MStatus::kFailure);
    const auto found = upstream(plugNamed("l", "color"), MFn::kFileTexture, &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(found.currentItem() == nodeNamed("f"));
}

TEST(MItDependencyGraph, BeginsWithTheRootsOwnNodeWithoutAFilter)
{
    const OpenedScene scene(kTextured);
    auto found = upstream(plugNamed("l", "color"), MFn::kInvalid, nullptr);
    EXPECT_TRUE(found.currentItem() == nodeNamed("l"));
    found.next();
    EXPECT_TRUE(found.currentItem() == nodeNamed("f"));
    found.next();
    EXPECT_TRUE(found.currentItem() == nodeNamed("p"));
    found.next();
    EXPECT_TRUE(found.isDone());
}

TEST(MItDependencyGraph, DeliversTheNearestTextureFirstAndEachOnce)
{
    const OpenedScene scene("createNode lambert -n \"l\";\n"
                            "createNode file -n \"far\";\n"
                            "createNode file -n \"near\";\n"
                            "connectAttr \"near.oc\" \"l.c\";\n"
                            "connectAttr \"far.oc\" \"near.cg\";\n"
                            "connectAttr \"far.oc\" \"near.co\";\n");
    auto found = upstream(plugNamed("l", "color"), MFn::kFileTexture, nullptr);
    EXPECT_TRUE(found.currentItem() == nodeNamed("near"));
    found.next();
    EXPECT_TRUE(found.currentItem() == nodeNamed("far"));
    found.next();
    EXPECT_TRUE(found.isDone());
}

TEST(MItDependencyGraph, RefusesOtherWaysOfWalking)
{
    const OpenedScene scene(kTextured);
    MPlug plug = plugNamed("l", "outColor");
    MStatus status;
    const MItDependencyGraph down(plug, MFn::kInvalid, MItDependencyGraph::kDownstream,
                                  MItDependencyGraph::kBreadthFirst, MItDependencyGraph::kNodeLevel,
                                  &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(down.isDone());
}

} // namespace
