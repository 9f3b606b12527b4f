// Operations on texture coordinates and colours: which inputs they read, and that the shape always
// comes through.
#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include "host/types/NumericArray.h"

#include <set>
#include <string_view>

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::test::expectUv;
using geometry::test::Ids;
using geometry::test::idsOf;
using ::test::ToyContext;

Value text(std::string value)
{
    return Value::of(std::move(value));
}

/// On two squares, for the components with the texts.
ToyContext operation(const NodeCompute& row, std::vector<std::string> components)
{
    ToyContext context(row);
    context.values["inputPolymesh"] =
        Value(std::make_shared<const MeshData>(geometry::test::twoSquares()));
    context.values["inputComponents"] = Value::of(ComponentList{std::move(components)});
    return context;
}

std::shared_ptr<const MeshData> output(ToyContext& context)
{
    return context.compute("output").data<MeshData>();
}

bool isPassedOn(ToyContext& context, const std::string& out = "output",
                const std::string& in = "inputPolymesh")
{
    const auto mesh = context.values[in].data<MeshData>();
    return mesh != nullptr && context.compute(out).data<MeshData>() == mesh;
}

NumericArray offsets(std::uint32_t first, const std::vector<float>& numbers)
{
    NumericArray array(NumberStorage::Float, 2);
    array.store<float>(first, numbers);
    return array;
}

TEST(PolyTweakUV, AddsStoredAndConnectedOffsets)
{
    ToyContext context = operation(kPolyTweakUV, {});
    const NumericArray stored = offsets(4, {0.5F, 0.25F, -1, 3});
    context.arrays["uvTweak"] = &stored;
    context.connected.insert("uvTweak");
    context.setElement("uvTweak", {1}, Value());
    context.setElement("uvTweakU", {1}, Value(7.0));
    context.setElement("uvTweakV", {1}, Value(8.0));
    const auto mesh = output(context);
    expectUv(*mesh, 0, 0, 0);
    expectUv(*mesh, 1, 8, 8);
    expectUv(*mesh, 4, 1.5, 1.25);
    expectUv(*mesh, 5, 1, 4);
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(PolyTweakUV, WorksOnTheNamedSetOnly)
{
    ToyContext context = operation(kPolyTweakUV, {});
    MeshData two = geometry::test::twoSquares();
    two.uvSets.push_back(two.uvSets[0]);
    two.uvSets[1].name = "light";
    context.values["inputPolymesh"] = Value::of(two);
    const NumericArray stored = offsets(0, {1, 1});
    context.arrays["uvTweak"] = &stored;
    context.values["uvSetName"] = text("light");
    const auto mesh = output(context);
    expectUv(*mesh, 0, 0, 0, 0);
    expectUv(*mesh, 0, 1, 1, 1);
    context.values["uvSetName"] = text("gone");
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(PolyTweakUV, PassesOnWhatItCannotChange)
{
    ToyContext context = operation(kPolyTweakUV, {});
    EXPECT_TRUE(isPassedOn(context));
    const NumericArray stored = offsets(0, {1, 1});
    context.arrays["uvTweak"] = &stored;
    context.set("nodeState", 1);
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("nodeState", 0);
    context.setElement("newUV", {0}, Value()); // for no face
    expectUv(*output(context), 0, 1, 1);
    EXPECT_EQ(context.timesUncomputed, 0U);
}

/// Two squares have six coordinates.
TEST(PolyTweakUV, SaysWhereTheMeshHasNoSuchCoordinate)
{
    ToyContext context = operation(kPolyTweakUV, {});
    const NumericArray last = offsets(5, {1, 1});
    context.arrays["uvTweak"] = &last;
    output(context);
    EXPECT_EQ(context.timesUncomputed, 0U);
    const NumericArray beyond = offsets(5, {1, 1, 1, 1});
    context.arrays["uvTweak"] = &beyond;
    expectUv(*output(context), 5, 3, 2); // from (2 1): the rest is done
    EXPECT_EQ(context.timesUncomputed, 1U);
    EXPECT_EQ(context.lack, Lack::Components);
}

TEST(PolyTweakUV, AddsCoordinatesForCornersBehindTheOthers)
{
    ToyContext context = operation(kPolyTweakUV, {});
    const auto add = [&context](std::int32_t index, double face, double vertex, double u) {
        context.setElement("newUV", {index}, Value());
        context.setElement("faceId", {index}, Value(face));
        context.setElement("vertexId", {index}, Value(vertex));
        context.setElement("newUValue", {index}, Value(u));
    };
    add(0, 1, 4, 7);
    add(1, 9, 4, 8); // no such face
    add(2, 0, 5, 8); // the face has no such vertex
    add(5, 0, 0, 9);
    const auto mesh = output(context);
    EXPECT_EQ(idsOf(*mesh), (Ids{7, 1, 4, 3, 1, 2, 5, 6}));
    expectUv(*mesh, 6, 7, 0);
    expectUv(*mesh, 7, 9, 0);
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(PolyPinUV, LeavesTheMeshAsItIs)
{
    ToyContext context(kPolyPinUV);
    context.values["inputPolymesh"] = Value::of(geometry::test::twoSquares());
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(PolyPlanarProj, ProjectsInTheWorldWhereItSaysSo)
{
    ToyContext context = operation(kPolyPlanarProj, {"f[0:1]"});
    context.values["inputMatrix"] = Value::of(scaling({10, 10, 10}));
    context.set("worldSpace", 1);
    context.setVector("projectionCenter", 10, 5, 0);
    context.set("projectionWidth", 20);
    context.set("projectionHeight", 10);
    context.set("imageScaleU", 2);
    const auto world = output(context);
    expectUv(*world, 0, -0.5, 0);
    expectUv(*world, 5, 1.5, 1);
    context.set("worldSpace", 0);
    expectUv(*output(context), 0, -0.5, 0); // (0 0) is 10 from the centre, half of 20, twice
    expectUv(*output(context), 5, -0.3, 0.1);
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("isPerspective", 1);
    EXPECT_NE(output(context), nullptr);
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(PolyPlanarProj, PassesOnWithNoteWhereFacesAreMissing)
{
    for (const NodeCompute* row : {&kPolyPlanarProj, &kPolyCylProj, &kPolySphProj}) {
        ToyContext context = operation(*row, {"f[2]"});
        EXPECT_TRUE(isPassedOn(context)) << row->type;
        EXPECT_EQ(context.timesUncomputed, 1U) << row->type;
        ToyContext none = operation(*row, {});
        EXPECT_TRUE(isPassedOn(none)) << row->type;
        EXPECT_EQ(none.timesUncomputed, 0U) << row->type;
    }
}

TEST(RoundProjections, SweepsAreDegrees)
{
    ToyContext cylinder = operation(kPolyCylProj, {"f[0:1]"});
    cylinder.set("projectionHorizontalSweep", 360);
    cylinder.set("projectionHeight", 2);
    // Vertex 1 stands 90 degrees to the right of the axis' front: a quarter of the turn.
    expectUv(*output(cylinder), 1, 0.75, 0.5);
    ToyContext sphere = operation(kPolySphProj, {"f[0:1]"});
    // Of the usual 180 by 90 degrees vertex 4 takes half and half: 90 right, 45 up.
    expectUv(*output(sphere), 2, 1, 1);
    EXPECT_EQ(cylinder.timesUncomputed, 1U);
}

TEST(PolyAutoProj, MapsTheNamedFacesAndSaysThatItApproximates)
{
    // Both squares are seen from +z, as one piece of two by one: it fits the unit square's width.
    ToyContext context = operation(kPolyAutoProj, {"f[*]"});
    const auto both = output(context);
    EXPECT_EQ(idsOf(*both), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    expectUv(*both, 4, 1, 0);
    expectUv(*both, 5, 1, 0.5);
    EXPECT_EQ(context.timesUncomputed, 1U);
    context.values["inputComponents"] = Value::of(ComponentList{{"f[1]"}});
    context.set("layout", 0);
    context.set("scaleMode", 0);
    context.set("scaleX", 2);
    const auto one = output(context);
    EXPECT_EQ(idsOf(*one), (Ids{0, 1, 3, 2, 4, 5, 6, 7}));
    expectUv(*one, 4, 0.5, 0); // vertex 1 at (1 0), half as far in x
    context.values["inputComponents"] = Value::of(ComponentList{{"f[9]"}});
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 3U);
}

TEST(PolyLayoutUV, LaysOutAndSaysThatItApproximates)
{
    ToyContext context = operation(kPolyLayoutUV, {"f[0:1]"});
    context.set("percentageSpace", 5);
    // two by one, and half of five percent of two on each side: 2.1 by 1.1
    const auto mesh = output(context);
    expectUv(*mesh, 0, 0.05 / 2.1, 0.05 / 2.1);
    expectUv(*mesh, 5, 2.05 / 2.1, 1.05 / 2.1);
    context.set("scale", 0);
    context.set("layout", 1);
    expectUv(*output(context), 5, 2, 1);
    EXPECT_EQ(context.timesUncomputed, 2U);
    context.set("nodeState", 1);
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 2U);
}

TEST(ColorNodes, LeaveTheMeshAsItIs)
{
    for (const NodeCompute* row :
         {&kPolyColorPerVertex, &kPolyColorDel, &kPolyColorMod, &kBlendColorSets}) {
        ToyContext context(*row);
        context.values["inputPolymesh"] = Value::of(geometry::test::twoSquares());
        EXPECT_TRUE(isPassedOn(context)) << row->type;
        EXPECT_EQ(context.timesUncomputed, 0U);
    }
    for (const NodeCompute* row : {&kCreateColorSet, &kDeleteColorSet, &kCopyColorSet}) {
        ToyContext context(*row);
        context.values["inputGeometry"] = Value::of(geometry::test::twoSquares());
        EXPECT_TRUE(isPassedOn(context, "outputGeometry", "inputGeometry")) << row->type;
        EXPECT_EQ(context.timesUncomputed, 0U);
    }
    ToyContext data(kPolyBlindData);
    data.values["inMesh"] = Value::of(geometry::test::twoSquares());
    EXPECT_TRUE(isPassedOn(data, "outMesh", "inMesh"));
    EXPECT_EQ(data.timesUncomputed, 0U);
}

TEST(UvBorders, CutSewAndDelete)
{
    // The edge between the squares is the second that the loop of the first one walks.
    ToyContext cut = operation(kPolyMapCut, {"e[1]"});
    const auto apart = output(cut);
    EXPECT_EQ(idsOf(*apart), (Ids{0, 1, 4, 3, 6, 2, 5, 7}));
    EXPECT_EQ(cut.timesUncomputed, 1U); // for the numbers
    ToyContext sew = operation(kPolyMapSew, {"e[1]"});
    sew.values["inputPolymesh"] = Value(apart);
    EXPECT_EQ(idsOf(*output(sew)), idsOf(geometry::test::twoSquares()));
    ToyContext remove = operation(kPolyMapDel, {"f[*]"});
    EXPECT_EQ(idsOf(*output(remove)), Ids(8, -1));
    EXPECT_EQ(sew.timesUncomputed, 1U);
    EXPECT_EQ(remove.timesUncomputed, 0U);
}

TEST(UvBorders, PassOnWithNoteWhereComponentsAreMissing)
{
    for (const NodeCompute* row : {&kPolyMapCut, &kPolyMapSew, &kPolyMapDel}) {
        ToyContext context = operation(*row, {"vtx[0]"});
        EXPECT_TRUE(isPassedOn(context)) << row->type;
        EXPECT_EQ(context.timesUncomputed, 1U) << row->type;
        context.set("nodeState", 1);
        EXPECT_TRUE(isPassedOn(context)) << row->type;
        EXPECT_EQ(context.timesUncomputed, 1U) << row->type;
    }
}

/// The second square apart, three to the right of its place.
std::shared_ptr<const MeshData> squaresApart()
{
    MeshData mesh = geometry::test::twoSquares();
    mesh.uvSets.clear();
    geometry::test::addUvSet(mesh, "map1",
                             {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {4, 0}, {5, 0}, {5, 1}, {4, 1}},
                             {0, 1, 2, 3, 4, 5, 6, 7});
    return std::make_shared<const MeshData>(std::move(mesh));
}

TEST(PolyMapSewMove, BringsThePiecesTogetherUpToItsLimit)
{
    ToyContext context = operation(kPolyMapSewMove, {"e[*]"});
    context.values["inputPolymesh"] = Value(squaresApart());
    const auto mesh = output(context);
    EXPECT_EQ(idsOf(*mesh), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    expectUv(*mesh, 4, 2, 0);
    EXPECT_EQ(context.timesUncomputed, 1U);
    context.set("limitPieceSize", 1);
    context.set("numberFaces", 0);
    EXPECT_EQ(idsOf(*output(context)), (Ids{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(PolyMergeUV, TakesIdsAndADistance)
{
    ToyContext context = operation(kPolyMergeUV, {"map[0:7]"});
    context.values["inputPolymesh"] = Value(squaresApart());
    context.set("distance", 3.5);
    EXPECT_EQ(idsOf(*output(context)), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    EXPECT_EQ(context.timesUncomputed, 1U);
    context.set("distance", 2.5);
    EXPECT_EQ(idsOf(*output(context)), (Ids{0, 1, 2, 3, 4, 5, 6, 7}));
    context.values["inputComponents"] = Value::of(ComponentList{{"map[9]"}});
    EXPECT_TRUE(isPassedOn(context));
}

TEST(PolyMoveUV, TakesIdsOrTheFacesIds)
{
    for (const char* components : {"map[2]", "f[1]"}) {
        ToyContext context = operation(kPolyMoveUV, {components});
        context.set("pivotU", 1);
        context.set("scaleU", 3);
        context.set("translateV", 0.5);
        const auto mesh = output(context);
        expectUv(*mesh, 2, 4, 0.5);
        expectUv(*mesh, 5, components[0] == 'f' ? 4 : 2, components[0] == 'f' ? 1.5 : 1);
        expectUv(*mesh, 0, 0, 0);
        EXPECT_EQ(context.timesUncomputed, 0U);
    }
    ToyContext missing = operation(kPolyMoveUV, {"map[6]"});
    EXPECT_TRUE(isPassedOn(missing));
    EXPECT_EQ(missing.timesUncomputed, 1U);
}

TEST(PolyFlipUV, AboutItsOwnMiddleTheSquareOrAPivot)
{
    ToyContext context = operation(kPolyFlipUV, {"f[1]"}); // u 1..2, v 0..1
    expectUv(*output(context), 2, 1, 0);
    context.set("local", 0);
    expectUv(*output(context), 2, -1, 0);
    context.set("usePivot", 1);
    context.set("pivotU", 3);
    expectUv(*output(context), 2, 4, 0);
    context.set("flipType", 1);
    context.set("pivotV", 2);
    expectUv(*output(context), 2, 2, 4);
}

TEST(PolyNormalizeUV, FitsAllTogether)
{
    ToyContext context = operation(kPolyNormalizeUV, {"f[*]"});
    expectUv(*output(context), 5, 1, 0.5);
    context.set("preserveAspectRatio", 0);
    expectUv(*output(context), 5, 1, 1);
    EXPECT_EQ(context.timesUncomputed, 0U);
    context.set("normalizeType", 0);
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 1U);
}

TEST(UvSetNodes, MakeCopyAndDeleteSets)
{
    ToyContext create(kCreateUVSet);
    create.values["inputGeometry"] = Value::of(geometry::test::twoSquares());
    EXPECT_TRUE(isPassedOn(create, "outputGeometry", "inputGeometry"));
    create.values["uvSetName"] = text("light");
    const auto made = create.compute("outputGeometry").data<MeshData>();
    ASSERT_EQ(made->uvSets.size(), 2U);
    EXPECT_EQ(made->uvSets[1].name, "light");
    ToyContext copy(kCopyUVSet);
    copy.values["inputGeometry"] = Value(made);
    copy.values["uvSetName"] = text("map1");
    copy.values["uvSetName2"] = text("light");
    const auto copied = copy.compute("outputGeometry").data<MeshData>();
    EXPECT_EQ(copied->uvSets[1].points, made->uvSets[0].points);
    ToyContext remove(kDeleteUVSet);
    remove.values["inputGeometry"] = Value(copied);
    remove.values["uvSetName"] = text("gone");
    EXPECT_TRUE(isPassedOn(remove, "outputGeometry", "inputGeometry"));
    remove.values["uvSetName"] = text("map1");
    EXPECT_EQ(remove.compute("outputGeometry").data<MeshData>()->uvSets.size(), 1U);
}

TEST(PolyCopyUV, CopiesAllOrSomeFaces)
{
    ToyContext context = operation(kPolyCopyUV, {"f[*]"});
    context.values["uvSetName"] = text("light");
    context.values["uvSetNameInput"] = text("map1");
    const auto all = output(context);
    ASSERT_EQ(all->uvSets.size(), 2U);
    EXPECT_EQ(idsOf(*all, 1), idsOf(*all, 0));
    context.values["inputComponents"] = Value::of(ComponentList{{"f[1]"}});
    EXPECT_EQ(idsOf(*output(context), 1), (Ids{-1, -1, -1, -1, 0, 1, 2, 3}));
    context.values["uvSetName"] = text("map1");
    EXPECT_TRUE(isPassedOn(context));
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(PolyCrease, ElementsGoByTheNumbersOfEdges)
{
    ToyContext context = operation(kPolyCrease, {"e[2]"});
    EXPECT_TRUE(isPassedOn(context));
    NumericArray edges(NumberStorage::Float, 1);
    edges.store<float>(1, std::vector<float>{-1, 2.5F});
    NumericArray vertices(NumberStorage::Float, 1);
    vertices.store<float>(4, std::vector<float>{3});
    context.arrays["crease"] = &edges;
    context.arrays["creaseVertex"] = &vertices;
    const auto mesh = output(context);
    EXPECT_EQ(mesh->creases->edges, (std::vector<std::uint32_t>{2}));
    EXPECT_EQ(mesh->creases->edgeValues, (std::vector<float>{2.5F}));
    EXPECT_EQ(mesh->creases->vertices, (std::vector<std::uint32_t>{4}));
}

/// Two squares side by side have seven edges and six vertices.
TEST(PolyCrease, SaysWhereTheMeshHasNoSuchPart)
{
    const auto lackOf = [](const char* name, std::uint32_t first) {
        ToyContext context = operation(kPolyCrease, {});
        NumericArray creases(NumberStorage::Float, 1);
        creases.store<float>(first, std::vector<float>{2, 2});
        context.arrays[name] = &creases;
        output(context);
        return context.lack;
    };
    EXPECT_EQ(lackOf("crease", 5), Lack::Unsaid);
    EXPECT_EQ(lackOf("crease", 6), Lack::Components);
    EXPECT_EQ(lackOf("creaseVertex", 4), Lack::Unsaid);
    EXPECT_EQ(lackOf("creaseVertex", 5), Lack::Components);
}

TEST(TextureNodes, AreListedOnceEach)
{
    std::set<std::string_view> types;
    for (const NodeCompute* row : allPolygonTextureNodes()) {
        EXPECT_TRUE(types.insert(row->type).second) << row->type;
    }
    EXPECT_EQ(types.count("polyTweakUV"), 1U);
}

} // namespace
} // namespace host::nodes
