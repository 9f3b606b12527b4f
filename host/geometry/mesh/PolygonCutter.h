// Cuts one polygon of any shape, with or without holes, into triangles.
#pragma once

#include "host/geometry/mesh/PlanarRing.h"
#include "host/geometry/mesh/ReflexGrid.h"

#include <span>
#include <vector>

namespace host::geometry {

/// Ear clipping in the plane of the polygon's normal, after holes have been joined to the outer
/// loop by bridges (D. Eberly, Triangulation by Ear Clipping). The places of the corners are
/// rounded to 2^-40 of the polygon's size and compared exactly from then on, so that a decision
/// never contradicts another one.
///
/// Accepts every input: flat corners, loops that touch themselves or their holes, repeated points,
/// points out of the plane. Of a loop that crosses itself, or that has no area, the triangles may
/// overlap; their number is right and their corners are the loop's own.
///
/// Time     about n log n for usual shapes; bounded by a budget of work proportional to n, beyond
///          which holes are left closed and ears are cut unseen.
///
/// Keeps its memory from one polygon to the next.
class PolygonCutter {
public:
    /// Appends three indices into `points` per triangle, in the winding of the outer loop.
    /// `loopEnds` has the end of each loop in `points`, the outer one first; holes may run either
    /// way.
    void cut(std::span<const Vec3d> points, std::span<const std::uint32_t> loopEnds,
             std::vector<std::uint32_t>& triangles);

private:
    enum class Strictness : std::uint8_t { NothingTouches, NothingEnters };

    void clip(std::vector<std::uint32_t>& triangles);
    void clipQueued(std::vector<std::uint32_t>& triangles);
    void enqueue(std::uint32_t node);
    void enqueueRing();
    bool isSpike(std::uint32_t node) const;
    bool isEar(std::uint32_t node, Strictness strictness);
    bool blocks(std::uint32_t other, std::uint32_t ear, Strictness strictness) const;
    std::uint32_t nodeToForce();
    void cutOff(std::uint32_t node, std::vector<std::uint32_t>& triangles);

    PlanarRing m_ring;
    ReflexGrid m_grid;
    std::vector<std::uint32_t> m_queue;
    std::size_t m_queueHead = 0;
    std::vector<bool> m_isQueued;
    std::uint32_t m_left = 0;  ///< nodes in the ring
    std::uint32_t m_start = 0; ///< one of them
    std::int64_t m_budget = 0; ///< node visits
};

} // namespace host::geometry
