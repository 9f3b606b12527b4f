#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnTransform.h>

#include <gtest/gtest.h>

namespace {

constexpr const char* kInstances = "createNode transform -n \"one\";\n"
                                   "\tsetAttr \".t\" -type \"double3\" 1 0 0;\n"
                                   "createNode locator -n \"shared\" -p \"one\";\n"
                                   "createNode transform -n \"two\";\n"
                                   "\tsetAttr \".t\" -type \"double3\" 0 2 0;\n"
                                   "createNode transform -n \"ns:in\" -p \"two\";\n"
                                   "\tsetAttr \".s\" -type \"double3\" 3 3 3;\n"
                                   "parent -s -nc -r -add \"|one|shared\" \"|two|ns:in\";\n";

TEST(MDagPath, NamesEveryNodeWithItsNamespace)
{
    const OpenedScene scene(kInstances);
    const MDagPath path = pathNamed("|two|ns:in|shared");
    ASSERT_TRUE(path.isValid());
    EXPECT_EQ(path.length(), 3u);
    EXPECT_EQ(MFnDagNode(path).name(), "shared");
    EXPECT_EQ(MFnDagNode(pathNamed("|two|ns:in")).name(), "ns:in");
    EXPECT_EQ(MFnDagNode(path).fullPathName(), "|two|ns:in|shared");
}

TEST(MDagPath, NumbersInstancesInTheOrderOfTheirLinks)
{
    const OpenedScene scene(kInstances);
    const MDagPath first = pathNamed("|one|shared");
    const MDagPath second = pathNamed("|two|ns:in|shared");
    EXPECT_EQ(first.instanceNumber(), 0u);
    EXPECT_EQ(second.instanceNumber(), 1u);
    EXPECT_TRUE(first.isInstanced());
    EXPECT_TRUE(second.isInstanced());
    EXPECT_FALSE(pathNamed("|one").isInstanced());
    EXPECT_TRUE(first.node() == second.node());
    EXPECT_FALSE(first == second);

    MDagPathArray paths;
    ASSERT_TRUE(MDagPath::getAllPathsTo(first.node(), paths));
    ASSERT_EQ(paths.length(), 2u);
    EXPECT_TRUE(paths[0] == first);
    EXPECT_TRUE(paths[1] == second);
    MDagPath any;
    ASSERT_TRUE(MDagPath::getAPathTo(first.node(), any));
    EXPECT_TRUE(any == first);
    EXPECT_EQ(MFnDagNode(second).instanceCount(true), 2u);
    EXPECT_EQ(MFnDagNode(second).parentCount(), 2u);
    EXPECT_TRUE(MFnDagNode(second).parent(0) == nodeNamed("one"));
}

TEST(MDagPath, MultipliesTheTransformsOfThePath)
{
    const OpenedScene scene(kInstances);
    EXPECT_EQ(pathNamed("|one|shared").inclusiveMatrix()[3][0], 1);
    EXPECT_EQ(pathNamed("|one").inclusiveMatrix()[3][0], 1);
    const MMatrix second = pathNamed("|two|ns:in|shared").inclusiveMatrix();
    EXPECT_EQ(second[3][1], 2);
    EXPECT_EQ(second[0][0], 3);
    EXPECT_EQ(pathNamed("|two").inclusiveMatrix()[0][0], 1);
}

TEST(MDagPath, FailsForNodesOutsideTheDag)
{
    const OpenedScene scene;
    MDagPath path;
    EXPECT_EQ(MDagPath::getAPathTo(nodeNamed("lambert1"), path), MStatus::kInvalidParameter);
    EXPECT_FALSE(path.isValid());
    MDagPathArray paths;
    EXPECT_EQ(MDagPath::getAllPathsTo(nodeNamed("lambert1"), paths), MStatus::kInvalidParameter);
}

TEST(MDagPath, GoesUpAndDown)
{
    const OpenedScene scene(kInstances);
    MDagPath path = pathNamed("|two|ns:in|shared");
    ASSERT_TRUE(path.pop());
    EXPECT_EQ(path.fullPathName(), "|two|ns:in");
    EXPECT_EQ(path.childCount(), 1u);
    EXPECT_TRUE(path.child(0) == nodeNamed("shared"));
    EXPECT_TRUE(path.push(nodeNamed("shared")));
    EXPECT_EQ(path.fullPathName(), "|two|ns:in|shared");
    EXPECT_EQ(path.push(nodeNamed("one")), MStatus::kInvalidParameter);
    EXPECT_FALSE(path.pop(4));
    EXPECT_EQ(path.length(), 3u);
    EXPECT_TRUE(path.pop(3));
    EXPECT_EQ(path.length(), 0u);
    MStatus status;
    EXPECT_TRUE(path.child(99, &status).isNull());
    EXPECT_FALSE(status);
}

TEST(MDagPath, IsVoidWhenAnotherSceneIsOpened)
{
    const OpenedScene scene(kInstances);
    const MDagPath path = pathNamed("|one|shared");
    const MFnDagNode node(path);
    ASSERT_TRUE(openFile(scene.file));
    EXPECT_FALSE(path.isValid());
    EXPECT_EQ(path.fullPathName(), "");
    EXPECT_TRUE(path.node().isNull());
    EXPECT_FALSE(path.isVisible());
    MStatus status;
    EXPECT_EQ(node.name(&status), "");
    EXPECT_EQ(status.errorString(), "(kFailure): Object does not exist");
}

// One transform with a locator, with a statement about one of them.
bool isVisibleWith(const std::string& aboutTransform, const std::string& aboutShape,
                   const std::string& atTheEnd = "")
{
    const OpenedScene scene("createNode transform -n \"t\";\n" + aboutTransform +
                            "createNode locator -n \"s\" -p \"t\";\n" + aboutShape + atTheEnd);
    return pathNamed("|t|s").isVisible();
}

TEST(MDagPath, IsVisibleUnlessANodeOfThePathHides)
{
    EXPECT_TRUE(isVisibleWith("", ""));
    EXPECT_FALSE(isVisibleWith("\tsetAttr \".v\" no;\n", ""));
    EXPECT_FALSE(isVisibleWith("", "\tsetAttr \".v\" no;\n"));
    EXPECT_FALSE(isVisibleWith("", "\tsetAttr \".io\" yes;\n"));
    EXPECT_FALSE(isVisibleWith("\tsetAttr \".lodv\" no;\n", ""));
}

TEST(MDagPath, IsHiddenByEnabledOverridesOnly)
{
    EXPECT_FALSE(isVisibleWith("\tsetAttr \".ove\" yes;\n\tsetAttr \".ovv\" no;\n", ""));
    EXPECT_TRUE(isVisibleWith("\tsetAttr \".ovv\" no;\n", ""));
    EXPECT_TRUE(isVisibleWith("\tsetAttr \".ove\" yes;\n", ""));
}

TEST(MDagPath, IsNotHiddenByTemplatesOrRenderStatistics)
{
    EXPECT_TRUE(isVisibleWith("\tsetAttr \".tmp\" yes;\n", "\tsetAttr \".tmp\" yes;\n"));
    EXPECT_TRUE(isVisibleWith("\tsetAttr \".hio\" yes;\n", ""));
}

TEST(MDagPath, IsHiddenByAHiddenLayer)
{
    const std::string layer = "createNode displayLayer -n \"layer1\";\n";
    const std::string link = "connectAttr \"layer1.di\" \"t.do\";\n";
    EXPECT_FALSE(isVisibleWith("", "", layer + "\tsetAttr \".v\" no;\n" + link));
    EXPECT_TRUE(isVisibleWith("", "", layer + link));
}

TEST(MFnTransform, GivesTheLocalMatrix)
{
    const OpenedScene scene(kInstances);
    MStatus status;
    const MFnTransform transform(pathNamed("|two|ns:in"), &status);
    ASSERT_TRUE(status);
    const MMatrix local = transform.transformation(&status).asMatrix();
    EXPECT_TRUE(status);
    EXPECT_EQ(local[0][0], 3);
    EXPECT_EQ(local[3][1], 0) << "without the parent's";
    EXPECT_EQ(MFnTransform(nodeNamed("one")).transformation().asMatrix()[3][0], 1);
}

TEST(MFnTransform, AttachesToTransformsAndWhatDerivesFromThem)
{
    const OpenedScene scene("createNode joint -n \"j\";\n"
                            "createNode ikHandle -n \"i\";\n"
                            "createNode transform -n \"t\";\n"
                            "createNode locator -n \"s\" -p \"t\";\n"
                            "createNode parentConstraint -n \"c\" -p \"t\";\n");
    for (const char* name : {"j", "i", "t", "c"}) {
        MStatus status;
        const MFnTransform transform(nodeNamed(name), &status);
        EXPECT_TRUE(status) << name;
    }
    MStatus status;
    MFnTransform transform(nodeNamed("t"));
    EXPECT_EQ(transform.setObject(nodeNamed("s")), MStatus::kInvalidParameter);
    EXPECT_EQ(transform.name(), "t") << "stays attached as it was";
    const MFnTransform shape(pathNamed("|t|s"), &status);
    EXPECT_EQ(status.errorString(), "(kInvalidParameter): Object is incompatible with this method");
}

} // namespace
