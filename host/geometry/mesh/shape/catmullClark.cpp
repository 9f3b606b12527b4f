#include "host/geometry/mesh/shape/catmullClark.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace host::geometry {
namespace {

/// The share of an edge's faces in its point, usually; and of a face of three where those weigh
/// more: the weight that OpenSubdiv documents for smooth triangles.
constexpr double kFaceShare = 0.25;
constexpr double kTriangleShare = 0.47;

/// Ends of sharp edges at a vertex.
struct SharpEnds {
    std::uint32_t count = 0;
    Vec3d sum;

    void add(const Vec3d& end)
    {
        ++count;
        sum = sum + end;
    }
};

/// What keeps a vertex sharp, of the few that anything does.
struct SharpSums {
    SharpEnds now;    ///< of edges that are sharp at this step
    SharpEnds next;   ///< of edges that are sharp at the next one as well
    float fading = 0; ///< sharpness that ends with this step
    std::uint32_t fadingCount = 0;
    bool isPinned = false;
};

/// What a vertex gathers from its surroundings.
struct VertexSums {
    Vec3d sum; ///< of the points of its faces and of its neighbours
    std::uint32_t faces = 0;
    std::uint32_t sharp = kNone; ///< its place among the sharp ones
};

/// What an edge gathers.
struct EdgeSums {
    Vec3d faceSum;
    std::uint32_t faces = 0;    ///< that are smoothed
    std::uint8_t heavy = 0;     ///< of the first two
    bool hasOtherFaces = false; ///< that are not

    bool isInside() const { return faces == 2 && !hasOtherFaces; }
};

class Step {
public:
    Step(const SubdivisionLevel& level, std::span<const Vec3d> points,
         std::span<const std::uint8_t> isSmoothed, const SmoothingRules& rules)
        : m_level(level)
        , m_points(points)
        , m_isSmoothed(isSmoothed)
        , m_rules(rules)
        , m_edges(level.edges.size())
        , m_vertices(level.vertexCount)
    {
        m_result.firstOfFaces = points.size();
        m_result.firstOfEdges = points.size() + level.faceCount();
        m_result.points.resize(m_result.firstOfEdges + level.edges.size());
    }

    SubdividedPoints run()
    {
        for (std::uint32_t face = 0; face < m_level.faceCount(); ++face) {
            gatherFace(face);
        }
        for (std::uint32_t edge = 0; edge < m_edges.size(); ++edge) {
            gatherEdge(edge);
            m_result.points[m_result.firstOfEdges + edge] = edgePoint(edge);
        }
        for (std::uint32_t vertex = 0; vertex < m_vertices.size(); ++vertex) {
            m_result.points[vertex] = blended(m_points[vertex], vertexPoint(vertex));
        }
        return std::move(m_result);
    }

private:
    Vec3d blended(const Vec3d& linear, const Vec3d& smooth) const
    {
        return m_rules.continuity == 1 ? smooth : linear + (smooth - linear) * m_rules.continuity;
    }

    void gatherFace(std::uint32_t face)
    {
        const std::uint32_t first = m_level.faceStart[face];
        const std::uint32_t end = m_level.faceStart[face + 1];
        const bool isSmoothed = m_isSmoothed.empty() || m_isSmoothed[face] != 0;
        if (first == end) {
            return;
        }
        Vec3d sum;
        for (std::uint32_t corner = first; corner < end; ++corner) {
            sum = sum + m_points[m_level.cornerVertex(corner)];
        }
        const Vec3d middle = sum * (1.0 / (end - first));
        m_result.points[m_result.firstOfFaces + face] = middle;
        const bool isHeavy = m_rules.hasSmoothTriangles && end - first == 3;
        for (std::uint32_t corner = first; corner < end; ++corner) {
            EdgeSums& edge = m_edges[edgeOf(m_level.corners[corner])];
            if (!isSmoothed) {
                edge.hasOtherFaces = true;
                continue;
            }
            if (isHeavy && edge.faces < 2) {
                ++edge.heavy;
            }
            ++edge.faces;
            edge.faceSum = edge.faceSum + middle;
            VertexSums& vertex = m_vertices[m_level.cornerVertex(corner)];
            ++vertex.faces;
            vertex.sum = vertex.sum + middle;
        }
    }

    float sharpness(std::uint32_t edge) const
    {
        if (!m_edges[edge].isInside()) {
            return kInfinitelySharp;
        }
        return m_level.edgeSharpness.empty() ? 0 : m_level.edgeSharpness[edge];
    }

    bool isPinned(std::uint32_t edge) const
    {
        const EdgeSums& sums = m_edges[edge];
        const bool isBorder = sums.faces == 1 && !sums.hasOtherFaces;
        return (isBorder && m_rules.border == BorderRule::Fixed) ||
               (sums.hasOtherFaces && m_rules.isSelectionBorderFixed) ||
               (!m_level.isPinned.empty() && m_level.isPinned[edge] != 0);
    }

    void gatherEdge(std::uint32_t edge)
    {
        if (m_edges[edge].faces == 0) {
            return;
        }
        const MeshEdge& ends = m_level.edges[edge];
        m_vertices[ends.start].sum = m_vertices[ends.start].sum + m_points[ends.end];
        m_vertices[ends.end].sum = m_vertices[ends.end].sum + m_points[ends.start];
        const float sharp = sharpness(edge);
        const bool pins = isPinned(edge);
        if (sharp > 0 || pins) {
            addSharpEnd(ends.start, m_points[ends.end], sharp, pins);
            addSharpEnd(ends.end, m_points[ends.start], sharp, pins);
        }
    }

    void addSharpEnd(std::uint32_t vertex, const Vec3d& end, float sharp, bool pins)
    {
        std::uint32_t& place = m_vertices[vertex].sharp;
        if (place == kNone) {
            place = static_cast<std::uint32_t>(m_sharp.size());
            m_sharp.emplace_back();
        }
        SharpSums& sums = m_sharp[place];
        sums.isPinned = sums.isPinned || pins;
        if (sharp > 0) {
            sums.now.add(end);
        }
        if (sharp > 1) {
            sums.next.add(end);
        } else if (sharp > 0) {
            sums.fading += sharp;
            ++sums.fadingCount;
        }
    }

    Vec3d edgePoint(std::uint32_t edge) const
    {
        const MeshEdge& ends = m_level.edges[edge];
        const EdgeSums& sums = m_edges[edge];
        const Vec3d pair = m_points[ends.start] + m_points[ends.end];
        const Vec3d middle = pair * 0.5;
        const float sharp = sharpness(edge);
        if (sharp >= 1 || isPinned(edge)) {
            return middle;
        }
        const double share = kFaceShare + (kTriangleShare - kFaceShare) / 2 * sums.heavy;
        const Vec3d smooth = sums.faceSum * share + pair * (0.5 - share);
        return blended(middle, sharp > 0 ? smooth + (middle - smooth) * sharp : smooth);
    }

    /// The point by the sharp edges that there are.
    Vec3d ruled(std::uint32_t vertex, const SharpEnds& sharp, bool isSharp) const
    {
        const VertexSums& sums = m_vertices[vertex];
        const Vec3d& point = m_points[vertex];
        if (isSharp || sharp.count > 2) {
            return point;
        }
        if (sharp.count == 2) {
            const bool isCorner = sums.faces == 1 && m_rules.border == BorderRule::EdgesAndCorners;
            return isCorner ? point : point * 0.75 + sharp.sum * 0.125;
        }
        const double n = sums.faces;
        return point * ((n - 2) / n) + sums.sum * (1 / (n * n));
    }

    Vec3d vertexPoint(std::uint32_t vertex) const
    {
        static const SharpSums kNoSharp;
        const VertexSums& around = m_vertices[vertex];
        const SharpSums& sums = around.sharp == kNone ? kNoSharp : m_sharp[around.sharp];
        if (around.faces == 0 || sums.isPinned) {
            return m_points[vertex];
        }
        const float sharp = m_level.vertexSharpness.empty() ? 0 : m_level.vertexSharpness[vertex];
        const Vec3d now = ruled(vertex, sums.now, sharp > 0);
        const bool isVertexFading = sharp > 0 && sharp <= 1;
        if (sums.fadingCount == 0 && !isVertexFading) {
            return now;
        }
        const Vec3d next = ruled(vertex, sums.next, sharp > 1);
        const double total = sums.fading + (isVertexFading ? sharp : 0);
        const double share = total / (sums.fadingCount + (isVertexFading ? 1 : 0));
        return next + (now - next) * share;
    }

    const SubdivisionLevel& m_level;
    std::span<const Vec3d> m_points;
    std::span<const std::uint8_t> m_isSmoothed;
    const SmoothingRules& m_rules;
    std::vector<EdgeSums> m_edges;
    std::vector<VertexSums> m_vertices;
    std::vector<SharpSums> m_sharp;
    SubdividedPoints m_result;
};

/// An edge with more faces has a side of texture coordinates for each.
constexpr std::size_t kMostSharing = 16;

NumberLists cornersByEdge(const SubdivisionLevel& level)
{
    return {
        static_cast<std::uint32_t>(level.corners.size()),
        static_cast<std::uint32_t>(level.edges.size()),
        [corners = level.corners.data()](std::uint32_t corner) { return edgeOf(corners[corner]); }};
}

Vec3d flat(const Vec2f& point)
{
    return {point.x, point.y, 0};
}

Vec2f uvOf(const Vec3d& point)
{
    return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

/// Texture coordinates follow the rules of points in a mesh that is cut open along its seams.
class UvStep {
public:
    UvStep(const SubdivisionLevel& level, std::span<const Vec2f> points,
           std::span<const std::int32_t> ids, std::span<const std::uint8_t> isSmoothed, UvRule rule)
        : m_level(level)
        , m_points(points)
        , m_ids(ids)
        , m_isSmoothed(isSmoothed)
        , m_rule(rule)
        , m_faceOf(level.corners.size())
        , m_sums(points.size())
    {
        m_result.points.assign(points.begin(), points.end());
        m_result.side.resize(level.corners.size());
        m_result.sides.resize(level.corners.size());
        m_result.faces.resize(level.faceCount());
        m_middles.resize(level.faceCount());
    }

    SubdividedUvs run()
    {
        for (std::uint32_t face = 0; face < m_level.faceCount(); ++face) {
            takeFace(face);
        }
        const NumberLists cornersOf = cornersByEdge(m_level);
        for (std::uint32_t edge = 0; edge < m_level.edges.size(); ++edge) {
            takeEdge(cornersOf.of(edge));
        }
        if (m_rule != UvRule::Linear) {
            movePoints();
        }
        return std::move(m_result);
    }

private:
    struct Sums {
        Vec3d sum; ///< of the points of its faces and of its neighbours
        std::uint32_t faces = 0;
        std::uint32_t border = kNone; ///< its place among those of borders
    };
    /// Of the few that a border goes through, or that faces share which are not smoothed.
    struct BorderSums {
        std::uint32_t borders = 0;
        Vec3d sum;
        bool isPinned = false;
    };

    Vec3d uv(std::int32_t id) const { return flat(m_points[static_cast<std::size_t>(id)]); }
    Sums& sums(std::int32_t id) { return m_sums[static_cast<std::size_t>(id)]; }
    BorderSums& bordersOf(Sums& at)
    {
        if (at.border == kNone) {
            at.border = static_cast<std::uint32_t>(m_borders.size());
            m_borders.emplace_back();
        }
        return m_borders[at.border];
    }
    bool isSmoothed(std::uint32_t face) const
    {
        return m_isSmoothed.empty() || m_isSmoothed[face] != 0;
    }

    void takeFace(std::uint32_t face)
    {
        const std::uint32_t first = m_level.faceStart[face];
        const std::uint32_t end = m_level.faceStart[face + 1];
        const bool hasAll = hasAllUvs(m_level, face, m_ids);
        Vec3d sum;
        for (std::uint32_t corner = first; corner < end; ++corner) {
            m_faceOf[corner] = face;
            sum = hasAll ? sum + uv(m_ids[corner]) : sum;
        }
        if (!hasAll) {
            return;
        }
        m_middles[face] = sum * (1.0 / (end - first));
        m_result.faces[face] = uvOf(m_middles[face]);
        for (std::uint32_t corner = first; corner < end && isSmoothed(face); ++corner) {
            Sums& at = sums(m_ids[corner]);
            ++at.faces;
            at.sum = at.sum + m_middles[face];
        }
    }

    /// The ids at the edge's start and end as the face of a corner has them.
    std::pair<std::int32_t, std::int32_t> idsAlong(std::uint32_t corner) const
    {
        const std::int32_t here = m_ids[corner];
        const std::uint32_t face = m_faceOf[corner];
        const bool isLast = corner + 1 == m_level.faceStart[face + 1];
        const std::int32_t there = m_ids[isLast ? m_level.faceStart[face] : corner + 1];
        return m_level.corners[corner] >= 0 ? std::pair(here, there) : std::pair(there, here);
    }

    void takeEdge(std::span<const std::uint32_t> corners)
    {
        m_members.clear();
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const std::uint32_t corner = corners[i];
            // Where very many faces meet, each has a side of its own.
            const auto known = corners.first(corners.size() > kMostSharing ? 0 : i);
            const auto same = std::find_if(known.begin(), known.end(), [&](std::uint32_t other) {
                return idsAlong(other) == idsAlong(corner);
            });
            m_result.side[corner] = same == known.end() ? corner : *same;
        }
        for (const std::uint32_t corner : corners) {
            const auto [start, end] = idsAlong(corner);
            if (m_result.side[corner] == corner && start >= 0 && end >= 0) {
                takeSide(corner, corners, start, end);
            }
        }
    }

    void takeSide(std::uint32_t first, std::span<const std::uint32_t> corners, std::int32_t start,
                  std::int32_t end)
    {
        m_members.assign(1, first);
        if (corners.size() <= kMostSharing) {
            std::copy_if(corners.begin(), corners.end(), std::back_inserter(m_members),
                         [&](std::uint32_t corner) {
                             return corner != first && m_result.side[corner] == first;
                         });
        }
        std::size_t smoothed = 0;
        Vec3d middles;
        for (const std::uint32_t corner : m_members) {
            smoothed += isSmoothed(m_faceOf[corner]) ? 1 : 0;
            middles = middles + m_middles[m_faceOf[corner]];
        }
        m_result.firsts.push_back(first);
        const Vec3d pair = uv(start) + uv(end);
        const bool isInside = m_members.size() == 2 && smoothed == 2 && corners.size() == 2;
        const bool isSmooth = isInside && m_rule != UvRule::Linear;
        m_result.sides[first] = uvOf(isSmooth ? (pair + middles) * 0.25 : pair * 0.5);
        for (const auto& [id, other] : {std::pair(start, end), std::pair(end, start)}) {
            Sums& at = sums(id);
            at.sum = at.sum + uv(other);
            if (!isInside) {
                BorderSums& border = bordersOf(at);
                ++border.borders;
                border.sum = border.sum + uv(other);
                border.isPinned = border.isPinned || (smoothed != m_members.size() && smoothed > 0);
            }
        }
    }

    void movePoints()
    {
        for (std::size_t id = 0; id < m_sums.size(); ++id) {
            const Sums& at = m_sums[id];
            const Vec3d point = flat(m_points[id]);
            const double n = at.faces;
            if (at.border == kNone) {
                m_result.points[id] = at.faces > 0
                                          ? uvOf(point * ((n - 2) / n) + at.sum * (1 / (n * n)))
                                          : m_result.points[id];
                continue;
            }
            const BorderSums& border = m_borders[at.border];
            if (border.borders == 2 && m_rule == UvRule::Edges && !border.isPinned) {
                m_result.points[id] = uvOf(point * 0.75 + border.sum * 0.125);
            }
        }
    }

    const SubdivisionLevel& m_level;
    std::span<const Vec2f> m_points;
    std::span<const std::int32_t> m_ids;
    std::span<const std::uint8_t> m_isSmoothed;
    UvRule m_rule;
    std::vector<std::uint32_t> m_faceOf;
    std::vector<Vec3d> m_middles;
    std::vector<Sums> m_sums;
    std::vector<BorderSums> m_borders;
    std::vector<std::uint32_t> m_members; ///< the corners of one side
    SubdividedUvs m_result;
};

} // namespace

SubdividedPoints catmullClark(const SubdivisionLevel& level, std::span<const Vec3d> points,
                              std::span<const std::uint8_t> isSmoothed, const SmoothingRules& rules)
{
    return Step(level, points, isSmoothed, rules).run();
}

SubdividedUvs subdividedUvs(const SubdivisionLevel& level, std::span<const Vec2f> points,
                            std::span<const std::int32_t> ids,
                            std::span<const std::uint8_t> isSmoothed, UvRule rule)
{
    return UvStep(level, points, ids, isSmoothed, rule).run();
}

bool hasAllUvs(const SubdivisionLevel& level, std::uint32_t face, std::span<const std::int32_t> ids)
{
    const std::uint32_t first = level.faceStart[face];
    const std::uint32_t end = level.faceStart[face + 1];
    return first < end && std::all_of(ids.begin() + first, ids.begin() + end,
                                      [](std::int32_t id) { return id >= 0; });
}

} // namespace host::geometry
