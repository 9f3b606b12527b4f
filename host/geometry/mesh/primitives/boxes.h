// Cubes and planes.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <memory>

namespace host::geometry {

/// How the sides of a cube lie on the unit square.
enum class CubeUvs : std::uint8_t {
    None,
    Cross,    ///< unfolded to a cross of four by three quarters
    EachSide, ///< every side fills the square
};

/// Edge lengths in centimetres; counts of cells along them, at least 1.
struct CubeSettings {
    double width = 1;
    double height = 1;
    double depth = 1;
    std::uint32_t widthCells = 1;
    std::uint32_t heightCells = 1;
    std::uint32_t depthCells = 1;
    CubeUvs uvs = CubeUvs::Cross;
};

/// A cube about the origin. Rows of points along x go up the front (+z), back over the top, down
/// the back and forth below; then come the inner points of the right side (+x), row by row from
/// below and from the back to the front, then those of the left side. Edges: along the rows, then
/// from row to row, then the inner ones of the right and of the left side: along z, then along y.
/// Faces: between the rows, then right, then left. The twelve edges of the cube are hard.
std::shared_ptr<const MeshData> makeCube(const CubeSettings& settings,
                                         const SolidPlacement& placement);

struct PlaneSettings {
    double width = 1;
    double height = 1;
    std::uint32_t widthCells = 10;
    std::uint32_t heightCells = 10;
    bool hasUvs = true;
    bool keepsAspect = false; ///< the longer side alone fills the unit square
};

/// A plane about the origin that looks along its axis. Points row by row from +z to -z, x
/// ascending; edges point by point: to the next in the row, then to the next row. Border edges are
/// hard, others smooth.
std::shared_ptr<const MeshData> makePlane(const PlaneSettings& settings,
                                          const SolidPlacement& placement);

} // namespace host::geometry
