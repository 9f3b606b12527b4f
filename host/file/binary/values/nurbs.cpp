// Curves, surfaces, and regions of trimmed surfaces.
#include "host/file/binary/values/eachElement.h"

#include "host/geometry/nurbs/SurfaceData.h"

#include <utility>

namespace host::file::binary {
namespace {

constexpr std::uint32_t kMaxDegree = 1000; ///< far above what any file has; keeps sums in range
constexpr std::size_t kShortestCurve = 25; ///< bytes

std::uint32_t takeUpTo(Cursor& cursor, std::uint32_t lowest, std::uint32_t highest)
{
    const std::uint32_t number = cursor.u32();
    if (!cursor.hasFailed() && (number < lowest || number > highest)) {
        cursor.fail("a whole number from " + std::to_string(lowest) + " to " +
                    std::to_string(highest) + " was expected");
        return lowest;
    }
    return number;
}

geometry::SplineForm takeForm(Cursor& cursor)
{
    return static_cast<geometry::SplineForm>(takeUpTo(cursor, 0, 2));
}

std::int32_t takeDegree(Cursor& cursor)
{
    return static_cast<std::int32_t>(takeUpTo(cursor, 1, kMaxDegree));
}

std::vector<double> takeKnots(Cursor& cursor)
{
    return cursor.numbers<double>(cursor.count(sizeof(double)));
}

/// `count` control points of `dimension` coordinates and perhaps a weight.
std::vector<double> takePoles(Cursor& cursor, std::size_t count, std::size_t dimension,
                              bool isRational)
{
    return cursor.numbers<double>(count * (dimension + (isRational ? 1 : 0)));
}

geometry::CurveData takeCurve(Cursor& cursor)
{
    geometry::CurveData curve;
    curve.degree = takeDegree(cursor);
    curve.spans = cursor.i32();
    curve.form = takeForm(cursor);
    curve.rational = cursor.u8() != 0;
    curve.dimension = static_cast<std::int32_t>(takeUpTo(cursor, 2, 3));
    curve.knots = takeKnots(cursor);
    const std::size_t dimension = static_cast<std::size_t>(curve.dimension);
    const std::size_t count = cursor.hasFailed() ? 0 : cursor.count(dimension * sizeof(double));
    if (!cursor.hasFailed() &&
        curve.knots.size() + 1 != count + static_cast<std::size_t>(curve.degree)) {
        cursor.fail("the counts of a curve's knots and points do not fit its degree");
    }
    if (!cursor.hasFailed()) {
        curve.poles = takePoles(cursor, count, dimension, curve.rational);
    }
    return curve;
}

bool isGrid(const geometry::SurfaceData& surface, std::size_t count)
{
    const std::int64_t countU =
        static_cast<std::int64_t>(surface.knotsU.size()) - surface.degreeU + 1;
    const std::int64_t countV =
        static_cast<std::int64_t>(surface.knotsV.size()) - surface.degreeV + 1;
    return countU > 0 && countV > 0 && static_cast<std::int64_t>(count) / countU == countV &&
           static_cast<std::int64_t>(count) % countU == 0;
}

geometry::SurfaceData takeSurface(Cursor& cursor)
{
    geometry::SurfaceData surface;
    surface.degreeU = takeDegree(cursor);
    surface.degreeV = takeDegree(cursor);
    cursor.u32(); // spans, which knots and degrees tell as well
    cursor.u32();
    surface.formU = takeForm(cursor);
    surface.formV = takeForm(cursor);
    surface.rational = cursor.u8() != 0;
    takeUpTo(cursor, 3, 3);
    surface.knotsU = takeKnots(cursor);
    surface.knotsV = takeKnots(cursor);
    const std::size_t count = cursor.hasFailed() ? 0 : cursor.count(3 * sizeof(double));
    if (!cursor.hasFailed() && !isGrid(surface, count)) {
        cursor.fail("the counts of a surface's knots and points do not fit its degrees");
    }
    if (!cursor.hasFailed()) {
        surface.poles = takePoles(cursor, count, 3, surface.rational);
    }
    // Trimming is told by the trim regions themselves; the letter adds nothing.
    const std::uint8_t trimmed = cursor.u8();
    if (!cursor.hasFailed() && trimmed != 'N' && trimmed != 'T') {
        cursor.fail("N or T was expected behind a surface");
    }
    return surface;
}

/// Reads trim regions. No file with one was ever seen: they are taken to be the text form's words
/// as bytes, numbers 0 and 1 that answer a question being of four bytes or of one.
class TrimReader {
public:
    TrimReader(Cursor cursor, bool hasLongFlags) : m_cursor(cursor), m_hasLongFlags(hasLongFlags) {}

    geometry::TrimRegion takeRegion()
    {
        constexpr std::size_t kShortestBoundary = 8;
        geometry::TrimRegion region;
        region.flipNormal = m_cursor.u8() != 0;
        const std::size_t count = m_cursor.count(kShortestBoundary);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            region.boundaries.push_back(takeBoundary());
        }
        return region;
    }
    const Cursor& cursor() const { return m_cursor; }

private:
    bool takeFlag() { return m_hasLongFlags ? takeUpTo(m_cursor, 0, 1) == 1 : m_cursor.u8() != 0; }

    std::vector<geometry::CurveData> takeCurves()
    {
        std::vector<geometry::CurveData> curves;
        const std::size_t count = m_cursor.count(kShortestCurve);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            curves.push_back(takeCurve(m_cursor));
            checkSpans(curves.back());
        }
        return curves;
    }

    void checkSpans(const geometry::CurveData& curve)
    {
        const std::int64_t knots = static_cast<std::int64_t>(curve.knots.size());
        if (knots != std::int64_t{curve.spans} + 2 * std::int64_t{curve.degree} - 1) {
            m_cursor.fail("the spans of a trim curve do not fit its knots");
        }
    }

    geometry::TrimEdge takeEdge()
    {
        geometry::TrimEdge edge;
        edge.curves3d = takeCurves();
        edge.tolerance3d = m_cursor.f64();
        edge.reversed = takeFlag();
        edge.continuity = m_cursor.i32();
        edge.curves2d = takeCurves();
        edge.monotone = takeFlag();
        edge.tolerance2d = m_cursor.f64();
        return edge;
    }

    geometry::TrimBoundary takeBoundary()
    {
        geometry::TrimBoundary boundary;
        boundary.type = m_cursor.i32();
        boundary.edgeFlags = m_cursor.numbers<std::int32_t>(m_cursor.count(sizeof(std::int32_t)));
        for (std::size_t i = 0; i < boundary.edgeFlags.size() && !m_cursor.hasFailed(); ++i) {
            boundary.edges.push_back(takeEdge());
        }
        return boundary;
    }

    Cursor m_cursor;
    bool m_hasLongFlags;
};

} // namespace

void readCurve(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, takeCurve);
}

void readSurface(Reader& reader, ValueTask& task)
{
    sendEachElement(reader, task, takeSurface);
}

void readTrimRegion(Reader& reader, ValueTask& task)
{
    if (task.count != 1) {
        task.cursor.fail("trim regions of a range cannot be told apart");
        return;
    }
    for (const bool hasLongFlags : {true, false}) {
        TrimReader trim(task.cursor, hasLongFlags);
        geometry::TrimRegion region = trim.takeRegion();
        if (!trim.cursor().hasFailed() && trim.cursor().isAtEnd()) {
            task.cursor = trim.cursor();
            sendValue(reader, task, Value::of(std::move(region)));
            return;
        }
    }
    task.cursor.fail("a trim region of a form that is not known");
}

} // namespace host::file::binary
