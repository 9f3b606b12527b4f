// polyTorus: the mesh of a torus.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("radius", "sectionRadius", "twist", "subdivisionsAxis",
                                     "subdivisionsHeight", "reverseTexture");
enum Position : std::size_t {
    kRadius = kFirstSolidInput,
    kSectionRadius,
    kTwist,
    kAxisCells,
    kTubeCells,
    kReverseTexture
};

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::TorusSettings torus;
    torus.radius = reader.size(kRadius, 1);
    torus.sectionRadius = reader.size(kSectionRadius, 0.5);
    torus.twist = reader.size(kTwist, 0);
    torus.axisCells = reader.cells(kAxisCells, 20, 3);
    torus.tubeCells = reader.cells(kTubeCells, 20, 3);
    torus.hasUvs = reader.uvs(1) != 0;
    if (torus.hasUvs && reader.flag(kReverseTexture, false)) {
        context.noteLack(Lack::Textures); // which way they turn is not known
    }
    return reader.result(torus, geometry::makeTorus);
}

} // namespace

constinit const NodeCompute kPolyTorus{
    .type = "polyTorus", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
