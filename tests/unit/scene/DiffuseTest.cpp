#include "scene/Diffuse.h"

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

TEST(Diffuse, WritesColourAndFlags)
{
    Diffuse material("m");
    EXPECT_EQ(material.getShaderType(), "orv_diffuse");
    EXPECT_EQ(written(material), "material \"m\" {\n"
                                 "surface \"orv_diffuse\" {\n"
                                 "\"diffuse\" 0.75 0.5 0.5,\n"
                                 "}\n"
                                 "flags 4096\n"
                                 "}\n");
}

TEST(Diffuse, ClampsItsColour)
{
    Diffuse material("m");
    EXPECT_EQ(material.getColor(), (Float3{0.75F, 0.5F, 0.5F}));
    material.setColor(1.5F, -0.2F, 0.5F);
    EXPECT_EQ(material.getColor(), (Float3{1, 0, 0.5F}));
    material.setColor(1, 0, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(material.getColor(), (Float3{1, 0, 0}));
}

TEST(Diffuse, WritesTheShaderTypeThatWasSet)
{
    Diffuse material("m");
    material.setShaderType("other");
    EXPECT_NE(written(material).find("surface \"other\" {\n"), std::string::npos);
}

TEST(Diffuse, WithVertexColoursWritesTheColourAndThenTheConnection)
{
    Diffuse material("m");
    material.setColor(0.25F, 0.5F, 1);
    material.setVertexColor(true);
    const std::string text = "material \"m\" {\n"
                             "surface \"orv_diffuse\" {\n"
                             "\"diffuse\" 0.25 0.5 1,\n"
                             "\"diffuse\" ! \"vertex_color\" {\n"
                             "\"default_color\" 0.8 0.8 0.8,\n"
                             "},\n"
                             "}\n"
                             "flags 4096\n"
                             "}\n";
    EXPECT_EQ(written(material), text);
    EXPECT_EQ(written(material, Layout::Binary), text);
}

TEST(Diffuse, WithVertexColoursCanBeWrittenManyTimesInOneFile)
{
    SceneText scene;
    Diffuse coloured("m");
    coloured.setVertexColor(true);
    Diffuse plain("p");
    coloured.write(scene.oo());
    plain.write(scene.oo());
    const std::string once = scene.text();
    coloured.write(scene.oo());
    plain.write(scene.oo());
    EXPECT_EQ(scene.text(), once + once);
}

TEST(Diffuse, CallsInTheOrderOfItsShaders)
{
    CallRecorder recorder;
    PassThroughFactory factory(&recorder);
    orvSceneapi_oo oo(factory);
    Diffuse material("m");
    material.writeParameters(oo);
    EXPECT_EQ(recorder.calls(),
              (std::vector<std::string>{"beginShader - orv_diffuse", "parameter diffuse 1",
                                        "captureBuffer", "endShader", "shaderReference 0",
                                        "flags 4096"}));
}

TEST(Diffuse, WithVertexColoursKeepsTheOuterShaderAsideMeanwhile)
{
    CallRecorder recorder;
    PassThroughFactory factory(&recorder);
    orvSceneapi_oo oo(factory);
    Diffuse material("m");
    material.setVertexColor(true);
    material.writeParameters(oo);
    EXPECT_EQ(recorder.calls(),
              (std::vector<std::string>{"push", "beginShader - orv_diffuse", "push",
                                        "beginShader - vertex_color", "parameter default_color 1",
                                        "endShader", "captureBuffer", "pop", "parameter diffuse 1",
                                        "namedBlob diffuse", "endShader", "captureBuffer",
                                        "shaderReference 0", "flags 4096"}));
}

} // namespace
} // namespace orv
