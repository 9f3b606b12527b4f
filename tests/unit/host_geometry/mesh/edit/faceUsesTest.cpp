#include "host/geometry/mesh/edit/FaceUses.h"

#include "host/geometry/mesh/primitives/boxes.h"

#include <gtest/gtest.h>

#include <vector>

namespace host::geometry {
namespace {

std::vector<std::uint32_t> facesAt(const FaceUses& uses, std::uint32_t place)
{
    std::vector<std::uint32_t> faces;
    for (std::size_t use = 0; use < uses.count(place); ++use) {
        faces.push_back(uses.face(place, use));
    }
    return faces;
}

std::shared_ptr<const MeshData> grid(std::uint32_t columns)
{
    PlaneSettings settings;
    settings.widthCells = settings.heightCells = columns;
    return makePlane(settings, SolidPlacement{});
}

TEST(FaceUses, FacesOfSomeVerticesOfAGrid)
{
    // Vertex x + 41 y of a grid of 40 by 40; faces x + 40 y lie at its lower left.
    const auto mesh = grid(40);
    const std::vector<std::uint32_t> vertices{0, 20 + 41 * 10, 40 + 41 * 40};
    const FaceUses uses = facesOfVertices(*mesh->topology, vertices);
    EXPECT_EQ(facesAt(uses, 0), std::vector<std::uint32_t>{0});
    EXPECT_EQ(facesAt(uses, 1), (std::vector<std::uint32_t>{379, 380, 419, 420}));
    EXPECT_EQ(facesAt(uses, 2), std::vector<std::uint32_t>{1599});
}

TEST(FaceUses, FacesOfEdgesAreThoseOfAllLinks)
{
    const auto mesh = grid(40);
    const MeshTopology& topology = *mesh->topology;
    const CornerLinks links(topology);
    const NumberLists all = cornersOfEdges(topology);
    std::vector<std::uint32_t> edges;
    for (std::uint32_t edge = 5; edge < topology.edges.size(); edge += 97) {
        edges.push_back(edge);
    }
    const FaceUses uses = facesOfEdges(topology, edges);
    for (std::uint32_t place = 0; place < edges.size(); ++place) {
        std::vector<std::uint32_t> expected;
        for (const std::uint32_t corner : all.of(edges[place])) {
            expected.push_back(links.face(corner));
        }
        EXPECT_EQ(facesAt(uses, place), expected) << edges[place];
    }
}

TEST(FaceUses, HolesBelongToTheirFace)
{
    // A triangle with a triangular hole, then another triangle.
    MeshTopology topology;
    topology.vertexCount = 9;
    for (std::uint32_t loop = 0; loop < 3; ++loop) {
        for (std::uint32_t i = 0; i < 3; ++i) {
            topology.edges.push_back({3 * loop + i, 3 * loop + (i + 1) % 3});
            topology.corners.push_back(static_cast<std::int32_t>(3 * loop + i));
        }
    }
    topology.loopStart = {0, 3, 6, 9};
    topology.faceLoop = {0, 2, 3};
    const std::vector<std::uint32_t> edges{4, 7};
    const FaceUses uses = facesOfEdges(topology, edges);
    EXPECT_EQ(facesAt(uses, 0), std::vector<std::uint32_t>{0});
    EXPECT_EQ(facesAt(uses, 1), std::vector<std::uint32_t>{1});
}

} // namespace
} // namespace host::geometry
