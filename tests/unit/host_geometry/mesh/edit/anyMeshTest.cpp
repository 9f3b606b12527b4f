// Operations one after another on meshes without any order: edges of many faces, faces turned
// against each other, points that are no numbers.
#include "host/geometry/mesh/edit/appendFace.h"
#include "host/geometry/mesh/edit/chipOffFaces.h"
#include "host/geometry/mesh/edit/closeBorders.h"
#include "host/geometry/mesh/edit/clusterVertices.h"
#include "host/geometry/mesh/edit/cutFaces.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "host/geometry/mesh/edit/dissolveVertices.h"
#include "host/geometry/mesh/edit/duplicateEdgeLoops.h"
#include "host/geometry/mesh/edit/flipEdges.h"
#include "host/geometry/mesh/edit/joinEdges.h"
#include "host/geometry/mesh/edit/joinTriangles.h"
#include "host/geometry/mesh/edit/mirrorFaces.h"
#include "host/geometry/mesh/edit/spinEdges.h"
#include "host/geometry/mesh/edit/splitMesh.h"
#include "host/geometry/mesh/edit/triangulateFaces.h"
#include "host/geometry/mesh/edit/uniteMeshes.h"
#include "host/geometry/mesh/edit/wedgeFaces.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <algorithm>
#include <limits>

namespace host::geometry::test {
namespace {

using Random = std::mt19937;

MeshData anyMesh(Random& random)
{
    std::vector<Vec3f> points(6 + random() % 10);
    for (Vec3f& point : points) {
        const auto number = [&] { return static_cast<float>(random() % 5) - 2; };
        point = {number(), number(), number()};
    }
    if (random() % 4 == 0) {
        points[0].x = std::numeric_limits<float>::quiet_NaN();
        points[1].y = std::numeric_limits<float>::infinity();
    }
    std::vector<std::vector<Loop>> faces(2 + random() % 12);
    for (auto& face : faces) {
        Loop loop(points.size());
        for (std::uint32_t i = 0; i < loop.size(); ++i) {
            loop[i] = i;
        }
        std::shuffle(loop.begin(), loop.end(), random);
        loop.resize(3 + random() % 3);
        face = {loop};
    }
    MeshData mesh = meshOf(points, faces, static_cast<std::int32_t>(random() % 2));
    addCornerUvs(mesh);
    addGroup(mesh, 1, someOf(faces.size(), 2, random));
    addPointGroup(mesh, 2, someOf(points.size(), 2, random));
    return mesh;
}

/// One operation on parts of a mesh taken at random.
SharedMesh changed(const MeshData& mesh, std::uint32_t operation, Random& random)
{
    const Numbers faces = someOf(mesh.topology->faceCount(), 3, random);
    const Numbers edges = someOf(mesh.topology->edges.size(), 4, random);
    const Numbers vertices = someOf(mesh.topology->vertexCount, 2, random);
    const auto number = [&] { return static_cast<double>(random() % 9) - 4; };
    const std::vector<Vec3d> places = placesIn(mesh, {});
    CutPlane plane;
    plane.point = {number(), number(), number()};
    plane.normal = normalized({number(), number(), number() + 0.5});
    Mirroring mirroring;
    mirroring.point = plane.point;
    mirroring.normal = plane.normal;
    mirroring.threshold = number();
    mirroring.isThresholdAutomatic = random() % 2 == 0;
    ChipOff off;
    off.isTogether = random() % 2 == 0;
    off.duplicates = random() % 2 == 0;
    off.motion.localTranslate = {number(), 0, number()};
    switch (operation) {
    case 0:
        return deleteFaces(mesh, faces, kCleanAll);
    case 1:
        return deleteEdges(mesh, edges, random() % 2 == 0);
    case 2:
        return dissolveVertices(mesh, vertices, kCleanAll);
    case 3:
        return triangulateFaces(mesh, faces);
    case 4:
        return joinVertices(mesh, joinWithin(mesh, vertices, places, number()));
    case 5:
        return collapseEdges(mesh, edges);
    case 6:
        return collapseFaces(mesh, faces);
    case 7:
        return sewEdges(mesh, edges, places, number());
    case 8:
        return closeBorders(mesh, edges);
    case 9:
        return chipOffFaces(mesh, faces, off);
    case 10:
        return cutFaces(mesh, faces, plane).mesh;
    case 11:
        return keepBehind(mesh, faces, plane).mesh;
    case 12:
        return mirrorFaces(mesh, faces, mirroring);
    case 13:
        return joinTriangles(mesh, faces, {.angle = 3, .keepsHardEdges = false}).mesh;
    case 14:
        return edges.size() < 2 ? nullptr
                                : mergeEdges(mesh, edges[0], edges[1], EdgeMerging::Between);
    case 15:
        return uniteMeshes(std::vector<UnitedMesh>{{&mesh, {}}, {&mesh, scaling({1, 0, 2})}},
                           random() % 2 == 0 ? UvSetMerging::None : UvSetMerging::ByName);
    case 16:
        return flipEdges(mesh, edges);
    case 17:
        return edges.empty() ? nullptr
                             : spinEdges(mesh, std::span(edges).first(1),
                                         static_cast<std::int32_t>(random() % 9) - 4);
    case 18: {
        LoopDuplication duplication;
        duplication.isDistance = edges.size() > 3;
        return duplicateEdgeLoops(mesh, edges, duplication).mesh;
    }
    case 19: {
        FaceWedge wedge;
        wedge.hinges = std::span(edges).first(std::min<std::size_t>(edges.size(), 1));
        wedge.center = plane.point;
        wedge.axis = plane.normal;
        wedge.angle = number();
        wedge.divisions = 2;
        return wedgeFaces(mesh, faces, wedge);
    }
    default: {
        std::vector<FaceStep> steps;
        for (const std::uint32_t edge : edges) {
            steps.push_back({FaceStep::Kind::Edge, edge, {}});
        }
        return appendFace(mesh, steps, FaceTexture::Normalized);
    }
    }
}

TEST(AnyMesh, EveryOperationLeavesAMeshOrNone)
{
    constexpr std::uint32_t kOperations = 21;
    std::vector<std::size_t> made(kOperations);
    Random random(17);
    for (int round = 0; round < 400; ++round) {
        SharedMesh mesh = std::make_shared<const MeshData>(anyMesh(random));
        for (int step = 0; step < 6 && mesh->topology->corners.size() < 2000; ++step) {
            const auto operation = static_cast<std::uint32_t>(random() % kOperations);
            const SharedMesh after = changed(*mesh, operation, random);
            if (after == nullptr) {
                continue;
            }
            ++made[operation];
            ASSERT_TRUE(isConsistent(*after)) << operation;
            for (const Loop& loop : outerLoops(*after)) {
                ASSERT_GE(loop.size(), 3u) << operation;
            }
            const MeshParts shells = shellsOf(*after->topology);
            std::size_t faces = 0;
            for (const SharedMesh& shell : splitMesh(*after, shells)) {
                ASSERT_TRUE(isConsistent(*shell));
                faces += shell->topology->faceCount();
            }
            ASSERT_EQ(faces, after->topology->faceCount());
            mesh = after;
        }
    }
    for (std::uint32_t operation = 0; operation < kOperations; ++operation) {
        EXPECT_GT(made[operation], 5u) << operation;
    }
}

} // namespace
} // namespace host::geometry::test
