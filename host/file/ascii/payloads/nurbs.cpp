// nurbsCurve, nurbsSurface, nurbsTrimface.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include "host/geometry/nurbs/SurfaceData.h"

namespace host::file::ascii {
namespace {

constexpr std::int64_t kMaxDegree = 1000; ///< far above what any file has; keeps sums in range

geometry::SplineForm takeForm(Cursor& cursor)
{
    return static_cast<geometry::SplineForm>(cursor.integer(0, 2));
}

std::int32_t takeDegree(Cursor& cursor)
{
    return static_cast<std::int32_t>(cursor.integer(1, kMaxDegree));
}

/// Control points of `dimension` coordinates and perhaps a weight; the coordinates times `factor`.
std::vector<double> takePoles(Cursor& cursor, std::size_t count, std::size_t dimension,
                              bool isRational, double factor)
{
    const std::size_t stride = dimension + (isRational ? 1 : 0);
    std::vector<double> poles = cursor.numbers(count * stride);
    for (std::size_t i = 0; i < poles.size(); ++i) {
        poles[i] *= i % stride < dimension ? factor : 1;
    }
    return poles;
}

geometry::CurveData takeCurve(Cursor& cursor)
{
    geometry::CurveData curve;
    curve.degree = takeDegree(cursor);
    curve.spans = cursor.int32();
    curve.form = takeForm(cursor);
    curve.rational = cursor.boolean();
    curve.dimension = static_cast<std::int32_t>(cursor.integer(2, 3));
    curve.knots = cursor.numbers(cursor.count(1));
    const std::size_t dimension =
        static_cast<std::size_t>(cursor.hasFailed() ? 3 : curve.dimension);
    const std::size_t count = cursor.count(dimension);
    if (!cursor.hasFailed() &&
        curve.knots.size() + 1 != count + static_cast<std::size_t>(curve.degree)) {
        cursor.fail("the counts of a curve's knots and points do not fit its degree");
    }
    // Points of a curve on a surface are parameters, no lengths.
    const double factor = dimension == 3 ? cursor.reader().scales.linear : 1;
    if (!cursor.hasFailed()) {
        curve.poles = takePoles(cursor, count, dimension, curve.rational, factor);
    }
    return curve;
}

std::vector<geometry::CurveData> takeCurves(Cursor& cursor)
{
    constexpr std::size_t kShortestCurve = 8; // tokens
    std::vector<geometry::CurveData> curves;
    const std::size_t count = cursor.count(kShortestCurve);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        curves.push_back(takeCurve(cursor));
    }
    return curves;
}

geometry::TrimEdge takeTrimEdge(Cursor& cursor)
{
    geometry::TrimEdge edge;
    edge.curves3d = takeCurves(cursor);
    edge.tolerance3d = cursor.number();
    edge.reversed = cursor.boolean();
    edge.continuity = cursor.int32();
    edge.curves2d = takeCurves(cursor);
    edge.monotone = cursor.boolean();
    edge.tolerance2d = cursor.number();
    return edge;
}

geometry::TrimBoundary takeTrimBoundary(Cursor& cursor)
{
    geometry::TrimBoundary boundary;
    boundary.type = cursor.int32();
    const std::size_t count = cursor.count(1);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        boundary.edgeFlags.push_back(cursor.int32());
    }
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        boundary.edges.push_back(takeTrimEdge(cursor));
    }
    return boundary;
}

} // namespace

Expected<Value> readCurve(Reader& reader)
{
    Cursor cursor(reader);
    geometry::CurveData curve = takeCurve(cursor);
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(curve));
}

Expected<Value> readSurface(Reader& reader)
{
    Cursor cursor(reader);
    geometry::SurfaceData surface;
    surface.degreeU = takeDegree(cursor);
    surface.degreeV = takeDegree(cursor);
    surface.formU = takeForm(cursor);
    surface.formV = takeForm(cursor);
    surface.rational = cursor.boolean();
    surface.knotsU = cursor.numbers(cursor.count(1));
    surface.knotsV = cursor.numbers(cursor.count(1));
    // Trimming is told by the trim regions themselves; the word adds nothing.
    const bool isTrimWord = cursor.takeIf("TRIM") || cursor.takeIf("NOTRIM");
    static_cast<void>(isTrimWord);
    const std::size_t count = cursor.count(3);
    const std::int64_t countU =
        static_cast<std::int64_t>(surface.knotsU.size()) - surface.degreeU + 1;
    const std::int64_t countV =
        static_cast<std::int64_t>(surface.knotsV.size()) - surface.degreeV + 1;
    const bool isFitting = countU > 0 && countV > 0 &&
                           static_cast<std::int64_t>(count) / countU == countV &&
                           static_cast<std::int64_t>(count) % countU == 0;
    if (!cursor.hasFailed() && !isFitting) {
        cursor.fail("the counts of a surface's knots and points do not fit its degrees");
    }
    if (!cursor.hasFailed()) {
        surface.poles = takePoles(cursor, count, 3, surface.rational, reader.scales.linear);
    }
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(surface));
}

Expected<Value> readTrimRegion(Reader& reader)
{
    Cursor cursor(reader);
    geometry::TrimRegion region;
    region.flipNormal = cursor.boolean();
    const std::size_t count = cursor.count(2);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        region.boundaries.push_back(takeTrimBoundary(cursor));
    }
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(region));
}

} // namespace host::file::ascii
