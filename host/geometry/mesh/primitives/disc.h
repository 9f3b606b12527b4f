// Discs.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <memory>

namespace host::geometry {

/// How the faces of a disc are divided; the numbers are those of the attribute.
enum class DiscDivision : std::uint8_t {
    Quads = 0,     ///< every face to one quad for each of its corners
    Triangles = 1, ///< a triangle for each side, then every triangle to four
    Pie = 2,       ///< a triangle for each side, its outer edge divided
    Caps = 3,      ///< a triangle for each side, divided to bands
    Circle = 4     ///< as quads, and the points of the border go to the circle
};

struct DiscSettings {
    double radius = 1;
    std::uint32_t sides = 3; ///< at least 3
    DiscDivision division = DiscDivision::Circle;
    std::uint32_t subdivisions = 3;
};

/// How many faces a disc has; at most 2^31.
std::uint64_t discFaceCount(const DiscSettings& settings);

/// A disc about the origin that looks up, one side towards +z. Points of the polygon, then those of
/// each division in the order in which it walks the faces: middles of edges that are met first,
/// then the middle of the face. Edges as the faces first walk them; those of the border are hard.
/// Texture coordinates: the disc seen from above.
std::shared_ptr<const MeshData> makeDisc(const DiscSettings& settings,
                                         const SolidPlacement& placement);

} // namespace host::geometry
