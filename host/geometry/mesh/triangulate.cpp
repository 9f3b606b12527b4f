#include "host/geometry/mesh/triangulate.h"

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/PolygonCutter.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace host::geometry {
namespace {

constexpr double kAngleTie = 1e-4; ///< radians, and as good as its own sine
/// Sine below which a corner counts as straight; the choice by angles suits those as well.
constexpr double kStraight = 1e-9;

struct SineCosine {
    double sine = 0;
    double cosine = 0;
};

// Always in line: a call would keep the loop over a batch from working on several quads at once.

/// The smallest angle of a triangle: the one that faces its shortest side.
[[gnu::always_inline]] inline SineCosine smallestAngle(const Vec3d& a, const Vec3d& b,
                                                       const Vec3d& c)
{
    const Vec3d ab = b - a;
    const Vec3d bc = c - b;
    const Vec3d ca = a - c;
    const double first = dot(ab, ab);
    const double second = dot(bc, bc);
    const double third = dot(ca, ca);
    const double later = second <= third ? dot(ca, ab) : dot(ab, bc);
    // "&", since a branch would keep several faces from being worked on at once
    const bool isFirst = (first <= second) & (first <= third);
    return {length(cross(ab, bc)), -(isFirst ? dot(bc, ca) : later)};
}

/// Of two angles up to a right one, the smaller.
[[gnu::always_inline]] inline SineCosine smaller(const SineCosine& a, const SineCosine& b)
{
    const bool isFirst = a.sine * b.cosine <= b.sine * a.cosine;
    return {isFirst ? a.sine : b.sine, isFirst ? a.cosine : b.cosine};
}

/// Whether the diagonal of corner 0 leaves the larger smallest angle in a convex quad.
[[gnu::always_inline]] inline bool isFirstBetter(const Vec3d& a, const Vec3d& b, const Vec3d& c,
                                                 const Vec3d& d)
{
    const SineCosine zero = smaller(smallestAngle(a, b, c), smallestAngle(a, c, d));
    const SineCosine one = smaller(smallestAngle(a, b, d), smallestAngle(b, c, d));
    // The sine of how much larger the angle of the first diagonal is; both are up to 60 degrees.
    const double gain = zero.sine * one.cosine - one.sine * zero.cosine;
    const double scale = std::sqrt((zero.sine * zero.sine + zero.cosine * zero.cosine) *
                                   (one.sine * one.sine + one.cosine * one.cosine));
    return gain > kAngleTie * scale;
}

/// How far a loop turns left at a corner, seen against a normal; below zero at a reflex corner.
double turnAt(const Vec3d& previous, const Vec3d& corner, const Vec3d& next, const Vec3d& normal)
{
    return dot(cross(corner - previous, next - corner), normal);
}

/// What is known of the quads of a batch without looking at them one by one.
struct Diagonals {
    double isSecond[kBatchFaces];  ///< 1 where the diagonal of corner 1 is better, for convex quads
    double leastTurn[kBatchFaces]; ///< below zero: perhaps concave
};

HOST_ALSO_FOR_WIDE_PROCESSORS void findDiagonals(const FaceBatch<4>& __restrict quads,
                                                 Diagonals& __restrict found)
{
    for (std::size_t i = 0; i < quads.size(); ++i) {
        const Vec3d a = quads.point(0, i);
        const Vec3d b = quads.point(1, i);
        const Vec3d c = quads.point(2, i);
        const Vec3d d = quads.point(3, i);
        const Vec3d normal = quads.areaVectorOf(i);
        const double atA = turnAt(d, a, b, normal);
        const double atB = turnAt(a, b, c, normal);
        const double atC = turnAt(b, c, d, normal);
        const double atD = turnAt(c, d, a, normal);
        const double atAB = atA < atB ? atA : atB;
        const double atCD = atC < atD ? atC : atD;
        found.leastTurn[i] = atAB < atCD ? atAB : atCD;
        found.isSecond[i] = isFirstBetter(a, b, c, d) ? 0.0 : 1.0;
    }
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
        bool isSecond = diagonals.isSecond[i] != 0;
        if (!(diagonals.leastTurn[i] >= 0)) {
            isSecond = bestDiagonal({quads.point(0, i), quads.point(1, i), quads.point(2, i),
                                     quads.point(3, i)}) == 1;
        }
        if (!isSecond) {
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
    return isFirstBetter(quad[0], quad[1], quad[2], quad[3]) ? 0 : 1;
}

Triangulation triangulate(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
                          std::span<const Vec3f> points, QuadSplit split,
                          std::span<const std::uint32_t> skippedFaces)
{
    return Triangulator(topology, vertices, points, split).run(skippedFaces);
}

} // namespace host::geometry
