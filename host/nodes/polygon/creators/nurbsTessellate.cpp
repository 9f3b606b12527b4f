// nurbsTessellate: a mesh out of a NURBS surface.
#include "host/nodes/numberInputs.h"
#include "host/nodes/polygon/creators/polygonCreatorTypes.h"

#include "host/geometry/mesh/primitives/surfaceMesh.h"
#include "host/geometry/tessellation/tessellate.h"
#include "host/math/angle.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

using geometry::LineMode;
using geometry::LineSettings;
using geometry::TessellationSettings;

constexpr std::array<std::string_view, 14> kInputs{"inputSurface",
                                                   "format",
                                                   "polygonType",
                                                   "polygonCount",
                                                   "uType",
                                                   "uNumber",
                                                   "vType",
                                                   "vNumber",
                                                   "edgeSwap",
                                                   "useChordHeight",
                                                   "chordHeight",
                                                   "useChordHeightRatio",
                                                   "chordHeightRatio",
                                                   "fractionalTolerance"};
constexpr std::array<std::string_view, 1> kOutputs{"outputPolygon"};
enum Position : std::size_t {
    kSurface,
    kFormat,
    kPolygonType,
    kPolygonCount,
    kTypeU,
    kNumberU,
    kTypeV,
    kNumberV,
    kEdgeSwap,
    kUseChordHeight,
    kChordHeight,
    kUseChordHeightRatio,
    kChordHeightRatio,
    kTolerance
};
enum Format : std::int32_t { kCount = 0, kFit = 1, kGeneral = 2, kControlPoints = 3 };

constexpr std::int32_t kMostLines = 1024;

LineSettings lines(ComputeContext& context, std::size_t type, std::size_t number)
{
    constexpr std::array<LineMode, 4> kModes{LineMode::PerSpan, LineMode::PerSurfaceByLength,
                                             LineMode::PerSurface, LineMode::PerSpan};
    const std::int32_t mode = wholeInput(context, type, 3, 0, 3);
    return {kModes[static_cast<std::size_t>(mode)], countInput(context, number, 3, kMostLines)};
}

/// The turn of an arc whose height is the share 1 - `ratio` of its chord: h = c / 2 tan(a / 4).
double angleOfRatio(double ratio)
{
    constexpr double kFlattest = 0.001;
    return 4 * angleOf(2 * std::clamp(1 - ratio, kFlattest, 1.0), 1);
}

void setGeneral(ComputeContext& context, TessellationSettings& settings)
{
    settings.u = lines(context, kTypeU, kNumberU);
    settings.v = lines(context, kTypeV, kNumberV);
    if (flagInput(context, kUseChordHeight, false)) {
        settings.chordHeight = std::max(context.number(kChordHeight, 0.1), 1e-6);
    }
    if (flagInput(context, kUseChordHeightRatio, true)) {
        settings.angleTolerance = angleOfRatio(context.number(kChordHeightRatio, 0.983));
    }
}

void setFit(ComputeContext& context, TessellationSettings& settings)
{
    settings.chordHeight = std::max(context.number(kTolerance, 0.01), 1e-6);
    settings.angleTolerance = angleOfRatio(context.number(kChordHeightRatio, 0.983));
}

/// As many lines each way as make so many faces.
void setCount(ComputeContext& context, TessellationSettings& settings, bool isQuads)
{
    const double count = countInput(context, kPolygonCount, 200, kMostLines * kMostLines);
    const auto cells = static_cast<std::int32_t>(std::sqrt(isQuads ? count : count / 2));
    settings.u = {LineMode::PerSurface, std::max(cells, 1)};
    settings.v = settings.u;
}

TessellationSettings settingsOf(ComputeContext& context, std::int32_t format, bool isQuads)
{
    TessellationSettings settings;
    settings.chordTolerance = geometry::kNoTolerance;
    settings.angleTolerance = geometry::kNoTolerance;
    settings.curvedSpanSegments = 1;
    if (format == kGeneral) {
        setGeneral(context, settings);
    } else if (format == kFit) {
        setFit(context, settings);
    } else {
        setCount(context, settings, isQuads);
    }
    settings.swapsEdges = flagInput(context, kEdgeSwap, false);
    return settings;
}

Expected<Value> compute(ComputeContext& context)
{
    const auto surface = context.input(kSurface).data<geometry::SurfaceData>();
    const std::int32_t format = wholeInput(context, kFormat, kFit, kCount, kControlPoints);
    const bool isQuads = context.number(kPolygonType, 0) != 0;
    const TessellationSettings settings = settingsOf(context, format, isQuads);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    context.noteUncomputed(); // the order of the parts is our own
    const auto mesh = format == kControlPoints
                          ? geometry::meshOfControlPoints(*surface, "map1")
                          : geometry::meshOfTessellation(
                                geometry::tessellate(*surface, settings).mesh, isQuads, "map1");
    return mesh != nullptr ? Value(mesh) : Value();
}

} // namespace

constinit const NodeCompute kNurbsTessellate{
    .type = "nurbsTessellate", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
