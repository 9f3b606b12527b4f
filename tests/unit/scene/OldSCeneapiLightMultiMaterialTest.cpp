#include "scene/OldSCeneapiLightMultiMaterial.h"

#include "tests/unit/scene/CallRecorder.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::CallRecorder;
using test::Layout;
using test::SceneText;
using test::written;

/// The block around a shader's text.
std::string material(const std::string& shader)
{
    return "material \"m\" {\nsurface " + shader + "\n}\n";
}

/// The advanced shader for a diffuse colour, a specular one and an alpha.
std::string advanced(const std::string& diffuse, const std::string& specular,
                     const std::string& alpha, const std::string& texture = "")
{
    return "\"orv_advanced\" {\n"
           "\"diffuse\" " +
           diffuse +
           ",\n"
           "\"specular\" " +
           specular +
           ",\n"
           "\"fresnel\" on,\n"
           "\"roughness\" 0,\n"
           "\"ior\" 1.5,\n"
           "\"glossy\" on,\n"
           "\"glossy_samples\" 9,\n"
           "\"alpha\" " +
           alpha + ",\n" + (texture.empty() ? "" : "\"diffuse\" ! " + texture + ",\n") + "}";
}

std::string writtenAlpha(float alpha)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setAlpha(alpha);
    const std::string text = written(node);
    const std::string name = "\"alpha\" ";
    const std::size_t begin = text.find(name) + name.size();
    return text.substr(begin, text.find(',', begin) - begin);
}

TEST(MultiMaterial, WithAColourOnlyWritesThePlainShaderAndNoFlags)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0.25F, 0.5F, 1);
    EXPECT_EQ(node.getShaderType(), "orv_advanced");
    EXPECT_EQ(written(node), material("\"orv_diffuse\" {\n\"diffuse\" 0.25 0.5 1,\n}"));
}

TEST(MultiMaterial, PlainShaderIgnoresTheStoredType)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0, 0, 0);
    node.setShaderType("other");
    EXPECT_EQ(written(node), material("\"orv_diffuse\" {\n\"diffuse\" 0 0 0,\n}"));
    node.setAlpha(1);
    EXPECT_NE(written(node).find("surface \"other\" {\n"), std::string::npos);
}

TEST(MultiMaterial, AnAlphaOfOneSwitchesToTheAdvancedShader)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0.25F, 0.5F, 1);
    node.setAlpha(1);
    EXPECT_EQ(written(node), material(advanced("0.25 0.5 1", "0 0 0", "1")));
}

TEST(MultiMaterial, ABlackSpecularSwitchesToTheAdvancedShader)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0.25F, 0.5F, 1);
    node.setSpecular(0, 0, 0);
    EXPECT_EQ(written(node), material(advanced("0.25 0.5 1", "0 0 0", "1")));
}

TEST(MultiMaterial, ClampsColoursButNotAlpha)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(1.5F, -0.2F, 0.5F);
    node.setSpecular(-1, 2, 0.25F);
    node.setAlpha(2);
    EXPECT_EQ(node.getDiffuseR(), 1.0F);
    EXPECT_EQ(node.getDiffuseG(), 0.0F);
    EXPECT_EQ(node.getDiffuseB(), 0.5F);
    EXPECT_EQ(written(node), material(advanced("1 0 0.5", "0 1 0.25", "2")));
}

TEST(MultiMaterial, RaisesAnAlphaBelowOneTenth)
{
    EXPECT_EQ(writtenAlpha(0.0F), "0.1");
    EXPECT_EQ(writtenAlpha(-3.0F), "0.1");
    EXPECT_EQ(writtenAlpha(0.0999F), "0.1");
    EXPECT_EQ(writtenAlpha(0.125F), "0.125");
}

TEST(MultiMaterial, ComparesAlphaInDoublePrecision)
{
    // 0.1f is 0.100000001490116..., above one tenth; the next float below it, 0.0999999940395...,
    // is not. Six digits show 0.1 for all of them, so read the value itself.
    struct AlphaReader : CallRecorder {
        bool parameter(const char* name, std::uint32_t, const void* value) override
        {
            if (std::string(name) == "alpha") {
                alpha = *static_cast<const float*>(value);
            }
            return true;
        }
        float alpha = -1;
    };
    for (const float alpha : {0.1F, 0.099999994F}) {
        AlphaReader reader;
        PassThroughFactory factory(&reader);
        orvSceneapi_oo oo(factory);
        OldSCeneapiLightMultiMaterial node("m");
        node.setAlpha(alpha);
        node.write(oo);
        EXPECT_EQ(reader.alpha, 0.1F);
    }
}

TEST(MultiMaterial, ATextureUsesTheAdvancedShaderAndIsConnectedToDiffuse)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0.25F, 0.5F, 1);
    node.setTexture("images/wood.png");
    const std::string texture = "\"texture_rgb\" {\n"
                                "\"project\" 3,\n"
                                "\"wrap\" on,\n"
                                "\"texture\" \"images/wood.png\",\n"
                                "\"default_color\" 0.25 0.5 1,\n"
                                "\"angle\" 0,\n"
                                "\"shift_u\" 0,\n"
                                "\"shift_v\" 0,\n"
                                "\"scale_u\" 1,\n"
                                "\"scale_v\" 1,\n"
                                "}";
    EXPECT_EQ(written(node), material(advanced("0.25 0.5 1", "0 0 0", "1", texture)));
    EXPECT_EQ(written(node, Layout::Binary), written(node));
}

TEST(MultiMaterial, WritesTexturePlacementInItsOrder)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0, 0, 0);
    node.setTexture("C:/\xC3\xA4.png");
    node.setScaleV(6);
    node.setScaleU(5);
    node.setShiftV(4);
    node.setShiftU(3);
    node.setAngle(2);
    node.setProjection(1);
    EXPECT_EQ(node.getShiftU(), 3.0F);
    EXPECT_EQ(node.getShiftV(), 4.0F);
    // a path with bytes of 0x80 and above is written in hexadecimal
    EXPECT_NE(written(node).find("\"diffuse\" ! \"texture_rgb\" {\n"
                                 "\"project\" 1,\n"
                                 "\"wrap\" on,\n"
                                 "\"texture\" xX433a2fc3a42e706e67,\n"
                                 "\"default_color\" 0 0 0,\n"
                                 "\"angle\" 2,\n"
                                 "\"shift_u\" 3,\n"
                                 "\"shift_v\" 4,\n"
                                 "\"scale_u\" 5,\n"
                                 "\"scale_v\" 6,\n"
                                 "},\n}"),
              std::string::npos);
}

TEST(MultiMaterial, ResetReturnsEverythingButTheDiffuseColour)
{
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0.25F, 0.5F, 1);
    const std::string fresh = written(node);
    node.setTexture("a.png");
    node.setSpecular(1, 1, 1);
    node.setAlpha(0.5F);
    node.setAngle(1);
    node.setScaleU(2);
    node.setScaleV(2);
    node.setShiftU(2);
    node.setShiftV(2);
    node.setProjection(0);
    node.reset();
    EXPECT_EQ(written(node), fresh);

    // what only a texture, an alpha and a specular colour show
    OldSCeneapiLightMultiMaterial other("m");
    other.setDiffuse(0.25F, 0.5F, 1);
    other.setTexture("a.png");
    node.setTexture("a.png");
    EXPECT_EQ(written(node), written(other));
}

TEST(MultiMaterial, HasAFixedDiffuseColourFromTheStart)
{
    OldSCeneapiLightMultiMaterial node("m");
    EXPECT_EQ(written(node), material("\"orv_diffuse\" {\n\"diffuse\" 0.8 0.8 0.8,\n}"));
}

TEST(MultiMaterial, CanBeDefinedAndReferredTo)
{
    SceneText scene;
    OldSCeneapiLightMultiMaterial node("m");
    node.setDiffuse(0, 0, 0);
    node.define(scene.oo());
    node.write(scene.oo());
    EXPECT_EQ(scene.text(), "\n#define material \"m\" {\n"
                            "surface \"orv_diffuse\" {\n"
                            "\"diffuse\" 0 0 0,\n"
                            "}\n"
                            "}\n"
                            "material \"m\"\n");
}

TEST(MultiMaterial, TakesTheTexturesHandleAfterTheShaderAndTheSurfacesBefore)
{
    CallRecorder recorder;
    PassThroughFactory factory(&recorder);
    orvSceneapi_oo oo(factory);
    OldSCeneapiLightMultiMaterial node("m");
    node.setTexture("a.png");
    node.writeParameters(oo);
    EXPECT_EQ(recorder.calls(), (std::vector<std::string>{"beginShader - texture_rgb",
                                                          "parameter project 6",
                                                          "parameter wrap 7",
                                                          "parameter texture 10",
                                                          "parameter default_color 1",
                                                          "parameter angle 3",
                                                          "parameter shift_u 3",
                                                          "parameter shift_v 3",
                                                          "parameter scale_u 3",
                                                          "parameter scale_v 3",
                                                          "endShader",
                                                          "captureBuffer",
                                                          "beginShader - orv_advanced",
                                                          "parameter diffuse 1",
                                                          "parameter specular 1",
                                                          "parameter fresnel 7",
                                                          "parameter roughness 3",
                                                          "parameter ior 3",
                                                          "parameter glossy 7",
                                                          "parameter glossy_samples 6",
                                                          "parameter alpha 3",
                                                          "namedBlob diffuse",
                                                          "captureBuffer",
                                                          "endShader",
                                                          "shaderReference 0"}));
}

} // namespace
} // namespace orv
