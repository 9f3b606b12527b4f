#include "scene/LightCamera.h"

#include "scene/FBXAnimation.h"
#include "tests/unit/scene/CallRecorder.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

#include <limits>

namespace orv {
namespace {

using test::CallRecorder;
using test::Layout;
using test::SceneText;
using test::written;

const std::string kEnvironment = "reflection map \"orv_envmap\" {\n"
                                 "\"texture\" \"startup.hdr\",\n"
                                 "\"format\" 3,\n"
                                 "\"radius\" 25,\n"
                                 "}\n";
const std::string kVectors = "position 0 0 0\n"
                             "direction 0 0 -1\n"
                             "up 0 1 0\n";

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(LightCamera, WritesItsDefaults)
{
    LightCamera camera("persp");
    EXPECT_EQ(written(camera), "\ncamera \"persp\" {\n"
                               "projection \"perspective\"\n"
                               "fov 60\n" +
                                   kEnvironment + kVectors + "}\n");
}

TEST(LightCamera, GivesItsDefaults)
{
    const LightCamera camera("persp");
    EXPECT_EQ(camera.getName(), "persp");
    EXPECT_EQ(camera.getPosition(), (Double3{0, 0, 0}));
    EXPECT_EQ(camera.getDirection(), (Double3{0, 0, -1}));
    EXPECT_EQ(camera.getLookAt(), (Double3{0, 0, -1}));
    EXPECT_EQ(camera.getUp(), (Double3{0, 1, 0}));
    EXPECT_EQ(camera.getFov(), 60.0F);
    EXPECT_EQ(camera.getNear(), -1.0F);
    EXPECT_EQ(camera.getFar(), -1.0F);
    EXPECT_EQ(camera.getProjection(), 0U);
    EXPECT_FALSE(camera.hasTransform());
}

TEST(LightCamera, IndentsTheEnvironmentByTwo)
{
    LightCamera camera("c");
    // the shader's own statements stand one blank inside it
    EXPECT_EQ(written(camera, Layout::Indented), "\ncamera \"c\" {\n"
                                                 " projection \"perspective\"\n"
                                                 " fov 60\n"
                                                 " reflection map   \"orv_envmap\" {\n"
                                                 "   \"texture\" \"startup.hdr\",\n"
                                                 "   \"format\" 3,\n"
                                                 "   \"radius\" 25,\n"
                                                 "  }\n"
                                                 " position 0 0 0\n"
                                                 " direction 0 0 -1\n"
                                                 " up 0 1 0\n"
                                                 "}\n");
}

TEST(LightCamera, IsTheSameInBinary)
{
    LightCamera camera("c");
    EXPECT_EQ(written(camera, Layout::Binary), written(camera, Layout::Text));
}

TEST(LightCamera, WritesEverythingInItsOrder)
{
    LightCamera camera("c");
    camera.setTransform({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1});
    camera.setClipping(0.5F, 1000);
    camera.setUp(0, 0, 1);
    camera.setLookAt(4, 5, 6);
    camera.setDirection(1, 0, 0);
    camera.setPosition(1, 2, 3);
    camera.setFov(45);
    EXPECT_EQ(written(camera), "\ncamera \"c\" {\n"
                               "projection \"perspective\"\n"
                               "fov 45\n" +
                                   kEnvironment +
                                   "position 1 2 3\n"
                                   "direction 1 0 0\n"
                                   "look_at 4 5 6\n"
                                   "up 0 0 1\n"
                                   "clipping 0.5 1000\n"
                                   "transform 1 0 0 0 0 1 0 0 0 0 1 0 7 8 9 1\n"
                                   "}\n");
}

TEST(LightCamera, RoundsVectorsToSinglePrecision)
{
    LightCamera camera("c");
    camera.setPosition(0.1F, 0, 0);
    EXPECT_EQ(camera.getPosition()[0], static_cast<double>(0.1F));
    EXPECT_NE(camera.getPosition()[0], 0.1);
}

TEST(LightCamera, WritesALookAtThatEqualsTheDefault)
{
    LightCamera camera("c");
    camera.setLookAt(0, 0, -1);
    EXPECT_TRUE(contains(written(camera), "direction 0 0 -1\nlook_at 0 0 -1\nup 0 1 0\n"));
}

TEST(LightCamera, WritesClippingOnlyForZeroLessNearLessFar)
{
    struct Case {
        float nearClip;
        float farClip;
        bool isWritten;
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Case cases[] = {
        {0.1F, 0.1F, false}, {0.1F, 100, true}, {100, 0.1F, false}, {0, 100, false},
        {-1, 100, false},    {-2, -1, false},   {0.1F, nan, false},
    };
    for (const Case& each : cases) {
        LightCamera camera("c");
        camera.setClipping(each.nearClip, each.farClip);
        EXPECT_EQ(contains(written(camera), "clipping"), each.isWritten)
            << each.nearClip << " " << each.farClip;
    }
}

TEST(LightCamera, OrthographicWritesNoFieldOfView)
{
    LightCamera camera("c");
    camera.setProjection(1);
    EXPECT_EQ(written(camera), "\ncamera \"c\" {\n"
                               "projection \"orthographic\"\n" +
                                   kEnvironment + kVectors + "}\n");
    camera.setFov4(1, 2, 3, 4);
    EXPECT_FALSE(contains(written(camera), "fov"));
}

TEST(LightCamera, AnyOtherProjectionIsPerspective)
{
    LightCamera camera("c");
    camera.setProjection(2);
    EXPECT_TRUE(contains(written(camera), "projection \"perspective\"\nfov 60\n"));
}

TEST(LightCamera, WritesFourFieldOfViewValues)
{
    LightCamera camera("c");
    camera.setFov4(1, 2.5F, 3, 4);
    EXPECT_TRUE(contains(written(camera), "projection \"perspective\"\nfov4 1 2.5 3 4\n"));
}

TEST(LightCamera, ReturnsToOneAngleWithSetFov)
{
    LightCamera camera("c");
    camera.setFov4(1, 2, 3, 4);
    camera.setFov(30);
    const std::string text = written(camera);
    EXPECT_TRUE(contains(text, "\nfov 30\n"));
    EXPECT_FALSE(contains(text, "fov4"));
}

TEST(LightCamera, WritesOnlyTheAnimationWhenItHasBoth)
{
    LightCamera camera("c");
    camera.setTransform({});
    camera.setAnimation(std::make_shared<FBXAnimation>("track", 0.0F, 0.0F, true));
    const std::string text = written(camera);
    EXPECT_TRUE(contains(text, "up 0 1 0\nanimation \"track\" \"fbx_animation\" {\n"));
    EXPECT_FALSE(contains(text, "transform"));
}

TEST(LightCamera, KeepsBareNamesAfterTheEnvironmentAndTheAnimation)
{
    SceneText scene;
    LightCamera first("a");
    first.setAnimation(std::make_shared<FBXAnimation>("track", 0.0F, 0.0F, true));
    first.write(scene.oo());
    const std::size_t before = scene.text().size();
    LightCamera second("b");
    second.write(scene.oo());
    EXPECT_EQ(scene.text().substr(before), "\ncamera \"b\" {\n"
                                           "projection \"perspective\"\n"
                                           "fov 60\n" +
                                               kEnvironment + kVectors + "}\n");
}

TEST(LightCamera, TakesTheEnvironmentsHandleBeforeItEndsTheShader)
{
    CallRecorder recorder;
    PassThroughFactory factory(&recorder);
    orvSceneapi_oo oo(factory);
    LightCamera camera("c");
    EXPECT_NE(camera.writeEnvironment(oo), nullptr);
    // 10 text, 6 integer, 3 float
    EXPECT_EQ(recorder.calls(),
              (std::vector<std::string>{"beginShader - orv_envmap", "parameter texture 10",
                                        "parameter format 6", "parameter radius 3", "captureBuffer",
                                        "endShader"}));
}

TEST(LightCamera, WritesEachValueWithItsType)
{
    CallRecorder recorder;
    PassThroughFactory factory(&recorder);
    orvSceneapi_oo oo(factory);
    LightCamera camera("c");
    camera.setLookAt(1, 2, 3);
    camera.setClipping(1, 2);
    camera.setFov4(1, 2, 3, 4);
    camera.setTransform({});
    camera.write(oo);
    // 15 four floats, 65536 a shader's text, 5 three doubles, 14 two floats
    EXPECT_EQ(recorder.calls(),
              (std::vector<std::string>{
                  "parameter projection 10", "parameter fov4 15", "beginShader - orv_envmap",
                  "parameter texture 10", "parameter format 6", "parameter radius 3",
                  "captureBuffer", "endShader", "parameter reflection map 65536",
                  "parameter position 5", "parameter direction 5", "parameter look_at 5",
                  "parameter up 5", "parameter clipping 14", "transform"}));
}

TEST(LightCamera, HasNoDefinitionForm)
{
    SceneText scene;
    LightCamera camera("c");
    camera.define(scene.oo());
    EXPECT_FALSE(camera.isDefined());
    EXPECT_EQ(scene.text(), "");
}

} // namespace
} // namespace orv
