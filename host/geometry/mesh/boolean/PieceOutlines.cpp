#include "host/geometry/mesh/boolean/PieceOutlines.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/polygon.h"

#include <cstddef>

namespace host::geometry {
namespace {

constexpr std::uint32_t kFewestCorners = 3;

/// Whether a point lies between two others, but for a share of their distance.
bool isBetween(const Vec3d& point, const Vec3d& a, const Vec3d& b)
{
    constexpr double kShare = 1e-5;
    const Vec3d way = b - a;
    const double square = dot(way, way);
    return length(cross(way, point - a)) <= kShare * square && dot(point - a, way) > 0 &&
           dot(b - point, way) > 0;
}

} // namespace

PieceOutlines::PieceOutlines(const Solid& solid, const HalfEdges& sides,
                             std::span<const std::uint32_t> faces)
    : m_solid(solid), m_sides(sides)
{
    const std::size_t count = solid.triangles.size();
    DisjointSets sets(count);
    for (std::uint32_t side = 0; side < sides.count(); ++side) {
        if (faces[side / 3] == faces[sides.beyond(side) / 3]) {
            sets.join(side / 3, sides.beyond(side) / 3);
        }
    }
    m_areas.resize(count);
    for (std::uint32_t triangle = 0; triangle < count; ++triangle) {
        m_pieces.push_back(sets.lowest(triangle));
        const auto& corners = solid.triangles[triangle].corners;
        const Vec3d& a = solid.points[corners[0]];
        Vec3d& sum = m_areas[m_pieces.back()];
        sum = sum + cross(solid.points[corners[1]] - a, solid.points[corners[2]] - a) * 0.5;
    }
    std::vector<std::uint8_t> isWalked(sides.count());
    for (std::uint32_t side = 0; side < sides.count(); ++side) {
        if (isWalked[side] == 0 && !isInside(side)) {
            walk(side, isWalked);
        }
    }
}

std::uint32_t PieceOutlines::nextOnBorder(std::uint32_t side) const
{
    std::uint32_t next = HalfEdges::next(side);
    while (isInside(next)) {
        next = HalfEdges::next(m_sides.beyond(next));
    }
    return next;
}

void PieceOutlines::walk(std::uint32_t first, std::vector<std::uint8_t>& isWalked)
{
    Loop loop;
    loop.piece = m_pieces[first / 3];
    loop.begin = static_cast<std::uint32_t>(m_path.size());
    std::vector<Vec3d> points;
    for (std::uint32_t side = first; isWalked[side] == 0; side = nextOnBorder(side)) {
        isWalked[side] = 1;
        m_path.push_back(side);
        points.push_back(m_solid.points[m_sides.start(side)]);
    }
    loop.end = static_cast<std::uint32_t>(m_path.size());
    loop.area = areaVector(points);
    m_loops.push_back(loop);
}

/// Of each point, whether it may go: two pieces meet there and no third.
std::vector<std::uint8_t> PieceOutlines::findBreaks(const std::vector<std::uint8_t>& isKept) const
{
    const std::size_t count = m_solid.points.size();
    std::vector<std::uint8_t> timesPassed(count);
    std::vector<std::uint8_t> isBreak(count);
    constexpr std::uint8_t kMany = 3;
    for (const std::uint32_t side : m_path) {
        std::uint8_t& times = timesPassed[m_sides.start(side)];
        times = times < kMany ? static_cast<std::uint8_t>(times + 1) : kMany;
    }
    for (const Loop& loop : m_loops) {
        std::uint32_t last = m_path[loop.end - 1];
        for (std::uint32_t i = loop.begin; i < loop.end; ++i) {
            const std::uint32_t side = m_path[i];
            const std::uint32_t point = m_sides.start(side);
            if (timesPassed[point] == 2 && isKept[point] == 0) {
                isBreak[point] =
                    isBetween(m_solid.points[point], m_solid.points[m_sides.start(last)],
                              m_solid.points[m_sides.end(side)])
                        ? 1
                        : 0;
            }
            last = side;
        }
    }
    return isBreak;
}

void PieceOutlines::straighten(const std::vector<std::uint8_t>& isKept)
{
    std::vector<std::uint8_t> isBreak = findBreaks(isKept);
    const auto goes = [&](std::uint32_t side) { return isBreak[m_sides.start(side)] != 0; };
    for (const Loop& loop : m_loops) {
        std::uint32_t left = 0;
        for (std::uint32_t i = loop.begin; i < loop.end; ++i) {
            left += goes(m_path[i]) ? 0 : 1;
        }
        for (std::uint32_t i = loop.begin; left < kFewestCorners && i < loop.end; ++i) {
            isBreak[m_sides.start(m_path[i])] = 0;
        }
    }
    std::uint32_t written = 0;
    for (Loop& loop : m_loops) {
        const std::uint32_t begin = written;
        for (std::uint32_t i = loop.begin; i < loop.end; ++i) {
            if (!goes(m_path[i])) {
                m_path[written++] = m_path[i];
            }
        }
        loop.begin = begin;
        loop.end = written;
    }
    m_path.resize(written);
}

} // namespace host::geometry
