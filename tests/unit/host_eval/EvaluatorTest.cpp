#include "host/eval/Evaluator.h"

#include "host/geometry/mesh/MeshData.h"
#include "tests/support/GraphScene.h"
#include "tests/support/toyNodes.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using host::Diagnostic;
using host::DiagnosticKind;
using host::Diagnostics;
using host::Value;
using host::eval::Evaluator;
using host::eval::InstanceTable;
using host::geometry::MeshData;
using host::graph::NodeId;
using host::graph::Plug;

class Evaluation : public ::testing::Test, public test::GraphScene {
protected:
    Evaluator& evaluator()
    {
        if (!m_evaluator) {
            m_instances.emplace(graph);
            m_evaluator.emplace(graph, *m_instances, test::kToyNodes, diagnostics);
        }
        return *m_evaluator;
    }
    double pull(const Plug& plug) { return evaluator().value(plug).number(-999); }

    void set(NodeId node, std::string_view attribute, double number)
    {
        graph.setValue(plug(node, attribute), Value(number));
    }
    std::size_t timesNoted(DiagnosticKind kind, std::string_view subject) const
    {
        for (const Diagnostic& entry : diagnostics.entries()) {
            if (entry.kind == kind && entry.subject == subject) {
                return entry.count;
            }
        }
        return 0;
    }

    Diagnostics diagnostics;

private:
    std::optional<InstanceTable> m_instances;
    std::optional<Evaluator> m_evaluator;
};

TEST_F(Evaluation, GivesTheStoredValueElseTheDefault)
{
    const NodeId node = this->node("transform", "a");
    set(node, "translateY", 3);
    EXPECT_EQ(pull(plug(node, "translateY")), 3);
    EXPECT_EQ(pull(plug(node, "translateX")), 0);
    EXPECT_EQ(pull(plug(node, "scaleX")), 1); // default of the table
    EXPECT_TRUE(evaluator().value(plug(node, "offsetParentMatrix")).isEmpty());
    EXPECT_TRUE(evaluator().value({}).isEmpty());
}

TEST_F(Evaluation, LetsAConnectionWinOverAStoredValue)
{
    const NodeId a = node("transform", "a");
    const NodeId b = node("transform", "b");
    set(a, "translateX", 5);
    set(b, "translateX", 7);
    connect(plug(a, "translateX"), plug(b, "translateX"));
    EXPECT_EQ(pull(plug(b, "translateX")), 5);
}

TEST_F(Evaluation, MatchesTheChildrenOfConnectedCompoundsByPosition)
{
    const NodeId a = node("transform", "a");
    const NodeId b = node("transform", "b");
    set(a, "translateZ", 5);
    set(b, "scaleZ", 7);
    connect(plug(a, "translate"), plug(b, "scale"));
    EXPECT_EQ(pull(plug(b, "scaleZ")), 5);
    EXPECT_EQ(pull(plug(b, "scaleX")), 0); // the source's own default
}

TEST_F(Evaluation, LetsAChildsConnectionWinOverItsCompounds)
{
    const NodeId a = node("transform", "a");
    const NodeId b = node("transform", "b");
    const NodeId c = node("transform", "c");
    set(a, "translateX", 1);
    set(a, "translateY", 2);
    set(b, "translateX", 10);
    connect(plug(a, "translate"), plug(c, "translate"));
    connect(plug(b, "translateX"), plug(c, "translateX"));
    EXPECT_EQ(pull(plug(c, "translateX")), 10);
    EXPECT_EQ(pull(plug(c, "translateY")), 2);
}

TEST_F(Evaluation, ComputesWhatANodeTypeComputes)
{
    const NodeId sum = node("addDoubleLinear", "sum");
    const NodeId target = node("transform", "t");
    set(sum, "input1", 2);
    set(sum, "input2", 3);
    connect(plug(sum, "output"), plug(target, "translateX"));
    EXPECT_EQ(pull(plug(target, "translateX")), 5);
    set(sum, "input2", 4);
    EXPECT_EQ(pull(plug(target, "translateX")), 6); // what depends on it is dirty
}

TEST_F(Evaluation, TakesTheRowOfTheMostDerivedType)
{
    const NodeId transform = node("transform", "t");
    const NodeId joint = node("joint", "j");
    set(transform, "translateX", 5);
    set(joint, "translateX", 5);
    EXPECT_EQ(pull(plug(transform, "rotatePivotX")), 5);
    EXPECT_EQ(pull(plug(joint, "rotatePivotX")), 6);
}

TEST_F(Evaluation, TakesSeveralWaysFromOneSourceForNoCycle)
{
    // total = (x + x) + x: the shared source is wanted by both inputs of the last sum.
    const NodeId x = node("addDoubleLinear", "x");
    const NodeId twice = node("addDoubleLinear", "twice");
    const NodeId total = node("addDoubleLinear", "total");
    set(x, "input1", 7);
    connect(plug(x, "output"), plug(twice, "input1"));
    connect(plug(x, "output"), plug(twice, "input2"));
    connect(plug(x, "output"), plug(total, "input1"));
    connect(plug(twice, "output"), plug(total, "input2"));
    EXPECT_EQ(pull(plug(total, "output")), 21);
}

TEST_F(Evaluation, GivesTheStoredValueWhereACycleCloses)
{
    // a = b + 1 and b = a + 1, where b's input keeps 10 from the file: a = (10 + 1) + 1.
    const NodeId a = node("addDoubleLinear", "a");
    const NodeId b = node("addDoubleLinear", "b");
    set(a, "input2", 1);
    set(b, "input1", 10);
    set(b, "input2", 1);
    connect(plug(b, "output"), plug(a, "input1"));
    connect(plug(a, "output"), plug(b, "input1"));
    const double first = pull(plug(a, "output"));
    EXPECT_EQ(first, 12);
    EXPECT_EQ(pull(plug(a, "output")), first);
}

TEST_F(Evaluation, SurvivesAPlugThatFeedsItself)
{
    const NodeId a = node("transform", "a");
    const NodeId b = node("transform", "b");
    set(a, "translateX", 4);
    connect(plug(a, "translateX"), plug(b, "translateX"));
    connect(plug(b, "translateX"), plug(a, "translateX"));
    EXPECT_EQ(pull(plug(a, "translateX")), 4);
}

TEST_F(Evaluation, FollowsAChainOfAHundredThousandNodes)
{
    constexpr int kCount = 100000;
    std::vector<NodeId> sums;
    for (int i = 0; i < kCount; ++i) {
        sums.push_back(node("addDoubleLinear", std::string("sum").append(std::to_string(i))));
        set(sums.back(), "input2", 1);
        if (i > 0) {
            connect(plug(sums[i - 1], "output"), plug(sums[i], "input1"));
        }
    }
    EXPECT_EQ(pull(plug(sums.back(), "output")), kCount);
    double checked = 0;
    for (int i = 0; i < kCount; ++i) { // each is there already: not another walk each
        checked += pull(plug(sums[i], "output")) == i + 1 ? 1 : 0;
    }
    EXPECT_EQ(checked, kCount);
}

TEST_F(Evaluation, FollowsALongChainOfCompoundConnections)
{
    constexpr int kCount = 20000;
    std::vector<NodeId> transforms;
    for (int i = 0; i < kCount; ++i) {
        transforms.push_back(node("transform", std::string("t").append(std::to_string(i))));
        if (i > 0) {
            connect(plug(transforms[i - 1], "translate"), plug(transforms[i], "translate"));
        }
    }
    set(transforms.front(), "translateY", 3);
    double checked = 0;
    for (int i = kCount; i > 0; --i) {
        checked += pull(plug(transforms[i - 1], "translateY")) == 3 ? 1 : 0;
    }
    EXPECT_EQ(checked, kCount);
}

TEST_F(Evaluation, GoesDownTheDagByInstance)
{
    const NodeId top1 = node("transform", "top1");
    const NodeId top2 = node("transform", "top2");
    const NodeId below2 = node("transform", "below2", top2);
    const NodeId shared = node("transform", "shared", top1);
    ASSERT_TRUE(graph.addParent(shared, below2));
    const auto depthOf = [&](std::int32_t instance) {
        const auto matrix =
            evaluator().value(element(shared, "worldMatrix", instance)).data<host::Matrix4>();
        return matrix != nullptr ? matrix->m[3][0] : -1;
    };
    EXPECT_EQ(depthOf(0), 2); // top1|shared
    EXPECT_EQ(depthOf(1), 3); // top2|below2|shared
}

TEST_F(Evaluation, MakesDirtyWhatDependsOnTime)
{
    const NodeId clocked = node("multDoubleLinear", "clocked");
    const NodeId sum = node("addDoubleLinear", "sum");
    const NodeId still = node("addDoubleLinear", "still");
    connect(plug(clocked, "output"), plug(sum, "input1"));
    set(sum, "input2", 0.5);
    set(still, "input1", 3);
    evaluator().setTime(100);
    EXPECT_EQ(pull(plug(sum, "output")), 100.5);
    EXPECT_EQ(pull(plug(still, "output")), 3);
    evaluator().setTime(200);
    EXPECT_EQ(pull(plug(sum, "output")), 200.5);
    EXPECT_EQ(pull(plug(still, "output")), 3);
}

TEST_F(Evaluation, TakesTheTimeFromTheClockWhateverIsStoredThere)
{
    const NodeId time = node("time", "time1");
    const NodeId other = node("time", "other");
    const NodeId sum = node("addDoubleLinear", "sum");
    const NodeId still = node("addDoubleLinear", "still");
    set(time, "outTime", 3);
    set(other, "outTime", 4);
    connect(plug(time, "outTime"), plug(sum, "input1"));
    connect(plug(other, "outTime"), plug(still, "input1"));
    evaluator().setClock(time);
    evaluator().setTime(5);
    EXPECT_EQ(pull(plug(still, "output")), 4); // no clock: what it was set to
    EXPECT_EQ(pull(plug(sum, "output")), 5);
    evaluator().setTime(6);
    EXPECT_EQ(pull(plug(sum, "output")), 6);
}

TEST_F(Evaluation, KeepsADestinationsOwnValueWhereNothingComputesItsSource)
{
    const NodeId curve = node("animCurveTL", "curve");
    const NodeId other = node("animCurveTL", "other");
    const NodeId target = node("transform", "t");
    set(target, "translateX", 8);
    connect(plug(curve, "output"), plug(target, "translateX"));
    connect(plug(other, "output"), plug(target, "scaleY"));
    EXPECT_EQ(pull(plug(target, "translateX")), 8);
    EXPECT_EQ(pull(plug(target, "scaleY")), 1); // no stored value: the default
    EXPECT_EQ(pull(plug(target, "translateX")), 8);
    EXPECT_EQ(timesNoted(DiagnosticKind::UncomputedNode, "animCurveTL"), 2U); // once for each
}

TEST_F(Evaluation, KeepsThatOwnValueWhenTheTimeChanges)
{
    const NodeId time = node("time", "time1");
    const NodeId expression = node("expression", "e");
    const NodeId target = node("transform", "t");
    set(target, "translateX", 8);
    connect(plug(time, "outTime"), plug(expression, "time"));
    connect(element(expression, "output", 0), plug(target, "translateX"));
    EXPECT_EQ(pull(plug(target, "translateX")), 8);
    graph.setValue(plug(time, "outTime"), Value(7.0));
    evaluator().setTime(7);
    EXPECT_EQ(pull(plug(target, "translateX")), 8);
}

TEST_F(Evaluation, GivesAResultThatAFileStoresAllTheSame)
{
    const NodeId curve = node("animCurveTL", "curve");
    const NodeId target = node("transform", "t");
    set(curve, "output", 2.5);
    connect(plug(curve, "output"), plug(target, "translateX"));
    EXPECT_EQ(pull(plug(target, "translateX")), 2.5);
    EXPECT_TRUE(diagnostics.entries().empty());
}

TEST_F(Evaluation, KeepsTheStoredValueWhereAComputationRefuses)
{
    const NodeId reverse = node("reverse", "r");
    set(reverse, "outputX", 0.25);
    EXPECT_EQ(pull(plug(reverse, "outputX")), 0.25);
    ASSERT_EQ(diagnostics.entries().size(), 1U);
    EXPECT_EQ(diagnostics.entries().front().firstDetail, "refused");
}

TEST_F(Evaluation, ConvertsByValueToTheDestinationsKind)
{
    const NodeId a = node("transform", "a");
    const NodeId b = node("transform", "b");
    const NodeId lambert = node("lambert", "l");
    set(a, "translateX", 2.6);
    set(a, "translateY", 0.1);
    connect(plug(a, "translateX"), plug(b, "rotateOrder"));   // whole
    connect(plug(a, "translateX"), plug(b, "visibility"));    // yes or no
    connect(plug(a, "translateY"), plug(lambert, "diffuse")); // single precision
    EXPECT_EQ(pull(plug(b, "rotateOrder")), 3);
    EXPECT_EQ(pull(plug(b, "visibility")), 1);
    EXPECT_EQ(pull(plug(lambert, "diffuse")), static_cast<double>(0.1F));
}

// --- geometry handed on

class PassedGeometry : public Evaluation {
protected:
    static Value aMesh(int vertexCount)
    {
        MeshData mesh;
        auto topology = std::make_shared<host::geometry::MeshTopology>();
        topology->vertexCount = static_cast<std::uint32_t>(vertexCount);
        mesh.topology = topology;
        mesh.points = std::make_shared<const std::vector<host::Vec3f>>(vertexCount);
        return Value::of(mesh);
    }
    /// Number of vertices of the mesh on a plug; -1 for none.
    int vertices(const Plug& plug)
    {
        const auto mesh = evaluator().value(plug).data<MeshData>();
        return mesh != nullptr ? static_cast<int>(mesh->topology->vertexCount) : -1;
    }
};

TEST_F(PassedGeometry, IsLetGoOnTheWayWhereMemoryIsShortAndMadeAnewWhenAskedFor)
{
    // The toy gives every soft-edge node one vertex more than comes in, so that each mesh is its
    // own.
    const NodeId stored = node("mesh", "stored");
    graph.setValue(plug(stored, "outMesh"), aMesh(1000));
    std::vector<NodeId> chain;
    Plug last = plug(stored, "outMesh");
    for (int i = 0; i < 50; ++i) {
        chain.push_back(node("polySoftEdge", "soft" + std::to_string(i)));
        connect(last, plug(chain.back(), "inputPolymesh"));
        last = plug(chain.back(), "output");
    }
    const NodeId shape = node("mesh", "shape");
    connect(last, plug(shape, "inMesh"));
    const std::size_t meshBytes = 1000 * sizeof(host::Vec3f);

    EXPECT_EQ(vertices(plug(shape, "inMesh")), 1050);
    EXPECT_GE(evaluator().heldBytes(), 50 * meshBytes); // there is room for all

    graph.touch(plug(stored, "outMesh"));
    evaluator().limitHeldBytes(0);
    const std::size_t before = evaluator().heldBytes();
    EXPECT_EQ(vertices(plug(shape, "inMesh")), 1050);
    EXPECT_LE(evaluator().heldBytes(), before + 3 * meshBytes);
    EXPECT_EQ(vertices(plug(chain[20], "output")), 1021);
    EXPECT_EQ(vertices(plug(shape, "inMesh")), 1050);
}

TEST_F(PassedGeometry, ComesThroughNodesThatNothingComputes)
{
    const NodeId stored = node("mesh", "stored");
    const NodeId tweak = node("polyTweak", "tweak");
    const NodeId colors = node("createColorSet", "colors");
    const NodeId shape = node("mesh", "shape");
    graph.setValue(plug(stored, "outMesh"), aMesh(4));
    connect(plug(stored, "outMesh"), plug(tweak, "inputPolymesh"));
    connect(plug(tweak, "output"), plug(colors, "inputGeometry"));
    connect(plug(colors, "outputGeometry"), plug(shape, "inMesh"));
    EXPECT_EQ(vertices(plug(shape, "inMesh")), 4);
    const auto passed = evaluator().passedNodes(plug(shape, "inMesh"));
    ASSERT_EQ(passed.size(), 2U);
    EXPECT_EQ(passed[0].node, colors);
    EXPECT_EQ(passed[1].node, tweak);
    EXPECT_FALSE(passed[0].isMissing || passed[1].isMissing);
    EXPECT_EQ(timesNoted(DiagnosticKind::UncomputedNode, "polyTweak"), 1U);
}

TEST_F(PassedGeometry, KeepsToItsIndexInADeformer)
{
    const NodeId skin = node("skinCluster", "skin");
    for (int i = 0; i < 3; ++i) {
        graph.setValue(child(skin, "input", i, "inputGeometry"), aMesh(10 + i));
    }
    EXPECT_EQ(vertices(element(skin, "outputGeometry", 1)), 11);
    EXPECT_EQ(vertices(element(skin, "outputGeometry", 2)), 12);
    EXPECT_EQ(vertices(element(skin, "outputGeometry", 7)), -1);
}

TEST_F(PassedGeometry, OfANodeThatJoinsMeshesIsTheFirstThatIsThere)
{
    const NodeId unite = node("polyUnite", "unite");
    const NodeId cube = node("polyCube", "cube");
    connect(plug(cube, "output"), element(unite, "inputPoly", 0)); // nothing comes of it
    graph.setValue(element(unite, "inputPoly", 2), aMesh(22));
    graph.setValue(element(unite, "inputPoly", 5), aMesh(55));
    EXPECT_EQ(vertices(plug(unite, "output")), 22);
}

TEST_F(PassedGeometry, IsExactThroughANodeThatIsSwitchedOff)
{
    const NodeId tweak = node("polyTweak", "tweak");
    const NodeId shape = node("mesh", "shape");
    graph.setValue(plug(tweak, "inputPolymesh"), aMesh(4));
    set(tweak, "nodeState", 1);
    connect(plug(tweak, "output"), plug(shape, "inMesh"));
    EXPECT_EQ(vertices(plug(shape, "inMesh")), 4);
    EXPECT_TRUE(evaluator().passedNodes(plug(shape, "inMesh")).empty());
    EXPECT_TRUE(diagnostics.entries().empty());
}

TEST_F(PassedGeometry, IsExactThroughADeformerWithoutEnvelope)
{
    const NodeId skin = node("skinCluster", "skin");
    graph.setValue(child(skin, "input", 0, "inputGeometry"), aMesh(4));
    set(skin, "envelope", 0);
    EXPECT_EQ(vertices(element(skin, "outputGeometry", 0)), 4);
    EXPECT_TRUE(evaluator().passedNodes(element(skin, "outputGeometry", 0)).empty());
}

TEST_F(PassedGeometry, NamesTheNodeBehindWhichNothingIs)
{
    const NodeId cube = node("polyCube", "cube");
    const NodeId tweak = node("polyTweak", "tweak");
    const NodeId shape = node("mesh", "shape");
    connect(plug(cube, "output"), plug(tweak, "inputPolymesh"));
    connect(plug(tweak, "output"), plug(shape, "inMesh"));
    EXPECT_EQ(vertices(plug(shape, "inMesh")), -1);
    const auto passed = evaluator().passedNodes(plug(shape, "inMesh"));
    ASSERT_FALSE(passed.empty());
    EXPECT_EQ(passed.back().node, cube);
    EXPECT_TRUE(passed.back().isMissing);
}

TEST_F(PassedGeometry, ComesThroughANodeOfAnUnknownType)
{
    const NodeId stored = node("mesh", "stored");
    const NodeId plugin = node("unknown", "plugin");
    const NodeId shape = node("mesh", "shape");
    graph.node(plugin).unknownType = "squashThing";
    const auto addAny = [&](std::string_view name) {
        host::Attribute attribute;
        attribute.longName = name;
        attribute.shortName = name;
        attribute.kind = host::AttributeKind::Any;
        return Plug{plugin, graph.addAttribute(plugin, attribute), host::graph::kNoSlot, -1};
    };
    const Plug in = addAny("in");
    const Plug out = addAny("out");
    graph.setValue(plug(stored, "outMesh"), aMesh(4));
    connect(plug(stored, "outMesh"), in);
    connect(out, plug(shape, "inMesh"));
    EXPECT_EQ(vertices(plug(shape, "inMesh")), 4);
    EXPECT_EQ(timesNoted(DiagnosticKind::UncomputedNode, "squashThing"), 1U);
}

TEST_F(PassedGeometry, EndsInACycle)
{
    const NodeId a = node("polyTweak", "a");
    const NodeId b = node("polyTweak", "b");
    connect(plug(a, "output"), plug(b, "inputPolymesh"));
    connect(plug(b, "output"), plug(a, "inputPolymesh"));
    EXPECT_EQ(vertices(plug(a, "output")), -1);
}

} // namespace
