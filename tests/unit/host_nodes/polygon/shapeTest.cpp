// Operations that move points or turn normals: which inputs they read, and what happens when
// components do not exist.
#include "host/geometry/mesh/shape/cornerNormals.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "tests/support/ToyContext.h"
#include "tests/unit/host_geometry/meshMaker.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using ::test::ToyContext;

std::shared_ptr<const MeshData> cube()
{
    return std::make_shared<const MeshData>(
        geometry::test::meshOf(geometry::test::kCubePoints, geometry::test::kCubeFaces));
}

Value components(std::vector<std::string> texts)
{
    return Value::of(ComponentList{std::move(texts)});
}

std::shared_ptr<const MeshData> output(ToyContext& context)
{
    return context.compute("output").data<MeshData>();
}

/// On the cube, for the components with the texts.
ToyContext operation(const NodeCompute& row, std::vector<std::string> texts)
{
    ToyContext context(row);
    context.values["inputPolymesh"] = Value(cube());
    context.values["inputComponents"] = components(std::move(texts));
    return context;
}

TEST(PolyTweak, AddsStoredAndConnectedOffsets)
{
    NumericArray offsets(NumberStorage::Float, 3);
    const std::vector<float> numbers{1, 2, 3};
    offsets.store<float>(2, numbers);
    ToyContext context = operation(kPolyTweak, {});
    context.arrays["tweak"] = &offsets;
    context.connected.insert("tweak");
    context.setElement("tweak", {0}, Value());
    context.setElement("tweakX", {0}, Value(0.25));
    context.setElement("tweakY", {0}, Value(0.0));
    context.setElement("tweakZ", {0}, Value(0.0));
    const auto moved = output(context);
    EXPECT_EQ((*moved->points)[2], (Vec3f{0.5F, 2.5F, 3.5F}));
    EXPECT_EQ((*moved->points)[0], (Vec3f{-0.25F, -0.5F, 0.5F}));
    EXPECT_EQ((*moved->points)[1], geometry::test::kCubePoints[1]);
    context.set("nodeState", 1);
    EXPECT_EQ(*output(context)->points, geometry::test::kCubePoints);
}

/// A cube has eight points.
TEST(PolyTweak, SaysWhereTheMeshHasNoSuchPoint)
{
    NumericArray offsets(NumberStorage::Float, 3);
    offsets.store<float>(7, std::vector<float>{1, 2, 3});
    ToyContext context = operation(kPolyTweak, {});
    context.arrays["tweak"] = &offsets;
    output(context);
    EXPECT_EQ(context.timesUncomputed, 0U);
    offsets.store<float>(8, std::vector<float>{1, 2, 3});
    EXPECT_EQ((*output(context)->points)[7].y, geometry::test::kCubePoints[7].y + 2);
    EXPECT_EQ(context.timesUncomputed, 1U);
    EXPECT_EQ(context.lack, Lack::Components);
    ToyContext living = operation(kPolyTweak, {});
    living.connected.insert("tweak");
    living.setElement("tweak", {8}, Value());
    output(living);
    EXPECT_EQ(living.lack, Lack::Components);
}

TEST(Tweak, ItsEnvelopeScalesRelativeOffsetsOfMeshes)
{
    ToyContext context(kTweak);
    context.setElement("inputGeometry", {0}, Value(cube()));
    for (const auto& [name, number] :
         {std::pair{"xVertex", 1.0}, {"yVertex", 2.0}, {"zVertex", -4.0}}) {
        context.setElement(name, {0, 3}, Value(number));
    }
    const auto at = [&context] {
        const Value moved = context.compute("outputGeometry", 0);
        return (*moved.data<MeshData>()->points)[3];
    };
    EXPECT_EQ(at(), (Vec3f{1.5F, 2.5F, -3.5F}));
    context.set("envelope", 0.5);
    EXPECT_EQ(at(), (Vec3f{1, 1.5F, -1.5F}));
    context.set("relativeTweak", 0);
    EXPECT_EQ(at(), (Vec3f{1, 2, -4}));
}

TEST(TransformGeometry, LocksNormalsOfMeshesWhenToldTo)
{
    ToyContext context(kTransformGeometry);
    context.values["inputGeometry"] = Value(cube());
    context.values["transform"] = Value::of(scaling({1, 2, 3}));
    const auto result = [&context] { return context.compute("outputGeometry").data<MeshData>(); };
    EXPECT_EQ((*result()->points)[3], (Vec3f{0.5F, 1, 1.5F}));
    EXPECT_EQ(result()->lockedNormals, nullptr);
    context.set("freezeNormals", 2);
    EXPECT_NE(result()->lockedNormals, nullptr);
}

TEST(PolySoftEdge, TakesTheMatrixOnlyInWorldSpace)
{
    // The cube's edges meet at right angles; sheared, some meet at less.
    ToyContext context = operation(kPolySoftEdge, {"e[0:11]"});
    context.set("angle", 1.2);
    context.values["inputMatrix"] = Value::of(shearing({3, 0, 0}));
    const auto softCount = [&context] {
        const auto flags = output(context)->edgeFlags();
        return std::count(flags.begin(), flags.end(), 1);
    };
    EXPECT_EQ(softCount(), 0);
    context.set("worldSpace", 1);
    // Of the four edges along z two are now between normals 18 degrees apart (atan 1/3).
    EXPECT_EQ(softCount(), 2);
    context.set("angle", 3.2);
    EXPECT_EQ(softCount(), 12);
}

TEST(PolyNormal, TurnsTheNamedFaces)
{
    ToyContext context = operation(kPolyNormal, {"f[0:2]"});
    const auto turned = output(context);
    const auto first = [&](std::uint32_t face) {
        return turned->topology->cornerVertex(turned->topology->firstCorner(face) + 1);
    };
    EXPECT_EQ(first(0), 2U); // 0 2 3 1
    EXPECT_EQ(first(5), 0U); // 6 0 2 4 as before
    EXPECT_EQ(context.timesUncomputed, 0U);
}

TEST(PolyNormalPerVertex, LocksByVertexAndThenByFace)
{
    ToyContext context(kPolyNormalPerVertex);
    context.values["inputPolymesh"] = Value(cube());
    context.setElement("vertexNormal", {0}, Value());
    context.setElement("vertexFaceNormal", {0, 0}, Value());
    const auto set = [&context](const std::string& name, std::vector<std::int32_t> at, double x) {
        context.setElement(name + "X", at, Value(x));
        context.setElement(name + "Y", at, Value(0.0));
        context.setElement(name + "Z", at, Value(0.0));
    };
    set("vertexNormal", {0}, 1);
    set("vertexFaceNormal", {0, 0}, -1);
    const std::vector<Vec3f> locked = geometry::lockedNormalsOfCorners(*output(context));
    EXPECT_EQ(locked[0], (Vec3f{-1, 0, 0})); // vertex 0 in face 0
    EXPECT_EQ(locked[15], (Vec3f{1, 0, 0})); // vertex 0 in face 3
    EXPECT_EQ(locked[1], geometry::kNotLocked);
}

TEST(PolyNormalPerVertex, SaysWhereTheMeshHasNoSuchPart)
{
    const auto given = [](std::int32_t vertex, std::int32_t face) {
        ToyContext context = operation(kPolyNormalPerVertex, {});
        context.setElement("vertexNormal", {vertex}, Value());
        context.setElement("vertexFaceNormal", {vertex, face}, Value());
        for (const char* axis : {"X", "Y", "Z"}) {
            const std::string name = std::string("vertexFaceNormal") + axis;
            context.setElement(name, {vertex, face}, Value(1.0));
        }
        output(context);
        return context;
    };
    EXPECT_EQ(given(7, 5).timesUncomputed, 0U); // the last vertex and face of the cube
    EXPECT_EQ(given(8, 5).lack, Lack::Components);
    EXPECT_EQ(given(7, 6).lack, Lack::Components);
}

TEST(PolyMoveComponents, ReadTheirTransformation)
{
    ToyContext vertex = operation(kPolyMoveVertex, {"vtx[3]"});
    vertex.setVector("translate", 1, 0, 0);
    vertex.setVector("scale", 2, 2, 2);
    vertex.setVector("pivot", 0, 0, 0.5);
    EXPECT_EQ((*output(vertex)->points)[3], (Vec3f{2, 1, 0.5F}));
    ToyContext face = operation(kPolyMoveFace, {"f[1]"});
    face.setVector("localTranslate", 0, 0, 0.5);
    EXPECT_EQ((*output(face)->points)[3], (Vec3f{0.5F, 1, 0.5F}));
    EXPECT_EQ(face.timesUncomputed, 0U);
    face.set("random", 0.5);
    output(face);
    EXPECT_EQ(face.timesUncomputed, 1U);
    ToyContext edge = operation(kPolyMoveEdge, {"e[0]"});
    edge.setVector("translate", 0, -1, 0);
    EXPECT_EQ((*output(edge)->points)[1], (Vec3f{0.5F, -1.5F, 0.5F}));
}

TEST(PolygonShapes, WhatNamesMissingComponentsPassesItsInput)
{
    for (const auto& [row, text] : {std::pair{&kPolySoftEdge, "e[12]"},
                                    {&kPolyNormal, "f[6]"},
                                    {&kPolyMoveVertex, "vtx[8]"},
                                    {&kPolyMoveFace, "e[0]"},
                                    {&kPolyAverageVertex, "vtx[3:9]"}}) {
        ToyContext context = operation(*row, {text});
        const auto passed = output(context);
        ASSERT_NE(passed, nullptr) << row->type;
        EXPECT_EQ(*passed->points, geometry::test::kCubePoints) << row->type;
        EXPECT_EQ(context.timesUncomputed, 1U) << row->type;
    }
}

TEST(PolyAverageVertex, MovesTheNamedVertices)
{
    ToyContext context = operation(kPolyAverageVertex, {"vtx[*]"});
    context.set("iterations", 1);
    // See the kernel's test: a factor of 1/3 + 0.7 * 2/3 + 0.3 * 2/9.
    EXPECT_NEAR((*output(context)->points)[3].x, 0.5 * (0.8 + 0.2 / 3), 1e-6);
}

/// A square of one face in the plane z = 0 with corners at 0 and 1.
Value square()
{
    return Value::of(
        geometry::test::meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{{0, 1, 2, 3}}}));
}

TEST(PolySmoothFace, SmoothsAllFacesAsOneAndSomeOneByOne)
{
    ToyContext whole = operation(kPolySmoothFace, {"f[*]"});
    EXPECT_EQ(output(whole)->topology->vertexCount, 26U);
    EXPECT_NEAR((*output(whole)->points)[3].x, 5.0 / 18, 1e-6); // see the kernel's test
    whole.set("divisions", 2);
    EXPECT_EQ(output(whole)->topology->vertexCount, 98U);
    ToyContext top = operation(kPolySmoothFace, {"f[1]"});
    EXPECT_EQ(output(top)->topology->vertexCount, 8U + 5U);
    EXPECT_EQ(output(top)->topology->faceCount(), 6U + 3U);
    EXPECT_EQ((*output(top)->points)[3], geometry::test::kCubePoints[3]);
    EXPECT_EQ(top.timesUncomputed, 0U);
}

TEST(PolySmoothFace, BordersByTheMethodOfItsType)
{
    ToyContext context = operation(kPolySmoothFace, {"f[0]"});
    context.values["inputPolymesh"] = square();
    const auto corner = [&context] { return (*output(context)->points)[0].x; };
    // A rounded corner has 3/4 of itself and 1/8 of its neighbours: here 1/8.
    EXPECT_EQ(corner(), 0);
    context.set("keepBorder", 0);
    EXPECT_EQ(corner(), 0); // corners stay
    context.set("boundaryRule", 2);
    EXPECT_EQ(corner(), .125F);
    context.set("subdivisionType", 2);
    EXPECT_EQ(corner(), 0); // the other method has an attribute of its own
    context.set("osdVertBoundary", 2);
    EXPECT_EQ(corner(), .125F);
    context.set("useOsdBoundaryMethods", 0);
    context.set("keepBorder", 1);
    EXPECT_EQ(corner(), 0);
}

TEST(PolySmoothFace, WhatIsNotCarriedOutPassesTheMesh)
{
    ToyContext linear = operation(kPolySmoothFace, {"f[*]"});
    linear.set("method", 1);
    EXPECT_EQ(output(linear)->topology->vertexCount, 8U);
    EXPECT_EQ(linear.timesUncomputed, 1U);
    ToyContext none = operation(kPolySmoothFace, {"f[*]"});
    none.set("divisions", 0);
    EXPECT_EQ(output(none)->topology->vertexCount, 8U);
    EXPECT_EQ(none.timesUncomputed, 0U);
}

/// Eight steps at most, each of which makes four faces of one.
TEST(PolySmoothFace, TakesAsManyStepsAsThereMayBe)
{
    constexpr std::uint32_t kParts = 1U << 16;
    ToyContext whole = operation(kPolySmoothFace, {"f[0]"});
    whole.values["inputPolymesh"] = square();
    whole.set("divisions", 30);
    EXPECT_EQ(output(whole)->topology->faceCount(), kParts);
    EXPECT_EQ(whole.timesUncomputed, 1U);
    EXPECT_EQ(whole.lack, Lack::Input);
    ToyContext top = operation(kPolySmoothFace, {"f[1]"});
    top.set("divisions", 9);
    EXPECT_EQ(output(top)->topology->faceCount(), 5 + kParts);
    EXPECT_EQ(top.timesUncomputed, 1U);
}

TEST(PolySmoothProxy, SmoothsTheWholeMeshByItsOwnLevel)
{
    ToyContext context(kPolySmoothProxy);
    context.values["inputPolymesh"] = Value(cube());
    context.set("exponentialLevel", 2);
    EXPECT_EQ(output(context)->topology->vertexCount, 98U);
}

TEST(PolySmooth, HasItsStepsAsSmoothness)
{
    ToyContext context = operation(kPolySmooth, {"f[*]"});
    context.set("smoothness", 1);
    EXPECT_EQ(output(context)->topology->vertexCount, 26U);
}

} // namespace
} // namespace host::nodes
