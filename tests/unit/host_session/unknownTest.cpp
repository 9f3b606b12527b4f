// Types, attributes and statements that nobody knows, and broken ones.
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

namespace {

using host::DiagnosticKind;

class Unknown : public test::OpenScene {};

TEST_F(Unknown, TypesOutsideTheDagKeepTheirAttributesAndConnections)
{
    open(R"(requires -nodeType "glassThing" "glass" "1.0";
        createNode glassThing -n "g";
            addAttr -ln "ior" -sn "ior" -dv 1.5 -at "float";
            setAttr ".ior" 1.25;
            setAttr ".tint" -type "float3" 1 0.5 0.25 ;
            setAttr ".note" -type "string" "clear";
        createNode glassThing -n "h";
        connectAttr "g.oc" "h.base[2].color";
        connectAttr "g.ior" ":lambert1.dc";)");
    EXPECT_EQ(typeName("g"), "glassThing");
    EXPECT_EQ(hostType("g"), "unknown");
    EXPECT_EQ(number("g", "ior"), 1.25);
    EXPECT_EQ(session.text(plug("g", "note")), "clear");
    EXPECT_EQ(session.destinations(plug("g", "oc")).size(), 1U);
    EXPECT_EQ(number("lambert1", "diffuse"), 1.25);
    EXPECT_EQ(timesNoted(DiagnosticKind::UnknownNodeType, "glassThing"), 2U);
    EXPECT_EQ(session.diagnostics().count(DiagnosticKind::UnknownAttribute), 0U);
}

TEST_F(Unknown, TypesWithAParentAreShapesOfTheDag)
{
    open(R"(createNode transform -n "a";
        createNode puffShape -n "p" -p "a";
            setAttr -k off ".v";
            setAttr ".s" 5;)");
    EXPECT_EQ(hostType("p"), "unknownDag");
    EXPECT_EQ(typeName("p"), "puffShape");
    EXPECT_EQ(session.fullPathName(path("p")), "|a|p");
    EXPECT_EQ(number("p", "s"), 5); // one number is no scale
    EXPECT_EQ(session.executeCommand("ls -shapes").valueOr({}).back(), "p");
}

TEST_F(Unknown, TypesThatArePlacedLikeTransformsBecomeThem)
{
    open(R"(currentUnit -l meter -a degree;
        createNode transform -n "a";
        createNode transform -n "before" -p "a";
        createNode rigThing -n "r" -p "a";
            addAttr -ln "weight" -sn "w" -dv 2 -at "double";
            addAttr -ln "both" -sn "b" -at "compound" -nc 2;
            addAttr -ln "left" -sn "lefty" -p "both" -at "double";
            addAttr -ln "right" -sn "righty" -p "both" -at "double";
            setAttr ".w" 7;
            setAttr ".righty" 3;
            setAttr ".t" -type "double3" 1 2 3 ;
            setAttr ".r" -type "double3" 0 0 180 ;
        createNode transform -n "after" -p "a";
        createNode transform -n "c" -p "r";
        connectAttr "r.w" "c.tx";)");
    EXPECT_EQ(hostType("r"), "unknownTransform");
    EXPECT_EQ(typeName("r"), "rigThing");
    EXPECT_EQ(number("r", "weight"), 7);
    EXPECT_EQ(number("r", "right"), 3);
    EXPECT_EQ(session.children(plug("r", "both")).size(), 2U);
    EXPECT_EQ(session.fullPathName(path("c")), "|a|r|c");
    const host::Matrix4 matrix = session.inclusiveMatrix(path("c"));
    EXPECT_NEAR(matrix.m[3][0], 100 - 7, 1e-9); // turned round
    EXPECT_NEAR(matrix.m[3][1], 200, 1e-9);
    std::vector<std::string> names;
    for (const auto child : session.graph().node(node("a")).children) {
        names.push_back(session.graph().node(child).name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"before", "r", "after"}));
    EXPECT_EQ(timesNoted(DiagnosticKind::UnknownNodeType, "rigThing"), 1U);
}

TEST_F(Unknown, TypesWithChildrenBecomeTransformsWithAllTheyHave)
{
    open(R"(createNode lambert -n "l";
        createNode rigThing -n "r";
            setAttr ".speed[1]" 4;
            setAttr ".label" -type "string" "x";
            connectAttr "l.oc" ".color";
            connectAttr ".out" "l.dc";
        createNode transform -n "c" -p "r";
            setAttr ".tx" 1;)");
    EXPECT_EQ(hostType("r"), "unknownTransform");
    EXPECT_EQ(session.fullPathName(path("c")), "|r|c");
    EXPECT_EQ(session.text(plug("r", "label")), "x");
    EXPECT_EQ(session.number(session.element(plug("r", "speed"), 1), 0), 4);
    EXPECT_EQ(session.source(plug("r", "color")).node, node("l"));
    EXPECT_EQ(session.source(plug("l", "diffuse")).node, node("r"));
    std::size_t alive = 0;
    for (host::session::NodeId id = 0; id < session.graph().nodeCount(); ++id) {
        const auto& each = session.graph().node(id);
        alive += each.isAlive && each.unknownType == "rigThing" ? 1 : 0;
    }
    EXPECT_EQ(alive, 1U);
    EXPECT_NE(
        session.report().find("\"total\": " + std::to_string(session.graph().nodeCount() - 2)),
        std::string::npos); // without the world and the node that was replaced
}

TEST_F(Unknown, AttributesOfKnownTypesAreKeptAndNotedOncePerTypeAndName)
{
    open(R"(createNode transform -n "a"; setAttr ".aiThing" 3;
        createNode transform -n "b"; setAttr ".aiThing" 4; setAttr ".aiName" -type "string" "n";)");
    EXPECT_EQ(number("b", "aiThing"), 4);
    EXPECT_EQ(session.text(plug("b", "aiName")), "n");
    EXPECT_EQ(timesNoted(DiagnosticKind::UnknownAttribute, "transform.aiThing"), 2U);
}

TEST_F(Unknown, StatementsAreSkippedWithTheirPlace)
{
    open("<<<<<<< HEAD;\ncreateNode transform -n \"a\";\n");
    EXPECT_TRUE(has("a"));
    EXPECT_EQ(session.diagnostics().count(DiagnosticKind::UnknownStatement), 1U);
    EXPECT_EQ(session.diagnostics().entries().front().firstWhere, "line 2, column 1");
}

TEST_F(Unknown, NodesAndPlugsInStatementsAreSkippedAndNoted)
{
    open(R"(createNode transform -n "a";
        connectAttr "ghost.tx" "a.tx";
        connectAttr "a.tx" "ghost.tx";
        connectAttr "a.[" "a.ty";
        setAttr "ghost.tx" 5;
        select -ne ":ghost";
        setAttr ".tx" 5;
        addAttr -ln "x" -at "double";
        select -ne "a";
        setAttr ".tx" 6;)");
    EXPECT_EQ(number("a", "translateX"), 6);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingNode, "connectAttr"), 2U);
    EXPECT_EQ(timesNoted(DiagnosticKind::BadStatement, "connectAttr"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingNode, "setAttr"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingNode, "select"), 1U);
}

TEST_F(Unknown, CyclesOfConnectionsEnd)
{
    open(R"(createNode transform -n "a"; setAttr ".tx" 5;
        createNode transform -n "b";
        connectAttr "a.t" "b.t";
        connectAttr "b.t" "a.t";)");
    EXPECT_EQ(session.inclusiveMatrix(path("a")).m[3][0], 5);
}

} // namespace
