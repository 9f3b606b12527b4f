// polyPlane: the mesh of a plane.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/boxes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("width", "height", "subdivisionsWidth", "subdivisionsHeight");
enum Position : std::size_t { kWidth = kFirstSolidInput, kHeight, kWidthCells, kHeightCells };

Expected<Value> compute(ComputeContext& context)
{
    constexpr std::int32_t kKeepsAspect = 2;
    SolidReader reader(context);
    geometry::PlaneSettings plane;
    plane.width = reader.size(kWidth, 1);
    plane.height = reader.size(kHeight, 1);
    plane.widthCells = reader.cells(kWidthCells, 10, 1);
    plane.heightCells = reader.cells(kHeightCells, 10, 1);
    const std::int32_t kind = reader.uvs(1);
    plane.hasUvs = kind != 0;
    plane.keepsAspect = kind == kKeepsAspect;
    return reader.result(plane, geometry::makePlane);
}

} // namespace

constinit const NodeCompute kPolyPlane{
    .type = "polyPlane", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
