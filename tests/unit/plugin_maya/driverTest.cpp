#include "plugins/maya/src/maya2vistrel.h"

#include "plugins/maya/src/DirtyChecker.h"
#include "scene/LightCamera.h"
#include "tests/unit/plugin_maya/DriverFixture.h"

namespace {

class CleanChecker final : public IDirtyChecker {
public:
    bool isDirty(const MDagPath&) override { return false; }
};

} // namespace

TEST_F(Driver, LogsItsArguments)
{
    exported("createNode transform -n \"a\";\n");
    EXPECT_TRUE(logs("DEBUG2:  Creating a Maya2Vistrel Instance, with ImportArgs: MAJOR_VERSION: "
                     "7\nMINOR_VERSION: 3\n"));
    EXPECT_TRUE(logs("DEBUG2:  exportFullScene using args: MAJOR_VERSION: 7\n"));
}

TEST_F(Driver, OpensAQuotedNameWithBackslashes)
{
    std::string path = write("createNode transform -n \"inside\";\n");
    const std::string forward = path;
    std::replace(path.begin(), path.end(), '/', '\\');
    args.setString(IMPORT_FILENAME, "\"" + path + "\"");
    EXPECT_TRUE(has(run(), "group \"inside\" {\n"));
    EXPECT_TRUE(logs("INFO:  Openining: \"" + path + "\"  as  " + forward + "\n")) << log();
}

TEST_F(Driver, TakesTheLastCharacterWithALoneQuote)
{
    args.setString(IMPORT_FILENAME, "\"" + write("createNode transform -n \"inside\";\n") + "x");
    EXPECT_TRUE(has(run(), "group \"inside\" {\n"));
}

TEST_F(Driver, SurvivesAnEmptyNameAndALoneQuote)
{
    for (const char* name : {"", "\"", "\"\""}) {
        args.setString(IMPORT_FILENAME, name);
        run();
        EXPECT_FALSE(status) << name;
    }
}

TEST_F(Driver, AFileThatCannotBeOpenedWritesNothing)
{
    args.setString(IMPORT_FILENAME, "no/such/file.ma");
    EXPECT_EQ(run(), "");
    EXPECT_FALSE(status);
    EXPECT_TRUE(logs("WARNING:  could not open Maya file: ")) << log();
}

TEST_F(Driver, WritesTheModuleFirst)
{
    const std::string text = exported("createNode transform -n \"a\";\n");
    EXPECT_EQ(text.find("load \"orvrtopt.so\" {\n"), 0u) << text;
    const std::string expected[] = {"\"import_mode\" on,\n",
                                    "\"import_merge_groups\" on,\n",
                                    "\"import_merge_objects\" on,\n",
                                    "\"import_up_vector\" 1,\n",
                                    "\"meter_scale\" 100,\n",
                                    "\"import_keep_original\" on,\n",
                                    "\"import_center_geometry\" off,\n",
                                    "\"import_snap_to_ground\" off,\n",
                                    "\"import_adjust_camera\" off,\n",
                                    "\"import_adjust_environment\" on,\n",
                                    "\"ext\" on,\n"};
    std::size_t at = 0;
    for (const std::string& line : expected) {
        const std::size_t found = text.find(line, at);
        ASSERT_NE(found, std::string::npos) << line;
        at = found;
    }
}

TEST_F(Driver, ExportsThePerspectiveCameraOnly)
{
    const std::string text = exported("createNode transform -n \"a\";\n");
    EXPECT_EQ(count(text, "\ncamera "), 1u);
    EXPECT_TRUE(has(text, "\ncamera \"persp\" {\n"));
    EXPECT_TRUE(has(text, "fov 54.4322\n")) << text;
    EXPECT_TRUE(has(text, "clipping 0.1 10000\n")) << text;
    EXPECT_LT(text.find("load "), text.find("camera "));
    EXPECT_LT(text.find("camera "), text.find("#print \"Export geometry."));
}

TEST_F(Driver, TakesTheLastShapeOutOfACamerasName)
{
    const auto camera = [](const std::string& name) {
        return "createNode transform -n \"t_" + name + "\";\ncreateNode camera -n \"" + name +
               "\" -p \"t_" + name + "\";\n";
    };
    const std::string text =
        exported(camera("heroShape1") + camera("Shape") + camera("aShape") + camera("abShape") +
                 camera("ShapeShape") + camera("topShape2") + camera("topViewShape") +
                 camera("leftShape") + camera("backShape"));
    for (const char* name : {"hero1", "Shape", "aShape", "ab", "top2", "topView", "left", "back"}) {
        EXPECT_TRUE(has(text, "\ncamera \"" + std::string(name) + "\" {\n")) << name;
    }
    // ShapeShape loses its last Shape, at index 5
    EXPECT_EQ(count(text, "\ncamera \"Shape\" {\n"), 2u);
}

TEST_F(Driver, DropsAUserCameraCalledTop)
{
    const std::string text = exported(
        "createNode transform -n \"mine\";\ncreateNode camera -n \"frontShape\" -p \"mine\";\n");
    EXPECT_EQ(count(text, "\ncamera "), 1u);
}

TEST_F(Driver, NarrowsCameraVectorsToFloats)
{
    const std::string text = exported(
        "createNode transform -n \"c\";\nsetAttr \".t\" -type \"double3\" 1.23456789 0 0 ;\n"
        "setAttr \".ry\" 90;\ncreateNode camera -n \"camShape\" -p \"c\";\n");
    const std::string block = text.substr(text.find("camera \"cam\""));
    EXPECT_TRUE(has(block, "position 1.23457 0 0\n")) << block;
    EXPECT_TRUE(has(block, "direction -1 0 ")) << block;
    EXPECT_TRUE(has(block, "up 0 1 0\n")) << block;
    EXPECT_TRUE(has(block, "transform "));
}

TEST_F(Driver, NamesTheRootAfterTheFile)
{
    EXPECT_TRUE(has(exported("createNode transform -n \"a\";\n", "scene.final.ma"),
                    "group \"scene.final\" {\nflags 32768\n"));
    const std::string text = exported("createNode transform -n \"a\";\n");
    EXPECT_TRUE(
        has(text, "attribute \"source file\" \"" + args.getString(IMPORT_FILENAME, "") + "\"\n"))
        << text;
}

TEST_F(Driver, WritesTheBannerAtEveryLevel)
{
    FILELog::ReportingLevel() = ERROR;
    const std::string text = exported("createNode transform -n \"a\";\n");
    EXPECT_TRUE(has(text, "#print \"Export geometry. Using Maya2018. Vistrel 7.2.-1 (built "));
}

TEST_F(Driver, KeepsOrCollapsesTheHierarchyByFlags)
{
    const std::string scene =
        "createNode transform -n \"a\";\ncreateNode joint -n \"b\" -p \"a\";\n";
    const std::string collapsed = exported(scene);
    EXPECT_TRUE(has(collapsed, "group \"a\" {\nflags 32768\n"));
    EXPECT_TRUE(has(collapsed, "group \"b\" {\nflags 32768\n"));
    args.setBool(COLLAPSE_HIERARCHY, false);
    const std::string kept = exported(scene);
    EXPECT_TRUE(has(kept, "group \"scene\" {\nflags 32769\n"));
    EXPECT_TRUE(has(kept, "group \"b\" {\nflags 32769\n"));
}

TEST_F(Driver, KeepsGroupsOfHiddenTransformsButNotTheirGeometry)
{
    const std::string text = exported(
        "createNode transform -n \"gone\";\nsetAttr \".v\" no;\n" + quadMesh("goneShape", "gone") +
        "createNode transform -n \"here\";\n" + quadMesh("hereShape", "here") +
        "connectAttr \"goneShape.iog\" \":initialShadingGroup.dsm\" -na;\n"
        "connectAttr \"hereShape.iog\" \":initialShadingGroup.dsm\" -na;\n");
    EXPECT_TRUE(has(text, "group \"gone\" {\n"));
    EXPECT_FALSE(has(text, "\"goneShape\""));
    EXPECT_TRUE(has(text, "object \"hereShape\" {\n"));
}

TEST_F(Driver, ReportsAnUnhandledTypeOnceAndKeepsItsGroup)
{
    const std::string text =
        exported("createNode transform -n \"l\";\ncreateNode locator -n \"l1\" -p \"l\";\n"
                 "createNode locator -n \"l2\" -p \"l\";\n");
    EXPECT_EQ(count(text, "Unhandled node("), 1u);
    EXPECT_TRUE(has(text, "#print \"Maya2018:Unhandled node(2): l1: locator  dagPath: |l|l1\"\n"))
        << text;
    // a shape has no matrix: the identity is written
    EXPECT_TRUE(
        has(text, "group \"l2\" {\nflags 32768\ntransform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n}\n"))
        << text;
}

TEST_F(Driver, PopsToTheDepthOfTheNextNode)
{
    const std::string text =
        exported("createNode transform -n \"a\";\ncreateNode transform -n \"b\" -p \"a\";\n"
                 "createNode transform -n \"c\" -p \"b\";\ncreateNode transform -n \"d\";\n");
    EXPECT_TRUE(logs("DEBUG4:  pop to 1\n"));
    EXPECT_TRUE(logs("DEBUG3:  Handle node@3: c: transform  dagPath: |a|b|c Stack:/scene/a/b\n"))
        << log();
    // d stands beside a: three groups close before it opens
    const std::size_t c = text.find("group \"c\"");
    const std::size_t d = text.find("group \"d\"");
    EXPECT_EQ(count(text.substr(c, d - c), "}\n"), 3u);
}

TEST_F(Driver, AUserNodeNamedWorldIsAnOrdinaryGroup)
{
    EXPECT_TRUE(has(exported("createNode transform -n \"world\";\n"), "group \"world\" {\n"));
}

TEST_F(Driver, MovesToTheFrameBeforeExporting)
{
    args.setInt(FRAME, 48);
    exported("createNode transform -n \"a\";\n");
    EXPECT_TRUE(logs("INFO:  importing frame: 48@2 second mark\n")) << log();
}

TEST_F(Driver, LeavesTheTimeAloneWithoutAFrame)
{
    exported("createNode transform -n \"a\";\n");
    EXPECT_FALSE(logs("importing frame"));
}

TEST_F(Driver, OnlyExactlyBetaChoosesTheOtherExtractor)
{
    const std::string scene =
        "createNode transform -n \"a\";\n" + twoQuadMesh("pair", "a") +
        "setAttr \"pair.iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n"
        "connectAttr \"pair.iog.og[0]\" \":initialShadingGroup.dsm\" -na;\n";
    // one of two quads: four vertices of its own, or all six
    const std::string ownVertices = "\"vertices\" [ 0 0 0,1 0 0,";
    for (const char* value : {"", "Beta", "beta2", "bet"}) {
        args.setString(EXPERIMENTAL, value);
        const std::string text = exported(scene);
        EXPECT_EQ(count(text.substr(text.find("\"vertices\""),
                                    text.find("\"triangles\" [") - text.find("\"vertices\"")),
                        ","),
                  4u)
            << value;
    }
    args.setString(EXPERIMENTAL, "beta");
    const std::string text = exported(scene);
    EXPECT_EQ(count(text.substr(text.find("\"vertices\""),
                                text.find("\"triangles\" [") - text.find("\"vertices\"")),
                    ","),
              6u);
}

TEST_F(Driver, CleanMeshesYieldNothing)
{
    open("createNode transform -n \"a\";\n" + quadMesh("quad", "a") +
         "connectAttr \"quad.iog\" \":initialShadingGroup.dsm\" -na;\n");
    WrittenScene scene;
    {
        Maya2Vistrel driver(&scene.layer(), args);
        CleanChecker clean;
        EXPECT_TRUE(driver.exportFullScene(clean));
    }
    EXPECT_FALSE(has(scene.text(), "quad"));
    EXPECT_TRUE(logs("DEBUG2:  |a|quad is clean\n"));
}

TEST_F(Driver, ACleanSurfaceLeavesAnEmptyGroup)
{
    open("createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"surf\" -p \"a\";\n");
    WrittenScene scene;
    {
        Maya2Vistrel driver(&scene.layer(), args);
        CleanChecker clean;
        EXPECT_TRUE(driver.exportFullScene(clean));
    }
    EXPECT_TRUE(has(scene.text(), "group \"surf\" {\nflags 32768\n}\n"));
    EXPECT_TRUE(logs("DEBUG3:  Adding a empty body group for NURBSsurf\n")) << log();
}

TEST_F(Driver, CountsAllShapesButAdvancesByMeshes)
{
    // five shapes: four default cameras and the mesh
    const std::string text = exported("createNode transform -n \"a\";\n" + quadMesh("quad", "a"));
    EXPECT_TRUE(has(text, "progress \"quad\" 0.200\n\n")) << text;
}

TEST_F(Driver, WritesInstancesAsReferencesToOneDefinition)
{
    const std::string text = exported(
        "createNode transform -n \"a\";\ncreateNode transform -n \"b\";\n" + quadMesh("quad", "a") +
        "parent -s -nc -r -add \"|a|quad\" \"b\" ;\n"
        "connectAttr \"|a|quad.iog\" \":initialShadingGroup.dsm\" -na;\n"
        "connectAttr \"|b|quad.iog\" \":initialShadingGroup.dsm\" -na;\n");
    EXPECT_EQ(count(text, "#define object \"quad\" {\n"), 1u);
    EXPECT_EQ(count(text, "\nobject \"quad\" {\ngeometry \"instance\" {\n\"id\" 1,\n}\nmaterial "
                          "\"lambert1\"\n}\n"),
              2u)
        << text;
}
