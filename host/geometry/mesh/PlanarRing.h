// A polygon laid into its plane as a ring of nodes, holes joined to it.
#pragma once

#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// A place in the plane: whole numbers of at most 41 bits, so that every turn can be told exactly.
struct PlanePoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const PlanePoint&, const PlanePoint&) = default;
};

/// 1 when a, b, c turn counter-clockwise, -1 clockwise, 0 when they are in line; exact.
int turnOf(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c);

/// The ring runs counter-clockwise. Where a hole was joined, the two ends of the bridge occur
/// twice.
class PlanarRing {
public:
    struct Node {
        PlanePoint place;
        std::uint32_t point = 0; ///< index into the points that were laid out
        std::uint32_t previous = 0;
        std::uint32_t next = 0;
    };

    /// Lays out a polygon (see `PolygonCutter::cut`). False when its outer loop has no area or is
    /// not finite. `budget` bounds the node visits spent on holes.
    bool layOut(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds,
                std::int64_t budget);

    const std::vector<Node>& nodes() const { return m_nodes; }
    const Node& operator[](std::uint32_t node) const { return m_nodes[node]; }
    /// Nodes that the ring had when it was laid out, and one of them.
    std::uint32_t size() const { return m_size; }
    std::uint32_t start() const { return 0; }

    /// The turn at a node, from its predecessor to its successor.
    int turnAt(std::uint32_t node) const;
    void unlink(std::uint32_t node);

private:
    struct Hole {
        std::uint32_t rightmost = 0; ///< node
        std::uint32_t size = 0;
    };

    void place(std::span<const Vec3d> points, const Vec3d& normal);
    void link(std::uint32_t first, std::uint32_t end, bool isReversed);
    void joinHole(const Hole& hole);
    /// The node of the ring to which a bridge from `from` can lead; the number of nodes when none.
    std::uint32_t bridgeEnd(std::uint32_t from) const;
    std::uint32_t touchingNode(std::uint32_t from) const;
    std::uint32_t edgeToTheRight(std::uint32_t from) const;
    std::uint32_t nearestInFront(std::uint32_t from, std::uint32_t edge) const;
    std::uint32_t openTwin(std::uint32_t node, std::uint32_t from) const;
    bool isInsideAt(std::uint32_t node, const PlanePoint& place) const;

    std::vector<Node> m_nodes;
    std::uint32_t m_size = 0;
};

} // namespace host::geometry
