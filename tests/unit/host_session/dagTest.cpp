// Paths, instances, matrices and visibility.
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using host::DiagnosticKind;
using host::Matrix4;
using host::session::DagPath;
using host::session::kNoNode;
using host::session::kWorld;

class Dag : public test::OpenScene {
protected:
    std::vector<std::string> pathsOf(std::string_view name)
    {
        std::vector<std::string> names;
        for (const DagPath& each : session.pathsTo(node(name))) {
            names.push_back(session.fullPathName(each));
        }
        return names;
    }
    bool isVisible(std::string_view fullPath) { return session.isVisible(path(fullPath)); }
    host::Vec3d place(std::string_view fullPath)
    {
        const Matrix4 matrix = session.inclusiveMatrix(path(fullPath));
        return {matrix.m[3][0], matrix.m[3][1], matrix.m[3][2]};
    }
};

// --- names and paths

TEST_F(Dag, TheWorldIsANamelessPath)
{
    EXPECT_EQ(session.fullPathName({}), "");
    EXPECT_EQ(session.graph().node(kWorld).name, "world");
    EXPECT_EQ(session.graph().node(kWorld).type.name(), "dagNode");
    EXPECT_EQ(session.pathsTo(kWorld), std::vector<DagPath>{DagPath{}});
    EXPECT_TRUE(session.isVisible({}));
    EXPECT_EQ(session.inclusiveMatrix({}), Matrix4{});
}

TEST_F(Dag, KeepsNamespacesAndEqualNamesUnderDifferentParents)
{
    open(R"(createNode transform -n "a:b:top";
        createNode transform -n "x" -p "a:b:top";
        createNode transform -n "other";
        createNode transform -n "x" -p "|other";
        createNode mesh -n "xShape" -p "other|x";)");
    EXPECT_EQ(pathsOf("|a:b:top|x"), std::vector<std::string>{"|a:b:top|x"});
    EXPECT_EQ(pathsOf("xShape"), std::vector<std::string>{"|other|x|xShape"});
}

TEST_F(Dag, RenamesASecondNodeOfOneNameAndGivesItsStatementsToIt)
{
    open(R"(createNode transform -n "a";
            setAttr ".tx" 1;
        createNode transform -n "a";
            setAttr ".tx" 2;)");
    EXPECT_EQ(number("a", "translateX"), 1);
    EXPECT_EQ(number("a1", "translateX"), 2);
}

TEST_F(Dag, PutsANodeOfAMissingParentBelowTheWorldAndSaysSo)
{
    open("createNode transform -n \"a\" -p \"nobody\";");
    EXPECT_EQ(pathsOf("a"), std::vector<std::string>{"|a"});
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingNode, "createNode"), 1U);
}

// --- instances

constexpr const char* kInstances = R"(
    createNode transform -n "a";
        setAttr ".t" -type "double3" 1 0 0 ;
    createNode mesh -n "shape" -p "a";
    createNode transform -n "b";
        setAttr ".t" -type "double3" 2 0 0 ;
    createNode transform -n "upper";
        setAttr ".t" -type "double3" 10 0 0 ;
    parent -s -nc -r -add "|a|shape" "b";
    parent -nc -r -add "|a" "upper";
)";

TEST_F(Dag, NumbersInstancesByParentsInOrder)
{
    open(kInstances);
    EXPECT_EQ(pathsOf("shape"),
              (std::vector<std::string>{"|a|shape", "|upper|a|shape", "|b|shape"}));
    const auto paths = session.pathsTo(node("shape"));
    for (std::uint32_t i = 0; i < paths.size(); ++i) {
        EXPECT_EQ(session.instanceNumber(paths[i]), i);
        EXPECT_TRUE(session.isInstanced(paths[i]));
    }
    EXPECT_FALSE(session.isInstanced(path("|upper")));
    EXPECT_EQ(session.firstPathTo(node("shape")), paths.front());
}

TEST_F(Dag, PlacesEachInstanceByItsOwnPath)
{
    open(kInstances);
    EXPECT_EQ(place("|a|shape").x, 1);
    EXPECT_EQ(place("|upper|a|shape").x, 11);
    EXPECT_EQ(place("|b|shape").x, 2);
    const auto world = [&](int instance) {
        const auto matrix =
            session.value(session.element(plug("shape", "worldMatrix"), instance)).data<Matrix4>();
        return matrix->m[3][0];
    };
    EXPECT_EQ(world(0), 1);
    EXPECT_EQ(world(1), 11);
    EXPECT_EQ(world(2), 2);
}

TEST_F(Dag, HidesAnInstanceBelowAHiddenParentOnly)
{
    open(std::string(kInstances) + "select \"upper\";\nsetAttr \".v\" no;");
    EXPECT_TRUE(isVisible("|a|shape"));
    EXPECT_FALSE(isVisible("|upper|a|shape"));
    EXPECT_TRUE(isVisible("|b|shape"));
}

TEST_F(Dag, ReparentsWithoutAddAndUnparentsWithRemove)
{
    open(std::string(kInstances) + R"(
        parent "upper" "b";
        parent -rm "|a|shape";)");
    EXPECT_EQ(pathsOf("upper"), std::vector<std::string>{"|b|upper"});
    EXPECT_EQ(pathsOf("shape"), std::vector<std::string>{"|b|shape"});
}

TEST_F(Dag, ParentsSeveralNodesAtOnce)
{
    open(R"(createNode transform -n "a"; createNode transform -n "b"; createNode transform -n "c";
        parent "a" "b" "c";
        parent "nobody" "c";
        parent "c" "a";)"); // below itself
    EXPECT_EQ(pathsOf("b"), std::vector<std::string>{"|c|b"});
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingNode, "parent"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::BadStatement, "parent"), 1U);
}

TEST_F(Dag, LimitsInstancesThatMultiply)
{
    // 40 levels with two ways each would be 2^40 paths.
    std::string text = "createNode transform -n \"n0\";\n";
    for (int i = 1; i <= 40; ++i) {
        const std::string above = std::to_string(i - 1);
        const std::string own = std::to_string(i);
        text += "createNode transform -n \"x" + own + "\" -p \"n" + above + "\";\n";
        text += "createNode transform -n \"y" + own + "\" -p \"n" + above + "\";\n";
        text += "createNode transform -n \"n" + own + "\" -p \"x" + own + "\";\n";
        text += "parent -add \"|n" + own + "\" \"y" + own + "\";\n";
        text += "parent -add \"n" + own + "\" \"y" + own + "\";\n";
    }
    open(text);
    std::size_t paths = 0;
    for (host::session::NodeId id = 1; id < session.graph().nodeCount(); ++id) {
        paths += session.pathsTo(id).size();
    }
    EXPECT_LE(paths, 100000U);
    EXPECT_EQ(timesNoted(DiagnosticKind::Limit, "instances"), 1U);
}

TEST_F(Dag, HasALimitedDepth)
{
    std::string text;
    for (int i = 0; i < 1500; ++i) {
        text += "createNode transform -n \"n" + std::to_string(i) + "\"";
        text += i == 0 ? ";\n" : " -p \"n" + std::to_string(i - 1) + "\";\n";
        text += "\tsetAttr \".tx\" 1;\n";
    }
    open(text);
    const DagPath deepest = session.firstPathTo(node("n1499"));
    EXPECT_LE(deepest.nodes.size(), 1000U);
    EXPECT_EQ(session.inclusiveMatrix(deepest).m[3][0], static_cast<double>(deepest.nodes.size()));
}

// --- matrices

TEST_F(Dag, ReadsEveryChannelOfATransform)
{
    // The origin: scaled about (1 0 0) by 2 to (-1 0 0), 3 by the scale pivot's translation to
    // (2 0 0); turned by 180 degrees about y at (4 0 0) to (6 0 0); 5 by the rotate pivot's
    // translation; moved by 100.
    open(R"(createNode transform -n "a";
            setAttr ".t" -type "double3" 100 0 0 ;
            setAttr ".r" -type "double3" 0 180 0 ;
            setAttr ".ro" 3;
            setAttr ".s" -type "double3" 2 1 1 ;
            setAttr ".rp" -type "double3" 4 0 0 ;
            setAttr ".rpt" -type "double3" 5 0 0 ;
            setAttr ".sp" -type "double3" 1 0 0 ;
            setAttr ".spt" -type "double3" 3 0 0 ;)");
    EXPECT_NEAR(place("a").x, 111, 1e-12);
    const Matrix4 local = session.localMatrix(node("a")).valueOr({});
    EXPECT_NEAR(local.m[0][0], -2, 1e-12);
    EXPECT_NEAR(local.m[2][2], -1, 1e-12);
}

TEST_F(Dag, ReadsSingleChannelsAndLongNames)
{
    open(R"(createNode transform -n "a";
            setAttr ".tx" 1;
            setAttr ".t.ty" 2;
            setAttr ".translate.translateZ" 3;
            setAttr ".sx" 5;)");
    EXPECT_EQ(place("a").x, 1);
    EXPECT_EQ(place("a").y, 2);
    EXPECT_EQ(place("a").z, 3);
    EXPECT_EQ(session.localMatrix(node("a")).valueOr({}).m[0][0], 5);
}

TEST_F(Dag, LeavesParentsOutWithoutInheritsTransform)
{
    open(R"(createNode transform -n "a";
            setAttr ".tx" 10;
        createNode transform -n "b" -p "a";
            setAttr ".tx" 1;
            setAttr ".it" no;
        createNode transform -n "c" -p "b";
            setAttr ".tx" 0.5;)");
    EXPECT_EQ(place("b").x, 1);
    EXPECT_EQ(place("c").x, 1.5);
}

TEST_F(Dag, PutsTheOffsetBetweenANodeAndItsParent)
{
    open(R"(createNode transform -n "a";
            setAttr ".sx" 2;
        createNode transform -n "b" -p "a";
            setAttr ".tx" 1;
            setAttr ".opm" -type "matrix" 3 0 0 0 0 1 0 0 0 0 1 0 10 0 0 1 ;)");
    EXPECT_EQ(place("b").x, 26); // (1 * 3 + 10) * 2
    EXPECT_EQ(session.localMatrix(node("b")).valueOr({}).m[3][0], 1);
}

TEST_F(Dag, PlacesPathsInAnyOrder)
{
    open(R"(createNode transform -n "a"; setAttr ".tx" 1;
        createNode transform -n "b" -p "a"; setAttr ".tx" 10;
        createNode transform -n "c" -p "b"; setAttr ".tx" 100;
        createNode transform -n "d" -p "a"; setAttr ".tx" 1000;)");
    EXPECT_EQ(place("c").x, 111);
    EXPECT_EQ(place("d").x, 1001);
    EXPECT_EQ(place("a").x, 1);
    EXPECT_EQ(place("b").x, 11);
    EXPECT_EQ(session.inclusiveMatrix({}), Matrix4{});
    EXPECT_EQ(place("c").x, 111);
}

TEST_F(Dag, CompensatesAJointForItsParentsScaleWhenConnected)
{
    const std::string joints = R"(createNode joint -n "a";
            setAttr ".s" -type "double3" 4 1 1 ;
        createNode joint -n "b" -p "a";
            setAttr ".tx" 3;
            setAttr ".jo" -type "double3" 0 0 90 ;)";
    open(joints);
    EXPECT_NEAR(session.inclusiveMatrix(path("b")).m[1][0], -4, 1e-12); // y axis to -x, scaled
    open(joints + "connectAttr \"a.s\" \"b.is\";");
    EXPECT_NEAR(session.inclusiveMatrix(path("b")).m[1][0], -1, 1e-12);
    EXPECT_NEAR(place("b").x, 12, 1e-12);
    open(joints + "connectAttr \"a.s\" \"b.is\";\nselect \"b\";\nsetAttr \".ssc\" no;");
    EXPECT_NEAR(session.inclusiveMatrix(path("b")).m[1][0], -4, 1e-12);
}

TEST_F(Dag, GivesLocalMatricesOfTransformsOnly)
{
    open("createNode transform -n \"a\"; createNode mesh -n \"m\" -p \"a\";"
         "createNode parentConstraint -n \"c\" -p \"a\";");
    EXPECT_TRUE(session.localMatrix(node("c")));
    for (const host::session::NodeId id : {node("m"), node("lambert1"), kWorld, kNoNode}) {
        const auto matrix = session.localMatrix(id);
        ASSERT_FALSE(matrix);
        EXPECT_EQ(matrix.error().code, host::ErrorCode::InvalidParameter);
    }
}

TEST_F(Dag, LetsAConnectedChannelWin)
{
    open(R"(createNode transform -n "a";
            setAttr ".tx" 7;
        createNode transform -n "b";
            setAttr ".tx" 1;
        createNode unitConversion -n "half";
            setAttr ".cf" 0.5;
        connectAttr "a.tx" "half.i";
        connectAttr "half.o" "b.tx";)");
    EXPECT_EQ(place("b").x, 3.5);
}

TEST_F(Dag, KeepsTheSavedPoseWhereConstraintsAreNotComputed)
{
    open(R"(createNode transform -n "a";
            setAttr -av ".tx" 7;
            setAttr ".ry" 90;
        createNode pointConstraint -n "p" -p "a";
        connectAttr "p.ctx" "a.tx";
        connectAttr "p.cty" "a.ty";
        connectAttr "p.ctz" "a.tz";)");
    EXPECT_EQ(place("a").x, 7);
    EXPECT_EQ(place("a").y, 0);
    EXPECT_EQ(timesNoted(DiagnosticKind::UncomputedNode, "pointConstraint"), 1U);
}

// --- visibility

TEST_F(Dag, HidesByVisibilityAndLevelOfDetailOnEveryLevel)
{
    open(R"(createNode transform -n "a";
        createNode transform -n "b" -p "a";
        createNode mesh -n "m" -p "b";
        createNode transform -n "off"; setAttr ".v" no;
        createNode transform -n "offChild" -p "off";
        createNode transform -n "lod"; setAttr ".lodv" no;
        createNode transform -n "lodChild" -p "lod";)");
    EXPECT_TRUE(isVisible("m"));
    EXPECT_FALSE(isVisible("off"));
    EXPECT_FALSE(isVisible("offChild"));
    EXPECT_FALSE(isVisible("lodChild"));
}

TEST_F(Dag, HidesIntermediateObjects)
{
    open(R"(createNode transform -n "a";
        createNode mesh -n "m" -p "a"; setAttr ".io" yes;)");
    EXPECT_TRUE(isVisible("a"));
    EXPECT_FALSE(isVisible("m"));
}

TEST_F(Dag, HidesByAnOverrideOnlyWhenItIsEnabled)
{
    open(R"(createNode transform -n "both"; setAttr ".ove" yes; setAttr ".ovv" no;
        createNode transform -n "notEnabled"; setAttr ".ovv" no;
        createNode transform -n "shown"; setAttr ".ove" yes;)");
    EXPECT_FALSE(isVisible("both"));
    EXPECT_TRUE(isVisible("notEnabled"));
    EXPECT_TRUE(isVisible("shown"));
}

TEST_F(Dag, HidesTheMembersOfAHiddenDisplayLayer)
{
    open(R"(createNode transform -n "member";
        createNode transform -n "below" -p "member";
        createNode transform -n "disabled";
        createNode transform -n "shown";
        createNode displayLayer -n "hidden"; setAttr ".v" no; setAttr ".do" 1;
        createNode displayLayer -n "off"; setAttr ".v" no; setAttr ".e" no;
        createNode displayLayer -n "on"; setAttr ".dt" 2;
        connectAttr "hidden.di" "member.do";
        connectAttr "off.di" "disabled.do";
        connectAttr "on.di" "shown.do";
        connectAttr "layerManager.dli[1]" "hidden.id";)");
    EXPECT_FALSE(isVisible("member"));
    EXPECT_FALSE(isVisible("below"));
    EXPECT_TRUE(isVisible("disabled"));
    EXPECT_TRUE(isVisible("shown")); // referenced display hides nothing
}

TEST_F(Dag, MapsALayersDrawInfoToItsMembersOverrideByPosition)
{
    open(R"(createNode transform -n "member";
        createNode displayLayer -n "layer";
            setAttr ".dt" 2; setAttr ".lod" 1; setAttr ".s" no; setAttr ".t" no; setAttr ".p" no;
        connectAttr "layer.di" "member.do";)");
    EXPECT_EQ(number("member", "overrideDisplayType"), 2);
    EXPECT_EQ(number("member", "overrideLevelOfDetail"), 1);
    EXPECT_EQ(number("member", "overrideShading"), 0);
    EXPECT_EQ(number("member", "overrideTexturing"), 0);
    EXPECT_EQ(number("member", "overridePlayback"), 0);
    EXPECT_EQ(number("member", "overrideEnabled"), 1);
    EXPECT_EQ(number("member", "overrideVisibility"), 1);
}

TEST_F(Dag, IsNotHiddenByTemplateOrRenderFlags)
{
    open(R"(createNode transform -n "a"; setAttr ".tmp" yes; setAttr ".hio" yes;
        createNode mesh -n "m" -p "a"; setAttr ".vis" no; setAttr ".csh" no;)");
    EXPECT_TRUE(isVisible("m"));
}

TEST_F(Dag, FollowsAConnectedVisibilityThroughTime)
{
    open(R"(createNode transform -n "a";
        createNode unitConversion -n "u"; setAttr ".cf" 0;
        connectAttr ":time1.o" "u.i";
        connectAttr "u.o" "a.v";)");
    EXPECT_FALSE(isVisible("a"));
}

TEST_F(Dag, ListsShapesByTheirShortestUniqueNamesEachOnce)
{
    open(R"(createNode transform -n "a"; createNode mesh -n "s" -p "a";
        createNode transform -n "b"; createNode mesh -n "s" -p "b";
        createNode transform -n "c"; createNode transform -n "b" -p "c";
        createNode mesh -n "s" -p "|c|b";
        createNode mesh -n "only" -p "a"; setAttr ".io" yes;
        parent -s -add "|a|only" "|b";)");
    const auto names = session.executeCommand("ls -shapes").valueOr({});
    ASSERT_EQ(names.size(), 8U);
    EXPECT_EQ(std::vector<std::string>(names.begin() + 4, names.end()),
              (std::vector<std::string>{"a|s", "|b|s", "c|b|s", "only"}));
}

} // namespace
