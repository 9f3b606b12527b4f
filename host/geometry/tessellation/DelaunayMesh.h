// A triangulation of the grid that grows point by point and keeps chosen edges.
#pragma once

#include "host/geometry/tessellation/PlaneGrid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::geometry {

/// How often loops run along an edge in its direction, less how often against it.
struct EdgeTurns {
    std::int32_t outer = 0;
    std::int32_t hole = 0;
    friend bool operator==(const EdgeTurns&, const EdgeTurns&) = default;
};
inline EdgeTurns operator-(const EdgeTurns& turns)
{
    return {-turns.outer, -turns.hole};
}

/// Triangles over the whole square of the grid, whose four corners are the vertices 0 to 3. Edge e
/// belongs to triangle e / 3, begins at vertex `origin(e)` and has the triangle on its left; its
/// twin runs the other way in the triangle beside it. Edges that are not kept satisfy Delaunay's
/// condition, except for some where lines cross each other or very many edges.
class DelaunayMesh {
public:
    static constexpr std::uint32_t kNone = 0xffffffff;
    static constexpr std::uint32_t kFrameVertices = 4;

    /// Starts with the square alone. `pointCount` vertices are expected, and about `allowance`
    /// elementary steps may be taken.
    DelaunayMesh(std::size_t pointCount, std::uint64_t allowance);

    /// Adds a vertex strictly inside the square; the vertex that is there already, if one is.
    std::uint32_t insert(const GridPlace& place);

    /// Adds `turns` to the edge from the vertex `from` to `to`, which from now on is kept, or to
    /// the edges through vertices in between. Where it crosses kept edges, vertices are added and
    /// both lines bend by up to half a step of the grid, more where lines run steps apart. Neither
    /// is a corner of the square.
    void keep(std::uint32_t from, std::uint32_t to, const EdgeTurns& turns);

    std::size_t vertexCount() const { return m_places.size(); }
    const GridPlace& place(std::uint32_t vertex) const { return m_places[vertex]; }
    std::uint32_t triangleCount() const { return static_cast<std::uint32_t>(m_origin.size() / 3); }
    std::uint32_t origin(std::uint32_t edge) const { return m_origin[edge]; }
    std::uint32_t twin(std::uint32_t edge) const { return m_twin[edge]; } ///< kNone: the square's
    const EdgeTurns& turns(std::uint32_t edge) const { return m_turns[edge]; }
    /// The allowance is spent: from now on nothing is kept and the mesh is of no use.
    bool isSpent() const { return m_steps > m_allowance; }
    /// Crossings beyond kMaxCrossings, and lines that bent again and again, were led along edges
    /// at hand.
    bool hasDetours() const { return m_hasDetours; }

    static constexpr std::uint32_t kMaxCrossings = 1U << 20;
    static constexpr int kMaxBends = 24; ///< pieces of pieces of one line
    static constexpr int kFreeBends = 4; ///< thereof by no more than rounding asks for
    /// Edges turned per edge that a line crosses, to get Delaunay's condition back.
    static constexpr std::size_t kTurnsPerCrossedEdge = 32;

private:
    static std::uint32_t next(std::uint32_t edge) { return edge % 3 == 2 ? edge - 2 : edge + 1; }
    static std::uint32_t previous(std::uint32_t edge)
    {
        return edge % 3 == 0 ? edge + 2 : edge - 1;
    }
    std::uint32_t end(std::uint32_t edge) const { return m_origin[next(edge)]; }
    std::uint32_t apex(std::uint32_t edge) const { return m_origin[previous(edge)]; }
    std::int64_t turnOfEdge(std::uint32_t edge, const GridPlace& place) const
    {
        return turnArea(m_places[m_origin[edge]], m_places[end(edge)], place);
    }

    /// What an edge carries besides its end: taken out of one triangle and put into another.
    struct Side {
        std::uint32_t origin = 0;
        std::uint32_t twin = kNone;
        EdgeTurns turns;
        bool isKept = false;
    };
    Side side(std::uint32_t edge) const
    {
        return {m_origin[edge], m_twin[edge], m_turns[edge], m_isKept[edge] != 0};
    }
    void put(std::uint32_t edge, const Side& side);
    void link(std::uint32_t edge, std::uint32_t other);
    std::uint32_t newTriangle();

    // --- points
    struct Location {
        std::uint32_t edge = kNone; ///< of the triangle found; the one that the place is on
        int zeros = 0;              ///< 0 inside, 1 on the edge, 2 at the edge's origin
    };
    Location locate(const GridPlace& place);
    bool locateIn(std::uint32_t triangle, const GridPlace& place, Location& location) const;
    void fan(std::uint32_t vertex, const std::array<Side, 4>& rim,
             const std::array<std::uint32_t, 4>& triangles, std::size_t count);
    void splitTriangle(std::uint32_t triangle, std::uint32_t vertex);
    void splitEdge(std::uint32_t edge, std::uint32_t vertex);
    void legalize();
    void flip(std::uint32_t edge);

    // --- kept edges
    struct Line {
        std::uint32_t from = 0, to = 0;
        EdgeTurns turns;
        int bends = 0;
    };
    struct Start {
        enum class Kind : std::uint8_t { Unknown, Edge, Crossing } kind = Kind::Unknown;
        std::uint32_t edge = kNone; ///< leads along the line, or is crossed
    };
    Start startAround(std::uint32_t edge, const Line& line) const;
    Start findStart(Line& line);
    void keepEdge(std::uint32_t edge, const EdgeTurns& turns);
    void advance(Line line);
    /// The kept edge that stops the line, or kNone when it comes to vertex `reached`.
    std::uint32_t walk(const Line& line, std::uint32_t firstCrossed, bool passesKept);
    std::uint32_t nearest(const GridPlace& place, const std::array<std::uint32_t, 4>& among,
                          std::int64_t radius) const;
    void resolveCrossing(const Line& line, std::uint32_t crossed);
    void detour(const Line& line);
    void carve(const Line& line);
    void takeUpRim();
    /// One step of the walk round a side of the channel: leads to `vertex` along a place of the rim
    /// or along the other side of a new edge.
    struct Step {
        std::uint32_t vertex = 0;
        std::uint32_t rimPlace = kNone;
        std::uint32_t edge = kNone;
    };
    std::uint32_t fillSide(std::size_t first, std::size_t last, std::uint32_t end);
    void attach(std::uint32_t edge, std::uint32_t origin, const Step& step);
    void relax();

    std::vector<GridPlace> m_places;
    std::vector<std::uint32_t> m_vertexEdge; ///< an edge that begins at the vertex
    std::vector<std::uint32_t> m_origin;
    std::vector<std::uint32_t> m_twin;
    std::vector<EdgeTurns> m_turns;
    std::vector<std::uint8_t> m_isKept;
    std::vector<std::uint32_t> m_toCheck; ///< edges
    std::vector<Line> m_lines;            ///< still to be kept
    std::uint32_t m_lastTriangle = 0;
    std::uint32_t m_scramble = 1;
    std::uint64_t m_steps = 0;
    std::uint64_t m_allowance = 0;
    std::uint32_t m_crossings = 0;
    bool m_hasDetours = false;

    // The channel of triangles that a line crosses, and its rim: the left side, then the right one.
    std::vector<std::uint32_t> m_channel; ///< triangles
    std::vector<std::uint32_t> m_left;    ///< edges, from the line's start on
    std::vector<std::uint32_t> m_right;
    std::uint32_t m_reached = 0;
    std::vector<Side> m_rim;
    std::vector<std::uint32_t> m_rimPlace;   ///< of an edge, while the rim is taken up
    std::vector<std::uint32_t> m_rimPartner; ///< place of the twin when it is on the rim too
    std::vector<std::uint32_t> m_rimEdge;    ///< the edge that each place became
    std::vector<Step> m_walk;                ///< round what is still to be filled
};

} // namespace host::geometry
