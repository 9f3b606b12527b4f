#include "plugins/maya/src/BetaExtractor.h"
#include "plugins/maya/src/HWMeshExtractor.h"
#include "plugins/maya/src/MaterialManager.h"
#include "plugins/maya/src/MeshManager.h"
#include "plugins/maya/src/ProgressCounter.h"

#include "scene/Material.h"
#include "scene/TriangleObject.h"
#include "tests/unit/plugin_maya/SceneFixture.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItDependencyNodes.h>

namespace {

class CountingChecker final : public IDirtyChecker {
public:
    explicit CountingChecker(bool answer) : m_answer(answer) {}
    bool isDirty(const MDagPath&) override
    {
        ++asked;
        return m_answer;
    }
    int asked = 0;

private:
    bool m_answer;
};

class Meshes : public SceneFixture {
protected:
    static MDagPath pathTo(const std::string& name)
    {
        MDagPath path;
        for (MItDependencyNodes nodes; !nodes.isDone(); nodes.next()) {
            MObject node = nodes.thisNode();
            if (MFnDependencyNode(node).name() == name.c_str()) {
                MFnDagNode(node).getPath(path);
            }
        }
        return path;
    }
    static std::shared_ptr<orv::TriangleObject> object(const std::shared_ptr<orv::LightGeometry>& g)
    {
        return std::dynamic_pointer_cast<orv::TriangleObject>(g);
    }
    static void assign(std::string& scene, const std::string& shape,
                       const std::string& group = ":initialShadingGroup")
    {
        scene += "connectAttr \"" + shape + ".iog\" \"" + group + ".dsm\" -na;\n";
    }
    /// Faces 0 and 1 of a two-quad mesh in two groups.
    static std::string split(const std::string& shape)
    {
        return "setAttr \"" + shape + ".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n" +
               "setAttr \"" + shape + ".iog[0].og[1].gcl\" -type \"componentList\" 1 \"f[1]\";\n" +
               "createNode shadingEngine -n \"otherSG\";\n" + "connectAttr \"" + shape +
               ".iog.og[0]\" \":initialShadingGroup.dsm\" -na;\n" + "connectAttr \"" + shape +
               ".iog.og[1]\" \"otherSG.dsm\" -na;\n";
    }
};

} // namespace

TEST_F(Meshes, ExtractsOnceForAllInstances)
{
    std::string scene = "createNode transform -n \"a\";\ncreateNode transform -n \"b\";\n" +
                        quadMesh("quad", "a") + "parent -s -nc -r -add \"|a|quad\" \"b\" ;\n";
    assign(scene, "|a|quad");
    assign(scene, "|b|quad");
    open(scene);
    MeshManager manager;
    AlwaysDirty checker;
    manager.extractAll(checker);
    MDagPathArray paths;
    MObject node = pathTo("quad").node();
    MDagPath::getAllPathsTo(node, paths);
    ASSERT_EQ(paths.length(), 2u);
    ASSERT_EQ(manager.getMesh(paths[0]).size(), 1u);
    EXPECT_EQ(manager.getMesh(paths[0]), manager.getMesh(paths[1]));
    EXPECT_TRUE(logs("INFO:  Loaded 1 meshes\n"));
    EXPECT_TRUE(logs("DEBUG3:  Create map entry for:|b|quad\n"));
    EXPECT_TRUE(logs("DEBUG2:  Get mesh for |a|quad\n"));
    EXPECT_TRUE(logs("DEBUG3:  extract geometry for |a|quad\n"));
    for (const char* step : {"extracting mesh", "create dagnode", "get all paths"}) {
        EXPECT_TRUE(logs("DEBUG4:  TRACE CHECK: " + std::string(step) + "\n")) << step;
    }
}

TEST_F(Meshes, AHiddenFirstPathHidesAllInstances)
{
    std::string scene = "createNode transform -n \"a\";\nsetAttr \".v\" no;\n"
                        "createNode transform -n \"b\";\n" +
                        quadMesh("quad", "a") + "parent -s -nc -r -add \"|a|quad\" \"b\" ;\n";
    assign(scene, "|a|quad");
    assign(scene, "|b|quad");
    open(scene);
    MeshManager manager;
    AlwaysDirty checker;
    manager.extractAll(checker);
    MDagPathArray paths;
    MObject node = pathTo("quad").node();
    MDagPath::getAllPathsTo(node, paths);
    ASSERT_EQ(paths.length(), 2u);
    EXPECT_TRUE(paths[1].isVisible());
    EXPECT_TRUE(manager.getMesh(paths[1]).empty());
    EXPECT_TRUE(logs("INFO:  Loaded 0 meshes\n"));
}

TEST_F(Meshes, FollowTheOrderOfNodesNotOfTheDag)
{
    // b's shape is made first, yet a stands before b in the DAG
    std::string scene = "createNode transform -n \"a\";\ncreateNode transform -n \"b\";\n" +
                        quadMesh("second", "b") + quadMesh("first", "a");
    assign(scene, "first");
    assign(scene, "second");
    open(scene);
    WrittenScene written;
    MeshManager manager;
    manager.setObjectLayer(&written.layer());
    AlwaysDirty checker;
    manager.extractAll(checker);
    const std::string text = written.text();
    const std::size_t second = text.find("#define object \"second\" {\nid 1\n");
    ASSERT_NE(second, std::string::npos) << text;
    EXPECT_GT(text.find("#define object \"first\" {\nid 2\n"), second);
}

TEST_F(Meshes, IntermediateOnesAreDroppedWithoutProgress)
{
    std::string scene = "createNode transform -n \"a\";\n" + quadMesh("before", "a") +
                        "setAttr \".io\" yes;\n" + quadMesh("quad", "a");
    assign(scene, "quad");
    open(scene);
    WrittenScene written;
    ProgressCounter progress{&written.layer(), 2, 0, -1.0F};
    MeshManager manager;
    manager.setProgress(&progress);
    CountingChecker checker(true);
    manager.extractAll(checker);
    EXPECT_EQ(checker.asked, 2);
    EXPECT_EQ(progress.done, 1);
    EXPECT_TRUE(manager.getMesh(pathTo("before")).empty());
    EXPECT_EQ(written.text(), "progress \"quad\" 0.500\n\n");
}

TEST_F(Meshes, SplitsByShadingSetAndNamesAllPartsAlike)
{
    open("createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a") + split("pair"));
    MeshManager manager;
    const GeometryList parts = manager.extractGeometry(pathTo("pair"));
    ASSERT_EQ(parts.size(), 2u);
    for (const auto& part : parts) {
        EXPECT_EQ(part->getName(), "pair");
        EXPECT_EQ(object(part)->triangles().size(), 6u);
        EXPECT_EQ(object(part)->vertices().size(), 12u); // only its own four vertices
    }
    EXPECT_EQ(object(parts[0])->vertices()[0], 0.0f);
    // the second part's first vertex is the second quad's: x is 1 or 2
    EXPECT_GE(object(parts[1])->vertices()[0], 1.0f);
    EXPECT_TRUE(logs("DEBUG2:  MFnMesh::getConnectedSetsAndMembers: instanceNum:0 fPolygonSets:2 "
                     "fPolygonComponents:2\n"))
        << log();
    EXPECT_TRUE(logs("DEBUG4:  PolyWriter output setcount:2\n"));
}

TEST_F(Meshes, SetsOfOtherComponentsAreSkippedWithARecordAtEveryLevel)
{
    open("createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a") + split("pair") +
         "setAttr \"pair.iog[0].og[1].gcl\" -type \"componentList\" 1 \"vtx[0:2]\";\n");
    FILELog::ReportingLevel() = ERROR;
    MeshManager manager;
    const GeometryList parts = manager.extractGeometry(pathTo("pair"));
    ASSERT_EQ(parts.size(), 1u); // the other set of the same mesh is extracted all the same
    EXPECT_EQ(object(parts[0])->triangles().size(), 6u);
    EXPECT_TRUE(logs("ERROR:  MItMeshPolygon::MItMeshPolygon\n")) << log();
}

TEST_F(Meshes, HaveTheirVerticesInTheOrderOfTheirTriangles)
{
    std::string scene = "createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a");
    assign(scene, "pair");
    open(scene);
    MeshManager manager;
    const GeometryList parts = manager.extractGeometry(pathTo("pair"));
    ASSERT_EQ(parts.size(), 1u);
    const orv::TriangleObject& pair = *object(parts[0]);
    // Squares 0 1 4 3 and 1 2 5 4, cut from their second corners to their fourth: 0 1 3, 1 4 3,
    // 1 2 4, 2 5 4.
    EXPECT_EQ(pair.vertices(), (std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, 0, //
                                                   1, 1, 0, 2, 0, 0, 2, 1, 0}));
    EXPECT_EQ(pair.triangles(), (std::vector<std::int32_t>{0, 1, 2, 1, 3, 2, 1, 4, 3, 4, 5, 3}));
    EXPECT_EQ(pair.normals().size(), 18u);
    EXPECT_EQ(pair.uvs(), std::vector<float>(12, 0.0F));
}

TEST_F(Meshes, HaveTheirNumbersWhereTheirVerticesAre)
{
    std::string scene = "createNode transform -n \"a\";\n" + quadMesh("quad", "a");
    assign(scene, "quad");
    open(scene);
    MeshManager manager;
    const GeometryList parts = manager.extractGeometry(pathTo("quad"));
    ASSERT_EQ(parts.size(), 1u);
    // Cut from the second corner to the fourth: 0 1 3, 1 2 3. The texture coordinates of the
    // corners are their own x and y.
    EXPECT_EQ(object(parts[0])->vertices(),
              (std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0}));
    EXPECT_EQ(object(parts[0])->uvs(), (std::vector<float>{0, 0, 1, 0, 0, 1, 1, 1}));
    EXPECT_EQ(object(parts[0])->normals(),
              (std::vector<float>{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}));
}

TEST_F(Meshes, BetaPartsShareAllVertices)
{
    open("createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a") + split("pair"));
    MeshManager manager;
    manager.setExtractor(std::make_shared<BetaExtractor>());
    const GeometryList parts = manager.extractGeometry(pathTo("pair"));
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(object(parts[0])->vertices(), object(parts[1])->vertices());
    EXPECT_EQ(object(parts[0])->vertices().size(),
              18u); // flat: the six points have one normal each
    EXPECT_NE(object(parts[0])->triangles(), object(parts[1])->triangles());
}

TEST_F(Meshes, AMeshWithoutSetsYieldsNothingButIsKnown)
{
    open("createNode transform -n \"a\";\n" + quadMesh("quad", "a"));
    MeshManager manager;
    AlwaysDirty checker;
    manager.extractAll(checker);
    EXPECT_TRUE(manager.getMesh(pathTo("quad")).empty());
    EXPECT_TRUE(logs("INFO:  Loaded 1 meshes\n"));
}

TEST_F(Meshes, SkipsWhatIsHiddenOrClean)
{
    std::string scene =
        "createNode transform -n \"a\";\nsetAttr \".v\" no;\n" + quadMesh("hidden", "a");
    assign(scene, "hidden");
    open(scene);
    MeshManager manager;
    CountingChecker dirty(true);
    manager.extractAll(dirty);
    EXPECT_EQ(dirty.asked, 1);
    EXPECT_TRUE(manager.getMesh(pathTo("hidden")).empty());
    EXPECT_TRUE(logs("INFO:  Loaded 0 meshes\n"));

    std::string other = "createNode transform -n \"b\";\n" + quadMesh("clean", "b");
    assign(other, "clean");
    open(other);
    CountingChecker clean(false);
    manager.extractAll(clean);
    EXPECT_TRUE(manager.getMesh(pathTo("clean")).empty());
}

TEST_F(Meshes, WritesDefinitionsOnlyThroughAnObjectLayer)
{
    std::string scene = "createNode transform -n \"a\";\n" + quadMesh("quad", "a");
    assign(scene, "quad");
    open(scene);
    MeshManager silent;
    silent.extractGeometry(pathTo("quad"));
    EXPECT_FALSE(logs("instantiate :"));

    WrittenScene written;
    MeshManager manager;
    manager.setObjectLayer(&written.layer());
    const GeometryList parts = manager.extractGeometry(pathTo("quad"));
    EXPECT_TRUE(parts[0]->isDefined());
    EXPECT_TRUE(logs("DEBUG2:  instantiate :quad\n"));
    const std::string text = written.text();
    EXPECT_EQ(text.find("#define object \"quad\" {\n"), 0u) << text;
    EXPECT_EQ(text.find("material"), std::string::npos);
}

TEST_F(Meshes, ReportsProgressPerShape)
{
    std::string scene;
    for (const char* name : {"a", "b"}) {
        scene += "createNode transform -n \"" + std::string(name) + "\";\n" +
                 quadMesh(std::string(name) + "Shape", name);
        assign(scene, std::string(name) + "Shape");
    }
    open(scene);
    WrittenScene written;
    ProgressCounter progress{&written.layer(), 2, 0, -1.0f};
    MeshManager manager;
    manager.setProgress(&progress);
    AlwaysDirty checker;
    manager.extractAll(checker);
    EXPECT_EQ(written.text(), "progress \"aShape\" 0.500\n\nprogress \"bShape\" 1.000\n\n");
}

TEST_F(Meshes, GivesPartsTheMaterialOfTheirSet)
{
    std::string scene = "createNode transform -n \"a\";\n" + quadMesh("quad", "a");
    assign(scene, "quad");
    open(scene);
    auto materials = std::make_shared<MaterialManager>();
    materials->loadMaterials();
    MeshManager manager;
    manager.setMaterialProvider(materials);
    EXPECT_EQ(manager.extractGeometry(pathTo("quad"))[0]->getMaterial()->getName(), "lambert1");
}

TEST_F(Meshes, TheDefaultExtractorTakesTheNullComponentAsEveryFace)
{
    open("createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a"));
    const auto whole = std::make_shared<orv::TriangleObject>("whole");
    HWMeshExtractor().extract(pathTo("pair"), whole, MObject::kNullObj);
    EXPECT_EQ(whole->triangles().size(), 12u);
    EXPECT_TRUE(logs("DEBUG2:  Extracted Mesh with 4 Triangles\n"));
    EXPECT_EQ(whole->normals().size(), whole->vertices().size());
    EXPECT_EQ(whole->uvs().size() / 2, whole->vertices().size() / 3);
}

TEST_F(Meshes, NumbersVerticesByFirstUse)
{
    open("createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a"));
    const auto whole = std::make_shared<orv::TriangleObject>("whole");
    HWMeshExtractor().extract(pathTo("pair"), whole, MObject::kNullObj);
    std::int32_t next = 0;
    for (const std::int32_t index : whole->triangles()) {
        ASSERT_LE(index, next);
        next = std::max(next, index + 1);
    }
    EXPECT_EQ(static_cast<std::size_t>(next), whole->vertices().size() / 3);
}

TEST_F(Meshes, AComponentWithoutFacesYieldsNoTriangles)
{
    open("createNode transform -n \"a\";\n" + quadMesh("quad", "a"));
    MFnSingleIndexedComponent component;
    const MObject none = component.create(MFn::kMeshPolygonComponent);
    const auto part = std::make_shared<orv::TriangleObject>("none");
    HWMeshExtractor().extract(pathTo("quad"), part, none);
    EXPECT_TRUE(part->triangles().empty());
    EXPECT_TRUE(part->vertices().empty());
    EXPECT_TRUE(logs("DEBUG2:  Extracted Mesh with 0 Triangles\n"));
}

TEST_F(Meshes, AnEmptyMeshIsReportedAndStaysEmpty)
{
    open("createNode transform -n \"a\";\ncreateNode mesh -n \"nothing\" -p \"a\";\n");
    const auto part = std::make_shared<orv::TriangleObject>("nothing");
    HWMeshExtractor().extract(pathTo("nothing"), part, MObject::kNullObj);
    EXPECT_TRUE(logs("WARNING:  handle Error\n")) << log();
    EXPECT_TRUE(part->vertices().empty());
}
