#include "plugins/maya/src/MaterialManager.h"

#include "scene/Material.h"
#include "scene/OldSCeneapiLightMultiMaterial.h"
#include "tests/unit/plugin_maya/SceneFixture.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyNodes.h>

namespace {

/// A shader with a shading group of its own.
std::string shaded(const std::string& type, const std::string& name, const std::string& attributes)
{
    return "createNode " + type + " -n \"" + name + "\";\n" + attributes +
           "createNode shadingEngine -n \"" + name + "SG\";\nsetAttr \".ro\" yes;\nconnectAttr \"" +
           name + ".oc\" \"" + name + "SG.ss\";\n";
}

class Materials : public SceneFixture {
protected:
    static MObject nodeNamed(const std::string& name)
    {
        for (MItDependencyNodes nodes; !nodes.isDone(); nodes.next()) {
            if (MFnDependencyNode(nodes.thisNode()).name() == name.c_str()) {
                return nodes.thisNode();
            }
        }
        return MObject::kNullObj;
    }
    /// What the material of a shading group is written as, in full, in place.
    std::string writtenMaterial(const std::string& group)
    {
        MaterialManager manager;
        manager.loadMaterials();
        WrittenScene scene;
        manager.materialForSet(nodeNamed(group), "object")->write(scene.layer());
        return scene.text();
    }
};

bool has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(Materials, AnEmptySceneHasTwoGroupsAndOneDefinition)
{
    WrittenScene scene;
    MaterialManager manager;
    manager.setObjectLayer(&scene.layer());
    manager.loadMaterials();
    const std::string text = scene.text();
    EXPECT_TRUE(logs("INFO:  loading materials\n"));
    EXPECT_TRUE(logs("INFO:  Loaded 2 shader nodes\n")) << log();
    EXPECT_TRUE(logs("DEBUG2:  Defined a material for: lambert1\n"));
    EXPECT_TRUE(has(text, "#define material \"lambert1\" {\n")) << text;
    EXPECT_EQ(text.find("#define material", 10), std::string::npos) << text;
    // colour 0.5 times weight 0.8
    EXPECT_TRUE(has(text, "\"diffuse\" 0.4 0.4 0.4,\n")) << text;
    EXPECT_TRUE(has(text, "orv_diffuse")) << text;
}

TEST_F(Materials, MultipliesColourAndWeight)
{
    open(shaded("lambert", "red",
                "setAttr \".c\" -type \"float3\" 0.8 0.4 0.2 ;\nsetAttr \".dc\" 0.5;\n"));
    EXPECT_TRUE(has(writtenMaterial("redSG"), "\"diffuse\" 0.4 0.2 0.1,\n"))
        << writtenMaterial("redSG");
}

TEST_F(Materials, IgnoresATraceOfTransparency)
{
    open(shaded("lambert", "red", "setAttr \".it\" -type \"float3\" 0.005 0.005 0.005 ;\n"));
    EXPECT_FALSE(has(writtenMaterial("redSG"), "alpha"));
}

TEST_F(Materials, AveragesTransparencyToAlpha)
{
    open(shaded("lambert", "half", "setAttr \".it\" -type \"float3\" 0.5 0.5 0.5 ;\n") +
         shaded("lambert", "third", "setAttr \".it\" -type \"float3\" 1 0 0 ;\n"));
    EXPECT_TRUE(has(writtenMaterial("halfSG"), "\"alpha\" 0.5,\n"));
    EXPECT_TRUE(has(writtenMaterial("thirdSG"), "\"alpha\" 0.666667,\n"));
}

TEST_F(Materials, GivesSpecularShadersTheAdvancedShader)
{
    open(shaded("blinn", "shiny", "") + shaded("lambert", "dull", ""));
    EXPECT_TRUE(has(writtenMaterial("shinySG"), "\"orv_advanced\""));
    EXPECT_TRUE(has(writtenMaterial("shinySG"), "\"specular\" 0.5 0.5 0.5,\n"));
    EXPECT_TRUE(has(writtenMaterial("dullSG"), "\"orv_diffuse\""));
}

TEST_F(Materials, ReadsTheTextureThroughItsConnections)
{
    open(
        shaded("lambert", "paper", "") +
        "createNode file -n \"cover\";\nsetAttr \".ftn\" -type \"string\" \"textures/cover.png\";\n"
        "setAttr \".tf\" -type \"float2\" 0.25 0.5 ;\nsetAttr \".rf\" 90;\n"
        "connectAttr \"cover.oc\" \"paper.c\";\n");
    const std::string text = writtenMaterial("paperSG");
    EXPECT_TRUE(has(text, "\"texture\" \"textures/cover.png\"")) << text;
    EXPECT_TRUE(has(text, "\"shift_u\" 0.25")) << text;
    EXPECT_TRUE(has(text, "\"shift_v\" 0.5")) << text;
    EXPECT_TRUE(has(text, "\"angle\" 90")) << text;
    EXPECT_TRUE(has(text, "\"scale_u\" 1")) << text;
    // a fresh file node's default colour is 0.5 grey; times the weight 0.8
    EXPECT_TRUE(has(text, "\"default_color\" 0.4 0.4 0.4")) << text;
}

TEST_F(Materials, FallsBackWhereNoLambertFeedsTheGroup)
{
    open(shaded("surfaceShader", "flat", ""));
    const std::string text = writtenMaterial("flatSG");
    EXPECT_TRUE(has(text, "material \"No maya shader found\" {\n")) << text;
    EXPECT_TRUE(has(text, "\"diffuse\" 0.75 0.5 0.5,\n")) << text;
    EXPECT_TRUE(logs("shader was not in material map: flatSG\n"));
}

TEST_F(Materials, SharesOneMaterialUnlessUnique)
{
    open(shaded("lambert", "lambert2", ""));
    MaterialManager manager;
    manager.loadMaterials();
    const MObject group = nodeNamed("lambert2SG");
    EXPECT_EQ(manager.materialForSet(group, "pCube1"), manager.materialForSet(group, "pCube2"));
    EXPECT_EQ(manager.materialForSet(group, "pCube1")->getName(), "lambert2");
}

TEST_F(Materials, GivesEachObjectItsOwnWhenUnique)
{
    open(shaded("lambert", "lambert2", ""));
    WrittenScene scene;
    MaterialManager manager;
    manager.setObjectLayer(&scene.layer());
    manager.setUniqueMaterials(true);
    manager.loadMaterials();
    const MObject group = nodeNamed("lambert2SG");
    EXPECT_EQ(manager.materialForSet(group, "pCube1")->getName(), "pCube1:lambert2");
    EXPECT_NE(manager.materialForSet(group, "pCube1"), manager.materialForSet(group, "pCube1"));
    EXPECT_EQ(manager.materialForSet(nodeNamed("time1"), "a")->getName(), "a:No maya shader found");
    EXPECT_EQ(scene.text(), ""); // nothing is defined up front
}

TEST_F(Materials, DefinesEachShaderOnceInTheOrderOfItsGroups)
{
    // groups b_SG and a_SG of shader one, c_SG of shader two: order by group name, shader one once
    open("createNode lambert -n \"one\";\ncreateNode lambert -n \"two\";\n"
         "createNode shadingEngine -n \"c_SG\";\ncreateNode shadingEngine -n \"b_SG\";\ncreateNode "
         "shadingEngine -n \"a_SG\";\n"
         "connectAttr \"one.oc\" \"c_SG.ss\";\nconnectAttr \"two.oc\" \"b_SG.ss\";\nconnectAttr "
         "\"one.oc\" \"a_SG.ss\";\n");
    WrittenScene scene;
    MaterialManager manager;
    manager.setObjectLayer(&scene.layer());
    manager.loadMaterials();
    const std::string text = scene.text();
    const std::size_t one = text.find("#define material \"one\"");
    const std::size_t two = text.find("#define material \"two\"");
    const std::size_t initial = text.find("#define material \"lambert1\"");
    ASSERT_NE(one, std::string::npos);
    EXPECT_LT(one, two);
    EXPECT_LT(two, initial); // a_SG, b_SG, c_SG, initialParticleSE, initialShadingGroup
    EXPECT_EQ(text.find("#define material \"one\"", one + 1), std::string::npos);
}

TEST_F(Materials, AnswersForAPathByItsFirstSetWithAShader)
{
    open("createNode transform -n \"a\";\n" + quadMesh("aShape", "a") +
         shaded("lambert", "red", "") +
         "connectAttr \"aShape.iog\" \"redSG.dsm\" -na;\n"
         "createNode transform -n \"l\";\ncreateNode locator -n \"lShape\" -p \"l\";\n");
    MaterialManager manager;
    manager.loadMaterials();
    MDagPath path;
    MFnDagNode(nodeNamed("aShape")).getPath(path);
    EXPECT_EQ(manager.materialForPath(path)->getName(), "red");
    EXPECT_TRUE(logs("DEBUG3:  looking for a material for |a|aShape\n"));
    EXPECT_TRUE(logs("DEBUG2:  Shading Group: redSG\n\n"));
    MFnDagNode(nodeNamed("lShape")).getPath(path);
    EXPECT_EQ(manager.materialForPath(path)->getName(), "No maya shader found");
    EXPECT_TRUE(
        logs("WARNING:  Do not know how to extract material for this type for node: |l|lShape\n"));
}
