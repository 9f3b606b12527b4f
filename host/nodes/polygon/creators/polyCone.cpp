// polyCone: the mesh of a cone.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("radius", "height", "subdivisionsAxis", "subdivisionsHeight",
                                     "subdivisionsCap", "roundCap");
enum Position : std::size_t {
    kRadius = kFirstSolidInput,
    kHeight,
    kAxisCells,
    kHeightCells,
    kCapCells,
    kRoundCap
};

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::ConeSettings cone;
    cone.radius = reader.size(kRadius, 1);
    cone.height = reader.size(kHeight, 2);
    cone.axisCells = reader.sides(kAxisCells, 20, 3, 1);
    cone.heightCells = reader.bands(kHeightCells, 1, 1, 1);
    cone.capCells = reader.bands(kCapCells, 0, 0, 1);
    cone.hasRoundCap = cone.capCells > 0 && reader.flag(kRoundCap, false);
    cone.hasUvs = reader.unrolledUvs(cone.height == 2 * cone.radius);
    return reader.result(cone, geometry::makeCone);
}

} // namespace

constinit const NodeCompute kPolyCone{
    .type = "polyCone", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
