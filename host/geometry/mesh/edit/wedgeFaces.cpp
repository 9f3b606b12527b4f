#include "host/geometry/mesh/edit/wedgeFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/extrudeFaces.h"
#include "host/geometry/mesh/edit/faceFrame.h"
#include "host/geometry/mesh/edit/joinEdges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace host::geometry {
namespace {

/// Parts of the size of the mesh within which places are the same.
constexpr double kSamePlace = 1e-5;

struct Axis {
    Vec3d center;
    Vec3d direction; ///< of unit length
};

/// Each hinge as the swung face beside it walks it, so that the angle goes outwards; as it is where
/// none or both of its faces are swung.
std::vector<std::int32_t> walkedHinges(const MeshTopology& topology,
                                       std::span<const std::uint32_t> faces,
                                       std::span<const std::uint32_t> hinges)
{
    std::vector<std::int32_t> walked;
    for (const std::uint32_t hinge : hinges) {
        if (hinge < topology.edges.size()) {
            walked.push_back(referenceTo(hinge, false));
        }
    }
    std::vector<std::int32_t> ways(topology.edges.size());
    for (const std::uint32_t face : faces) {
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            ways[edgeOf(topology.corners[corner])] += topology.corners[corner] >= 0 ? 1 : -1;
        }
    }
    for (std::int32_t& hinge : walked) {
        hinge = referenceTo(edgeOf(hinge), ways[edgeOf(hinge)] < 0);
    }
    return walked;
}

std::optional<Axis> axisOf(const MeshData& mesh, std::span<const std::uint32_t> faces,
                           const FaceWedge& wedge)
{
    Axis axis{wedge.center, wedge.axis};
    if (!wedge.hinges.empty()) {
        const MeshTopology& topology = *mesh.topology;
        const std::vector<Vec3d> points = pointsInSpace(mesh, wedge.toSpace);
        axis = {};
        const auto hinges = walkedHinges(topology, faces, wedge.hinges);
        for (const std::int32_t hinge : hinges) {
            const MeshEdge& edge = topology.edges[edgeOf(hinge)];
            const Vec3d along = points[edge.end] - points[edge.start];
            axis.center = axis.center + (points[edge.start] + points[edge.end]) * 0.5;
            axis.direction = axis.direction + along * (hinge < 0 ? -1.0 : 1.0);
        }
        axis.center =
            axis.center * (1 / static_cast<double>(std::max<std::size_t>(hinges.size(), 1)));
    }
    axis.direction = normalized(axis.direction);
    return length(axis.direction) > 0.5 ? std::optional(axis) : std::nullopt;
}

/// A rotation that takes the axis to x.
Matrix4 axisToX(const Vec3d& direction)
{
    const LocalFrame frame = frameAlong({}, direction, {});
    const std::array<Vec3d, 3> rows{frame.z, frame.x, frame.y};
    Matrix4 matrix;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        matrix.m[0][i] = rows[i].x;
        matrix.m[1][i] = rows[i].y;
        matrix.m[2][i] = rows[i].z;
    }
    return matrix;
}

/// Edges of no length on the axis, which is a line along x through a point of the space: those
/// between places there and their images.
std::vector<std::uint32_t> edgesOnAxis(const MeshData& mesh, const Matrix4& toSpace,
                                       const Vec3d& center)
{
    const std::vector<Vec3d> places = pointsInSpace(mesh, toSpace);
    double reach = 0;
    for (const Vec3d& place : places) {
        const Vec3d from = place - center;
        reach = std::fmax(reach, std::sqrt(from.y * from.y + from.z * from.z));
    }
    const double near = reach * kSamePlace;
    std::vector<std::uint32_t> found;
    const std::vector<MeshEdge>& edges = mesh.topology->edges;
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        const Vec3d from = places[edges[edge].start] - center;
        const Vec3d along = places[edges[edge].end] - places[edges[edge].start];
        if (std::fabs(from.y) <= near && std::fabs(from.z) <= near && length(along) <= near) {
            found.push_back(edge);
        }
    }
    return found;
}

} // namespace

std::shared_ptr<const MeshData>
wedgeFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const FaceWedge& wedge)
{
    const std::optional<Axis> axis = axisOf(mesh, faces, wedge);
    if (!axis) {
        return nullptr;
    }
    const Matrix4 turn = axisToX(axis->direction);
    FaceExtrusion extrusion;
    extrusion.divisions = wedge.divisions;
    extrusion.smoothingAngle = wedge.smoothingAngle;
    extrusion.motion.toSpace = wedge.toSpace * turn;
    extrusion.motion.pivot = transformPoint(axis->center, turn);
    extrusion.motion.rotate = {wedge.angle, 0, 0};
    const auto swung = extrudeFaces(mesh, faces, extrusion);
    if (swung == nullptr || wedge.hinges.empty()) {
        return swung;
    }
    const std::vector<std::uint32_t> onAxis =
        edgesOnAxis(*swung, extrusion.motion.toSpace, extrusion.motion.pivot);
    return onAxis.empty() ? swung : collapseEdges(*swung, onAxis);
}

} // namespace host::geometry
