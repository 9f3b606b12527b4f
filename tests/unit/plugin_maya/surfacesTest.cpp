#include "plugins/maya/src/CleanUpListener.h"
#include "plugins/maya/src/DirtyChecker.h"
#include "plugins/maya/src/MaterialProvider.h"
#include "plugins/maya/src/NurbsManager.h"
#include "plugins/maya/src/surfaceConversion.h"
#include "scene/Diffuse.h"
#include "scene/NurbsCurve.h"
#include "scene/NurbsSurface.h"
#include "scene/TriangleObject.h"
#include "tests/unit/plugin_maya/DriverFixture.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>

namespace {

using Numbers = std::vector<double>;
using Integers = std::vector<std::int32_t>;

/// Degree 2 in u, 1 in v, three by two points with weights.
std::string patch(const std::string& parent = "a")
{
    return "createNode transform -n \"" + parent +
           "\";\ncreateNode nurbsSurface -n \"patch\" -p \"" + parent +
           "\";\nsetAttr \".cc\" -type \"nurbsSurface\" 2 1 0 0 yes 4 0 0 1 1 2 3 5\n"
           "6 0 0 0 1 0 1 0 2 1 0 5 0.5 1 1 5 0.5 2 0 0 1 2 1 0 1;\n";
}

/// The sixteen points of a flat bicubic patch over 0..1 by 0..1.
std::string bicubic()
{
    std::string points;
    for (int u = 0; u < 4; ++u) {
        for (int v = 0; v < 4; ++v) {
            points += std::to_string(u) + " 0 " + std::to_string(v) + " ";
        }
    }
    return "createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"patch\" -p \"a\";\n"
           "setAttr \".cc\" -type \"nurbsSurface\" 3 3 0 0 no 6 0 0 0 1 1 1 6 0 0 0 1 1 1 16 " +
           points + ";\n";
}

/// One edge of a trim: a straight line in the parameter plane over 4..5.
std::string edge(const std::string& from, const std::string& to)
{
    return "1 1 1 0 no 3 2 4 5 2 " + from + " 0 " + to + " 0 0.001 0 -1 1 1 1 0 no 2 2 4 5 2 " +
           from + " " + to + " 0 0.001 ";
}

/// A unit square with an outer boundary of four edges and a hole of two.
std::string trimmed()
{
    return "createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"patch\" -p \"a\";\n"
           "setAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 2 0 1 2 0 1 4\n"
           "0 0 0 0 1 0 1 0 0 1 1 0;\n"
           "setAttr \".tf[0]\" -type \"nurbsTrimface\" no 2 0 4 0 0 0 0 " +
           edge("0 0", "1 0") + edge("1 0", "1 1") + edge("1 1", "0 1") + edge("0 1", "0 0") +
           "1 2 0 0 " + edge("0.25 0.25", "0.5 0.75") + edge("0.5 0.75", "0.25 0.25") + ";\n";
}

class OneMaterial final : public MaterialProvider {
public:
    std::shared_ptr<orv::Material> materialForPath(const MDagPath&) override
    {
        ++asked;
        return material;
    }
    std::shared_ptr<orv::Material> materialForSet(const MObject&, const std::string&) override
    {
        return nullptr;
    }
    void loadMaterials() override {}
    const std::shared_ptr<orv::Material> material = std::make_shared<orv::Diffuse>("one");
    int asked = 0;
};

class Surfaces : public Driver {
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
    std::shared_ptr<orv::NurbsSurface> converted(const std::string& statements)
    {
        open(statements);
        MFnNurbsSurface maya(pathTo("patch"));
        auto surface = std::make_shared<orv::NurbsSurface>("s");
        convertNurbsSurface(maya, surface);
        return surface;
    }
    static std::shared_ptr<orv::NurbsSurface> asSurface(const GeometryList& list)
    {
        return list.size() == 1 ? std::dynamic_pointer_cast<orv::NurbsSurface>(list[0]) : nullptr;
    }
};

} // namespace

TEST_F(Surfaces, GetDomainOrdersKnotsAndWeightedPoints)
{
    const auto surface = converted(patch());
    // one step further at both ends: 0 0 repeat themselves, 3 5 go on to 1 and 7
    EXPECT_EQ(surface->uKnots(), (Numbers{0, 0, 0, 1, 1, 1}));
    EXPECT_EQ(surface->vKnots(), (Numbers{1, 3, 5, 7}));
    // Maya's (0 0 0 1) (0 1 0 2) (1 0 5 .5) (1 1 5 .5) (2 0 0 1) (2 1 0 1) has v fastest
    EXPECT_EQ(surface->controlPoints(), (Numbers{0, 0, 0, 1, 0.5, 0,   2.5, 0.5, 2, 0, 0, 1,
                                                 0, 2, 0, 2, 0.5, 0.5, 2.5, 0.5, 2, 1, 0, 1}));
    EXPECT_EQ(surface->getTrims(), nullptr);
    WrittenScene scene;
    surface->write(scene.layer());
    const std::string text = scene.text();
    EXPECT_TRUE(has(text, "\"umin\" 0.0000000000000000,\n\"umax\" 1.0000000000000000,\n"
                          "\"vmin\" 3.0000000000000000,\n\"vmax\" 5.0000000000000000,\n"
                          "\"uorder\" 3,\n\"vorder\" 2,\n"))
        << text;
    EXPECT_FALSE(has(text, "trim_"));
    EXPECT_TRUE(logs("DEBUG4:  Nurbs degree (u,v): 2, 1\n"));
    EXPECT_TRUE(logs("DEBUG4:  knots (u,v): 4, 2\n"));
    EXPECT_FALSE(logs("trimcurves"));
}

TEST_F(Surfaces, OfSixteenPointsHaveEightKnotsEachWay)
{
    const auto surface = converted(bicubic());
    EXPECT_EQ(surface->uKnots(), (Numbers{0, 0, 0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(surface->vKnots(), surface->uKnots());
    EXPECT_EQ(surface->controlPoints().size(), 64u);
    // (u1, v0) comes second
    EXPECT_EQ(Numbers(surface->controlPoints().begin() + 4, surface->controlPoints().begin() + 8),
              (Numbers{1, 0, 0, 1}));
    WrittenScene scene;
    surface->write(scene.layer());
    EXPECT_TRUE(has(scene.text(), "\"uorder\" 4,\n\"vorder\" 4,\n"));
}

TEST_F(Surfaces, GetTheLoopsOfTheirTrims)
{
    const auto surface = converted(trimmed());
    const auto trims = surface->getTrims();
    ASSERT_NE(trims, nullptr);
    EXPECT_EQ(trims->trimEdgeCounts(), (Integers{4, 2}));
    EXPECT_EQ(trims->trimInsideFlags(), (Integers{1, 0}));
    EXPECT_EQ(trims->edgeOrders(), (Integers{2, 2, 2, 2, 2, 2}));
    EXPECT_EQ(trims->edgeKnotCounts(), (Integers{4, 4, 4, 4, 4, 4})); // two more than Maya's
    EXPECT_EQ(trims->edgeMinima(), Numbers(6, 4));
    EXPECT_EQ(trims->edgeMaxima(), Numbers(6, 5));
    Numbers knots;
    for (int i = 0; i < 6; ++i) {
        knots.insert(knots.end(), {3, 4, 5, 6});
    }
    EXPECT_EQ(trims->edgeKnots(), knots);
    EXPECT_EQ(trims->edgeUVWs(),
              (Numbers{0, 0, 1, 1, 0, 1, 1,   0,   1, 1,  1,   1, 1,  1,   1, 0,   1,   1,
                       0, 1, 1, 0, 0, 1, .25, .25, 1, .5, .75, 1, .5, .75, 1, .25, .25, 1}));
    EXPECT_TRUE(logs("DEBUG4:  writting 1 trimcurves\n")) << log();
    EXPECT_TRUE(logs("DEBUG4:  here is   4 edges\n"));
    EXPECT_TRUE(logs("DEBUG4:  here is   2 edges\n"));
}

TEST_F(Surfaces, OfWeightedTrimsHaveWeightedPoints)
{
    std::string scene = trimmed();
    const std::string plain = "1 1 0 no 2 2 4 5 2 0 0 1 0 ";
    const std::size_t at = scene.find(plain);
    ASSERT_NE(at, std::string::npos);
    scene.replace(at, plain.size(), "1 1 0 yes 2 2 4 5 2 0 0 1 1 0.5 2 ");
    const auto trims = converted(scene)->getTrims();
    ASSERT_NE(trims, nullptr);
    ASSERT_GE(trims->edgeUVWs().size(), 6u);
    // (1, 0.5) of weight 2
    EXPECT_EQ(Numbers(trims->edgeUVWs().begin() + 3, trims->edgeUVWs().begin() + 6),
              (Numbers{2, 1, 2}));
}

TEST_F(Surfaces, AHoleStaysAHoleWhenTheBoundaryBeforeItHasNoEdges)
{
    std::string scene = patch();
    scene += "setAttr \".tf[0]\" -type \"nurbsTrimface\" no 2 0 0 1 2 0 0 " +
             edge("0.25 0.25", "0.5 0.75") + edge("0.5 0.75", "0.25 0.25") + ";\n";
    const auto trims = converted(scene)->getTrims();
    ASSERT_NE(trims, nullptr);
    EXPECT_EQ(trims->trimEdgeCounts(), (Integers{2}));
    EXPECT_EQ(trims->trimInsideFlags(), (Integers{0}));
    EXPECT_TRUE(logs("DEBUG4:  here is   0 edges\n"));
}

TEST_F(Surfaces, EdgesThatAreNoCurvesAddNothing)
{
    open(patch());
    MObjectArray edges;
    edges.append(MObject::kNullObj);
    edges.append(pathTo("patch").node());
    orv::NurbsCurve trims;
    addTrimLoop(edges, true, trims);
    MObjectArray none;
    addTrimLoop(none, true, trims);
    EXPECT_EQ(trims.memorySize(), 0u);
}

TEST_F(Surfaces, WithoutGeometryKeepEmptyPointsAndGetAnEmptyDomain)
{
    const auto surface = converted(
        "createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"patch\" -p \"a\";\n");
    EXPECT_TRUE(surface->controlPoints().empty());
    EXPECT_EQ(surface->getTrims(), nullptr);
    MFnNurbsSurface maya(pathTo("patch"));
    const auto trims = convertTrims(maya);
    ASSERT_NE(trims, nullptr);
    EXPECT_EQ(trims->memorySize(), 0u);
    EXPECT_TRUE(logs("DEBUG4:  writting 0 trimcurves\n"));
}

TEST_F(Surfaces, AreExtractedOnceForAllInstances)
{
    open(patch() + "createNode transform -n \"b\";\nparent -s -nc -r -add \"|a|patch\" \"b\" ;\n");
    NurbsManager manager;
    AlwaysDirty checker;
    manager.extractAll(checker);
    MDagPathArray paths;
    MObject node = pathTo("patch").node();
    MDagPath::getAllPathsTo(node, paths);
    ASSERT_EQ(paths.length(), 2u);
    ASSERT_EQ(manager.getMesh(paths[0]).size(), 1u);
    EXPECT_EQ(manager.getMesh(paths[0]), manager.getMesh(paths[1]));
    EXPECT_EQ(manager.getMesh(paths[0])[0]->getName(), "patch");
    EXPECT_TRUE(logs("INFO:  Loaded 1 NurbSurfaces\n"));
    EXPECT_TRUE(logs("DEBUG4:  TRACE CHECK: extracting nurbs\n"));
    EXPECT_TRUE(logs("DEBUG4:  TRACE CHECK: create dagnode\n"));
    EXPECT_TRUE(logs("DEBUG4:  TRACE CHECK: nurbs constructor\n"));
}

TEST_F(Surfaces, ThatAreHiddenOrCleanAreNotExtracted)
{
    open(patch() + "setAttr \"a.v\" no;\n");
    NurbsManager manager;
    AlwaysDirty checker;
    manager.extractAll(checker);
    EXPECT_TRUE(manager.getMesh(pathTo("patch")).empty());
    EXPECT_TRUE(logs("INFO:  Loaded 0 NurbSurfaces\n"));
}

TEST_F(Surfaces, HaveNoMeshUnlessTessellated)
{
    open(patch());
    NurbsManager manager;
    const auto plain = asSurface(manager.extractGeometry(pathTo("patch")));
    ASSERT_NE(plain, nullptr);
    EXPECT_FALSE(plain->hasMesh());
    EXPECT_FALSE(plain->isDefined());
    manager.setTessellate(true);
    const auto tessellated = asSurface(manager.extractGeometry(pathTo("patch")));
    ASSERT_TRUE(tessellated->hasMesh());
    EXPECT_EQ(tessellated->getMesh()->getName(), "patch");
}

TEST_F(Surfaces, AndTheirMeshesWearTheMaterialOfThePath)
{
    open(patch());
    const auto provider = std::make_shared<OneMaterial>();
    NurbsManager manager;
    manager.setMaterialProvider(provider);
    manager.setTessellate(true);
    const auto surface = asSurface(manager.extractGeometry(pathTo("patch")));
    EXPECT_EQ(surface->getMaterial(), provider->material);
    EXPECT_EQ(surface->getMesh()->getMaterial(), provider->material);
    EXPECT_EQ(provider->asked, 2);
}

TEST_F(Surfaces, AreDefinedBeforeTheirMeshesWithoutMaterials)
{
    open(patch());
    WrittenScene scene;
    const auto provider = std::make_shared<OneMaterial>();
    NurbsManager manager;
    manager.setObjectLayer(&scene.layer());
    manager.setMaterialProvider(provider);
    manager.setTessellate(true);
    const auto surface = asSurface(manager.extractGeometry(pathTo("patch")));
    EXPECT_EQ(surface->definitionId(), 1u);
    EXPECT_TRUE(surface->getMesh()->isDefined());
    const std::string text = scene.text();
    EXPECT_LT(text.find("geometry \"nurbs\" {\n"), text.find("geometry \"triangles\" {\n"));
    EXPECT_FALSE(has(text, "material"));
    EXPECT_FALSE(has(text, "tessellation"));
}

TEST_F(Surfaces, OfAnotherTypeStayUnfilled)
{
    open(patch());
    WrittenScene scene;
    NurbsManager manager;
    manager.setObjectLayer(&scene.layer());
    manager.setMaterialProvider(std::make_shared<OneMaterial>());
    manager.setTessellate(true);
    testing::internal::CaptureStderr();
    const auto surface = asSurface(manager.extractGeometry(pathTo("a")));
    EXPECT_TRUE(has(testing::internal::GetCapturedStderr(), "nurbs constructor: "));
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->getName(), "a");
    EXPECT_FALSE(surface->isDefined());
    EXPECT_FALSE(surface->hasMesh());
    EXPECT_EQ(surface->getMaterial()->getName(), "default");
    EXPECT_EQ(scene.text(), "");
    EXPECT_TRUE(logs("WARNING:  nurbs constructor: ")) << log();
}

TEST_F(Surfaces, AreWrittenAsMeshesOnlyUnlessIncluded)
{
    const std::string text = exported(patch());
    // defined all the same: surface 1, mesh 2
    EXPECT_TRUE(has(text, "#define object \"patch\" {\nid 1\ngeometry \"nurbs\" {\n"));
    EXPECT_TRUE(has(text, "#define object \"patch\" {\nid 2\ngeometry \"triangles\" {\n"));
    const std::string tree = text.substr(text.find("\ngroup \"a\" {\n"));
    EXPECT_TRUE(has(tree, "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n"
                          "object \"patch\" {\ngeometry \"instance\" {\n\"id\" 2,\n}\nmaterial "))
        << tree;
    EXPECT_EQ(count(tree, "object "), 1u);
}

TEST_F(Surfaces, StandBesideTheirMeshesWhenIncluded)
{
    args.setBool(INCLUDE_NURBS, true);
    const std::string text = exported(patch());
    const std::string tree = text.substr(text.find("\ngroup \"a\" {\n"));
    const std::size_t group = tree.find("\ngroup \"patch\" {\nflags 65536\n"
                                        "object \"patch\" {\ngeometry \"instance\" {\n\"id\" 2,\n");
    EXPECT_NE(group, std::string::npos) << tree;
    EXPECT_GT(tree.find("object \"patch\" {\ngeometry \"instance\" {\n\"id\" 1,\n"), group);
    EXPECT_EQ(count(tree, "object "), 2u);
}

TEST_F(Surfaces, StandAloneWhenIncludedButNotTessellated)
{
    args.setBool(INCLUDE_NURBS, true);
    args.setBool(TESSELLATE, false);
    const std::string text = exported(patch());
    EXPECT_FALSE(has(text, "triangles"));
    EXPECT_TRUE(has(text, "\ngroup \"patch\" {\nflags 65536\n"
                          "object \"patch\" {\ngeometry \"instance\" {\n\"id\" 1,\n"))
        << text;
}

TEST_F(Surfaces, NeitherIncludedNorTessellatedLeaveTheirGroupEmpty)
{
    args.setBool(TESSELLATE, false);
    const std::string text = exported(patch());
    EXPECT_TRUE(status);
    EXPECT_TRUE(has(text, "\ngroup \"a\" {\nflags 32768\n"
                          "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n}\n"))
        << text;
}

TEST_F(Surfaces, WhoseFirstPathIsHiddenAreMissingEverywhere)
{
    const std::string scene =
        patch() + "createNode transform -n \"b\";\nparent -s -nc -r -add \"|a|patch\" \"b\" ;\n" +
        "setAttr \"a.v\" no;\n";
    for (const bool included : {false, true}) {
        args.setBool(INCLUDE_NURBS, included);
        const std::string text = exported(scene);
        EXPECT_TRUE(status);
        EXPECT_FALSE(has(text, "object \"patch\"")) << text;
        EXPECT_TRUE(has(text, "\ngroup \"b\" {\n"));
    }
}

TEST_F(Surfaces, CountAsProgress)
{
    // five shapes: four default cameras and the surface
    EXPECT_TRUE(has(exported(patch()), "progress \"patch\" 0.200\n\n"));
}

TEST_F(Surfaces, AreToldToTheCleanUpListenerBeforeTheyAreFetched)
{
    struct Listener final : ICleanUpListener {
        void cleanUp(const MDagPath& path) override
        {
            told += path.fullPathName().asUTF8() + std::string(";");
        }
        std::string told;
    } listener;
    EXPECT_EQ(cleanUpListener(), nullptr);
    cleanUpListener() = &listener;
    exported(patch() + "createNode transform -n \"m\";\n" + quadMesh("quad", "m"));
    cleanUpListener() = nullptr;
    EXPECT_EQ(listener.told, "|a|patch;|m|quad;");
    EXPECT_TRUE(logs("DEBUG3:  |a|patchShall be cleaned\n"));
    EXPECT_TRUE(logs("DEBUG:  extractGeometry(patch) type: nurbsSurface\n"));
}
