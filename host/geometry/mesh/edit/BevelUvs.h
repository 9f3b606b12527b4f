// Texture coordinates of the new points of bevels.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace host::geometry {

/// Ids for points, one for each uv set: -1 where a face has none. All ids of one place at a point
/// are the same, as far as the first kMostCompared of a point go.
class BevelUvs {
public:
    static constexpr std::uint32_t kMostCompared = 64;

    /// All must outlive this; `pointCount` with the new ones, which are there before any is asked.
    BevelUvs(MeshRewriter& rewriter, const CornerLinks& links, std::span<const Vec3d> points,
             std::size_t pointCount);

    std::size_t setCount() const { return m_sets.size(); }
    /// What a face has at one of its corners.
    void keep(std::uint32_t faceCorner, std::span<std::int32_t> ids) const;
    /// What it has at a point near that, at `place`.
    void near(std::uint32_t faceCorner, std::uint32_t point, const Vec3d& place,
              std::span<std::int32_t> ids);
    /// What lies between the ids of two points: `part` (0..1) of the way, for a third one.
    void between(std::span<const std::int32_t> first, std::span<const std::int32_t> last,
                 double part, std::uint32_t point, std::span<std::int32_t> ids);

private:
    /// Where a face has the texture coordinates of a point near one of its corners.
    struct Near {
        std::uint32_t point = kNone;
        Vec2f place;
    };

    /// Copies in one set: a list for each point.
    struct Copies {
        std::size_t firstId = 0;         ///< of those made here
        std::vector<std::uint32_t> last; ///< by point: its last copy, counted from firstId
        std::vector<std::uint32_t> back; ///< by copy: the one before
        std::vector<Near> near;          ///< by corner of faces: the last one asked for
    };

    std::pair<double, double> partsOf(std::uint32_t faceCorner, const Vec3d& place) const;
    /// False where the face has none.
    bool findNear(std::size_t set, std::uint32_t faceCorner, const Vec3d& place,
                  Vec2f& found) const;
    Vec2f uvPoint(std::size_t set, std::int32_t id) const;
    std::int32_t copy(std::size_t set, std::uint32_t point, const Vec2f& place);

    MeshRewriter& m_rewriter;
    const MeshTopology& m_topology;
    const CornerLinks& m_links;
    std::span<const Vec3d> m_points;
    std::vector<Copies> m_sets;
};

} // namespace host::geometry
