// polyCylinder: the mesh of a cylinder.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("radius", "height", "subdivisionsAxis", "subdivisionsHeight",
                                     "subdivisionsCaps", "roundCap", "maya2022UVs");
enum Position : std::size_t {
    kRadius = kFirstSolidInput,
    kHeight,
    kAxisCells,
    kHeightCells,
    kCapCells,
    kRoundCap,
    kFormerUvs
};

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::CylinderSettings cylinder;
    cylinder.radius = reader.size(kRadius, 1);
    cylinder.height = reader.size(kHeight, 2);
    // The sides end in two rings of points.
    cylinder.axisCells = reader.sides(kAxisCells, 20, 3, 2);
    cylinder.heightCells = reader.bands(kHeightCells, 1, 1, 1);
    cylinder.capCells = reader.bands(kCapCells, 0, 0, 2);
    cylinder.hasRoundCaps = cylinder.capCells > 0 && reader.flag(kRoundCap, false);
    cylinder.hasUvs = reader.unrolledUvs(cylinder.height == 2 * cylinder.radius);
    cylinder.hasFormerUvs = reader.flag(kFormerUvs, true);
    return reader.result(cylinder, geometry::makeCylinder);
}

} // namespace

constinit const NodeCompute kPolyCylinder{
    .type = "polyCylinder", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
