#include "host/geometry/mesh/triangulate.h"

#include "host/geometry/mesh/PolygonCutter.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr double kAngleTie = 1e-4; ///< radians, and as good as its own sine
/// Sine below which a corner counts as straight; the choice by angles suits those as well.
constexpr double kStraight = 1e-9;

struct SineCosine {
    double sine = 0;
    double cosine = 0;
};

/// The smallest angle of a triangle: the one that faces its shortest side.
SineCosine smallestAngle(const Vec3d& a, const Vec3d& b, const Vec3d& c)
{
    const Vec3d ab = b - a;
    const Vec3d bc = c - b;
    const Vec3d ca = a - c;
    const double lengths[3] = {dot(ab, ab), dot(bc, bc), dot(ca, ca)};
    const double sine = length(cross(ab, bc));
    if (lengths[0] <= lengths[1] && lengths[0] <= lengths[2]) {
        return {sine, -dot(bc, ca)};
    }
    return {sine, lengths[1] <= lengths[2] ? -dot(ca, ab) : -dot(ab, bc)};
}

/// Of two angles up to a right one, the smaller.
SineCosine smaller(const SineCosine& a, const SineCosine& b)
{
    return a.sine * b.cosine <= b.sine * a.cosine ? a : b;
}

class Triangulator {
public:
    Triangulator(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
                 std::span<const Vec3f> points, QuadSplit split)
        : m_topology(topology), m_vertices(vertices), m_points(points), m_split(split)
    {
    }

    Triangulation run(std::span<const std::uint32_t> skippedFaces);

private:
    Vec3d pointAt(std::uint32_t corner) const { return toDouble(m_points[m_vertices[corner]]); }
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        m_result.corners.push_back(a);
        m_result.corners.push_back(b);
        m_result.corners.push_back(c);
    }
    void addFace(std::uint32_t face);
    void addQuad(std::uint32_t first);
    void addPolygon(std::uint32_t face);

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_vertices;
    std::span<const Vec3f> m_points;
    QuadSplit m_split;
    Triangulation m_result;
    PolygonCutter m_cutter;
    std::vector<Vec3d> m_face;
    std::vector<std::uint32_t> m_loopEnds;
};

void Triangulator::addQuad(std::uint32_t first)
{
    const bool fromSecond =
        m_split == QuadSplit::Left || (m_split != QuadSplit::Right &&
                                       bestDiagonal({pointAt(first), pointAt(first + 1),
                                                     pointAt(first + 2), pointAt(first + 3)}) == 1);
    if (fromSecond) {
        addTriangle(first, first + 1, first + 3);
        addTriangle(first + 1, first + 2, first + 3);
        return;
    }
    addTriangle(first, first + 1, first + 2);
    addTriangle(first, first + 2, first + 3);
}

void Triangulator::addPolygon(std::uint32_t face)
{
    m_face.clear();
    m_loopEnds.clear();
    const std::uint32_t first = m_topology.firstCorner(face);
    for (std::uint32_t corner = first; corner < m_topology.endCorner(face); ++corner) {
        m_face.push_back(pointAt(corner));
    }
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        m_loopEnds.push_back(m_topology.loopStart[loop + 1] - first);
    }
    const std::size_t before = m_result.corners.size();
    m_cutter.cut(m_face, m_loopEnds, m_result.corners);
    for (std::size_t i = before; i < m_result.corners.size(); ++i) {
        m_result.corners[i] += first;
    }
}

void Triangulator::addFace(std::uint32_t face)
{
    const std::uint32_t first = m_topology.firstCorner(face);
    const std::uint32_t count = m_topology.endCorner(face) - first;
    const std::uint32_t loops = m_topology.firstLoop(face + 1) - m_topology.firstLoop(face);
    if (count < 3) {
        return;
    }
    if (loops != 1 || count > 4) {
        addPolygon(face);
    } else if (count == 3) {
        addTriangle(first, first + 1, first + 2);
    } else {
        addQuad(first);
    }
}

Triangulation Triangulator::run(std::span<const std::uint32_t> skippedFaces)
{
    const std::uint32_t faceCount = m_topology.faceCount();
    const std::size_t corners = m_topology.corners.size();
    const std::size_t holes = m_topology.loopCount() - std::min(m_topology.loopCount(), faceCount);
    const std::size_t outside = std::min<std::size_t>(faceCount, corners / 3);
    m_result.corners.reserve(3 * (corners - 2 * outside + 2 * holes));
    m_result.faceFirstTriangle.reserve(std::size_t(faceCount) + 1);
    auto skipped = skippedFaces.begin();
    for (std::uint32_t face = 0; face < faceCount; ++face) {
        m_result.faceFirstTriangle.push_back(
            static_cast<std::uint32_t>(m_result.corners.size() / 3));
        if (skipped != skippedFaces.end() && *skipped == face) {
            ++skipped;
            continue;
        }
        addFace(face);
    }
    m_result.faceFirstTriangle.push_back(static_cast<std::uint32_t>(m_result.corners.size() / 3));
    return std::move(m_result);
}

} // namespace

std::uint32_t bestDiagonal(const std::array<Vec3d, 4>& quad)
{
    const Vec3d normal = areaVector(quad);
    const double area = length(normal);
    for (std::uint32_t i = 0; i < 4; ++i) {
        const Vec3d arriving = quad[i] - quad[(i + 3) % 4];
        const Vec3d leaving = quad[(i + 1) % 4] - quad[i];
        const double turn = dot(cross(arriving, leaving), normal);
        if (turn < 0 && turn < -kStraight * length(arriving) * length(leaving) * area) {
            return i % 2;
        }
    }
    const SineCosine zero =
        smaller(smallestAngle(quad[0], quad[1], quad[2]), smallestAngle(quad[0], quad[2], quad[3]));
    const SineCosine one =
        smaller(smallestAngle(quad[0], quad[1], quad[3]), smallestAngle(quad[1], quad[2], quad[3]));
    // The sine of how much larger the angle of the first diagonal is; both are up to 60 degrees.
    const double gain = zero.sine * one.cosine - one.sine * zero.cosine;
    const double scale = std::sqrt((zero.sine * zero.sine + zero.cosine * zero.cosine) *
                                   (one.sine * one.sine + one.cosine * one.cosine));
    return gain > kAngleTie * scale ? 0 : 1;
}

Triangulation triangulate(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
                          std::span<const Vec3f> points, QuadSplit split,
                          std::span<const std::uint32_t> skippedFaces)
{
    return Triangulator(topology, vertices, points, split).run(skippedFaces);
}

} // namespace host::geometry
