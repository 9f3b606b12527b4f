#include "host/geometry/mesh/triangulate.h"

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/PolygonCutter.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/quadDiagonals.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace host::geometry {
namespace {

/// Sine below which a corner counts as straight; the choice by angles suits those as well.
constexpr double kStraight = 1e-9;

HOST_ALSO_FOR_WIDE_PROCESSORS void findDiagonals(const FaceBatch<4>& __restrict quads,
                                                 Diagonals& __restrict found)
{
    findDiagonalsOf(quads, found);
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
    void turnQuads();
    void addPolygon(std::uint32_t face);

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_vertices;
    std::span<const Vec3f> m_points;
    QuadSplit m_split;
    Triangulation m_result;
    /// Quads that were cut from corner 1 to corner 3, until there are enough of them to be looked
    /// at.
    struct Waiting {
        FaceBatch<4> quads;
        std::size_t firstIndex[kBatchFaces]; ///< of the quad in the result
        Diagonals diagonals;
    };
    std::unique_ptr<Waiting> m_waiting = std::make_unique<Waiting>();
    PolygonCutter m_cutter;
    std::vector<Vec3d> m_face;
    std::vector<std::uint32_t> m_loopEnds;
};

void Triangulator::addQuad(std::uint32_t first)
{
    if (m_split == QuadSplit::Right) {
        addTriangle(first, first + 1, first + 2);
        addTriangle(first, first + 2, first + 3);
        return;
    }
    if (m_split != QuadSplit::Left) {
        FaceBatch<4>& quads = m_waiting->quads;
        if (quads.isFull()) {
            turnQuads();
        }
        m_waiting->firstIndex[quads.size()] = m_result.corners.size();
        quads.add(first, m_vertices, m_points);
    }
    addTriangle(first, first + 1, first + 3);
    addTriangle(first + 1, first + 2, first + 3);
}

/// Gives the waiting quads the other diagonal where that is better.
void Triangulator::turnQuads()
{
    const FaceBatch<4>& quads = m_waiting->quads;
    const Diagonals& diagonals = m_waiting->diagonals;
    findDiagonals(quads, m_waiting->diagonals);
    for (std::size_t i = 0; i < quads.size(); ++i) {
        if (!diagonals.isSecondBetter(quads, i)) {
            std::uint32_t* const index = m_result.corners.data() + m_waiting->firstIndex[i];
            const std::uint32_t first = quads.firstCorner(i);
            index[2] = first + 2;
            index[3] = first;
        }
    }
    m_waiting->quads.clear();
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
    turnQuads();
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
    const QuadSides sides(quad[0], quad[1], quad[2], quad[3]);
    return isFirstBetter(sides, quad[2] - quad[0], quad[3] - quad[1], length(sides.atB),
                         length(sides.atC))
               ? 0
               : 1;
}

Triangulation triangulate(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
                          std::span<const Vec3f> points, QuadSplit split,
                          std::span<const std::uint32_t> skippedFaces)
{
    return Triangulator(topology, vertices, points, split).run(skippedFaces);
}

} // namespace host::geometry
