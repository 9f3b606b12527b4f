// Sets and shading groups of shapes.
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

namespace {

using Faces = std::vector<std::uint32_t>;

class Sets : public test::OpenScene {
protected:
    /// "set" for the whole object, "set 0 2" for faces, "set -" for no face.
    std::vector<std::string> sets(std::string_view shape, std::uint32_t instance = 0,
                                  bool renderableOnly = true)
    {
        const auto found = session.connectedSets(node(shape), instance, renderableOnly);
        EXPECT_TRUE(found);
        std::vector<std::string> texts;
        for (const auto& entry : found.valueOr({})) {
            std::string text = session.graph().node(entry.set).name;
            if (entry.faces != nullptr) {
                text += entry.faces->empty() ? " -" : "";
                for (const std::uint32_t face : *entry.faces) {
                    text += ' ';
                    text += std::to_string(face);
                }
            }
            texts.push_back(text);
        }
        return texts;
    }
    void openShapes(const std::string& more)
    {
        open(R"(createNode transform -n "a";
            createNode mesh -n "s" -p "a";)" +
             test::squareMesh() + R"(
            createNode transform -n "b";
            parent -s -nc -r -add "|a|s" "b";
            createNode shadingEngine -n "red"; setAttr ".ro" yes;
            createNode shadingEngine -n "blue"; setAttr ".ro" yes;
            createNode objectSet -n "picked";
            connectAttr "red.pa" ":renderPartition.st" -na;
            connectAttr "blue.pa" ":renderPartition.st" -na;)" +
             more);
    }
    using Texts = std::vector<std::string>;
};

TEST_F(Sets, HoldAWholeObject)
{
    openShapes("connectAttr \"s.iog\" \":initialShadingGroup.dsm\" -na;");
    EXPECT_EQ(sets("s"), Texts{"initialShadingGroup"});
    EXPECT_EQ(sets("s", 1), Texts{});
}

TEST_F(Sets, AreChosenByThePathOfTheInstance)
{
    openShapes(R"(connectAttr "|a|s.iog" "red.dsm" -na;
        connectAttr "|b|s.iog" "blue.dsm" -na;)");
    EXPECT_EQ(sets("s", 0), Texts{"red"});
    EXPECT_EQ(sets("s", 1), Texts{"blue"});
}

TEST_F(Sets, HoldFacesThatTheShapeLists)
{
    openShapes(R"(select "s";
        setAttr -s 2 ".iog[0].og";
        setAttr ".iog[0].og[1].gcl" -type "componentList" 2 "f[3]" "f[0]";
        setAttr ".iog[0].og[4].gcl" -type "componentList" 1 "f[1:2]";
        connectAttr "s.iog.og[4]" "red.dsm" -na;
        connectAttr "s.iog.og[1]" "blue.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"blue 0 3", "red 1 2"})); // by ascending group
}

TEST_F(Sets, OfGroupsWithoutFacesStayWithNone)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[1].gcl" -type "componentList" 1 "f[0:3]";
        connectAttr "s.iog.og[0]" ":initialShadingGroup.dsm" -na;
        connectAttr "s.iog.og[1]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"initialShadingGroup -", "red 0 1 2 3"}));
}

TEST_F(Sets, ComeFromTheHistoryByTheGroupsNumber)
{
    openShapes(R"(createNode transform -n "c";
        createNode mesh -n "final" -p "c";
            setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[0]";
        createNode groupId -n "id1"; createNode groupId -n "id2";
        createNode groupParts -n "parts1";
            setAttr ".ic" -type "componentList" 1 "f[2:3]";
        connectAttr "s.w" "parts1.ig";
        connectAttr "id1.id" "parts1.gi";
        connectAttr "parts1.og" "final.i";
        connectAttr "id1.id" "final.iog.og[0].gid";
        connectAttr "final.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("final"), Texts{"red 2 3"});
}

TEST_F(Sets, OfAStaleNumberFallBackToTheShapesList)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[1]";
        createNode groupId -n "id1";
        connectAttr "id1.id" "s.iog.og[0].gid";
        connectAttr "s.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), Texts{"red 1"});
}

TEST_F(Sets, ThatAreNoShadingGroupsAreLeftOutOnRequest)
{
    openShapes(R"(connectAttr "s.iog" "picked.dsm" -na;
        connectAttr "s.iog" "red.dsm" -na;)");
    EXPECT_EQ(sets("s", 0, true), Texts{"red"});
    EXPECT_EQ(sets("s", 0, false), (Texts{"picked", "red"}));
}

TEST_F(Sets, MetTwiceAreOneEntryWithAllFaces)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[0]";
        setAttr ".iog[0].og[1].gcl" -type "componentList" 1 "f[1]";
        setAttr ".iog[0].og[2].gcl" -type "componentList" 1 "f[3]";
        connectAttr "s.iog.og[0]" "red.dsm" -na;
        connectAttr "s.iog.og[1]" "blue.dsm" -na;
        connectAttr "s.iog.og[2]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"red 0 3", "blue 1"}));
}

TEST_F(Sets, OfOnePartitionShareNoFaceTheLastConnectionWins)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[0:2]";
        setAttr ".iog[0].og[1].gcl" -type "componentList" 1 "f[2:3]";
        connectAttr "s.iog.og[1]" "blue.dsm" -na;
        connectAttr "s.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"red 0 1 2", "blue 3"}));
}

TEST_F(Sets, OfAWholeObjectLoseTheFacesThatWereGivenAwayLater)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[1]";
        connectAttr "s.iog" "blue.dsm" -na;
        connectAttr "s.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"blue 0 2 3", "red 1"}));
}

TEST_F(Sets, BesidesAnEmptyGroupStayWhole)
{
    openShapes(R"(connectAttr "s.iog" "blue.dsm" -na;
        connectAttr "s.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), (Texts{"blue", "red -"}));
}

TEST_F(Sets, TakeFacesThatTheMeshHasOnly)
{
    openShapes(R"(select "s";
        setAttr ".iog[0].og[0].gcl" -type "componentList" 2 "f[2:1000000000]" "vtx[0]";
        connectAttr "s.iog.og[0]" "red.dsm" -na;)");
    EXPECT_EQ(sets("s"), Texts{"red 2 3"});
}

TEST_F(Sets, OfAnInstanceThatIsNotThereAreAFailure)
{
    openShapes("");
    const auto found = session.connectedSets(node("s"), 2, true);
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().code, host::ErrorCode::InvalidParameter);
    EXPECT_FALSE(session.connectedSets(node("red"), 0, true)); // not in the DAG
}

TEST_F(Sets, HoldSurfacesAsAWhole)
{
    openShapes(R"(createNode nurbsSurface -n "n" -p "a";
        connectAttr "n.iog" "red.dsm" -na;)");
    EXPECT_EQ(sets("n"), Texts{"red"});
}

TEST_F(Sets, AreConnectedInOrderWithoutAnIndex)
{
    openShapes(R"(connectAttr "|a|s.iog" "red.dsm";
        connectAttr "|b|s.iog" "red.dsm" -na;)");
    const auto members = plug("red", "dagSetMembers");
    EXPECT_EQ(session.plugName(session.source(session.element(members, 0))), "s.instObjGroups[0]");
    EXPECT_EQ(session.plugName(session.source(session.element(members, 1))), "s.instObjGroups[1]");
}

} // namespace
