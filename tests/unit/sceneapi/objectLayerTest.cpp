// The object layer: prologue, numbering, and the call that each operation makes.
#include "scene/LightNode.h"
#include "sceneapi/LightFileFactory.h"
#include "sceneapi/PassThroughFactory.h"
#include "sceneapi/orvSceneapi_oo.h"
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using orv::orvSceneapi_oo;

constexpr const char* kBanner =
    "#print \"Vistrel SceneApi oo 7.3.37  (built Fri Feb  2 07:20:39 2018)\"\nversion 9\n\n";

/// What the layer writes after its banner.
template<typename Calls>
std::string layered(Calls calls, bool binaryArrays = false)
{
    const std::string text = written(
        [&](orvScene_api_file& writer) {
            orv::PassThroughFactory factory(&writer);
            orvSceneapi_oo oo(factory);
            calls(oo);
        },
        binaryArrays);
    return text.starts_with(kBanner) ? text.substr(std::string(kBanner).size())
                                     : "<no banner> " + text;
}

TEST(ObjectLayer, BeginsWithBannerAndVersionNine)
{
    EXPECT_EQ(layered([](orvSceneapi_oo&) {}), "");
}

TEST(ObjectLayer, AsksTheFactoryForTheHeaderBeforeTheBanner)
{
    struct Factory : orv::PassThroughFactory {
        explicit Factory(orvScene_api* api) : PassThroughFactory(api), m_writer(api) {}
        void writeHeader() override { m_writer->printf("header\n"); }
        orvScene_api* m_writer;
    };
    EXPECT_EQ(written([](orvScene_api_file& writer) {
                  Factory factory(&writer);
                  const orvSceneapi_oo oo(factory);
              }),
              std::string("header\n") + kBanner);
}

TEST(ObjectLayer, NumbersIdsAndShadersTogether)
{
    EXPECT_EQ(layered([](orvSceneapi_oo& oo) {
                  EXPECT_EQ(oo.newId(), 1u);
                  EXPECT_EQ(oo.defineShader("t"), 2u);
                  oo.endShader();
                  EXPECT_EQ(oo.newId(), 3u);
              }),
              "id 1\n#define shader 2 t {\n}\nid 3\n");
}

TEST(ObjectLayer, AttachStartsTheNumbersAgain)
{
    EXPECT_EQ(layered([](orvSceneapi_oo& oo) {
                  oo.newId();
                  oo.newId();
                  oo.attach(oo.sceneApi());
                  EXPECT_EQ(oo.newId(), 1u);
              }),
              "id 1\nid 2\nid 1\n");
}

TEST(ObjectLayer, GroupsAreNeverDefinitions)
{
    EXPECT_EQ(layered([](orvSceneapi_oo& oo) {
                  oo.beginGroup("g");
                  oo.flags(0x8000);
                  oo.endGroup();
              }),
              "\ngroup \"g\" {\nflags 32768\n}\n");
}

TEST(ObjectLayer, ParametersHaveTheirTypes)
{
    EXPECT_EQ(
        layered([](orvSceneapi_oo& oo) {
            oo.stringParameter("s", "text");
            oo.float3Parameter("f3", {1, 2, 0.5f});
            oo.double3Parameter("d3", {1, 2, 0.1});
            oo.doubleParameter("d", 0.5);
            oo.floatParameter("f", std::numeric_limits<float>::infinity());
            oo.intParameter("i", -1);
            oo.boolParameter("b", true);
            oo.boolParameter("c", false);
        }),
        "\"s\" \"text\",\n\"f3\" 1 2 0.5,\n\"d3\" 1 2 0.1,\n\"d\" 0.5000000000000000,\n\"f\" -1,\n"
        "\"i\" -1,\n\"b\" on,\n\"c\" off,\n");
}

TEST(ObjectLayer, ListsHaveTheirTypesAndCounts)
{
    orv::Matrix4 matrix{};
    matrix[12] = 0.1;
    EXPECT_EQ(layered([&](orvSceneapi_oo& oo) {
                  oo.matrixListParameter("m", {matrix, matrix});
                  oo.intListParameter("i", {1, -2});
                  oo.floatListParameter("f", {1, 0.5f});
                  oo.doubleListParameter("d", {0.25});
                  oo.pointsParameter("p", {1, 2, 3, 4, 5, 6});
              }),
              "\"m\" [ 0 0 0 0 0 0 0 0 0 0 0 0 0.1 0 0 0 ,0 0 0 0 0 0 0 0 0 0 0 0 0.1 0 0 0  ] ,\n"
              "\"i\" [ 1,-2 ] ,\n\"f\" [ 1,0.5 ] ,\n\"d\" [ 0.2500000000000000 ] ,\n"
              "\"p\" [ 1 2 3,4 5 6 ] ,\n");
}

TEST(ObjectLayer, PointsLeaveAnIncompleteLastOneOut)
{
    EXPECT_EQ(layered([](orvSceneapi_oo& oo) {
                  oo.pointsParameter("p", {1, 2, 3, 4, 5});
              }),
              "\"p\" [ 1 2 3 ] ,\n");
    EXPECT_EQ(layered(
                  [](orvSceneapi_oo& oo) {
                      oo.pointsParameter("p", {1, 2});
                  },
                  true),
              std::string("\"p\" [ \x01\x02\x03"
                          "c\0\0\0\0] ,\n",
                          18));
}

TEST(ObjectLayer, OldStringEntryAlwaysThrows)
{
    layered([](orvSceneapi_oo& oo) {
        try {
            oo.deprecatedStringParameter("name", "text");
            FAIL() << "nothing was thrown";
        } catch (const std::invalid_argument& error) {
            EXPECT_STREQ(error.what(), "const char * are deprecated");
        }
    });
}

template<typename Layer, typename Value>
concept TakesAsBoolean = requires(Layer& oo, Value value)
{
    oo.boolParameter("name", value);
};

TEST(ObjectLayer, LiteralsAreStringsAndNoBooleans)
{
    static_assert(TakesAsBoolean<orvSceneapi_oo, bool>);
    static_assert(!TakesAsBoolean<orvSceneapi_oo, const char*>);
    EXPECT_EQ(layered([](orvSceneapi_oo& oo) { oo.stringParameter("n", "literal"); }),
              "\"n\" \"literal\",\n");
}

TEST(ObjectLayer, TransformsPlainlyOrBySetting)
{
    orv::Matrix4 matrix{};
    matrix[0] = 2;
    const std::string numbers = " 2 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n";
    EXPECT_EQ(layered([&](orvSceneapi_oo& oo) {
                  oo.transform(matrix);
                  oo.transform(matrix, true);
                  oo.transform(matrix, false);
              }),
              "transform" + numbers + "set transform" + numbers + "transform" + numbers);
}

TEST(ObjectLayer, PlainTransformGoesThroughTheOtherOneVirtually)
{
    struct Layer : orvSceneapi_oo {
        using orvSceneapi_oo::orvSceneapi_oo;
        using orvSceneapi_oo::transform;
        void transform(const orv::Matrix4&, bool set) override { calls += set ? "set" : "plain"; }
        std::string calls;
    };
    orv::PassThroughFactory factory(nullptr);
    Layer layer(factory);
    static_cast<orvSceneapi_oo&>(layer).transform(orv::Matrix4{});
    EXPECT_EQ(layer.calls, "plain");
}

TEST(ObjectLayer, WritesANodeThroughItself)
{
    struct Node : orv::LightNode {
        void write(orvSceneapi_oo& oo) override { oo.progress("node", 0.25f); }
        void define(orvSceneapi_oo&) override {}
        bool isDefined() const override { return false; }
    };
    Node node;
    EXPECT_EQ(layered([&](orvSceneapi_oo& oo) { oo.writeNode(node); }),
              "progress \"node\" 0.250\n\n");
}

TEST(ObjectLayer, WithoutASceneApiDoesNothing)
{
    orv::PassThroughFactory factory(nullptr);
    orvSceneapi_oo oo(factory);
    EXPECT_EQ(oo.sceneApi(), nullptr);
    oo.beginGroup("g");
    oo.stringParameter("a", "b");
    oo.pointsParameter("p", {1, 2, 3});
    oo.transform(orv::Matrix4{});
    oo.endGroup();
    EXPECT_EQ(oo.newId(), 1u);
    EXPECT_EQ(oo.defineShader("t"), 2u);
}

TEST(PassThroughFactory, HandsOnWhatItWasGiven)
{
    EXPECT_EQ(written([](orvScene_api_file& writer) {
                  orv::PassThroughFactory factory(&writer);
                  EXPECT_EQ(factory.sceneApi(), &writer);
                  factory.writeHeader();
                  factory.close();
                  EXPECT_EQ(factory.sceneApi(), &writer);
                  writer.id(1);
              }),
              "id 1\n");
}

} // namespace
