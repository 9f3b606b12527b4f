#include "host/types/NodeType.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

namespace host {
namespace {

constexpr double kPi = 3.14159265358979323846;

Attribute attributeOf(std::string_view type, std::string_view name)
{
    const NodeType found = NodeType::find(type);
    EXPECT_TRUE(found) << type;
    const AttributeIndex index = found.findAttribute(name);
    if (index == kNoAttribute) {
        ADD_FAILURE() << type << " has no " << name;
        return {};
    }
    return found.attribute(index);
}

std::vector<Attribute> childrenOf(std::string_view type, std::string_view name)
{
    std::vector<Attribute> children;
    const NodeType found = NodeType::find(type);
    for (AttributeIndex i = attributeOf(type, name).firstChild; i != kNoAttribute;
         i = found.attribute(i).nextSibling) {
        children.push_back(found.attribute(i));
    }
    return children;
}

/// A compound whose children are `count` attributes of one kind.
void expectVector(std::string_view type, std::string_view name, std::size_t count,
                  AttributeKind kind)
{
    EXPECT_EQ(attributeOf(type, name).kind, AttributeKind::Compound) << type << "." << name;
    const auto children = childrenOf(type, name);
    EXPECT_EQ(children.size(), count) << type << "." << name;
    for (const Attribute& child : children) {
        EXPECT_EQ(child.kind, kind) << type << "." << child.longName;
    }
}

TEST(NodeTypeTable, IsSortedByNameWithoutRepeats)
{
    ASSERT_GT(NodeType::count(), 500u);
    for (std::size_t i = 1; i < NodeType::count(); ++i) {
        EXPECT_LT(NodeType::at(i - 1).name(), NodeType::at(i).name());
    }
}

TEST(NodeTypeTable, FindsEveryTypeByItsName)
{
    for (std::size_t i = 0; i < NodeType::count(); ++i) {
        EXPECT_EQ(NodeType::find(NodeType::at(i).name()), NodeType::at(i));
    }
    EXPECT_FALSE(NodeType::find(""));
    EXPECT_FALSE(NodeType::find("Mesh"));
    EXPECT_FALSE(NodeType::find("meshx"));
    EXPECT_FALSE(NodeType::find("~"));
}

TEST(NodeTypeTable, FindsEveryAttributeByBothNames)
{
    for (std::size_t t = 0; t < NodeType::count(); ++t) {
        const NodeType type = NodeType::at(t);
        for (std::size_t i = 0; i < type.attributeCount(); ++i) {
            const auto index = static_cast<AttributeIndex>(i);
            const Attribute attribute = type.attribute(index);
            const AttributeIndex byLong = type.findAttribute(attribute.longName);
            const AttributeIndex byShort = type.findAttribute(attribute.shortName);
            ASSERT_NE(byShort, kNoAttribute) << type.name() << "." << attribute.shortName;
            EXPECT_LE(byLong, index) << "the first of a name wins";
            EXPECT_LE(byShort, index);
            if (byLong != index) { // then another one has this long name as its short name
                EXPECT_EQ(type.attribute(byLong).shortName, attribute.longName);
            }
            const Attribute other = type.attribute(byShort);
            EXPECT_TRUE(other.longName == attribute.shortName ||
                        other.shortName == attribute.shortName);
        }
    }
}

TEST(NodeTypeTable, HasLongNamesOnlyOncePerType)
{
    for (std::size_t t = 0; t < NodeType::count(); ++t) {
        const NodeType type = NodeType::at(t);
        std::set<std::string_view> seen;
        for (std::size_t i = 0; i < type.attributeCount(); ++i) {
            const auto name = type.attribute(static_cast<AttributeIndex>(i)).longName;
            EXPECT_FALSE(name.empty());
            EXPECT_TRUE(seen.insert(name).second) << type.name() << "." << name;
        }
    }
}

TEST(NodeTypeTable, LinksParentsAndChildrenBothWaysWithoutCycles)
{
    for (std::size_t t = 0; t < NodeType::count(); ++t) {
        const NodeType type = NodeType::at(t);
        const std::size_t count = type.attributeCount();
        std::size_t linked = 0, children = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const auto index = static_cast<AttributeIndex>(i);
            const Attribute attribute = type.attribute(index);
            children += attribute.parent != kNoAttribute ? 1 : 0;
            std::size_t steps = 0;
            for (AttributeIndex up = attribute.parent; up != kNoAttribute;
                 up = type.attribute(up).parent) {
                ASSERT_LT(up, count);
                ASSERT_LT(++steps, 10u) << type.name() << "." << attribute.longName;
            }
            for (AttributeIndex child = attribute.firstChild; child != kNoAttribute;
                 child = type.attribute(child).nextSibling) {
                ASSERT_LT(child, count);
                ASSERT_LE(++linked, count);
                EXPECT_EQ(type.attribute(child).parent, index);
            }
        }
        EXPECT_EQ(linked, children) << type.name();
    }
}

TEST(NodeTypeTable, GivesEveryTypeAMessageAndEveryDagTypeItsVisibility)
{
    for (std::size_t t = 0; t < NodeType::count(); ++t) {
        const NodeType type = NodeType::at(t);
        EXPECT_NE(type.findAttribute("message"), kNoAttribute) << type.name();
        EXPECT_NE(type.findAttribute("ihi"), kNoAttribute) << type.name();
        EXPECT_TRUE(type.isA("dependNode")) << type.name();
        EXPECT_TRUE(type.hasFunctionSet(4)) << type.name();
        EXPECT_EQ(type.hasFunctionSet(107), type.isDag()) << type.name();
        EXPECT_EQ(type.hasFunctionSet(110), type.isTransform()) << type.name();
        if (type.isDag()) {
            EXPECT_EQ(type.attribute(type.findAttribute("v")).initial, 1) << type.name();
            EXPECT_NE(type.findAttribute("iog"), kNoAttribute) << type.name();
        }
    }
}

TEST(NodeTypeTable, DoesNotChangeWhenMadeAgain)
{
#ifdef _WIN32
    GTEST_SKIP() << "checked where the tables are made";
#else
    if (std::system("python3 -c 1") != 0) {
        GTEST_SKIP() << "python3 is not installed";
    }
    const std::string script = std::string(ORV_SOURCE_DIR) + "/tools/make_node_tables.py";
    EXPECT_EQ(std::system(("python3 '" + script + "' --check").c_str()), 0);
#endif
}

TEST(NodeType, IsNullByDefaultAndAnswersNothing)
{
    const NodeType none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.name(), "");
    EXPECT_FALSE(none.isA("dependNode"));
    EXPECT_FALSE(none.isDag() || none.isTransform() || none.isShape());
    EXPECT_EQ(none.functionSet(), 0);
    EXPECT_FALSE(none.hasFunctionSet(4));
    EXPECT_EQ(none.attributeCount(), 0u);
    EXPECT_EQ(none.findAttribute("message"), kNoAttribute);
}

TEST(NodeType, KnowsTheTypesThatStandForUnknownOnes)
{
    EXPECT_EQ(unknownType().name(), "unknown");
    EXPECT_EQ(unknownType().functionSet(), 528);
    EXPECT_FALSE(unknownType().isDag());
    EXPECT_EQ(unknownDagType().name(), "unknownDag");
    EXPECT_EQ(unknownDagType().functionSet(), 316);
    EXPECT_TRUE(unknownDagType().isShape());
    EXPECT_EQ(unknownTransformType().name(), "unknownTransform");
    EXPECT_EQ(unknownTransformType().functionSet(), 246);
    EXPECT_TRUE(unknownTransformType().isTransform());
}

TEST(NodeType, TellsShapesFromTransformsAndTheWorldFromBoth)
{
    EXPECT_TRUE(NodeType::find("mesh").isShape());
    EXPECT_TRUE(NodeType::find("imagePlane").isShape());
    EXPECT_TRUE(NodeType::find("joint").isTransform());
    EXPECT_FALSE(NodeType::find("joint").isShape());
    EXPECT_TRUE(NodeType::find("dagNode").isDag());
    EXPECT_FALSE(NodeType::find("dagNode").isShape());
    EXPECT_FALSE(NodeType::find("lambert").isDag());
    for (const char* name : {"parentConstraint", "ikHandle", "lodGroup", "instancer", "nucleus",
                             "place3dTexture", "dagContainer", "fosterParent"}) {
        EXPECT_TRUE(NodeType::find(name).isTransform()) << name;
    }
}

TEST(NodeType, IsAnItselfAndEverythingAbove)
{
    const NodeType mesh = NodeType::find("mesh");
    for (const char* ancestor : {"mesh", "surfaceShape", "shape", "dagNode", "dependNode"}) {
        EXPECT_TRUE(mesh.isA(ancestor)) << ancestor;
    }
    EXPECT_FALSE(mesh.isA("transform"));
    EXPECT_FALSE(mesh.isA(""));
    EXPECT_TRUE(NodeType::find("phongE").isA("lambert"));
    EXPECT_FALSE(NodeType::find("surfaceShader").isA("lambert"));
}

struct FunctionSetCase {
    const char* type;
    int own;
    std::vector<int> others;
};

// Numbers of 2018, from the public class reference.
TEST(NodeType, HasTheFunctionSetsOfItsAncestors)
{
    const std::vector<FunctionSetCase> cases = {
        {"dagNode", 107, {4}},
        {"transform", 110, {107, 4}},
        {"joint", 121, {110, 107, 4}},
        {"parentConstraint", 242, {927, 110, 107}},
        {"pointConstraint", 240, {927, 110}},
        {"aimConstraint", 111, {927, 110}},
        {"ikHandle", 120, {110}},
        {"ikEffector", 119, {110}},
        {"lodGroup", 768, {110}},
        {"instancer", 757, {110}},
        {"nucleus", 990, {110}},
        {"mesh", 296, {293, 265, 248, 107}},
        {"nurbsSurface", 294, {293, 265, 248}},
        {"nurbsCurve", 267, {266, 265, 248}},
        {"bezierCurve", 267, {266, 265, 248}},
        {"camera", 250, {248}},
        {"stereoRigCamera", 250, {248}},
        {"pointLight", 309, {302, 248}},
        {"directionalLight", 308, {302, 248}},
        {"spotLight", 310, {302, 248}},
        {"ambientLight", 303, {302, 248}},
        {"areaLight", 305, {302, 248}},
        {"volumeLight", 892, {302, 248}},
        {"locator", 281, {248}},
        {"pfxHair", 941, {940, 248}},
        {"pfxToon", 966, {940, 248}},
        {"stroke", 759, {940, 248}},
        {"hairSystem", 931, {248}},
        {"follicle", 930, {248}},
        {"fluidShape", 909, {248}},
        {"particle", 311, {248}},
        {"nParticle", 1001, {248}},
        {"lattice", 279, {248}},
        {"baseLattice", 249, {248}},
        {"imagePlane", 368, {248}},
        {"subdiv", 679, {248}},
        {"lambert", 369, {4}},
        {"blinn", 371, {370, 369}},
        {"phong", 372, {370, 369}},
        {"phongE", 373, {370, 369}},
        {"anisotropic", 617, {370, 369}},
        {"hairTubeShader", 942, {370, 369}},
        {"file", 496, {492}},
        {"movie", 496, {492}},
        {"psdFileTex", 943, {496, 492}},
        {"place2dTexture", 453, {4}},
        {"shadingEngine", 320, {467}},
        {"objectSet", 467, {4}},
        {"displayLayer", 728, {4}},
        {"displayLayerManager", 729, {4}},
        {"animCurveTL", 9, {7}},
        {"animCurveTA", 8, {7}},
        {"animCurveTT", 10, {7}},
        {"animCurveTU", 11, {7}},
        {"animCurveUL", 13, {7}},
        {"animCurveUA", 12, {7}},
        {"animCurveUT", 14, {7}},
        {"animCurveUU", 15, {7}},
        {"unitConversion", 525, {4}},
        {"time", 516, {4}},
        {"expression", 327, {4}},
    };
    for (const auto& expected : cases) {
        const NodeType type = NodeType::find(expected.type);
        ASSERT_TRUE(type) << expected.type;
        EXPECT_EQ(type.functionSet(), expected.own) << expected.type;
        EXPECT_TRUE(type.hasFunctionSet(expected.own)) << expected.type;
        for (const int other : expected.others) {
            EXPECT_TRUE(type.hasFunctionSet(other)) << expected.type << " " << other;
        }
    }
    EXPECT_FALSE(NodeType::find("mesh").hasFunctionSet(110));
    EXPECT_FALSE(NodeType::find("mesh").hasFunctionSet(0));
    EXPECT_FALSE(NodeType::find("mesh").hasFunctionSet(-1));
    for (const char* name : {"surfaceShader", "layeredShader", "rampShader", "oceanShader",
                             "useBackground", "shadingMap", "particleCloud"}) {
        EXPECT_FALSE(NodeType::find(name).hasFunctionSet(369)) << name;
    }
}

TEST(NodeType, GivesMeshesTheirStoredParts)
{
    expectVector("mesh", "vt", 3, AttributeKind::FloatLinear);
    expectVector("mesh", "pt", 3, AttributeKind::FloatLinear);
    expectVector("mesh", "n", 3, AttributeKind::Float);
    expectVector("mesh", "ed", 3, AttributeKind::Long);
    expectVector("mesh", "uvsp", 2, AttributeKind::Float);
    expectVector("mesh", "clsp", 4, AttributeKind::Float);
    expectVector("mesh", "cp", 3, AttributeKind::DoubleLinear);
    for (const char* name : {"vt", "pt", "n", "ed", "uvsp", "clsp", "cp", "fc", "uvst", "clst", "w",
                             "iog", "og", "pd"}) {
        EXPECT_TRUE(attributeOf("mesh", name).isMulti) << name;
    }
    EXPECT_EQ(attributeOf("mesh", "ed").longName, "edge");
    EXPECT_EQ(attributeOf("mesh", "fc").kind, AttributeKind::PolyFaces);
    EXPECT_EQ(attributeOf("mesh", "uvsn").kind, AttributeKind::String);
    for (const char* name : {"cd", "cvd", "hfd", "pd"}) {
        EXPECT_EQ(attributeOf("mesh", name).kind, AttributeKind::PolyComponent) << name;
    }
    for (const char* name : {"i", "o", "w", "inMesh", "outMesh", "worldMesh"}) {
        EXPECT_EQ(attributeOf("mesh", name).kind, AttributeKind::Mesh) << name;
    }
    EXPECT_EQ(attributeOf("mesh", "gcl").kind, AttributeKind::ComponentList);
    EXPECT_EQ(attributeOf("mesh", "nx").initial, 1e20);
}

TEST(NodeType, NestsAttributesInTheirCompounds)
{
    const NodeType mesh = NodeType::find("mesh");
    const Attribute points = attributeOf("mesh", "uvSetPoints");
    ASSERT_NE(points.parent, kNoAttribute);
    EXPECT_EQ(mesh.attribute(points.parent).longName, "uvSet");
    const Attribute group = attributeOf("mesh", "objectGroups");
    EXPECT_EQ(mesh.attribute(group.parent).longName, "instObjGroups");
    const auto translate = childrenOf("transform", "t");
    ASSERT_EQ(translate.size(), 3u);
    EXPECT_EQ(translate[0].longName, "translateX");
    EXPECT_EQ(translate[2].shortName, "tz");
}

TEST(NodeType, OrdersChildrenByTheirPositionNotByTheirListing)
{
    const auto color = childrenOf("mesh", "objectColorRGB"); // listed B, G, R
    ASSERT_EQ(color.size(), 3u);
    EXPECT_EQ(color[0].longName, "objectColorR");
    EXPECT_EQ(color[1].longName, "objectColorG");
    EXPECT_EQ(color[2].longName, "objectColorB");
    const auto increment = childrenOf("mesh", "covm");
    ASSERT_EQ(increment.size(), 3u);
    EXPECT_EQ(increment[0].kind, AttributeKind::Float);
    EXPECT_EQ(increment[2].kind, AttributeKind::Enum);
}

TEST(NodeType, GivesTransformsTheirChannelsWithUnits)
{
    expectVector("transform", "translate", 3, AttributeKind::DoubleLinear);
    expectVector("transform", "rotate", 3, AttributeKind::DoubleAngle);
    expectVector("transform", "scale", 3, AttributeKind::Double);
    EXPECT_EQ(attributeOf("transform", "sx").initial, 1);
    for (std::size_t t = 0; t < NodeType::count(); ++t) {
        const NodeType type = NodeType::at(t);
        if (type.isTransform()) {
            const AttributeIndex index = type.findAttribute("opm");
            ASSERT_NE(index, kNoAttribute) << type.name();
            EXPECT_EQ(type.attribute(index).longName, "offsetParentMatrix") << type.name();
            EXPECT_EQ(type.attribute(index).kind, AttributeKind::Matrix) << type.name();
            EXPECT_NE(type.findAttribute("rotateOrder"), kNoAttribute) << type.name();
        }
    }
}

TEST(NodeType, HasInitialValuesInInternalUnits)
{
    EXPECT_DOUBLE_EQ(attributeOf("transform", "maxRotXLimit").initial, kPi / 4);
    EXPECT_DOUBLE_EQ(attributeOf("camera", "shutterAngle").initial, 144 * kPi / 180);
    EXPECT_EQ(attributeOf("camera", "focalLength").initial, 35);
    EXPECT_DOUBLE_EQ(attributeOf("camera", "nearClipPlane").initial, 0.1);
    EXPECT_DOUBLE_EQ(attributeOf("lambert", "diffuse").initial, 0.8);
    EXPECT_EQ(attributeOf("renderGlobals", "endFrame").kind, AttributeKind::Time);
    EXPECT_EQ(attributeOf("renderGlobals", "endFrame").initial, 10 * 5880000.0) << "film frames";
    EXPECT_EQ(attributeOf("lattice", "dispLattice").initial, 1) << "booleans are 0 and 1";
    EXPECT_EQ(attributeOf("lattice", "dispPoints").initial, 0);
}

TEST(NodeType, GivesAnimationCurvesTheirUnitsByTypeName)
{
    struct Case {
        const char* type;
        AttributeKind time, value;
    };
    using K = AttributeKind;
    for (const auto& [type, time, value] :
         {Case{"animCurveTA", K::Time, K::DoubleAngle},
          Case{"animCurveTL", K::Time, K::DoubleLinear}, Case{"animCurveTT", K::Time, K::Time},
          Case{"animCurveTU", K::Time, K::Double}, Case{"animCurveUA", K::Double, K::DoubleAngle},
          Case{"animCurveUT", K::Double, K::Time}, Case{"animCurveUL", K::Double, K::DoubleLinear},
          Case{"animCurveUU", K::Double, K::Double}}) {
        const auto children = childrenOf(type, "ktv");
        ASSERT_EQ(children.size(), 2u) << type;
        EXPECT_EQ(children[0].kind, time) << type;
        EXPECT_EQ(children[1].kind, value) << type;
        EXPECT_EQ(attributeOf(type, "input").kind, time) << type;
        EXPECT_EQ(attributeOf(type, "output").kind, value) << type;
        EXPECT_EQ(attributeOf(type, "kix").kind, AttributeKind::Double) << type;
    }
}

TEST(NodeType, LetsTypesWithoutOwnListsHaveThoseOfTheirRelatives)
{
    EXPECT_NE(NodeType::find("movie").findAttribute("fileTextureName"), kNoAttribute);
    EXPECT_NE(NodeType::find("hairTubeShader").findAttribute("color"), kNoAttribute);
    EXPECT_NE(NodeType::find("stereoRigCamera").findAttribute("focalLength"), kNoAttribute);
    EXPECT_NE(NodeType::find("bezierCurve").findAttribute("worldSpace"), kNoAttribute);
    EXPECT_NE(NodeType::find("unknownTransform").findAttribute("translate"), kNoAttribute);
    EXPECT_NE(NodeType::find("imagePlane").findAttribute("imageName"), kNoAttribute);
    EXPECT_NE(NodeType::find("dagNode").findAttribute("worldMatrix"), kNoAttribute);
}

TEST(NodeType, OrdersTheOverridesOfLayersAndMembersAlike)
{
    const auto layer = childrenOf("displayLayer", "drawInfo");
    const auto member = childrenOf("transform", "drawOverride");
    ASSERT_EQ(layer.size(), member.size());
    for (std::size_t i = 0; i < layer.size(); ++i) {
        EXPECT_EQ(layer[i].kind, member[i].kind) << layer[i].longName << " " << member[i].longName;
    }
    EXPECT_EQ(layer[6].longName, "visibility");
    EXPECT_EQ(member[6].longName, "overrideVisibility");
}

TEST(NodeType, MakesUpTheChildrenOfVectorsThatHaveNone)
{
    expectVector("standardSurface", "outColor", 3, AttributeKind::Float);
    EXPECT_EQ(childrenOf("standardSurface", "outColor")[0].longName, "outColorR");
    expectVector("orientConstraint", "inverseScale", 3, AttributeKind::Double);
}

} // namespace
} // namespace host
