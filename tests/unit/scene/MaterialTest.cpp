#include "scene/Material.h"

#include "scene/Diffuse.h"
#include "scene/TriangleObject.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::SceneText;
using test::written;

/// A material without shaders.
class Bare : public Material {
public:
    using Material::Material;
    void writeParameters(orvSceneapi_oo&) override {}
};

TEST(Material, WritesItselfInPlaceWhileItIsNotDefined)
{
    Bare material("m");
    EXPECT_FALSE(material.isDefined());
    EXPECT_EQ(written(material), "material \"m\" {\n}\n");
    EXPECT_FALSE(material.isDefined());
}

TEST(Material, DefinesItselfOnceAndIsReferredToByName)
{
    SceneText scene;
    Bare material("m");
    material.define(scene.oo());
    EXPECT_TRUE(material.isDefined());
    material.write(scene.oo());
    material.write(scene.oo());
    EXPECT_EQ(scene.text(), "\n#define material \"m\" {\n}\n"
                            "material \"m\"\n"
                            "material \"m\"\n");
}

TEST(Material, DefinedGivesTwoObjectsOneDefinitionAndTwoReferences)
{
    SceneText scene;
    const auto material = std::make_shared<Diffuse>("m");
    material->define(scene.oo());
    for (const char* name : {"a", "b"}) {
        TriangleObject mesh(name);
        mesh.addTriangle(0, 0, 0);
        mesh.setMaterial(material);
        mesh.write(scene.oo());
    }
    const std::string geometry = "geometry \"triangles\" {\n"
                                 "\"vertices\" [ ] ,\n"
                                 "\"triangles\" [ 0,0,0 ] ,\n"
                                 "}\n";
    EXPECT_EQ(scene.text(), "\n#define material \"m\" {\n"
                            "surface \"orv_diffuse\" {\n"
                            "\"diffuse\" 0.75 0.5 0.5,\n"
                            "}\n"
                            "flags 4096\n"
                            "}\n"
                            "object \"a\" {\n" +
                                geometry + "material \"m\"\n}\n" + "object \"b\" {\n" + geometry +
                                "material \"m\"\n}\n");
}

TEST(Material, StartsWithoutShaderTypeAndWithTheIdentityForTheTexture)
{
    Bare material("m");
    EXPECT_EQ(material.getName(), "m");
    EXPECT_EQ(material.getShaderType(), "");
    EXPECT_EQ(material.getTextureMatrix(),
              (Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    const Matrix4 other{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    material.setTextureMatrix(other);
    EXPECT_EQ(material.getTextureMatrix(), other);
    EXPECT_EQ(written(material), "material \"m\" {\n}\n");
}

TEST(Material, TakesItsOwnNameAgain)
{
    Bare material("m");
    material.setName(material.getName());
    EXPECT_EQ(material.getName(), "m");
    material.setName("n");
    EXPECT_EQ(material.getName(), "n");
}

} // namespace
} // namespace orv
