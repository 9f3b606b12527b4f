// polySphere: the mesh of a sphere.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = solidInputs("radius", "subdivisionsAxis", "subdivisionsHeight");
enum Position : std::size_t { kRadius = kFirstSolidInput, kAxisCells, kHeightCells };

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::SphereSettings sphere;
    sphere.radius = reader.size(kRadius, 1);
    sphere.axisCells = reader.cells(kAxisCells, 20, 3);
    sphere.heightCells = reader.cells(kHeightCells, 20, 2);
    const std::int32_t kind = reader.uvs(2);
    sphere.uvs = kind == 0   ? geometry::SphereUvs::None
                 : kind == 1 ? geometry::SphereUvs::Pinched
                             : geometry::SphereUvs::Sawtooth;
    return reader.result(sphere, geometry::makeSphere);
}

} // namespace

constinit const NodeCompute kPolySphere{
    .type = "polySphere", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
