// polyPlatonic, polyPlatonicSolid and polyPrimitiveMisc: regular solids and the soccer ball.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/platonicSolids.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::RegularSolid;
using geometry::RegularSolidSettings;
using geometry::SolidDivision;

constexpr auto kPlatonicInputs =
    solidInputs("primitive", "subdivisionMode", "subdivisions", "radius", "sphericalInflation");
enum PlatonicPosition : std::size_t {
    kPrimitive = kFirstSolidInput,
    kMode,
    kSubdivisions,
    kRadius,
    kInflation
};

/// Takes divisions back until there are no more faces than are made.
void limitFaces(RegularSolidSettings& solid, ComputeContext& context)
{
    while (solid.subdivisions > 0 &&
           geometry::regularSolidFaceCount(solid) > SolidReader::kMostCells / 4) {
        --solid.subdivisions;
        context.noteUncomputed();
    }
}

Expected<Value> computePlatonic(ComputeContext& context)
{
    constexpr std::int32_t kIcosahedron = 4;
    constexpr std::int32_t kMostSubdivisions = 12;
    SolidReader reader(context);
    RegularSolidSettings solid;
    const std::int32_t kind = std::min(reader.choice(kPrimitive, kIcosahedron), kIcosahedron);
    solid.solid = static_cast<RegularSolid>(kind);
    const std::int32_t mode = reader.choice(kMode, 0);
    solid.division = static_cast<SolidDivision>(std::min(mode, 2));
    solid.subdivisions =
        static_cast<std::uint32_t>(countInput(context, kSubdivisions, 0, kMostSubdivisions, 0));
    solid.radius = reader.size(kRadius, 1);
    solid.inflation = std::clamp(reader.size(kInflation, 1), 0.0, 1.0);
    solid.isSmooth = false;
    solid.hasUvs = reader.uvs(1) != 0;
    limitFaces(solid, context);
    if (kind != kIcosahedron || solid.subdivisions > 0) {
        context.noteUncomputed(); // the order of the parts is not known
    }
    return reader.result(solid, geometry::makeRegularSolid);
}

constexpr auto kSolidInputs = solidInputs("solidType", "radius");
constexpr auto kMiscInputs = solidInputs("polyType", "radius");
constexpr std::size_t kKind = kFirstSolidInput;
constexpr std::size_t kSolidRadius = kFirstSolidInput + 1;

Value regularSolidOf(SolidReader& reader, RegularSolid kind, bool isSmooth)
{
    RegularSolidSettings solid;
    solid.solid = kind;
    solid.radius = reader.size(kSolidRadius, 1);
    solid.isSmooth = isSmooth;
    solid.hasUvs = reader.uvs(3) != 0;
    reader.context().noteUncomputed(); // the layout of the texture coordinates is not known
    return reader.result(solid, geometry::makeRegularSolid);
}

Expected<Value> computeSolid(ComputeContext& context)
{
    constexpr std::array<RegularSolid, 4> kKinds{
        RegularSolid::Dodecahedron, RegularSolid::Icosahedron, RegularSolid::Octahedron,
        RegularSolid::Tetrahedron};
    SolidReader reader(context);
    const auto kind = static_cast<std::size_t>(std::min(reader.choice(kKind, 0), 3));
    return regularSolidOf(reader, kKinds[kind], false);
}

Expected<Value> computeMisc(ComputeContext& context)
{
    SolidReader reader(context);
    return regularSolidOf(reader, RegularSolid::SoccerBall, true);
}

} // namespace

constinit const NodeCompute kPolyPlatonic{.type = "polyPlatonic",
                                          .inputs = kPlatonicInputs,
                                          .outputs = kSolidOutputs,
                                          .compute = computePlatonic};
constinit const NodeCompute kPolyPlatonicSolid{.type = "polyPlatonicSolid",
                                               .inputs = kSolidInputs,
                                               .outputs = kSolidOutputs,
                                               .compute = computeSolid};
constinit const NodeCompute kPolyPrimitiveMisc{.type = "polyPrimitiveMisc",
                                               .inputs = kMiscInputs,
                                               .outputs = kSolidOutputs,
                                               .compute = computeMisc};

} // namespace host::nodes
