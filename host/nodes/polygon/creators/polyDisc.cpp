// polyDisc: the mesh of a disc.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/disc.h"

namespace host::nodes {
namespace {

using geometry::DiscDivision;

// "subdivizionMode" is spelled so in scenes.
constexpr auto kInputs =
    solidInputs("sides", "subdivizionMode", "subdivisionMode", "subdivisions", "radius");
enum Position : std::size_t {
    kSides = kFirstSolidInput,
    kMode,
    kModeSpelledRight,
    kSubdivisions,
    kRadius
};

DiscDivision divisionOf(SolidReader& reader)
{
    constexpr auto kUsual = static_cast<std::int32_t>(DiscDivision::Circle);
    const std::int32_t mode = reader.choice(kMode, reader.choice(kModeSpelledRight, kUsual));
    return mode > kUsual ? DiscDivision::Circle : static_cast<DiscDivision>(mode);
}

/// Takes divisions back until there are no more faces than are made.
void limitFaces(geometry::DiscSettings& disc, ComputeContext& context)
{
    if (disc.division == DiscDivision::Caps || disc.division == DiscDivision::Pie) {
        return; // as many as the product of the counts, which is limited already
    }
    while (geometry::discFaceCount(disc) > SolidReader::kMostCells / 4 && disc.subdivisions > 0) {
        --disc.subdivisions;
        context.noteUncomputed();
    }
}

Expected<Value> compute(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::DiscSettings disc;
    disc.division = divisionOf(reader);
    disc.sides = reader.cells(kSides, 3, 3);
    const bool isBanded = disc.division == DiscDivision::Caps || disc.division == DiscDivision::Pie;
    disc.subdivisions =
        isBanded ? reader.cells(kSubdivisions, 3, 0)
                 : static_cast<std::uint32_t>(countInput(context, kSubdivisions, 3, 10, 0));
    disc.radius = reader.size(kRadius, 1);
    limitFaces(disc, context);
    if (isBanded || disc.division == DiscDivision::Triangles) {
        context.noteUncomputed(); // the order of the parts is not known
    }
    return reader.result(disc, geometry::makeDisc);
}

} // namespace

constinit const NodeCompute kPolyDisc{
    .type = "polyDisc", .inputs = kInputs, .outputs = kSolidOutputs, .compute = compute};

} // namespace host::nodes
