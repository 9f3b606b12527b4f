// Nodes that delete, unite, separate, merge, mirror, cut and add parts of meshes.
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::addCornerUvs;
using geometry::test::cube;
using geometry::test::grid;
using geometry::test::Loop;
using geometry::test::outerLoops;
using geometry::test::sixVolumes;
using geometry::test::totalArea;
using test::ToyContext;
using Mesh = Shared<MeshData>;

Value shared(MeshData mesh)
{
    return Value::of(std::move(mesh));
}

Value components(std::vector<std::string> texts)
{
    return Value::of(ComponentList{std::move(texts)});
}

/// An operation on a mesh and the components that it names.
struct Operation {
    explicit Operation(const NodeCompute& row, MeshData mesh, std::vector<std::string> texts)
        : context(row)
    {
        const bool isDeletion = row.type == "deleteComponent";
        context.values[isDeletion ? "inputGeometry" : "inputPolymesh"] = shared(std::move(mesh));
        context.values[isDeletion ? "deleteComponents" : "inputComponents"] =
            components(std::move(texts));
    }
    Mesh result()
    {
        return context
            .compute(context.values.count("inputGeometry") != 0 ? "outputGeometry" : "output")
            .data<MeshData>();
    }
    std::size_t faces() { return result()->topology->faceCount(); }
    std::size_t vertices() { return result()->topology->vertexCount; }

    ToyContext context;
};

TEST(DeleteComponent, facesEdgesAndVertices)
{
    EXPECT_EQ(Operation(kDeleteComponent, cube(), {"f[0]", "f[2:3]"}).faces(), 3u);
    // the edge between two squares; its ends stay
    Operation edge(kDeleteComponent, grid(2, 1), {"e[1]"});
    EXPECT_EQ(outerLoops(*edge.result()), (std::vector<Loop>{{0, 1, 2, 5, 4, 3}}));
    // only a vertex between two edges goes: 0 does, 1 does not
    EXPECT_EQ(Operation(kDeleteComponent, grid(2, 1), {"vtx[0:1]"}).vertices(), 5u);
    EXPECT_EQ(edge.context.timesUncomputed, 0u);
}

TEST(DeleteComponent, mixedListsNameTheMeshThatComesIn)
{
    // Of four squares in a row the first goes; the edge 2-7 (number 4: 0-1 1-6 6-5 5-0, 1-2 2-7
    // 7-6) joins the second and the third, and 1, which has two edges left, goes as well.
    Operation mixed(kDeleteComponent, grid(4, 1), {"f[0]", "e[5]", "vtx[1]"});
    const Mesh after = mixed.result();
    EXPECT_EQ(after->topology->faceCount(), 2u);
    EXPECT_EQ(outerLoops(*after)[0].size(), 5u);
    EXPECT_NEAR(totalArea(*after).z, 2.5, 1e-9); // two squares less the triangle at 1, and one
}

TEST(DeleteComponent, whatDoesNotExistIsPassedBy)
{
    for (const char* text : {"f[6]", "e[12]", "vtx[3:8]", "map[0]", "x", ""}) {
        Operation wrong(kDeleteComponent, cube(), {"f[0]", text});
        EXPECT_EQ(wrong.faces(), 6u) << text;
        EXPECT_EQ(wrong.context.timesUncomputed, 1u) << text;
    }
    Operation none(kDeleteComponent, cube(), {});
    EXPECT_EQ(none.faces(), 6u);
    EXPECT_EQ(none.context.timesUncomputed, 0u);
    Operation off(kDeleteComponent, cube(), {"f[0]"});
    off.context.set("nodeState", 1);
    EXPECT_EQ(off.faces(), 6u);
}

TEST(PolyDelete, eachHasItsKindOfComponents)
{
    EXPECT_EQ(Operation(kPolyDelFacet, cube(), {"f[1]"}).faces(), 5u);
    Operation edge(kPolyDelEdge, grid(3, 1), {"e[1]"});
    EXPECT_EQ(edge.vertices(), 8u);
    edge.context.set("cleanVertices", 1);
    EXPECT_EQ(edge.vertices(), 6u);
    EXPECT_EQ(Operation(kPolyDelVertex, grid(1, 1), {"vtx[2]"}).vertices(), 3u);
    Operation wrong(kPolyDelEdge, cube(), {"f[0]"});
    EXPECT_EQ(wrong.faces(), 6u);
    EXPECT_EQ(wrong.context.timesUncomputed, 1u);
    Operation empty(kPolyDelFacet, cube(), {"f[0]"});
    empty.context.values.erase("inputPolymesh");
    EXPECT_EQ(empty.result(), nullptr);
}

TEST(PolyTriangulate, allOfThemOrSome)
{
    EXPECT_EQ(Operation(kPolyTriangulate, cube(), {"f[*]"}).faces(), 12u);
    EXPECT_EQ(Operation(kPolyTriangulate, cube(), {"f[2:3]"}).faces(), 8u);
}

TEST(PolyQuad, trianglesThatHaveOneChoiceOnly)
{
    Mesh cut = Operation(kPolyTriangulate, cube(), {"f[*]"}).result();
    // the cube's own edges are hard: only the cuts can go
    Operation quads(kPolyQuad, *cut, {"f[*]"});
    EXPECT_EQ(quads.faces(), 6u);
    EXPECT_EQ(quads.context.timesUncomputed, 0u);
    quads.context.set("keepHardEdges", 0);
    quads.context.set("angle", 2);
    quads.result();
    EXPECT_EQ(quads.context.timesUncomputed, 1u); // a choice that is not known
}

TEST(PolyUnite, elementsInTheirOrderEachWithItsMatrix)
{
    ToyContext context(kPolyUnite);
    MeshData box = cube();
    addCornerUvs(box);
    context.setElement("inputPoly", {3}, shared(grid(1, 1)));
    context.setElement("inputPoly", {1}, shared(box));
    context.setElement("inputPoly", {7}, Value());
    context.setElement("inputMat", {1}, Value::of(translation({0, 5, 0})));
    const Mesh after = context.compute("output").data<MeshData>();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->topology->faceCount(), 7u);
    EXPECT_EQ((*after->points)[0], (Vec3f{-.5F, 4.5F, .5F}));
    EXPECT_EQ((*after->points)[8], (Vec3f{0, 0, 0}));
    EXPECT_EQ(context.timesUncomputed, 0u);
}

TEST(PolyUnite, setsApartOrByName)
{
    ToyContext context(kPolyUnite);
    MeshData box = cube();
    addCornerUvs(box);
    context.setElement("inputPoly", {0}, shared(box));
    context.setElement("inputPoly", {1}, shared(box));
    EXPECT_EQ(context.compute("output").data<MeshData>()->uvSets.size(), 1u);
    context.set("mergeUVSets", 0);
    EXPECT_EQ(context.compute("output").data<MeshData>()->uvSets[1].name, "map11");
}

TEST(PolyUnite, nothingOfNothing)
{
    ToyContext context(kPolyUnite);
    EXPECT_TRUE(context.compute("output").isEmpty());
}

Mesh boxAndSheet()
{
    ToyContext context(kPolyUnite);
    context.setElement("inputPoly", {0}, shared(cube()));
    context.setElement("inputPoly", {1}, shared(grid(2, 1)));
    context.setElement("inputPoly", {2}, shared(grid(1, 1)));
    return context.compute("output").data<MeshData>();
}

TEST(PolySeparate, shellsInTheOrderOfTheirFaces)
{
    ToyContext context(kPolySeparate);
    context.values["inputPoly"] = Value(boxAndSheet());
    const auto faces = [&](std::int32_t index) {
        const Mesh shell = context.compute("output", index).data<MeshData>();
        return shell == nullptr ? 0 : shell->topology->faceCount();
    };
    EXPECT_EQ(faces(0), 6u);
    EXPECT_EQ(faces(1), 2u);
    EXPECT_EQ(faces(2), 1u);
    EXPECT_EQ(faces(3), 0u);
    EXPECT_EQ(faces(-1), 0u);
    // outputs are without the shells that are left out
    context.values["remShells"] = Value::of(std::vector<std::int32_t>{0});
    EXPECT_EQ(faces(0), 2u);
    EXPECT_EQ(faces(1), 1u);
    EXPECT_EQ(faces(2), 0u);
}

TEST(PolySeparate, whatIsMadeStaysForTheOtherOutputs)
{
    ToyContext context(kPolySeparate);
    context.values["inputPoly"] = Value(boxAndSheet());
    const Mesh once = context.compute("output", 1).data<MeshData>();
    context.compute("output", 0);
    EXPECT_EQ(context.compute("output", 1).data<MeshData>(), once);
    context.values["inputPoly"] = Value(boxAndSheet());
    EXPECT_NE(context.compute("output", 1).data<MeshData>(), once);
}

TEST(PolySeparate, aRangeOfFacesAndTheRest)
{
    ToyContext context(kPolySeparate);
    context.values["inputPoly"] = shared(grid(5, 1));
    context.set("userSpecifiedShells", 1);
    context.set("startFace", 3);
    context.set("endFace", 4);
    EXPECT_EQ(context.compute("output", 0).data<MeshData>()->topology->faceCount(), 3u);
    EXPECT_EQ(context.compute("output", 1).data<MeshData>()->topology->faceCount(), 2u);
}

TEST(PolyMergeVert, withinADistanceOfObjectOrWorld)
{
    Operation merge(kPolyMergeVert, grid(2, 1), {"vtx[*]"});
    merge.context.set("distance", 0.5);
    EXPECT_EQ(merge.vertices(), 6u);
    merge.context.values["inputMatrix"] = Value::of(scaling({0.4, 1, 1}));
    EXPECT_EQ(merge.vertices(), 6u);
    merge.context.set("worldSpace", 1);
    EXPECT_EQ(merge.faces(), 1u); // 0 takes 1 and 3 takes 4; 2 and 5 are too far
    EXPECT_EQ(merge.vertices(), 4u);
}

TEST(PolyMergeVert, twoWhereverTheyAre)
{
    Operation merge(kPolyMergeVert, grid(2, 1), {"vtx[1]", "vtx[4]"});
    EXPECT_EQ(merge.vertices(), 6u);
    merge.context.set("alwaysMergeTwoVertices", 1);
    EXPECT_EQ(merge.vertices(), 5u);
    EXPECT_EQ((*merge.result()->points)[1], (Vec3f{1, 0.5F, 0}));
    Operation three(kPolyMergeVert, grid(2, 1), {"vtx[0:2]"});
    three.context.set("alwaysMergeTwoVertices", 1);
    EXPECT_EQ(three.vertices(), 6u);
}

TEST(PolyMergeVert, allToAGivenVertex)
{
    Operation merge(kPolyMergeVert, grid(2, 1), {"vtx[1]", "vtx[4]"});
    merge.context.values["mergeToComponents"] = components({"vtx[4]"});
    EXPECT_EQ((*merge.result()->points)[1], (Vec3f{1, 1, 0}));
}

TEST(PolyMirror, axesAndDirections)
{
    // A square from (0 0) to (1 1); images come to the side that is named.
    const auto farthest = [](double axis, double direction) {
        Operation mirror(kPolyMirror, grid(1, 1), {"f[*]"});
        mirror.context.set("axis", axis);
        mirror.context.set("axisDirection", direction);
        mirror.context.set("mergeThresholdType", 1);
        const Mesh after = mirror.result();
        EXPECT_EQ(after->topology->faceCount(), 2u);
        EXPECT_EQ(after->topology->vertexCount, 6u); // two in the plane at the origin
        EXPECT_NEAR(totalArea(*after).z, 2, 1e-9);
        return after->points->back();
    };
    EXPECT_EQ(farthest(0, 0), (Vec3f{-1, 1, 0}));
    EXPECT_EQ(farthest(1, 0), (Vec3f{1, -1, 0}));
}

TEST(PolyMirror, whatLiesWhereImagesComeIsCutAway)
{
    // Three squares from 0 to 3, the plane at 1.5: towards +x what lies from 0 to 1.5 stays.
    Operation mirror(kPolyMirror, grid(3, 1), {"f[*]"});
    mirror.context.set("cutMesh", 1);
    mirror.context.set("pivotX", 1.5);
    mirror.context.set("mergeThresholdType", 1);
    Mesh after = mirror.result();
    EXPECT_EQ(after->topology->faceCount(), 4u);
    EXPECT_NEAR(totalArea(*after).z, 3, 1e-6);
    EXPECT_EQ(mirror.context.compute("firstNewFace").number(), 2);
    EXPECT_EQ(mirror.context.compute("lastNewFace").number(), 3);
    // with nothing on that side all of it is mirrored
    mirror.context.set("pivotX", -1);
    EXPECT_EQ(mirror.faces(), 6u);
    EXPECT_EQ(mirror.context.timesUncomputed, 0u);
    mirror.context.set("mergeMode", 2);
    mirror.result();
    EXPECT_EQ(mirror.context.timesUncomputed, 1u);
}

TEST(PolyMirror, turnedTextureCoordinatesAreTold)
{
    Operation mirror(kPolyMirror, cube(), {"f[0]"});
    mirror.context.set("flipUVs", 2);
    EXPECT_EQ(mirror.faces(), 7u);
    EXPECT_EQ(mirror.context.timesUncomputed, 1u);
    EXPECT_EQ(mirror.context.lack, Lack::Textures);
    mirror.context.compute("firstNewFace");
    EXPECT_EQ(mirror.context.timesUncomputed, 1u); // which is right
}

TEST(PolyMirror, theWorldsPlaneAndAnOldDirection)
{
    Operation mirror(kPolyMirror, grid(1, 1), {"f[0]"});
    mirror.context.values["inputMatrix"] = Value::of(translation({0, 4, 0}));
    mirror.context.set("worldSpace", 1);
    mirror.context.set("direction", 3); // to -y
    mirror.context.set("mergeMode", 0);
    // y from 4 to 5 in the world comes to -5 to -4, which is -9 to -8 in the object
    EXPECT_EQ((*mirror.result()->points)[4], (Vec3f{0, -8, 0}));
    EXPECT_EQ((*mirror.result()->points)[7], (Vec3f{1, -9, 0}));
}

TEST(PolyCut, thePlaneFacesAlongItsTurnedZ)
{
    // Turned by a quarter about y, z comes to x.
    Operation cut(kPolyCut, grid(2, 1), {"f[*]"});
    cut.context.set("cutPlaneRotateY", 1.5707963267948966);
    cut.context.set("cutPlaneCenterX", 10.5);
    cut.context.values["inputMatrix"] = Value::of(translation({10, 0, 0}));
    EXPECT_EQ(cut.faces(), 3u); // in the world, at 0.5 of the object
    cut.context.set("deleteFaces", 1);
    EXPECT_NEAR(totalArea(*cut.result()).z, 0.5, 1e-6);
    EXPECT_EQ(cut.context.timesUncomputed, 0u);
    cut.context.set("deleteFaces", 0);
    cut.context.set("extractFaces", 1);
    EXPECT_EQ(cut.faces(), 3u);
    EXPECT_EQ(cut.context.timesUncomputed, 1u);
}

TEST(PolyBorders, mergedSewnAndClosed)
{
    MeshData apart = geometry::test::meshOf({{0, 0, 0},
                                             {1, 0, 0},
                                             {1, 1, 0},
                                             {0, 1, 0},
                                             {1.5F, 0, 0},
                                             {2, 0, 0},
                                             {2, 1, 0},
                                             {1.5F, 1, 0}},
                                            {{{0, 1, 2, 3}}, {{4, 5, 6, 7}}});
    Operation merge(kPolyMergeEdge, apart, {});
    merge.context.set("firstEdge", 1);
    merge.context.set("secondEdge", 7);
    merge.context.set("mergeMode", 2);
    EXPECT_EQ(merge.vertices(), 6u);
    EXPECT_EQ((*merge.result()->points)[1].x, 1.5F);
    EXPECT_EQ(merge.context.timesUncomputed, 0u);
    merge.context.set("secondEdge", -1);
    EXPECT_EQ(merge.vertices(), 8u);
    EXPECT_EQ(merge.context.timesUncomputed, 1u);

    Operation sew(kPolySewEdge, apart, {"e[*]"});
    EXPECT_EQ(sew.vertices(), 8u);
    sew.context.set("tolerance", 0.5); // and the second's own sides are not longer
    EXPECT_EQ(sew.result()->topology->faceCount(), 2u);
    EXPECT_EQ(sew.vertices(), 6u);

    const Mesh open = Operation(kPolyDelFacet, cube(), {"f[0]"}).result();
    EXPECT_NEAR(sixVolumes(*Operation(kPolyCloseBorder, *open, {"e[*]"}).result()), 6, 1e-6);
}

TEST(PolyCollapse, edgesAndFaces)
{
    EXPECT_EQ(Operation(kPolyCollapseEdge, grid(2, 1), {"e[1]"}).vertices(), 5u);
    Operation faces(kPolyCollapseF, grid(3, 3), {"f[4]"});
    EXPECT_EQ(faces.vertices(), 13u);
    faces.context.set("useAreaThreshold", 1);
    EXPECT_EQ(faces.vertices(), 16u); // its area is 1, more than 0.1
    faces.context.set("areaThreshold", 1);
    EXPECT_EQ(faces.vertices(), 13u);
}

TEST(PolyChipOff, copiesUnlessTheFacesThemselves)
{
    Operation chip(kPolyChipOff, cube(), {"f[0]"});
    EXPECT_EQ(chip.faces(), 7u);
    chip.context.setVector("localTranslate", 0, 0, 1);
    EXPECT_EQ((*chip.result()->points)[8].z, 1.5F);
    chip.context.set("duplicate", 0);
    EXPECT_EQ(chip.faces(), 6u);
    EXPECT_EQ(chip.vertices(), 12u);
}

TEST(PolyAppend, verticesAndNewPoints)
{
    Operation append(kPolyAppendVertex, grid(1, 1), {});
    ToyContext& context = append.context;
    const std::array<double, 4> steps{3, 1, -1, -1};
    for (std::int32_t i = 0; i < 4; ++i) {
        context.setElement("desc", {i}, steps[static_cast<std::size_t>(i)]);
    }
    const auto point = [&](std::int32_t index, double x, double y, double z) {
        context.setElement("vtxx", {index}, x);
        context.setElement("vtxy", {index}, y);
        context.setElement("vtxz", {index}, z);
    };
    point(0, 2, 0, 0);
    EXPECT_EQ(append.faces(), 1u); // one point for two steps
    EXPECT_EQ(context.timesUncomputed, 1u);
    point(1, 2, 1, 0);
    EXPECT_EQ(outerLoops(*append.result())[1], (Loop{3, 1, 4, 5}));
    EXPECT_EQ(context.timesUncomputed, 1u);
}

TEST(PolyAppend, edges)
{
    const Mesh open = Operation(kPolyDelFacet, cube(), {"f[0]"}).result();
    Operation append(kPolyAppend, *open, {});
    for (std::int32_t i = 0; i < 4; ++i) {
        append.context.setElement("desc", {i}, -2147483648.0 + i);
    }
    EXPECT_NEAR(sixVolumes(*append.result()), 6, 1e-6);
    append.context.set("subdivision", 2);
    EXPECT_EQ(append.faces(), 5u);
    EXPECT_EQ(append.context.timesUncomputed, 1u);
}

TEST(PolyFlipEdge, theOtherDiagonal)
{
    const Mesh cut = Operation(kPolyTriangulate, grid(1, 1), {"f[0]"}).result();
    // 0 1 2 and 2 1 3 with the cut 1-2 (number 4): 0-3 afterwards
    Operation flip(kPolyFlipEdge, *cut, {"e[4]"});
    const Mesh after = flip.result();
    EXPECT_EQ(geometry::test::edgesOf(*after)[4], (std::pair<std::uint32_t, std::uint32_t>{0, 3}));
    EXPECT_NEAR(totalArea(*after).z, 1, 1e-9);
    Operation border(kPolyFlipEdge, *cut, {"e[0]"});
    EXPECT_EQ(outerLoops(*border.result()), outerLoops(*cut));
    EXPECT_EQ(border.context.timesUncomputed, 1u);
}

} // namespace
} // namespace host::nodes
