// polyPrism and polyPyramid: cylinders and cones of few sides, given by the length of a side.
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"
#include "host/nodes/polygon/creators/solidInputs.h"

#include "host/geometry/mesh/primitives/roundSolids.h"
#include "host/math/angle.h"

#include <cmath>
#include <numbers>

namespace host::nodes {
namespace {

/// The distance from the middle of a regular polygon to its corners.
double outerRadius(double sideLength, std::uint32_t sides)
{
    return sideLength / (2 * sineCosine(std::numbers::pi / sides).sine);
}

// "numderOfSides" is the attribute's name in Maya.
constexpr auto kPrismInputs = solidInputs("length", "sideLength", "numderOfSides",
                                          "subdivisionsHeight", "subdivisionsCaps", "maya2022UVs");
enum PrismPosition : std::size_t {
    kLength = kFirstSolidInput,
    kPrismSide,
    kPrismSides,
    kPrismHeightCells,
    kPrismCapCells,
    kPrismFormerUvs
};

Expected<Value> computePrism(ComputeContext& context)
{
    SolidReader reader(context);
    geometry::CylinderSettings prism;
    prism.height = reader.size(kLength, 2);
    const double side = reader.size(kPrismSide, 1);
    prism.axisCells = reader.sides(kPrismSides, 3, 3, 2);
    prism.radius = outerRadius(side, prism.axisCells);
    prism.heightCells = reader.bands(kPrismHeightCells, 1, 1, 1);
    prism.capCells = reader.bands(kPrismCapCells, 0, 0, 2);
    prism.hasHardSides = true;
    prism.hasUvs = reader.unrolledUvs(false);
    prism.hasFormerUvs = reader.flag(kPrismFormerUvs, true);
    return reader.result(prism, geometry::makeCylinder);
}

constexpr auto kPyramidInputs =
    solidInputs("sideLength", "numberOfSides", "subdivisionsHeight", "subdivisionsCaps");
enum PyramidPosition : std::size_t {
    kPyramidSide = kFirstSolidInput,
    kPyramidSides,
    kPyramidHeightCells,
    kPyramidCapCells
};

/// All edges of a pyramid have the same length, so its height follows.
Expected<Value> computePyramid(ComputeContext& context)
{
    constexpr std::int32_t kMostCells =
        SolidReader::kMostCells / 10; // of up to five sides and base
    SolidReader reader(context, kMostCells);
    geometry::ConeSettings pyramid;
    const double side = reader.size(kPyramidSide, 1);
    pyramid.axisCells = static_cast<std::uint32_t>(wholeInput(context, kPyramidSides, 4, 3, 5));
    pyramid.radius = outerRadius(side, pyramid.axisCells);
    pyramid.height = std::sqrt(side * side - pyramid.radius * pyramid.radius);
    pyramid.heightCells = reader.cells(kPyramidHeightCells, 1, 1);
    pyramid.capCells = reader.cells(kPyramidCapCells, 0, 0);
    pyramid.hasHardSides = true;
    pyramid.hasUvs = reader.unrolledUvs(true);
    return reader.result(pyramid, geometry::makeCone);
}

} // namespace

constinit const NodeCompute kPolyPrism{
    .type = "polyPrism", .inputs = kPrismInputs, .outputs = kSolidOutputs, .compute = computePrism};
constinit const NodeCompute kPolyPyramid{.type = "polyPyramid",
                                         .inputs = kPyramidInputs,
                                         .outputs = kSolidOutputs,
                                         .compute = computePyramid};

} // namespace host::nodes
