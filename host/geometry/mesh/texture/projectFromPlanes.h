// Texture coordinates by several projections at once: each face from the side that sees it best.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/texture/layOutUvs.h"
#include "host/math/Matrix4.h"

#include <memory>
#include <span>
#include <string_view>

namespace host::geometry {

struct PlanesProjection {
    Matrix4 toSpace; ///< from the object to the space in which the planes stand
    Vec3d rotate;    ///< of all planes together; radians, about x, then y, then z
    Vec3d scale{1, 1, 1};
    std::uint32_t planes = 6;      ///< 4, 5, 6, 8 or 12, the sides of a solid; others count as 6
    bool mirrorsOpposites = false; ///< what looks the other way gets the same image, seen through
    bool joinsSmall = true;        ///< small pieces go to larger ones beside them
    UvLayout layout;
};

/// The mesh with the corners of faces (ascending) mapped anew in a set: faces that hang together
/// and go to the same plane make a piece, in which each vertex has one coordinate.
///
/// Planes   Six: +x, -x, +y, -y, +z, -z. Seen from the side y is up; from above -z, from below +z,
///          and from behind -y. A face that two planes see equally well goes to the first.
/// Numbers  The coordinates that other faces have close up. The pieces' come behind them: plane
///          after plane, among those of a plane by the lowest face, in a piece in the order in
///          which the loops of its faces first come to them.
/// Approximated  When pieces overlap in themselves they are not taken apart. A piece is small where
///          it has less than a tenth of the area of the one beside it and is still seen at 60
///          degrees or less. Of solids other than the cube the order of the sides is believed.
/// Set      the one of the name (see `findUvSet`); where there is none it is made.
std::shared_ptr<const MeshData> projectFromPlanes(const MeshData& mesh, std::string_view setName,
                                                  std::span<const std::uint32_t> faces,
                                                  const PlanesProjection& projection);

} // namespace host::geometry
