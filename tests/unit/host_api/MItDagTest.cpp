#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr const char* kTree = "createNode transform -n \"a\";\n"
                              "createNode transform -n \"b\" -p \"a\";\n"
                              "createNode locator -n \"bShape\" -p \"b\";\n"
                              "createNode transform -n \"c\" -p \"a\";\n"
                              "createNode transform -n \"d\";\n";

/// Shape under two transforms of which one is under a third, instanced itself.
constexpr const char* kInstances = "createNode transform -n \"one\";\n"
                                   "createNode locator -n \"shared\" -p \"one\";\n"
                                   "createNode transform -n \"two\";\n"
                                   "parent -s -nc -r -add \"|one|shared\" \"two\";\n";

/// "depth:path" of every node that a walk delivers below the default cameras.
std::vector<std::string> visited(MItDag& walk)
{
    std::vector<std::string> result;
    for (; !walk.isDone(); walk.next()) {
        MDagPath path;
        EXPECT_TRUE(walk.getPath(path));
        EXPECT_EQ(walk.fullPathName(), path.fullPathName());
        EXPECT_TRUE(walk.currentItem() == path.node());
        const std::string name = text(path.fullPathName());
        const std::string root = name.substr(0, name.find('|', 1));
        if (root != "|persp" && root != "|top" && root != "|front" && root != "|side") {
            result.push_back(std::to_string(walk.depth()) + ":" + name);
        }
    }
    return result;
}

using Names = std::vector<std::string>;

TEST(MItDag, DeliversTheWorldFirstWithoutAFilter)
{
    const OpenedScene scene(kTree);
    MItDag walk;
    ASSERT_FALSE(walk.isDone());
    MDagPath path;
    ASSERT_TRUE(walk.getPath(path));
    const MFnDagNode world(path);
    EXPECT_EQ(world.name(), "world");
    EXPECT_EQ(world.typeName(), "dagNode");
    EXPECT_EQ(world.fullPathName(), "");
    EXPECT_EQ(path.fullPathName(), "");
    EXPECT_EQ(path.length(), 0u);
    EXPECT_EQ(walk.depth(), 0u);
    EXPECT_EQ(path.apiType(), MFn::kWorld);
}

TEST(MItDag, WalksDepthFirstParentsBeforeChildrenAndThenSiblings)
{
    const OpenedScene scene(kTree);
    MItDag walk(MItDag::kDepthFirst, MFn::kInvalid);
    EXPECT_EQ(visited(walk), (Names{"0:", "1:|a", "2:|a|b", "3:|a|b|bShape", "2:|a|c", "1:|d"}));
    EXPECT_FALSE(walk.next()) << "beyond the end";
}

TEST(MItDag, WalksBreadthFirstByLevels)
{
    const OpenedScene scene(kTree);
    MItDag walk(MItDag::kBreadthFirst);
    EXPECT_EQ(visited(walk), (Names{"0:", "1:|a", "1:|d", "2:|a|b", "2:|a|c", "3:|a|b|bShape"}));
}

TEST(MItDag, DeliversTheDefaultCamerasBeforeTheNodesOfTheFile)
{
    const OpenedScene scene("createNode transform -n \"mine\";\n");
    Names names;
    for (MItDag walk(MItDag::kDepthFirst, MFn::kTransform); !walk.isDone(); walk.next()) {
        names.push_back(text(walk.fullPathName()));
    }
    EXPECT_EQ(names, (Names{"|persp", "|top", "|front", "|side", "|mine"}));
}

TEST(MItDag, DeliversOnlyWhatTheFilterTakesAndCountsDepthFromTheRoot)
{
    const OpenedScene scene(kTree);
    MItDag walk(MItDag::kDepthFirst, MFn::kLocator);
    EXPECT_EQ(visited(walk), Names{"3:|a|b|bShape"});
}

TEST(MItDag, IsDoneWithoutFailureWhenNothingMatches)
{
    const OpenedScene scene(kTree);
    MStatus status(MStatus::kFailure);
    const MItDag walk(MItDag::kDepthFirst, MFn::kMesh, &status);
    EXPECT_TRUE(walk.isDone());
    EXPECT_TRUE(status);
}

TEST(MItDag, DeliversAnInstanceOncePerPath)
{
    const OpenedScene scene(kInstances);
    MItDag walk(MItDag::kDepthFirst, MFn::kLocator);
    EXPECT_EQ(visited(walk), (Names{"2:|one|shared", "2:|two|shared"}));
    MItDag across(MItDag::kBreadthFirst, MFn::kLocator);
    EXPECT_EQ(visited(across), (Names{"2:|one|shared", "2:|two|shared"}));
    walk.reset();
    MDagPathArray paths;
    EXPECT_TRUE(walk.getAllPaths(paths));
    EXPECT_EQ(paths.length(), 2u);
}

TEST(MItDag, DeliversIntermediateObjects)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"orig\" -p \"t\";\n\tsetAttr \".io\" yes;\n");
    MItDag walk(MItDag::kDepthFirst, MFn::kMesh);
    EXPECT_EQ(visited(walk), Names{"2:|t|orig"});
}

TEST(MItDag, LeavesOutWhatIsBelowAPrunedNode)
{
    const OpenedScene scene(kTree);
    for (const auto type : {MItDag::kDepthFirst, MItDag::kBreadthFirst}) {
        MItDag walk(type, MFn::kTransform);
        Names names;
        for (; !walk.isDone(); walk.next()) {
            if (walk.fullPathName() == "|a") {
                EXPECT_TRUE(walk.prune());
                EXPECT_EQ(walk.fullPathName(), "|a") << "still the current one";
            }
            names.push_back(text(walk.fullPathName()));
        }
        EXPECT_EQ(names, (Names{"|persp", "|top", "|front", "|side", "|a", "|d"}));
    }
}

TEST(MItDag, BeginsAgainAndBelowAPath)
{
    const OpenedScene scene(kTree);
    MItDag walk;
    ASSERT_TRUE(walk.reset(pathNamed("|a"), MItDag::kDepthFirst));
    EXPECT_EQ(visited(walk), (Names{"0:|a", "1:|a|b", "2:|a|b|bShape", "1:|a|c"}));
    ASSERT_TRUE(walk.reset(pathNamed("|a"), MItDag::kBreadthFirst));
    EXPECT_EQ(visited(walk), (Names{"0:|a", "1:|a|b", "1:|a|c", "2:|a|b|bShape"}));
    EXPECT_TRUE(walk.reset());
    EXPECT_EQ(visited(walk).size(), 6u);
    EXPECT_FALSE(walk.reset(MDagPath()));
    EXPECT_TRUE(walk.isDone());
}

TEST(MItDag, IsDoneWhenAnotherSceneIsOpened)
{
    const OpenedScene scene(kTree);
    MItDag walk;
    ASSERT_TRUE(openFile(scene.file));
    EXPECT_TRUE(walk.isDone());
    EXPECT_FALSE(walk.next());
    MDagPath path;
    EXPECT_FALSE(walk.getPath(path));
    EXPECT_TRUE(walk.reset());
    EXPECT_FALSE(walk.isDone());
}

TEST(MItDag, RefusesToWalkUnderSurfaces)
{
    const OpenedScene scene;
    MItDag walk;
    EXPECT_TRUE(walk.traverseUnderWorld(false));
    EXPECT_FALSE(walk.traverseUnderWorld(true));
}

} // namespace
