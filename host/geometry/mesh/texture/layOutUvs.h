// Pieces of texture coordinates laid out side by side.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace host::geometry {

enum class UvArrangement : std::uint8_t {
    None,   ///< every piece stays where it is
    AlongU, ///< in a row from the origin on
    Square, ///< in rows that together come near to a square at the origin
};

enum class UvFit : std::uint8_t {
    None,
    Uniform,   ///< all together as large as the unit square lets them
    Stretched, ///< the same in u and v apart
};

struct UvLayout {
    UvArrangement arrangement = UvArrangement::Square;
    UvFit fit = UvFit::Uniform;
    double space = 0;      ///< between pieces in a square, as a part of it; 0..kMaxUvSpace
    bool laysDown = false; ///< pieces that stand upright are turned by a quarter
};

inline constexpr double kMaxUvSpace = 0.05;

/// Lays pieces out: `pieceOfId` has a number below `pieceCount` for each coordinate, or kNone for
/// one that stays.
///
/// Places   (Believed, but for the margin of a single piece.) In a square the pieces come row by
///          row, the highest first, each with half the space about it; the width is the one of a
///          few tried ones that gives the smallest square. A piece without finite bounds stays.
void layOut(std::vector<Vec2f>& points, std::span<const std::uint32_t> pieceOfId,
            std::uint32_t pieceCount, const UvLayout& layout);

/// The mesh with those pieces of one of its sets laid out that have one of the faces (ascending).
/// Numbers do not change. With `flipsReversed` pieces that lie with their back up are turned over.
std::shared_ptr<const MeshData> layOutUvs(const MeshData& mesh, std::size_t set,
                                          std::span<const std::uint32_t> faces,
                                          const UvLayout& layout, bool flipsReversed);

} // namespace host::geometry
