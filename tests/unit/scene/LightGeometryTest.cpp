#include "scene/LightGeometry.h"

#include "scene/Diffuse.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

/// The least geometry: no data, no text.
class Nothing : public LightGeometry {
public:
    using LightGeometry::LightGeometry;
    void write(orvSceneapi_oo&) override {}
    void define(orvSceneapi_oo&) override {}
    std::size_t memorySize() const override { return 0; }
};

TEST(LightGeometry, StartsWithItsNameAndNothingElse)
{
    const Nothing geometry("pCubeShape1");
    EXPECT_EQ(geometry.getName(), "pCubeShape1");
    EXPECT_EQ(geometry.getMaterial(), nullptr);
    EXPECT_FALSE(geometry.isDefined());
    EXPECT_EQ(geometry.definitionId(), 0U);
}

TEST(LightGeometry, TakesADefinitionIdOf64Bits)
{
    Nothing geometry("a");
    geometry.setDefinitionId(0x100000002ULL);
    EXPECT_TRUE(geometry.isDefined());
    EXPECT_EQ(geometry.definitionId(), 0x100000002ULL);
}

TEST(LightGeometry, IsDefinedByTheIdZeroToo)
{
    Nothing geometry("a");
    geometry.setDefinitionId(0);
    EXPECT_TRUE(geometry.isDefined());
}

TEST(LightGeometry, ReplacesAndReleasesItsMaterial)
{
    Nothing geometry("a");
    auto first = std::make_shared<Diffuse>("first");
    auto second = std::make_shared<Diffuse>("second");
    geometry.setMaterial(first);
    EXPECT_EQ(geometry.getMaterial(), first);
    EXPECT_EQ(first.use_count(), 2);
    geometry.setMaterial(second);
    EXPECT_EQ(geometry.getMaterial(), second);
    EXPECT_EQ(first.use_count(), 1);
}

TEST(LightGeometry, KeepsTheMaterialThatIsSetAgain)
{
    Nothing geometry("a");
    geometry.setMaterial(std::make_shared<Diffuse>("only"));
    geometry.setMaterial(geometry.getMaterial());
    ASSERT_NE(geometry.getMaterial(), nullptr);
    EXPECT_EQ(geometry.getMaterial()->getName(), "only");
}

TEST(LightGeometry, TakesANewName)
{
    Nothing geometry("old");
    geometry.setName("new");
    EXPECT_EQ(geometry.getName(), "new");
    geometry.setName(geometry.getName());
    EXPECT_EQ(geometry.getName(), "new");
}

TEST(LightGeometry, IsReleasedWithItsLastHolder)
{
    auto geometry = std::make_shared<Nothing>("a");
    const std::weak_ptr<Material> material = [&geometry] {
        auto made = std::make_shared<Diffuse>("m");
        geometry->setMaterial(made);
        return std::weak_ptr<Material>(made);
    }();
    EXPECT_FALSE(material.expired());
    geometry.reset();
    EXPECT_TRUE(material.expired());
}

} // namespace
} // namespace orv
