#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGeometryExtractor.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace MHWRender;
using Floats = std::vector<float>;
using Indices = std::vector<std::uint32_t>;

constexpr const char* kUvs =
    "createNode transform -n \"uvs\";\n"
    "createNode mesh -n \"uvsShape\" -p \"uvs\";\n"
    "\tsetAttr -s 5 \".uvst[0].uvsp[0:4]\" -type \"float2\" 0 0 1 0 1 1 0 1 0.5 0.5;\n"
    "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
    "\tsetAttr \".cuvs\" -type \"string\" \"map1\";\n"
    "\tsetAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 1 1 0 0 1 0;\n"
    "\tsetAttr -s 5 \".ed[0:4]\"  0 1 1 1 2 1 2 0 1 2 3 1 3 0 1;\n"
    // Vertex 2 has uv 2 in the first triangle and uv 4 in the second; vertex 0 has uv 0 in both.
    "\tsetAttr -s 2 -ch 6 \".fc[0:1]\" -type \"polyFaces\"\n"
    "\t\tf 3 0 1 2\n\t\tmu 0 3 0 1 2\n\t\tf 3 -3 3 4\n\t\tmu 0 3 0 4 3;\n";

std::string shadingGroup(const std::string& name)
{
    return "createNode shadingEngine -n \"" + name + "\";\n";
}

std::string inPartition(const std::string& name)
{
    return "connectAttr \"" + name + ".pa\" \":renderPartition.st\" -na;\n";
}

/// The pair with face 0 in sgA and face 1 in sgB.
std::string twoGroups()
{
    return pairOfSquares("\tsetAttr -s 2 \".iog[0].og\";\n"
                         "\tsetAttr \".iog[0].og[0].gcl\" -type \"componentList\" 1 \"f[0]\";\n"
                         "\tsetAttr \".iog[0].og[1].gcl\" -type \"componentList\" 1 \"f[1]\";\n") +
           shadingGroup("sgA") + shadingGroup("sgB") + inPartition("sgA") + inPartition("sgB") +
           "connectAttr \"pairShape.iog.og[1]\" \"sgB.dsm\" -na;\n"
           "connectAttr \"pairShape.iog.og[0]\" \"sgA.dsm\" -na;\n";
}

std::vector<std::string> names(const MObjectArray& nodes)
{
    std::vector<std::string> result;
    for (unsigned int i = 0; i < nodes.length(); ++i) {
        result.push_back(text(MFnDependencyNode(nodes[i]).name()));
    }
    return result;
}

std::vector<int> elements(const MObject& component)
{
    MIntArray faces;
    MFnSingleIndexedComponent(component).getElements(faces);
    std::vector<int> result;
    for (unsigned int i = 0; i < faces.length(); ++i) {
        result.push_back(faces[i]);
    }
    return result;
}

TEST(MFnMesh, CountsFacesAndVertices)
{
    const OpenedScene scene(pairOfSquares());
    MStatus status(MStatus::kFailure);
    MFnMesh mesh(pathNamed("|pair|pairShape"), &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(mesh.syncObject());
    EXPECT_EQ(mesh.numPolygons(&status), 2);
    EXPECT_TRUE(status);
    EXPECT_EQ(mesh.numVertices(), 6);
}

TEST(MFnMesh, HasNothingWithoutGeometry)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n");
    MFnMesh mesh(pathNamed("|t|m"));
    EXPECT_TRUE(mesh.syncObject());
    EXPECT_EQ(mesh.numPolygons(), 0);
    EXPECT_EQ(mesh.numVertices(), 0);
}

TEST(MFnMesh, NamesItsCurrentUvSet)
{
    const OpenedScene scene(kUvs);
    EXPECT_EQ(MFnMesh(pathNamed("|uvs|uvsShape")).currentUVSetName(), "map1");
}

TEST(MFnMesh, AttachesToMeshesOnly)
{
    const OpenedScene scene(pairOfSquares());
    MStatus status;
    MFnMesh(pathNamed("|pair"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    MFnMesh mesh(pathNamed("|persp|perspShape"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_FALSE(mesh.syncObject());
    EXPECT_EQ(mesh.numPolygons(), 0);
    EXPECT_EQ(mesh.currentUVSetName(), "");
}

TEST(MFnDagNode, GivesTheSetOfAWholeObjectANullComponent)
{
    const OpenedScene scene(pairOfSquares() +
                            "connectAttr \"pairShape.iog\" \":initialShadingGroup.dsm\" -na;\n");
    MObjectArray sets;
    MObjectArray components;
    const MFnMesh mesh(pathNamed("|pair|pairShape"));
    ASSERT_TRUE(mesh.getConnectedSetsAndMembers(0, sets, components, true));
    EXPECT_EQ(names(sets), std::vector<std::string>{"initialShadingGroup"});
    ASSERT_EQ(components.length(), 1u);
    EXPECT_TRUE(components[0].isNull());
}

TEST(MFnDagNode, GivesFaceSetsByTheOrderOfTheirGroups)
{
    const OpenedScene scene(twoGroups());
    MObjectArray sets;
    MObjectArray components;
    const MFnMesh mesh(pathNamed("|pair|pairShape"));
    ASSERT_TRUE(mesh.getConnectedSetsAndMembers(0, sets, components, true));
    EXPECT_EQ(names(sets), (std::vector<std::string>{"sgA", "sgB"}));
    ASSERT_EQ(components.length(), 2u);
    EXPECT_EQ(components[0].apiType(), MFn::kMeshPolygonComponent);
    EXPECT_EQ(elements(components[0]), std::vector<int>{0});
    EXPECT_EQ(elements(components[1]), std::vector<int>{1});
}

TEST(MFnDagNode, KeepsAFaceSetWithoutFaces)
{
    const OpenedScene scene(
        pairOfSquares("\tsetAttr \".iog[0].og[3].gcl\" -type \"componentList\" 0;\n") +
        "connectAttr \"pairShape.iog.og[3]\" \":initialShadingGroup.dsm\" -na;\n");
    MObjectArray sets;
    MObjectArray components;
    const MDagPath path = pathNamed("|pair|pairShape");
    ASSERT_TRUE(MFnMesh(path).getConnectedSetsAndMembers(0, sets, components, true));
    ASSERT_EQ(components.length(), 1u);
    EXPECT_FALSE(components[0].isNull());
    EXPECT_TRUE(MFnComponent(components[0]).isEmpty());
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(MItMeshPolygon(path, components[0], &status).count(), 0);
    EXPECT_TRUE(status);
}

TEST(MFnDagNode, LeavesOutSetsThatAreNoShadingGroupsWhenAskedTo)
{
    const OpenedScene scene(pairOfSquares() + "createNode objectSet -n \"chosen\";\n" +
                            shadingGroup("sg") + inPartition("sg") +
                            "connectAttr \"pairShape.iog\" \"chosen.dsm\" -na;\n"
                            "connectAttr \"pairShape.iog\" \"sg.dsm\" -na;\n");
    MObjectArray sets;
    MObjectArray components;
    const MFnMesh mesh(pathNamed("|pair|pairShape"));
    ASSERT_TRUE(mesh.getConnectedSetsAndMembers(0, sets, components, true));
    EXPECT_EQ(names(sets), std::vector<std::string>{"sg"});
    ASSERT_TRUE(mesh.getConnectedSetsAndMembers(0, sets, components, false));
    EXPECT_EQ(names(sets).size(), 2u);
    EXPECT_EQ(components.length(), 2u);
}

TEST(MFnDagNode, GivesEveryInstanceItsOwnSets)
{
    const OpenedScene scene(pairOfSquares() +
                            "createNode transform -n \"other\";\n"
                            "parent -s -nc -r -add \"|pair|pairShape\" \"other\";\n" +
                            shadingGroup("sgA") + shadingGroup("sgB") + inPartition("sgA") +
                            inPartition("sgB") +
                            "connectAttr \"|pair|pairShape.iog[0]\" \"sgA.dsm\" -na;\n"
                            "connectAttr \"|other|pairShape.iog[1]\" \"sgB.dsm\" -na;\n");
    MObjectArray sets;
    MObjectArray components;
    const MDagPath second = pathNamed("|other|pairShape");
    ASSERT_EQ(second.instanceNumber(), 1u);
    ASSERT_TRUE(MFnMesh(second).getConnectedSetsAndMembers(1, sets, components, true));
    EXPECT_EQ(names(sets), std::vector<std::string>{"sgB"});
    ASSERT_TRUE(MFnMesh(second).getConnectedSetsAndMembers(0, sets, components, true));
    EXPECT_EQ(names(sets), std::vector<std::string>{"sgA"});
    EXPECT_FALSE(MFnMesh(second).getConnectedSetsAndMembers(2, sets, components, true));
    EXPECT_EQ(sets.length(), 0u);
}

TEST(MItMeshPolygon, TakesComponentsThatFitTheMesh)
{
    const OpenedScene scene(pairOfSquares());
    const MDagPath path = pathNamed("|pair|pairShape");
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(MItMeshPolygon(path, MObject::kNullObj, &status).count(), 2);
    EXPECT_TRUE(status);
    EXPECT_EQ(MItMeshPolygon(path.node(), &status).count(), 2);
    EXPECT_TRUE(status);
    MFnSingleIndexedComponent component;
    MObject faces = component.create(MFn::kMeshPolygonComponent);
    MItMeshPolygon(path, faces, &status);
    EXPECT_TRUE(status) << "an empty component";
    component.addElement(1);
    EXPECT_EQ(MItMeshPolygon(path, faces, &status).count(), 1);
    EXPECT_TRUE(status);
    component.addElement(2);
    MItMeshPolygon(path, faces, &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter) << "a face that the mesh has not";
}

TEST(MItMeshPolygon, RefusesWhatIsNoMeshOrNoFaceComponent)
{
    const OpenedScene scene(pairOfSquares());
    MStatus status;
    MItMeshPolygon(pathNamed("|pair"), MObject::kNullObj, &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    MObject node = nodeNamed("lambert1");
    MItMeshPolygon(pathNamed("|pair|pairShape"), node, &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(MObject::kNullObj.isNull());
}

/// What an extractor delivers of a component.
struct Extracted {
    explicit Extracted(const MDagPath& path, MObject component = MObject(),
                       MPolyGeomOptions options = kPolyGeom_Normal)
    {
        const MVertexBufferDescriptor position("", MGeometry::kPosition, MGeometry::kFloat, 3);
        const MVertexBufferDescriptor normal("", MGeometry::kNormal, MGeometry::kFloat, 3);
        const MVertexBufferDescriptor uv(MFnMesh(path).currentUVSetName(), MGeometry::kTexture,
                                         MGeometry::kFloat, 2);
        const MIndexBufferDescriptor index(MIndexBufferDescriptor::kTriangle, "",
                                           MGeometry::kTriangles, 3, component);
        MGeometryRequirements requirements;
        requirements.addVertexRequirement(position);
        requirements.addVertexRequirement(normal);
        requirements.addVertexRequirement(uv);
        requirements.addIndexingRequirement(index);
        const MGeometryExtractor extractor(requirements, path, options, &status);
        vertexCount = extractor.vertexCount();
        primitiveCount = extractor.primitiveCount(index);
        positions.resize(3 * vertexCount);
        normals.resize(3 * vertexCount);
        uvs.resize(2 * vertexCount, -1);
        indices.resize(3 * primitiveCount);
        isFilled = extractor.populateVertexBuffer(positions.data(), vertexCount, position) &&
                   extractor.populateVertexBuffer(normals.data(), vertexCount, normal) &&
                   extractor.populateVertexBuffer(uvs.data(), vertexCount, uv) &&
                   extractor.populateIndexBuffer(indices.data(), primitiveCount, index);
    }
    MStatus status;
    bool isFilled = false;
    unsigned int vertexCount = 0;
    unsigned int primitiveCount = 0;
    Floats positions;
    Floats normals;
    Floats uvs;
    Indices indices;
};

TEST(MGeometryExtractor, DeliversTheWholeMesh)
{
    const OpenedScene scene(pairOfSquares());
    const Extracted mesh(pathNamed("|pair|pairShape"));
    ASSERT_TRUE(mesh.status);
    ASSERT_TRUE(mesh.isFilled);
    EXPECT_EQ(mesh.vertexCount, 6u);
    EXPECT_EQ(mesh.positions, (Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0, 2, 1, 0}));
    for (unsigned int i = 0; i < 6; ++i) {
        EXPECT_EQ(mesh.normals[3 * i + 2], 1) << "the plane's";
    }
    EXPECT_EQ(mesh.uvs, Floats(12, 0.0f)) << "zeros without texture coordinates";
    // Squares: the diagonal from the second to the fourth corner.
    EXPECT_EQ(mesh.indices, (Indices{0, 1, 3, 1, 2, 3, 1, 4, 2, 4, 5, 2}));
}

TEST(MGeometryExtractor, DeliversTheSameWhenAskedAgain)
{
    const OpenedScene scene(pairOfSquares());
    const MDagPath path = pathNamed("|pair|pairShape");
    const MVertexBufferDescriptor position("", MGeometry::kPosition, MGeometry::kFloat, 3);
    const MIndexBufferDescriptor index(MIndexBufferDescriptor::kTriangle, "", MGeometry::kTriangles,
                                       3);
    MGeometryRequirements requirements;
    requirements.addVertexRequirement(position);
    requirements.addIndexingRequirement(index);
    const MGeometryExtractor extractor(requirements, path, kPolyGeom_Normal);
    for (int round = 0; round < 3; ++round) {
        Floats positions(18);
        Indices indices(12);
        ASSERT_TRUE(extractor.populateVertexBuffer(positions.data(), 6, position));
        EXPECT_EQ(positions, (Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0, 2, 1, 0}));
        ASSERT_EQ(extractor.primitiveCount(index), 4u);
        ASSERT_TRUE(extractor.populateIndexBuffer(indices.data(), 4, index));
        EXPECT_EQ(indices, (Indices{0, 1, 3, 1, 2, 3, 1, 4, 2, 4, 5, 2}));
        EXPECT_EQ(extractor.vertexCount(), 6u);
    }
    Floats first(3, -1);
    ASSERT_TRUE(extractor.populateVertexBuffer(first.data(), 1, position));
    EXPECT_EQ(first, (Floats{0, 0, 0}));
}

TEST(MGeometryExtractor, RestrictsIndicesAndNeverVerticesToAComponent)
{
    const OpenedScene scene(twoGroups());
    const MDagPath path = pathNamed("|pair|pairShape");
    MObjectArray sets;
    MObjectArray components;
    ASSERT_TRUE(MFnMesh(path).getConnectedSetsAndMembers(0, sets, components, true));
    ASSERT_EQ(components.length(), 2u);
    const Extracted first(path, components[0]);
    const Extracted second(path, components[1]);
    EXPECT_EQ(first.vertexCount, 6u);
    EXPECT_EQ(second.vertexCount, 6u);
    EXPECT_EQ(first.indices, (Indices{0, 1, 3, 1, 2, 3}));
    EXPECT_EQ(second.indices, (Indices{1, 4, 2, 4, 5, 2}));
}

TEST(MGeometryExtractor, DeliversWhatSmoothMeshPreviewShows)
{
    const OpenedScene scene(twoGroups() + "select -ne pairShape;\n"
                                          "\tsetAttr \".dsm\" 2;\n\tsetAttr \".lev\" 1;\n");
    const MDagPath path = pathNamed("|pair|pairShape");
    EXPECT_EQ(MFnMesh(path).numPolygons(), 2) << "the shape's own mesh";
    MObjectArray sets;
    MObjectArray components;
    ASSERT_TRUE(MFnMesh(path).getConnectedSetsAndMembers(0, sets, components, true));
    ASSERT_EQ(components.length(), 2u);
    // Six corners, seven edges and two faces give fifteen points, eight faces sixteen triangles.
    const Extracted whole(path);
    EXPECT_EQ(whole.vertexCount, 15u);
    EXPECT_EQ(whole.primitiveCount, 16u);
    for (const unsigned int side : {0u, 1u}) {
        const Extracted half(path, components[side]);
        EXPECT_EQ(half.vertexCount, 15u);
        ASSERT_EQ(half.primitiveCount, 8u);
        for (const std::uint32_t index : half.indices) {
            const float x = half.positions[3 * index];
            EXPECT_TRUE(side == 0 ? x <= 1 : x >= 1) << x;
        }
    }
    const Extracted cage(path, MObject(), kPolyGeom_BaseMesh);
    EXPECT_EQ(cage.vertexCount, 6u);
    EXPECT_EQ(cage.primitiveCount, 4u);
}

TEST(MGeometryExtractor, TakesACompleteComponentAsEveryFace)
{
    const OpenedScene scene(pairOfSquares());
    const MDagPath path = pathNamed("|pair|pairShape");
    MFnSingleIndexedComponent component;
    const MObject faces = component.create(MFn::kMeshPolygonComponent);
    component.setCompleteData(MFnMesh(path).numPolygons());
    EXPECT_EQ(Extracted(path, faces).primitiveCount, 4u);
    component.setCompleteData(1000);
    EXPECT_EQ(Extracted(path, faces).primitiveCount, 4u) << "no more than there are";
}

TEST(MGeometryExtractor, GivesAnEmptyComponentNoTriangles)
{
    const OpenedScene scene(pairOfSquares());
    const Extracted mesh(pathNamed("|pair|pairShape"),
                         MFnSingleIndexedComponent().create(MFn::kMeshPolygonComponent));
    EXPECT_TRUE(mesh.status);
    EXPECT_EQ(mesh.primitiveCount, 0u);
    EXPECT_EQ(mesh.vertexCount, 6u);
}

TEST(MGeometryExtractor, SplitsVerticesByTheirTextureCoordinates)
{
    const OpenedScene scene(kUvs);
    const Extracted mesh(pathNamed("|uvs|uvsShape"));
    ASSERT_TRUE(mesh.isFilled);
    // Four vertices, one of them with two uv ids.
    EXPECT_EQ(mesh.vertexCount, 5u);
    EXPECT_EQ(mesh.uvs, (Floats{0, 0, 1, 0, 1, 1, 0.5f, 0.5f, 0, 1}));
    EXPECT_EQ(mesh.indices, (Indices{0, 1, 2, 0, 3, 4}));
}

TEST(MGeometryExtractor, StepsByTheStrideOfTheDescriptor)
{
    const OpenedScene scene(pairOfSquares());
    MVertexBufferDescriptor position("", MGeometry::kPosition, MGeometry::kFloat, 3);
    position.setStride(5);
    position.setOffset(1);
    const MGeometryExtractor extractor(MGeometryRequirements(), pathNamed("|pair|pairShape"),
                                       kPolyGeom_Normal);
    Floats numbers(1 + 5 * 2, -1);
    ASSERT_TRUE(extractor.populateVertexBuffer(numbers.data(), 2, position));
    EXPECT_EQ(numbers, (Floats{-1, 0, 0, 0, -1, -1, 1, 0, 0, -1, -1}));
}

TEST(MGeometryExtractor, RefusesWhatItDoesNotHave)
{
    const OpenedScene scene(pairOfSquares());
    const MGeometryExtractor extractor(MGeometryRequirements(), pathNamed("|pair|pairShape"),
                                       kPolyGeom_Normal);
    Floats numbers(100);
    const auto fill = [&](const MVertexBufferDescriptor& descriptor, unsigned int count) {
        return extractor.populateVertexBuffer(numbers.data(), count, descriptor);
    };
    EXPECT_TRUE(fill({"", MGeometry::kPosition, MGeometry::kFloat, 3}, 6));
    EXPECT_FALSE(fill({"", MGeometry::kPosition, MGeometry::kFloat, 3}, 7)) << "more vertices";
    EXPECT_FALSE(fill({"", MGeometry::kPosition, MGeometry::kFloat, 4}, 6)) << "more numbers";
    EXPECT_FALSE(fill({"", MGeometry::kPosition, MGeometry::kDouble, 3}, 6));
    EXPECT_FALSE(fill({"", MGeometry::kColor, MGeometry::kFloat, 3}, 6));
    const MIndexBufferDescriptor lines(MIndexBufferDescriptor::kEdgeLine, "", MGeometry::kLines);
    EXPECT_EQ(extractor.primitiveCount(lines), 0u);
    Indices indices(100);
    EXPECT_FALSE(extractor.populateIndexBuffer(indices.data(), 1, lines));
    const MIndexBufferDescriptor triangles(MIndexBufferDescriptor::kTriangle, "",
                                           MGeometry::kTriangles, 3);
    EXPECT_FALSE(extractor.populateIndexBuffer(indices.data(), 5, triangles)) << "there are four";
    EXPECT_TRUE(extractor.populateIndexBuffer(indices.data(), 4, triangles));
}

TEST(MGeometryExtractor, FailsWithoutGeometryAndForOtherShapes)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode mesh -n \"m\" -p \"t\";\n");
    const Extracted empty(pathNamed("|t|m"));
    EXPECT_FALSE(empty.status);
    EXPECT_EQ(empty.vertexCount, 0u);
    EXPECT_EQ(empty.primitiveCount, 0u);
    EXPECT_FALSE(empty.isFilled);
    EXPECT_EQ(Extracted(pathNamed("|persp|perspShape")).status, MStatus::kInvalidParameter);
}

TEST(MGeometryExtractor, GivesObjectSpaceWhateverTheTransform)
{
    const OpenedScene scene(pairOfSquares() + "select -ne \"pair\";\n"
                                              "\tsetAttr \".t\" -type \"double3\" 10 20 30;\n");
    EXPECT_EQ(Extracted(pathNamed("|pair|pairShape")).positions[3], 1);
}

TEST(MGeometryExtractor, ForgetsTheMeshOfAnEarlierScene)
{
    const OpenedScene scene(twoGroups());
    EXPECT_EQ(Extracted(pathNamed("|pair|pairShape")).primitiveCount, 4u);
    const auto other =
        writeFile("host_api_forgets.ma", std::string("//Maya ASCII 2018 scene\n") + kUvs);
    ASSERT_TRUE(openFile(other));
    EXPECT_EQ(Extracted(pathNamed("|uvs|uvsShape")).primitiveCount, 2u);
    std::filesystem::remove(other);
}

} // namespace
