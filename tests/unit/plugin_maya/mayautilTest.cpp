#include "plugins/maya/src/mayautil.h"

#include "tests/unit/plugin_maya/SceneFixture.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>

#include <cstdlib>

namespace {

class MayaUtil : public SceneFixture {
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
    static MDagPath pathTo(const std::string& name)
    {
        MDagPath path;
        MFnDagNode(nodeNamed(name)).getPath(path);
        return path;
    }
    float scaleOf(const std::string& unit)
    {
        open("createNode transform -n \"a\";\n", unit);
        return getMeterScale();
    }
};

std::string expanded(const char* path)
{
    return expandScenePath(path).asUTF8();
}

} // namespace

TEST_F(MayaUtil, GivesUnitsPerMetreForEveryUnit)
{
    EXPECT_EQ(scaleOf("mm"), 1000.0f);
    EXPECT_EQ(scaleOf("centimeter"), 100.0f);
    EXPECT_EQ(scaleOf("meter"), 1.0f);
    EXPECT_EQ(scaleOf("km"), 0.001f);
    EXPECT_EQ(scaleOf("inch"), 39.37008f);
    EXPECT_EQ(scaleOf("ft"), 3.28084f);
    EXPECT_EQ(scaleOf("yard"), 1.0936133f);
    EXPECT_EQ(scaleOf("mi"), 0.0006213712f);
    // the floats nearest to the reciprocals of the unit's length in metres
    EXPECT_EQ(39.37008f, static_cast<float>(1 / 0.0254));
    EXPECT_EQ(3.28084f, static_cast<float>(1 / 0.3048));
    EXPECT_EQ(1.0936133f, static_cast<float>(1 / 0.9144));
    EXPECT_EQ(0.0006213712f, static_cast<float>(1 / 1609.344));
}

TEST_F(MayaUtil, LogsTheUnitAndItsScale)
{
    EXPECT_EQ(scaleOf("inch"), 39.37008f);
    EXPECT_TRUE(logs("DEBUG:  file unit is in setting vistrel meter scale as 39.3701\n")) << log();
}

TEST_F(MayaUtil, AnswersYAsTheUpAxis)
{
    EXPECT_EQ(getUpAxis(), 1);
}

TEST_F(MayaUtil, TakesMbOffAndPutsObxOn)
{
    EXPECT_EQ(expanded("scene.mb"), "scene.obx");
    EXPECT_EQ(expanded("scene.obx"), "scene.obx");
    EXPECT_EQ(expanded("scene"), "scene.obx");
    EXPECT_EQ(expanded("car.ma"), "car.ma.obx");
    EXPECT_EQ(expanded(".mb"), ".obx");
}

TEST_F(MayaUtil, DropsTheFourthColumn)
{
    MMatrix matrix;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            matrix(row, column) = 10.0 * row + column;
        }
    }
    const orv::Matrix4 expected = {0, 1, 2, 0, 10, 11, 12, 0, 20, 21, 22, 0, 30, 31, 32, 1};
    EXPECT_EQ(convertMatrix(matrix), expected);
}

TEST_F(MayaUtil, ReadsALocalMatrix)
{
    open("createNode transform -n \"p\";\nsetAttr \".t\" -type \"double3\" 5 0 0 ;\n"
         "createNode transform -n \"a\" -p \"p\";\nsetAttr \".t\" -type \"double3\" 1 2 3 ;\n"
         "setAttr \".s\" -type \"double3\" 2 2 2 ;\n");
    const orv::Matrix4 expected = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 2, 3, 1};
    orv::Matrix4 matrix{};
    EXPECT_TRUE(getTransformation(nodeNamed("a"), matrix));
    EXPECT_EQ(matrix, expected);
    EXPECT_EQ(getMatrix(nodeNamed("a")), expected);
}

TEST_F(MayaUtil, LeavesTheMatrixAloneWhereThereIsNone)
{
    open("createNode transform -n \"a\";\n" + quadMesh("aShape", "a"));
    orv::Matrix4 matrix{};
    matrix[5] = 42;
    EXPECT_FALSE(getTransformation(nodeNamed("aShape"), matrix));
    EXPECT_EQ(matrix[5], 42);
    EXPECT_TRUE(logs("WARNING:  transformation: (kInvalidParameter)")) << log();
    EXPECT_EQ(getMatrix(nodeNamed("aShape"))[0], 1.0);
}

TEST_F(MayaUtil, NamesDagNodesOnly)
{
    open("createNode transform -n \"ns:a\";\ncreateNode lambert -n \"red\";\n");
    EXPECT_EQ(nodeName(nodeNamed("ns:a")), "ns:a");
    EXPECT_EQ(nodeName(nodeNamed("red")), "unknown object");
    EXPECT_TRUE(logs("casting to dagnode"));
}

TEST_F(MayaUtil, SupportsMeshesAndSurfaces)
{
    open("createNode transform -n \"a\";\n" + quadMesh("aShape", "a") +
         "createNode transform -n \"l\";\ncreateNode locator -n \"lShape\" -p \"l\";\n"
         "createNode transform -n \"n\";\ncreateNode nurbsSurface -n \"nShape\" -p \"n\";\n");
    EXPECT_TRUE(isSupportedGeometry(pathTo("aShape")));
    EXPECT_TRUE(isSupportedGeometry(pathTo("nShape")));
    EXPECT_FALSE(isSupportedGeometry(pathTo("lShape")));
    EXPECT_FALSE(isSupportedGeometry(pathTo("a")));
}

TEST_F(MayaUtil, ComputesTheToleranceInSinglePrecision)
{
    EXPECT_EQ(toleranceFromQuality(1.0f), 0.0001f);
    EXPECT_EQ(toleranceFromQuality(0.0f), 0.001f + 0.0001f);
    EXPECT_EQ(toleranceFromQuality(0.5f), 0.5f * 0.001f * 0.5f * 0.5f * 0.5f + 0.0001f);
}
