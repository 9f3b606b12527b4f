#include "host/geometry/nurbs/planarTrim.h"

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/nurbs/primitives.h"
#include "host/geometry/nurbs/productSurface.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::size_t kSamplesPerSpan = 8;
constexpr std::size_t kMostSamples = 1024;
/// What is kept outside of the curves reaches this share of their extent further.
constexpr double kOutsideMargin = 0.1;

/// Outlines nearer to each other than this, in (u, v), are the same.
constexpr double kSameOutline = 1e-6;
/// Pairs of sides that are looked at for crossings.
constexpr std::size_t kMaxComparedSides = 1u << 25;

/// A curve with its direction in a boundary and its points.
struct Piece {
    SplineRows rows; ///< clamped, in the boundary's direction
    const CurveData* curve = nullptr;
    bool isReversed = false;
    std::vector<Vec3d> samples; ///< with both ends
};

std::vector<Vec3d> samplesOf(const SplineRows& rows)
{
    const CurveEvaluator evaluator(curveOf(rows, true));
    std::vector<Vec3d> samples;
    if (!evaluator.isValid()) {
        return samples;
    }
    const auto breaks = evaluator.knots().breaks();
    const std::size_t perSpan =
        rows.degree == 1
            ? 1
            : std::clamp<std::size_t>(kMostSamples / breaks.size(), 1, kSamplesPerSpan);
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
        for (std::size_t s = 0; s < perSpan; ++s) {
            const double share = static_cast<double>(s) / static_cast<double>(perSpan);
            samples.push_back(evaluator.point(breaks[i] + (breaks[i + 1] - breaks[i]) * share));
        }
    }
    samples.push_back(evaluator.point(breaks.back()));
    return samples;
}

void turnRound(Piece& piece)
{
    reverse(piece.rows);
    std::reverse(piece.samples.begin(), piece.samples.end());
    piece.isReversed = !piece.isReversed;
}

using Chain = std::vector<Piece>;

double gap(const Vec3d& a, const Vec3d& b)
{
    return length(a - b);
}

/// Takes the piece that continues the chain out of the rest; false when none does.
bool extend(Chain& chain, std::vector<Piece>& rest, double tolerance)
{
    const Vec3d end = chain.back().samples.back();
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const bool fits = gap(rest[i].samples.front(), end) <= tolerance;
        if (!fits && gap(rest[i].samples.back(), end) > tolerance) {
            continue;
        }
        if (!fits) {
            turnRound(rest[i]);
        }
        chain.push_back(std::move(rest[i]));
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(i));
        return true;
    }
    return false;
}

std::vector<Chain> closedChains(std::span<const CurveData> curves, double tolerance)
{
    std::vector<Piece> rest;
    for (const CurveData& curve : curves.first(std::min(curves.size(), kMaxTrimCurves))) {
        Piece piece{clamped(rowsOf(curve)), &curve, false, {}};
        piece.samples = samplesOf(piece.rows);
        if (piece.samples.size() > 1) {
            rest.push_back(std::move(piece));
        }
    }
    std::vector<Chain> chains;
    while (!rest.empty()) {
        Chain chain;
        chain.push_back(std::move(rest.front()));
        rest.erase(rest.begin());
        const auto isClosed = [&] {
            return gap(chain.front().samples.front(), chain.back().samples.back()) <= tolerance;
        };
        while (!isClosed() && extend(chain, rest, tolerance)) {
        }
        if (isClosed()) {
            chains.push_back(std::move(chain));
        }
    }
    return chains;
}

/// Twice the area vector of a polygon (Newell).
Vec3d areaOf(const std::vector<Vec3d>& outline)
{
    Vec3d sum;
    for (std::size_t i = 1; i + 1 < outline.size(); ++i) {
        sum = sum + cross(outline[i] - outline[0], outline[i + 1] - outline[0]);
    }
    return sum;
}

std::vector<Vec3d> outlineOf(const Chain& chain)
{
    std::vector<Vec3d> outline;
    for (const Piece& piece : chain) {
        outline.insert(outline.end(), piece.samples.begin(), piece.samples.end() - 1);
    }
    return outline;
}

/// Plane coordinates: origin at the corner of the rectangle, both axes 0..1 over its sides.
struct Rectangle {
    Vec3d corner, x, y; ///< sides as vectors
    Vec3d parameters(const Vec3d& point) const
    {
        const Vec3d away = point - corner;
        return {dot(away, x) / dot(x, x), dot(away, y) / dot(y, y), 0};
    }
};

/// Around the control points, wider by a share of its size on every side.
Rectangle rectangleAround(const std::vector<Chain>& chains, const Vec3d& normal, double margin)
{
    const Vec3d helper = std::fabs(normal.x) < 0.9 ? Vec3d{1, 0, 0} : Vec3d{0, 1, 0};
    const Vec3d x = normalized(helper - normal * dot(helper, normal));
    const Vec3d y = cross(normal, x);
    const Vec3d origin = chains.front().front().samples.front();
    double low[2] = {0, 0};
    double high[2] = {0, 0};
    for (const Chain& chain : chains) {
        for (const Piece& piece : chain) {
            for (const HomogeneousPoint& point : piece.rows.points) {
                const Vec3d away = point.projected() - origin;
                const double place[2] = {dot(away, x), dot(away, y)};
                for (int axis = 0; axis < 2; ++axis) {
                    low[axis] = std::min(low[axis], place[axis]);
                    high[axis] = std::max(high[axis], place[axis]);
                }
            }
        }
    }
    for (int axis = 0; axis < 2; ++axis) {
        const double wider = (high[axis] - low[axis]) * margin;
        low[axis] -= wider;
        high[axis] += wider;
    }
    return {origin + x * low[0] + y * low[1], x * (high[0] - low[0]), y * (high[1] - low[1])};
}

/// The edge of a piece: the curve as given in space, and in the boundary's direction in (u, v).
TrimEdge edgeOf(const Piece& piece, const Rectangle& rectangle)
{
    TrimEdge edge;
    edge.curves3d.push_back(*piece.curve);
    edge.reversed = piece.isReversed;
    SplineRows flat = piece.rows;
    for (HomogeneousPoint& point : flat.points) {
        point = homogeneous(rectangle.parameters(point.projected()), point.w);
    }
    edge.curves2d.push_back(curveOf(flat, piece.curve->rational, 2));
    return edge;
}

double signedArea(const std::vector<Vec3d>& outline)
{
    return areaOf(outline).z;
}

/// Even-odd rule; points on the outline may fall on either side.
bool isInside(const Vec3d& point, const std::vector<Vec3d>& outline)
{
    bool isIn = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Vec3d& a = outline[i];
        const Vec3d& b = outline[j];
        if ((a.y > point.y) != (b.y > point.y) &&
            point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
            isIn = !isIn;
        }
    }
    return isIn;
}

/// By most of three points, as loops may touch in one.
bool isInside(const TrimLoop& inner, const TrimLoop& outer)
{
    const auto& points = inner.outline;
    int votes = 0;
    for (std::size_t third = 0; third < 3 && !points.empty(); ++third) {
        votes += isInside(points[points.size() * third / 3], outer.outline) ? 1 : 0;
    }
    return votes > 1;
}

void reverseLoop(TrimLoop& loop)
{
    std::reverse(loop.outline.begin(), loop.outline.end());
    std::reverse(loop.edges.begin(), loop.edges.end());
    for (TrimEdge& edge : loop.edges) {
        edge.reversed = !edge.reversed;
        std::reverse(edge.curves2d.begin(), edge.curves2d.end());
        for (CurveData& curve : edge.curves2d) {
            SplineRows rows = rowsOf(curve);
            reverse(rows);
            curve = curveOf(rows, curve.rational, curve.dimension);
        }
    }
}

TrimBoundary boundaryOf(TrimLoop loop, bool isHole)
{
    if ((signedArea(loop.outline) < 0) != isHole) {
        reverseLoop(loop);
    }
    TrimBoundary boundary;
    boundary.type = isHole ? 1 : 0;
    boundary.edgeFlags.assign(loop.edges.size(), 0);
    boundary.edges = std::move(loop.edges);
    return boundary;
}

/// The smallest box around an outline.
struct Box {
    double lowX = INFINITY, lowY = INFINITY, highX = -INFINITY, highY = -INFINITY;
    void add(const Vec3d& point)
    {
        lowX = std::min(lowX, point.x);
        lowY = std::min(lowY, point.y);
        highX = std::max(highX, point.x);
        highY = std::max(highY, point.y);
    }
    bool meets(const Box& other) const
    {
        return lowX <= other.highX && other.lowX <= highX && lowY <= other.highY &&
               other.lowY <= highY;
    }
    bool isNear(const Box& other) const
    {
        return std::fabs(lowX - other.lowX) <= kSameOutline &&
               std::fabs(lowY - other.lowY) <= kSameOutline &&
               std::fabs(highX - other.highX) <= kSameOutline &&
               std::fabs(highY - other.highY) <= kSameOutline;
    }
};

Box boxOf(const std::vector<Vec3d>& outline)
{
    Box box;
    for (const Vec3d& point : outline) {
        box.add(point);
    }
    return box;
}

double distanceToSegment(const Vec3d& point, const Vec3d& a, const Vec3d& b)
{
    const Vec3d way = b - a;
    const double size = dot(way, way);
    const double share = size > 0 ? std::clamp(dot(point - a, way) / size, 0.0, 1.0) : 0;
    return length(point - (a + way * share));
}

/// True where every corner of one outline lies on the other.
bool liesOn(const std::vector<Vec3d>& inner, const std::vector<Vec3d>& outer)
{
    const bool isBackwards = (signedArea(inner) < 0) != (signedArea(outer) < 0);
    std::size_t at = 0; // the side that was met last: the next corner is mostly beside it
    for (std::size_t i = 0; i < inner.size(); ++i) {
        const Vec3d& corner = inner[isBackwards ? inner.size() - 1 - i : i];
        std::size_t tried = 0;
        while (tried < outer.size() &&
               !(distanceToSegment(corner, outer[at], outer[(at + 1) % outer.size()]) <=
                 kSameOutline)) {
            at = (at + 1) % outer.size();
            ++tried;
        }
        if (tried == outer.size()) {
            return false;
        }
    }
    return true;
}

/// The loops without those that run as one before them, in either direction.
std::vector<TrimLoop> withoutRepeated(std::vector<TrimLoop> loops)
{
    std::vector<TrimLoop> kept;
    std::vector<Box> boxes;
    for (TrimLoop& loop : loops) {
        const Box box = boxOf(loop.outline);
        bool isNew = true;
        for (std::size_t i = 0; i < kept.size() && isNew; ++i) {
            isNew = !box.isNear(boxes[i]) || !liesOn(loop.outline, kept[i].outline) ||
                    !liesOn(kept[i].outline, loop.outline);
        }
        if (isNew) {
            kept.push_back(std::move(loop));
            boxes.push_back(box);
        }
    }
    return kept;
}

/// True where two lines cross away from their ends.
bool doCross(const Vec3d& a, const Vec3d& b, const Vec3d& c, const Vec3d& d)
{
    constexpr double kTouching = 1e-12;
    const auto side = [](const Vec3d& from, const Vec3d& to, const Vec3d& point) {
        return (to.x - from.x) * (point.y - from.y) - (to.y - from.y) * (point.x - from.x);
    };
    const auto areApart = [](double one, double other) {
        return std::fmin(one, other) < -kTouching && std::fmax(one, other) > kTouching;
    };
    return areApart(side(a, b, c), side(a, b, d)) && areApart(side(c, d, a), side(c, d, b));
}

/// True where sides of different loops cross, or where the sides are too many to compare.
bool haveCrossings(const std::vector<TrimLoop>& loops)
{
    std::size_t left = kMaxComparedSides;
    std::vector<Box> boxes;
    for (const TrimLoop& loop : loops) {
        boxes.push_back(boxOf(loop.outline));
    }
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const auto& outline = loops[i].outline;
        for (std::size_t j = i + 1; j < loops.size(); ++j) {
            const auto& other = loops[j].outline;
            for (std::size_t k = 0; k < outline.size() && boxes[i].meets(boxes[j]); ++k) {
                const Vec3d& a = outline[k];
                const Vec3d& b = outline[(k + 1) % outline.size()];
                if (!boxOf({a, b}).meets(boxes[j])) {
                    continue;
                }
                if (other.size() > left) {
                    return true;
                }
                left -= other.size();
                for (std::size_t m = 0; m < other.size(); ++m) {
                    if (doCross(a, b, other[m], other[(m + 1) % other.size()])) {
                        return true;
                    }
                }
            }
        }
    }
    return false;
}

/// The rectangle's own boundary.
TrimLoop rimOf(const SurfaceData& plane, const Rectangle& rectangle)
{
    const std::vector<Vec3d> corners{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    TrimLoop loop;
    loop.outline = corners;
    for (std::size_t i = 0; i < 4 && !plane.poles.empty(); ++i) {
        const Vec3d a = corners[i];
        const Vec3d b = corners[(i + 1) % 4];
        const auto inSpace = [&](const Vec3d& p) {
            return rectangle.corner + rectangle.x * p.x + rectangle.y * p.y;
        };
        TrimEdge edge;
        edge.curves3d.push_back(curveOf(lineRows(inSpace(a), inSpace(b), 0, 1, 1, 1), false));
        edge.curves2d.push_back(curveOf(lineRows(a, b, 0, 1, 1, 1), false, 2));
        loop.edges.push_back(std::move(edge));
    }
    return loop;
}

} // namespace

std::vector<std::shared_ptr<const TrimRegion>> regionsOf(std::vector<TrimLoop> loops)
{
    // How many loops lie around each one, and which of them is the nearest.
    std::vector<std::size_t> depth(loops.size(), 0);
    std::vector<std::size_t> outer(loops.size(), loops.size());
    for (std::size_t i = 0; i < loops.size(); ++i) {
        for (std::size_t j = 0; j < loops.size(); ++j) {
            if (i == j || !isInside(loops[i], loops[j])) {
                continue;
            }
            ++depth[i];
            const bool isNearer =
                outer[i] == loops.size() || std::fabs(signedArea(loops[j].outline)) <
                                                std::fabs(signedArea(loops[outer[i]].outline));
            outer[i] = isNearer ? j : outer[i];
        }
    }
    std::vector<std::shared_ptr<const TrimRegion>> regions;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        if (depth[i] % 2 != 0) {
            continue;
        }
        auto region = std::make_shared<TrimRegion>();
        region->boundaries.push_back(boundaryOf(loops[i], false));
        for (std::size_t j = 0; j < loops.size(); ++j) {
            if (outer[j] == i && depth[j] == depth[i] + 1) {
                region->boundaries.push_back(boundaryOf(loops[j], true));
            }
        }
        regions.push_back(std::move(region));
    }
    return regions;
}

SurfaceData planarTrimSurface(std::span<const CurveData> curves, const PlanarTrimOptions& options,
                              bool* isCrossed)
{
    const std::vector<Chain> chains = closedChains(curves, options.tolerance);
    Vec3d area;
    for (const Chain& chain : chains) {
        const Vec3d own = areaOf(outlineOf(chain));
        area = length(own) > length(area) ? own : area;
    }
    if (!(length(area) > 0) || !std::isfinite(length(area))) {
        return {};
    }
    const Rectangle rectangle =
        rectangleAround(chains, normalized(area), options.keepsOutside ? kOutsideMargin : 0);
    const std::int32_t degree = options.degree == 1 ? 1 : 3;
    SurfaceData plane =
        translated(lineRows(rectangle.corner, rectangle.corner + rectangle.x, 0, 1, 1, degree),
                   lineRows({}, rectangle.y, 0, 1, 1, degree), {}, false);
    std::vector<TrimLoop> loops;
    for (const Chain& chain : chains) {
        TrimLoop loop;
        for (const Piece& piece : chain) {
            loop.edges.push_back(edgeOf(piece, rectangle));
        }
        for (const Vec3d& point : outlineOf(chain)) {
            loop.outline.push_back(rectangle.parameters(point));
        }
        loops.push_back(std::move(loop));
    }
    loops = withoutRepeated(std::move(loops));
    if (isCrossed != nullptr) {
        *isCrossed = haveCrossings(loops);
    }
    if (options.keepsOutside) {
        loops.push_back(rimOf(plane, rectangle));
    }
    plane.trims = regionsOf(std::move(loops));
    return plane;
}

} // namespace host::geometry
