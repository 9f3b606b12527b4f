// Plugs, dynamic attributes, connections and animation.
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

namespace {

using host::session::NodeId;
using host::session::Plug;

class Plugs : public test::OpenScene {
protected:
    std::vector<std::string> names(const std::vector<Plug>& plugs)
    {
        std::vector<std::string> texts;
        for (const Plug& each : plugs) {
            texts.push_back(session.plugName(each));
        }
        return texts;
    }
    std::vector<std::string> names(const std::vector<NodeId>& nodes)
    {
        std::vector<std::string> texts;
        for (const NodeId id : nodes) {
            texts.push_back(session.graph().node(id).name);
        }
        return texts;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(Plugs, AreFoundByLongAndShortNames)
{
    open("createNode lambert -n \"l\"; setAttr \".c\" -type \"float3\" 0.25 0.5 1 ;");
    EXPECT_EQ(session.findPlug(node("l"), "c"), session.findPlug(node("l"), "color"));
    EXPECT_FALSE(session.findPlug(node("l"), "specularColor"));
    EXPECT_FALSE(session.findPlug(host::session::kNoNode, "c"));
    EXPECT_EQ(names(session.children(plug("l", "c"))), (Texts{"l.colorR", "l.colorG", "l.colorB"}));
    EXPECT_EQ(session.number(session.children(plug("l", "c"))[1], -1), 0.5);
    EXPECT_TRUE(session.children(plug("l", "diffuse")).empty());
    EXPECT_EQ(session.number({}, 5), 5);
    EXPECT_EQ(session.plugName({}), "");
}

TEST_F(Plugs, OfDynamicAttributesWithChildrenAndElements)
{
    open(R"(createNode transform -n "a";
            addAttr -ln "speed" -sn "sp1" -dv 2.5 -k true -at "double";
            addAttr -ln "name" -sn "nm" -dt "string";
            addAttr -s false -ln "dir" -sn "dr" -at "double3" -nc 3;
            addAttr -ln "dirX" -sn "drx" -at "double" -p "dir";
            addAttr -ln "dirY" -sn "dry" -at "double" -p "dir";
            addAttr -ln "dirZ" -sn "drz" -dv 9 -at "double" -p "dir";
            addAttr -m -ln "list" -sn "li" -at "long";
            addAttr -ln "angle" -sn "an" -dv 180 -at "doubleAngle";
            setAttr ".nm" -type "string" "hello";
            setAttr ".dir" -type "double3" 1 2 3 ;
            setAttr -s 3 ".li[4:6]" 7 8 9;)");
    EXPECT_EQ(number("a", "speed"), 2.5);
    EXPECT_EQ(session.text(plug("a", "name")), "hello");
    EXPECT_EQ(number("a", "dirZ"), 3);
    EXPECT_EQ(session.number(session.element(plug("a", "list"), 5), 0), 8);
    EXPECT_NEAR(number("a", "angle"), 3.141592653589793, 1e-12);
    EXPECT_EQ(session.plugName(session.element(plug("a", "list"), 5)), "a.list[5]");
}

TEST_F(Plugs, TakeNumbersForCompoundsOfMixedKinds)
{
    // Position, value and interpolation of a ramp's element.
    open(R"(createNode remapValue -n "r";
        setAttr -s 2 ".vl[0:1]"  0 0.25 1 1 0.75 3;)");
    const Plug values = plug("r", "value");
    const auto second = session.children(session.element(values, 1));
    ASSERT_EQ(second.size(), 3U);
    EXPECT_EQ(session.number(second[0], -1), 1);
    EXPECT_EQ(session.number(second[1], -1), 0.75);
    EXPECT_EQ(session.number(second[2], -1), 3);
}

TEST_F(Plugs, TakeSparseAndDenseWeights)
{
    open(R"(createNode skinCluster -n "s";
        setAttr -s 2 ".wl";
        setAttr ".wl[0:1].w"  2 0 0.75 1 0.25  1 4 1;
        setAttr -s 2 ".wl[5].w[2:3]" 0.5 0.5;)");
    auto& graph = const_cast<host::graph::Graph&>(session.graph());
    const auto weight = [&](int outer, int inner) {
        const Plug list = graph.element(plug("s", "weightList"), outer);
        const Plug weights = graph.child(list, plug("s", "weights").attribute);
        return session.number(graph.element(weights, inner), -1);
    };
    EXPECT_EQ(weight(0, 0), 0.75);
    EXPECT_EQ(weight(0, 1), 0.25);
    EXPECT_EQ(weight(1, 4), 1);
    EXPECT_EQ(weight(5, 3), 0.5);
}

TEST_F(Plugs, TakeARangeOnAnOuterIndex)
{
    open(R"(createNode animCurveTL -n "c";
        setAttr ".ktv[0:2].kv" 5 6 7;)");
    const auto third = session.children(session.element(plug("c", "keyTimeValue"), 2));
    EXPECT_EQ(session.number(third[1], -1), 7);
}

TEST_F(Plugs, TakeTheNextFreeElement)
{
    open(R"(createNode lambert -n "l1"; createNode lambert -n "l2"; createNode lambert -n "l3";
        createNode layeredShader -n "set";
        createNode objectSet -n "o";
        connectAttr "l1.msg" "o.dnsm[4]";
        connectAttr "l2.msg" "o.dnsm" -na;
        connectAttr "l3.msg" "o.dnsm[-1]";)");
    const Plug members = plug("o", "dnSetMembers");
    EXPECT_EQ(session.source(session.element(members, 5)).node, node("l2"));
    EXPECT_EQ(session.source(session.element(members, 6)).node, node("l3"));
}

TEST_F(Plugs, ThatAreConnectedComeInAttributeOrder)
{
    open(R"(createNode transform -n "a"; createNode transform -n "b"; createNode transform -n "c";
        connectAttr "a.s" "b.s";
        connectAttr "c.ty" "b.ty";
        connectAttr "c.v" "b.v";
        connectAttr "b.tx" "a.tx";
        connectAttr "b.wm" "c.opm";)");
    EXPECT_EQ(
        names(session.connectedPlugs(node("b"))),
        (Texts{"b.visibility", "b.worldMatrix[0]", "b.translateX", "b.translateY", "b.scale"}));
    EXPECT_TRUE(session.connectedPlugs(node("perspShape")).empty());
}

TEST_F(Plugs, ListTheNodesAboveThemBreadthFirstEachOnce)
{
    open(R"(createNode lambert -n "l";
        createNode layeredTexture -n "layers"; createNode file -n "f1"; createNode file -n "f2";
        createNode place2dTexture -n "p"; createNode file -n "other";
        connectAttr "layers.oc" "l.c";
        connectAttr "f1.ocg" "l.cg";
        connectAttr "f2.oc" "layers.cs[0].c";
        connectAttr "p.o" "f1.uv"; connectAttr "p.o" "f2.uv";
        connectAttr "other.ot" "l.it";
        connectAttr "f1.oc" "other.cg";)");
    EXPECT_EQ(names(session.upstreamNodes(plug("l", "color"))),
              (Texts{"l", "layers", "f1", "f2", "p"}));
    EXPECT_EQ(names(session.upstreamNodes(plug("l", "incandescence"))), Texts{"l"});
    EXPECT_EQ(names(session.upstreamNodes(plug("l", "diffuse"))), Texts{"l"});
}

TEST_F(Plugs, OfAColourFedByATextureHaveItsDefaultColour)
{
    open(R"(createNode lambert -n "l"; setAttr ".c" -type "float3" 1 1 1 ;
        createNode file -n "f"; setAttr ".dc" -type "float3" 0.25 0.5 1 ;
            setAttr ".cg" -type "float3" 2 1 1 ;
            setAttr ".ftn" -type "string" "wood.png";
        createNode ramp -n "r"; createNode lambert -n "m"; setAttr ".c" -type "float3" 1 1 1 ;
        connectAttr "f.oc" "l.c";
        connectAttr "r.oc" "m.c";)");
    EXPECT_EQ(number("l", "colorR"), 0.5);
    EXPECT_EQ(number("l", "colorG"), 0.5);
    EXPECT_EQ(number("l", "colorB"), 1);
    EXPECT_EQ(number("m", "colorR"), 0.5);
    EXPECT_EQ(timesNoted(host::DiagnosticKind::UncomputedNode, "ramp"), 1U);
    EXPECT_EQ(timesNoted(host::DiagnosticKind::UncomputedNode, "file"), 0U);
}

// --- animation

class Animated : public test::OpenScene {
protected:
    void openRig(const std::string& connections)
    {
        open(R"(createNode transform -n "upper"; createNode transform -n "a" -p "upper";
            createNode transform -n "other";
            createNode animCurveTL -n "curve"; createNode animCurveUA -n "driven";
            createNode unitConversion -n "unit"; createNode pairBlend -n "blend";
            createNode blendWeighted -n "sum"; createNode mute -n "mute";
            createNode animBlendNodeAdditive -n "layer"; createNode character -n "who";
            createNode expression -n "e"; createNode pointConstraint -n "con" -p "a";)" +
             connections);
    }
    bool isAnimated(std::string_view name) const { return session.isAnimated(node(name)); }
};

TEST_F(Animated, IsWhatACurveFeeds)
{
    openRig("connectAttr \"curve.o\" \"a.tx\";");
    EXPECT_TRUE(isAnimated("a"));
    EXPECT_FALSE(isAnimated("upper"));
    EXPECT_FALSE(session.isAnimated(host::session::kWorld));
    EXPECT_TRUE(session.isAnimated(path("a"), false));
}

TEST_F(Animated, IsAKeyedVisibilityOrOwnAttributeToo)
{
    openRig("addAttr -ln \"x\" -at \"double\";\nconnectAttr \"curve.o\" \"con.x\";\n"
            "connectAttr \"curve.o\" \"other.v\";");
    EXPECT_TRUE(isAnimated("con"));
    EXPECT_TRUE(isAnimated("other"));
}

TEST_F(Animated, IsWhatACurveFeedsThroughNodesThatHandItOn)
{
    for (const std::string through :
         {"connectAttr \"curve.o\" \"unit.i\"; connectAttr \"unit.o\" \"a.rx\";",
          "connectAttr \"curve.o\" \"blend.itx1\"; connectAttr \"blend.otx\" \"a.tx\";",
          "connectAttr \"curve.o\" \"sum.i[0]\"; connectAttr \"sum.o\" \"a.tx\";",
          "connectAttr \"curve.o\" \"mute.i\"; connectAttr \"mute.o\" \"a.tx\";",
          "connectAttr \"curve.o\" \"layer.ia\"; connectAttr \"layer.o\" \"a.tx\";",
          "connectAttr \"curve.o\" \"who.lv[1]\"; connectAttr \"who.lv[1]\" \"a.tx\";"}) {
        openRig(through);
        EXPECT_TRUE(isAnimated("a")) << through;
    }
}

TEST_F(Animated, IsWhatADrivenKeyFeeds)
{
    openRig("connectAttr \"other.tx\" \"driven.i\";\nconnectAttr \"driven.o\" \"a.rx\";");
    EXPECT_TRUE(isAnimated("a"));
}

TEST_F(Animated, IsNotWhatConstraintsExpressionsAndTheClockFeed)
{
    openRig(R"(connectAttr "curve.o" "other.tx";
        connectAttr "other.t" "con.tg[0].tt"; connectAttr "con.ctx" "a.tx";
        connectAttr ":time1.o" "e.tim"; connectAttr "e.out[0]" "upper.ty";
        connectAttr ":time1.o" "upper.tz";)");
    EXPECT_FALSE(isAnimated("a"));
    EXPECT_FALSE(isAnimated("upper"));
}

TEST_F(Animated, IsNotAnotherChannelOfTheSameCharacter)
{
    openRig("connectAttr \"curve.o\" \"who.lv[1]\"; connectAttr \"who.lv[2]\" \"a.tx\";");
    EXPECT_FALSE(isAnimated("a"));
}

TEST_F(Animated, AreTheAncestorsOfThePathOnRequestOnly)
{
    openRig("connectAttr \"curve.o\" \"upper.tx\";\nparent -add \"a\" \"other\";");
    EXPECT_FALSE(session.isAnimated(path("|upper|a"), false));
    EXPECT_TRUE(session.isAnimated(path("|upper|a"), true));
    EXPECT_FALSE(session.isAnimated(path("|other|a"), true));
}

TEST_F(Animated, EndsInACycleOfCarriers)
{
    openRig("connectAttr \"unit.o\" \"sum.i[0]\"; connectAttr \"sum.o\" \"unit.i\";"
            "connectAttr \"unit.o\" \"a.tx\";");
    EXPECT_FALSE(isAnimated("a"));
}

} // namespace
