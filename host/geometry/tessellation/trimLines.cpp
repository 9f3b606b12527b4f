#include "host/geometry/tessellation/trimLines.h"

#include "host/geometry/curve/CurveEvaluator.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

/// Length of a cell, in widths of it, that needs no further line.
constexpr double kSquare = 1.25;
/// Distance from a straight line, in diagonals of the surface, of what is bent.
constexpr double kBent = 1e-3;
/// Share of the domain by which a boundary along a line may leave it.
constexpr double kAlong = 1e-6;

struct Stretch {
    double low = 0;
    double high = 0;
};

/// The two directions; index 0 is u.
using Stretches = std::array<std::vector<Stretch>, 2>;

/// Adds the box round a curve's control points, unless it runs along one direction.
void addCurve(const CurveData& curve, const std::array<double, 2>& domain, Stretches& stretches)
{
    if (curve.dimension != 2 || !isValidCurve(curve)) {
        return;
    }
    std::array<Stretch, 2> box;
    for (const std::size_t axis : {std::size_t{0}, std::size_t{1}}) {
        box[axis] = {curve.poles[axis], curve.poles[axis]};
        for (std::size_t at = axis; at < curve.poles.size(); at += curve.stride()) {
            box[axis] = {std::min(box[axis].low, curve.poles[at]),
                         std::max(box[axis].high, curve.poles[at])};
        }
        if (!(box[axis].high - box[axis].low > kAlong * domain[axis])) {
            return;
        }
    }
    for (const std::size_t axis : {std::size_t{0}, std::size_t{1}}) {
        stretches[axis].push_back(box[axis]);
    }
}

/// Stretches of both directions that boundaries cross slantwise, ascending and apart.
Stretches slantingStretches(std::span<const std::shared_ptr<const TrimRegion>> regions,
                            const std::array<double, 2>& domain)
{
    Stretches stretches;
    for (const auto& region : regions) {
        for (const TrimBoundary& boundary :
             region != nullptr ? region->boundaries : std::vector<TrimBoundary>()) {
            for (const TrimEdge& edge : boundary.edges) {
                for (const CurveData& curve : edge.curves2d) {
                    addCurve(curve, domain, stretches);
                }
            }
        }
    }
    for (std::vector<Stretch>& list : stretches) {
        std::sort(list.begin(), list.end(),
                  [](const Stretch& a, const Stretch& b) { return a.low < b.low; });
        std::vector<Stretch> joined;
        for (const Stretch& stretch : list) {
            if (!joined.empty() && stretch.low <= joined.back().high) {
                joined.back().high = std::max(joined.back().high, stretch.high);
            } else {
                joined.push_back(stretch);
            }
        }
        list = std::move(joined);
    }
    return stretches;
}

/// Whether lines of a direction leave the straight line between their ends.
bool isBent(const SurfaceSheet& sheet, std::span<const double> along,
            std::span<const double> across, bool isU)
{
    const std::vector<double> lines = thinned(across, 5);
    std::vector<Vec3d> points(along.size());
    for (const double line : lines) {
        const std::array<double, 1> one{line};
        isU ? sheet.positions(along, one, points) : sheet.positions(one, along, points);
        const Vec3d chord = points.back() - points.front();
        const double chordLength = length(chord);
        for (const Vec3d& point : points) {
            const Vec3d way = point - points.front();
            const double away =
                chordLength > 0 ? length(cross(way, chord)) / chordLength : length(way);
            if (away > kBent * sheet.size()) {
                return true;
            }
        }
    }
    return false;
}

/// Pieces of each interval between lines: enough for `step` where a stretch meets it.
std::vector<std::size_t> piecesOf(const std::vector<double>& lines,
                                  const std::vector<Stretch>& stretches, double perParameter,
                                  double step)
{
    std::vector<std::size_t> pieces(lines.size() - 1, 1);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto stretch =
            std::upper_bound(stretches.begin(), stretches.end(), lines[i],
                             [](double at, const Stretch& known) { return at < known.high; });
        if (stretch == stretches.end() || stretch->low >= lines[i + 1]) {
            continue;
        }
        const double wanted = std::ceil((lines[i + 1] - lines[i]) * perParameter / step);
        const double most = kMaxSegmentsPerSpan;
        pieces[i] = wanted > 1 ? static_cast<std::size_t>(std::min(wanted, most)) : 1;
    }
    return pieces;
}

std::vector<double> cut(const std::vector<double>& lines, const std::vector<std::size_t>& pieces)
{
    std::vector<double> result{lines.front()};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        for (std::size_t k = 1; k < pieces[i]; ++k) {
            const double share = static_cast<double>(k) / static_cast<double>(pieces[i]);
            result.push_back(lines[i] + (lines[i + 1] - lines[i]) * share);
        }
        result.push_back(lines[i + 1]);
    }
    return result;
}

} // namespace

GridLines squaredNearTrims(const SurfaceSheet& sheet, GridLines lines,
                           std::span<const std::shared_ptr<const TrimRegion>> regions,
                           std::size_t maxTriangles)
{
    const std::array<double, 2> domain{lines.us.back() - lines.us.front(),
                                       lines.vs.back() - lines.vs.front()};
    const std::array<double, 2> steps{sheet.lengthU() / static_cast<double>(lines.us.size() - 1),
                                      sheet.lengthV() / static_cast<double>(lines.vs.size() - 1)};
    if (!(steps[0] > 0 && steps[1] > 0)) {
        return lines;
    }
    const Stretches stretches = slantingStretches(regions, domain);
    GridLines finer = lines;
    if (steps[1] > kSquare * steps[0] && isBent(sheet, lines.us, lines.vs, true)) {
        finer.vs = cut(lines.vs, piecesOf(lines.vs, stretches[1], sheet.lengthV() / domain[1],
                                          kSquare * steps[0]));
    } else if (steps[0] > kSquare * steps[1] && isBent(sheet, lines.vs, lines.us, false)) {
        finer.us = cut(lines.us, piecesOf(lines.us, stretches[0], sheet.lengthU() / domain[0],
                                          kSquare * steps[1]));
    }
    return 2 * finer.cellCount() <= maxTriangles ? finer : lines;
}

} // namespace host::geometry
