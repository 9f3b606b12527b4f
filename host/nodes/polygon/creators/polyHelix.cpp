// polyHelix: the mesh of a wire wound about an axis.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

#include <algorithm>
#include <cmath>

namespace host::nodes {
namespace {

constexpr auto kInputs =
    solidInputs("coils", "height", "width", "radius", "direction", "subdivisionsAxis",
                "subdivisionsCoil", "subdivisionsCaps", "roundCap", "maya2022UVs");
enum Position : std::size_t {
    kCoils = kFirstSolidInput,
    kHeight,
    kWidth,
    kRadius,
    kDirection,
    kAxisCells,
    kCoilCells,
    kCapCells,
    kRoundCap,
    kFormerUvs
};

constexpr double kMostCoils = 10000;

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::HelixSettings helix;
    helix.coils = std::clamp(reader.size(kCoils, 3), 0.0, kMostCoils);
    helix.height = reader.size(kHeight, 2);
    helix.width = reader.size(kWidth, 2);
    helix.radius = reader.size(kRadius, 0.4);
    helix.isClockwise = reader.choice(kDirection, 1) == 0;
    helix.axisCells = reader.sides(kAxisCells, 8, 3, 2);
    const double perCoil = countInput(context, kCoilCells, 50, SolidReader::kMostCells);
    helix.coilCells = reader.derivedBands(std::floor(perCoil * helix.coils));
    helix.capCells = reader.bands(kCapCells, 0, 0, 2);
    helix.hasRoundCaps = helix.capCells > 0 && reader.flag(kRoundCap, false);
    helix.hasUvs = reader.uvs(2) != 0;
    helix.hasFormerUvs = reader.flag(kFormerUvs, true);
    context.noteUncomputed(); // where the wire begins is not known
    return reader.result(helix, geometry::makeHelix);
}

} // namespace

constinit const NodeCompute kPolyHelix{
    .type = "polyHelix", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
