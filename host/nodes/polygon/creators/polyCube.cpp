// polyCube: the mesh of a cube.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/boxes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("width", "height", "depth", "subdivisionsWidth",
                                     "subdivisionsHeight", "subdivisionsDepth");
enum Position : std::size_t {
    kWidth = kFirstSolidInput,
    kHeight,
    kDepth,
    kWidthCells,
    kHeightCells,
    kDepthCells
};

geometry::CubeUvs uvsOf(SolidReader& reader)
{
    constexpr std::int32_t kNone = 0;
    constexpr std::int32_t kUnscaled = 1;
    constexpr std::int32_t kEachSide = 2;
    const std::int32_t kind = reader.uvs(3);
    if (kind == kUnscaled) {
        reader.context().noteUncomputed(); // the cross is made, scaled to the unit square
    }
    return kind == kNone       ? geometry::CubeUvs::None
           : kind == kEachSide ? geometry::CubeUvs::EachSide
                               : geometry::CubeUvs::Cross;
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr std::int32_t kMostCells = SolidReader::kMostCells / 4; // sides have more cells
    SolidReader reader(context, kMostCells);
    geometry::CubeSettings cube;
    cube.width = reader.size(kWidth, 1);
    cube.height = reader.size(kHeight, 1);
    cube.depth = reader.size(kDepth, 1);
    cube.widthCells = reader.cells(kWidthCells, 1, 1);
    cube.heightCells = reader.cells(kHeightCells, 1, 1);
    cube.depthCells = reader.cells(kDepthCells, 1, 1);
    cube.uvs = uvsOf(reader);
    return reader.result(cube, geometry::makeCube);
}

} // namespace

constinit const NodeCompute kPolyCube{
    .type = "polyCube", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
