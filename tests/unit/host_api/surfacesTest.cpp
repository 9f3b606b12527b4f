// What a MGeometryExtractor delivers of surfaces.
#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MGeometryExtractor.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace MHWRender;
using Floats = std::vector<float>;
using Indices = std::vector<unsigned int>;

/// The rectangle 4 x 2, two spans along u and one along v, under a transform that is moved.
std::string plane(const std::string& extra = "")
{
    return "createNode transform -n \"t\";\n\tsetAttr \".t\" -type \"double3\" 10 0 0;\n"
           "createNode nurbsSurface -n \"s\" -p \"t\";\n"
           "\tsetAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 3 0 1 2 2 0 1\n"
           "\t\t6 0 0 0  0 2 0  2 0 0  2 2 0  4 0 0  4 2 0;\n" +
           extra;
}

struct Delivery {
    explicit Delivery(const std::string& path, MObject component = MObject())
    {
        const MVertexBufferDescriptor position("", MGeometry::kPosition, MGeometry::kFloat, 3);
        const MVertexBufferDescriptor normal("", MGeometry::kNormal, MGeometry::kFloat, 3);
        const MVertexBufferDescriptor uv("", MGeometry::kTexture, MGeometry::kFloat, 2);
        const MIndexBufferDescriptor index(MIndexBufferDescriptor::kTriangle, "",
                                           MGeometry::kTriangles, 3, component);
        MGeometryRequirements requirements;
        requirements.addVertexRequirement(position);
        requirements.addVertexRequirement(normal);
        requirements.addVertexRequirement(uv);
        requirements.addIndexingRequirement(index);
        const MGeometryExtractor extractor(requirements, pathNamed(path), kPolyGeom_Normal,
                                           &status);
        const unsigned int vertices = extractor.vertexCount();
        triangles = extractor.primitiveCount(index);
        positions.resize(3 * vertices);
        normals.resize(3 * vertices);
        uvs.resize(2 * vertices, -1);
        indices.resize(3 * triangles);
        isFilled = extractor.populateVertexBuffer(positions.data(), vertices, position) &&
                   extractor.populateVertexBuffer(normals.data(), vertices, normal) &&
                   extractor.populateVertexBuffer(uvs.data(), vertices, uv) &&
                   extractor.populateIndexBuffer(indices.data(), triangles, index);
    }
    MStatus status;
    bool isFilled = false;
    unsigned int triangles = 0;
    Floats positions, normals, uvs;
    Indices indices;
};

TEST(MGeometryExtractor, DeliversTheTessellationOfASurface)
{
    const OpenedScene scene(plane());
    const Delivery surface("|t|s");
    ASSERT_TRUE(surface.status);
    ASSERT_TRUE(surface.isFilled);
    // One segment per span of a flat surface; object space.
    EXPECT_EQ(surface.triangles, 4u);
    EXPECT_EQ(surface.positions, (Floats{0, 0, 0, 0, 2, 0, 2, 0, 0, 2, 2, 0, 4, 0, 0, 4, 2, 0}));
    EXPECT_EQ(surface.uvs, (Floats{0, 0, 0, 1, 0.5, 0, 0.5, 1, 1, 0, 1, 1}));
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(surface.normals[3 * i + 2], 1);
    }
    for (std::size_t i = 0; i < surface.indices.size(); i += 3) {
        const auto x = [&](std::size_t corner) {
            return surface.positions[3 * surface.indices[corner]];
        };
        const auto y = [&](std::size_t corner) {
            return surface.positions[3 * surface.indices[corner] + 1];
        };
        EXPECT_EQ((x(i + 1) - x(i)) * (y(i + 2) - y(i)) - (y(i + 1) - y(i)) * (x(i + 2) - x(i)), 4)
            << "counter-clockwise, half a span each";
    }
}

TEST(MGeometryExtractor, TakesAnyComponentOnASurfaceAsEverything)
{
    const OpenedScene scene(plane());
    MFnSingleIndexedComponent component;
    const MObject faces = component.create(MFn::kMeshPolygonComponent);
    EXPECT_EQ(Delivery("|t|s", faces).triangles, 4u) << "no face named";
    component.setCompleteData(0);
    EXPECT_EQ(Delivery("|t|s", faces).triangles, 4u) << "complete over no faces";
    component.setCompleteData(7);
    EXPECT_EQ(Delivery("|t|s", faces).triangles, 4u);
}

TEST(MGeometryExtractor, FailsForASurfaceWithoutGeometry)
{
    const OpenedScene scene(
        "createNode transform -n \"t\";\ncreateNode nurbsSurface -n \"s\" -p \"t\";\n");
    const Delivery nothing("|t|s");
    EXPECT_FALSE(nothing.status);
    EXPECT_FALSE(nothing.isFilled);
    EXPECT_EQ(nothing.triangles, 0u);
}

TEST(MGeometryExtractor, FailsForASurfaceWithoutWidth)
{
    const OpenedScene scene(
        "createNode transform -n \"t\";\ncreateNode nurbsSurface -n \"s\" -p \"t\";\n"
        "setAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 2 0 1 2 0 1\n"
        "4 0 0 0  0 0 0  2 0 0  2 0 0;\n");
    EXPECT_FALSE(Delivery("|t|s").status);
}

} // namespace
