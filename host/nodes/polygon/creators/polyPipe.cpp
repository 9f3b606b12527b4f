// polyPipe: the mesh of a pipe.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("radius", "height", "thickness", "subdivisionsAxis",
                                     "subdivisionsHeight", "subdivisionsCaps", "roundCap");
enum Position : std::size_t {
    kRadius = kFirstSolidInput,
    kHeight,
    kThickness,
    kAxisCells,
    kHeightCells,
    kCapCells,
    kRoundCap
};

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::PipeSettings pipe;
    pipe.radius = reader.size(kRadius, 1);
    pipe.height = reader.size(kHeight, 2);
    pipe.thickness = reader.size(kThickness, 0.5);
    // Two sides and two ends.
    pipe.axisCells = reader.sides(kAxisCells, 20, 3, 4);
    pipe.heightCells = reader.bands(kHeightCells, 1, 1, 2);
    pipe.capCells = reader.bands(kCapCells, 1, 1, 2);
    pipe.hasRoundCaps = pipe.capCells > 1 && reader.flag(kRoundCap, false);
    pipe.hasUvs = reader.uvs(1) != 0;
    return reader.result(pipe, geometry::makePipe);
}

} // namespace

constinit const NodeCompute kPolyPipe{
    .type = "polyPipe", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
