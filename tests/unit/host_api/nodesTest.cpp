#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnMesh.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names namesOf(MFn::Type filter)
{
    Names names;
    for (MItDependencyNodes nodes(filter); !nodes.isDone(); nodes.next()) {
        names.push_back(text(MFnDependencyNode(nodes.thisNode()).name()));
    }
    return names;
}

constexpr const char* kShaders = "createNode lambert -n \"l\";\n"
                                 "createNode blinn -n \"b\";\n"
                                 "createNode phong -n \"p\";\n"
                                 "createNode phongE -n \"e\";\n"
                                 "createNode anisotropic -n \"a\";\n"
                                 "createNode hairTubeShader -n \"h\";\n"
                                 "createNode surfaceShader -n \"s1\";\n"
                                 "createNode layeredShader -n \"s2\";\n"
                                 "createNode rampShader -n \"s3\";\n"
                                 "createNode oceanShader -n \"s4\";\n"
                                 "createNode useBackground -n \"s5\";\n"
                                 "createNode shadingMap -n \"s6\";\n";

TEST(MItDependencyNodes, DeliversTheLambertFamilyInTheOrderOfCreation)
{
    const OpenedScene scene(kShaders);
    EXPECT_EQ(namesOf(MFn::kLambert), (Names{"lambert1", "l", "b", "p", "e", "a", "h"}));
}

TEST(MItDependencyNodes, DeliversTheDefaultLayerBeforeOthers)
{
    const OpenedScene scene("createNode displayLayer -n \"z\";\n"
                            "createNode displayLayer -n \"a\";\n");
    EXPECT_EQ(namesOf(MFn::kDisplayLayer), (Names{"defaultLayer", "z", "a"}));
}

TEST(MItDependencyNodes, DeliversIntermediateMeshes)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n"
                            "createNode mesh -n \"o\" -p \"t\";\n\tsetAttr \".io\" yes;\n");
    EXPECT_EQ(namesOf(MFn::kMesh), (Names{"m", "o"}));
}

TEST(MItDependencyNodes, DeliversEveryNodeWithoutAFilter)
{
    const OpenedScene scene("createNode transform -n \"t\";\n");
    const Names all = namesOf(MFn::kInvalid);
    EXPECT_EQ(all.front(), "world");
    EXPECT_EQ(all.back(), "t");
    EXPECT_NE(std::find(all.begin(), all.end(), "time1"), all.end());
    EXPECT_EQ(namesOf(MFn::kDependencyNode), all);
}

TEST(MItDependencyNodes, IsDoneAtOnceWhenNothingMatches)
{
    const OpenedScene scene;
    MStatus status(MStatus::kFailure);
    MItDependencyNodes nodes(MFn::kFluid, &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(nodes.isDone());
    EXPECT_FALSE(nodes.next());
    EXPECT_TRUE(nodes.thisNode(&status).isNull());
    EXPECT_FALSE(status);
}

TEST(MItDependencyNodes, IsDoneWhenAnotherSceneIsOpened)
{
    const OpenedScene scene;
    MItDependencyNodes nodes(MFn::kLambert);
    ASSERT_FALSE(nodes.isDone());
    ASSERT_TRUE(openFile(scene.file));
    EXPECT_TRUE(nodes.isDone());
    EXPECT_TRUE(nodes.thisNode().isNull());
    EXPECT_TRUE(nodes.reset(MFn::kLambert));
    EXPECT_FALSE(nodes.isDone());
}

TEST(MObject, TellsWhatANodeIs)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n");
    const MObject mesh = nodeNamed("m");
    EXPECT_EQ(mesh.apiType(), MFn::kMesh);
    EXPECT_STREQ(mesh.apiTypeStr(), "kMesh");
    for (const MFn::Type type : {MFn::kMesh, MFn::kSurface, MFn::kGeometric, MFn::kShape,
                                 MFn::kDagNode, MFn::kDependencyNode, MFn::kBase}) {
        EXPECT_TRUE(mesh.hasFn(type)) << type;
    }
    for (const MFn::Type type : {MFn::kTransform, MFn::kNurbsSurface, MFn::kInvalid}) {
        EXPECT_FALSE(mesh.hasFn(type)) << type;
    }
    EXPECT_TRUE(nodeNamed("t").hasFn(MFn::kTransform));
    EXPECT_FALSE(nodeNamed("t").hasFn(MFn::kShape));
    EXPECT_TRUE(nodeNamed("lambert1").hasFn(MFn::kLambert));
    EXPECT_FALSE(nodeNamed("lambert1").hasFn(MFn::kDagNode));
    EXPECT_EQ(nodeNamed("world").apiType(), MFn::kWorld);
    EXPECT_TRUE(mesh == nodeNamed("m"));
    EXPECT_FALSE(mesh == nodeNamed("t"));
}

TEST(MObject, TellsKindsOfDerivedNodes)
{
    const OpenedScene scene("createNode file -n \"f\";\n"
                            "createNode movie -n \"v\";\n"
                            "createNode psdFileTex -n \"d\";\n"
                            "createNode place2dTexture -n \"p\";\n"
                            "createNode joint -n \"j\";\n"
                            "createNode blinn -n \"b\";\n");
    for (const char* name : {"f", "v", "d"}) {
        EXPECT_TRUE(nodeNamed(name).hasFn(MFn::kFileTexture)) << name;
        EXPECT_TRUE(nodeNamed(name).hasFn(MFn::kTexture2d)) << name;
    }
    EXPECT_FALSE(nodeNamed("p").hasFn(MFn::kFileTexture));
    EXPECT_EQ(nodeNamed("f").apiType(), MFn::kFileTexture);
    EXPECT_EQ(nodeNamed("j").apiType(), MFn::kJoint);
    EXPECT_TRUE(nodeNamed("j").hasFn(MFn::kTransform));
    EXPECT_EQ(nodeNamed("b").apiType(), MFn::kBlinn);
    EXPECT_TRUE(nodeNamed("b").hasFn(MFn::kReflect));
    EXPECT_TRUE(nodeNamed("initialShadingGroup").hasFn(MFn::kSet));
    EXPECT_EQ(nodeNamed("initialShadingGroup").apiType(), MFn::kShadingEngine);
}

TEST(MObject, IsNullWhenAnotherSceneIsOpened)
{
    const OpenedScene scene;
    const MObject node = nodeNamed("lambert1");
    const MObject attribute = MFnDependencyNode(node).attribute("color");
    ASSERT_FALSE(attribute.isNull());
    ASSERT_TRUE(openFile(scene.file));
    EXPECT_TRUE(node.isNull());
    EXPECT_FALSE(node.hasFn(MFn::kLambert));
    EXPECT_TRUE(attribute.isNull());
    EXPECT_TRUE(MPlug(node, attribute).isNull());
    EXPECT_TRUE(node == MObject::kNullObj);
    EXPECT_FALSE(node == nodeNamed("lambert1"));
    MStatus status;
    const MFnDependencyNode attached(node, &status);
    EXPECT_FALSE(status);
}

TEST(MFnDependencyNode, NamesTheNodeAndItsType)
{
    const OpenedScene scene("createNode transform -n \"ns:t\";\n"
                            "createNode mesh -n \"ns:m\" -p \"ns:t\";\n");
    const MFnDependencyNode mesh(nodeNamed("ns:m"));
    EXPECT_EQ(mesh.name(), "ns:m");
    EXPECT_EQ(mesh.typeName(), "mesh");
    EXPECT_EQ(MFnDependencyNode(nodeNamed("initialShadingGroup")).typeName(), "shadingEngine");
}

TEST(MFnDependencyNode, NamesTypesThatNobodyKnowsAsUnknown)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode someoneElsesShape -n \"s\" -p \"t\";\n"
                            "createNode someoneElsesNode -n \"n\";\n");
    EXPECT_EQ(MFnDependencyNode(nodeNamed("n")).typeName(), "unknown");
    EXPECT_EQ(nodeNamed("n").apiType(), MFn::kUnknown);
    EXPECT_EQ(MFnDependencyNode(nodeNamed("s")).typeName(), "unknownDag");
    EXPECT_EQ(nodeNamed("s").apiType(), MFn::kUnknownDag);
}

TEST(MFnDependencyNode, FindsAttributesByLongAndShortName)
{
    const OpenedScene scene;
    const MFnDependencyNode lambert(nodeNamed("lambert1"));
    MStatus status;
    const MObject color = lambert.attribute("color", &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(color == lambert.attribute("c"));
    EXPECT_FALSE(color == lambert.attribute("diffuse"));
    EXPECT_TRUE(color.hasFn(MFn::kAttribute));
    EXPECT_TRUE(lambert.hasAttribute("color"));
    EXPECT_FALSE(lambert.hasAttribute("specularColor"));
    EXPECT_TRUE(lambert.attribute("specularColor", &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(lambert.findPlug("nothing", true, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_EQ(lambert.findPlug("c", false, &status).name(), "lambert1.color");
    EXPECT_TRUE(status);
    EXPECT_EQ(lambert.findPlug("diffuse", &status).name(), "lambert1.diffuse");
    EXPECT_EQ(lambert.findPlug(color, true).name(), "lambert1.color");
}

TEST(MFnDependencyNode, ListsConnectedPlugsInTheOrderOfAttributes)
{
    const OpenedScene scene("createNode displayLayer -n \"layer1\";\n"
                            "createNode transform -n \"t\";\n"
                            "connectAttr \"layer1.di\" \"t.do\";\n"
                            "connectAttr \"layerManager.dli[1]\" \"layer1.id\";\n");
    MPlugArray plugs;
    ASSERT_TRUE(MFnDependencyNode(nodeNamed("layer1")).getConnections(plugs));
    Names names;
    for (unsigned int i = 0; i < plugs.length(); ++i) {
        names.push_back(text(plugs[i].name()));
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Names{"layer1.drawInfo", "layer1.identification"}));
    ASSERT_TRUE(MFnDependencyNode(nodeNamed("t")).getConnections(plugs));
    ASSERT_EQ(plugs.length(), 1u) << "the array is cleared first";
    EXPECT_EQ(plugs[0].name(), "t.drawOverride");
}

TEST(MFnLambertShader, AttachesToTheLambertFamilyOnly)
{
    const OpenedScene scene(kShaders);
    for (const char* name : {"lambert1", "l", "b", "p", "e", "a", "h"}) {
        MStatus status;
        const MFnLambertShader shader(nodeNamed(name), &status);
        EXPECT_TRUE(status) << name;
        EXPECT_EQ(shader.name(), name);
        EXPECT_FALSE(shader.attribute("outColor").isNull()) << name;
    }
    for (const char* name : {"s1", "s2", "s3", "s4", "s5", "s6", "initialShadingGroup"}) {
        MStatus status;
        const MFnLambertShader shader(nodeNamed(name), &status);
        EXPECT_EQ(status, MStatus::kInvalidParameter) << name;
    }
}

TEST(MFnDagNode, AttachesToDagNodesOnly)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n\tsetAttr \".io\" yes;\n");
    MStatus status;
    MFnDagNode(nodeNamed("lambert1"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    const MFnDagNode node(nodeNamed("m"), &status);
    EXPECT_TRUE(status);
    EXPECT_TRUE(node.isIntermediateObject());
    EXPECT_FALSE(MFnDagNode(nodeNamed("t")).isIntermediateObject());
    MDagPath path;
    EXPECT_TRUE(node.getPath(path)) << "the first path when attached to an object";
    EXPECT_EQ(path.fullPathName(), "|t|m");
    node.dagPath(&status);
    EXPECT_FALSE(status);
    EXPECT_EQ(MFnDagNode(path).dagPath(&status), path);
    EXPECT_TRUE(status);
}

} // namespace
