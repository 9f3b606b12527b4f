#include "host/geometry/tessellation/GridLines.h"

#include "host/math/angle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::size_t kProbes = 4;      ///< segments per span that are measured
constexpr std::size_t kProbeLines = 17; ///< lines along which a direction is measured
constexpr std::size_t kMaxProbes = std::size_t{1}
                                   << 22; ///< points measured, but two lines at least
constexpr double kVisibleTurn = 5 * std::numbers::pi / 180;
constexpr double kStraight = 1e-7; ///< second difference of what counts as even, in diagonals

/// What was measured of one span.
struct Bend {
    double turn = 0;   ///< radians over the span, by its most bent quarter
    double across = 0; ///< second difference of a quarter, across the chord
    double any = 0;    ///< the same in any direction
    double twist = 0;  ///< bend of a quad of a quarter by half a span of the other direction
};

struct Direction {
    std::vector<double> parameters; ///< kProbes per span, and the end
    std::vector<Bend> bends;        ///< per span
    std::vector<double> lengths;    ///< along a line in the middle, up to each parameter
};

double twistOf(const Vec3d& a, const Vec3d& b, const Vec3d& c, const Vec3d& d)
{
    const Vec3d normal = normalized(cross(d - a, c - b));
    return std::fabs(dot(a - b - c + d, normal));
}

/// Adds what five points along one span, and the same on the next line, show.
void measure(std::span<const Vec3d, kProbes + 1> points, const Vec3d* beside, double tiny,
             Bend& bend)
{
    for (std::size_t i = 1; i < kProbes; ++i) {
        const Vec3d back = points[i] - points[i - 1];
        const Vec3d ahead = points[i + 1] - points[i];
        const Vec3d chord = points[i + 1] - points[i - 1];
        const double chordLength = length(chord);
        bend.any = std::max(bend.any, length(ahead - back));
        if (length(back) > tiny && length(ahead) > tiny) {
            // Were the whole span bent as much as here.
            bend.turn = std::max(bend.turn,
                                 kProbes * angleOf(length(cross(back, ahead)), dot(back, ahead)));
        }
        if (chordLength > tiny) {
            bend.across = std::max(bend.across, length(cross(ahead - back, chord)) / chordLength);
        }
    }
    for (std::size_t i = 0; beside != nullptr && i < kProbes; ++i) {
        bend.twist =
            std::max(bend.twist, twistOf(points[i], points[i + 1], beside[i], beside[i + 1]));
    }
}

Direction measureDirection(const SurfaceSheet& sheet, bool isU)
{
    const SurfaceEvaluator& evaluator = sheet.evaluator();
    const KnotVector& along = isU ? evaluator.knotsU() : evaluator.knotsV();
    const KnotVector& other = isU ? evaluator.knotsV() : evaluator.knotsU();
    Direction result;
    result.parameters = refinedBreaks(along, kProbes);
    const std::vector<double> lines =
        thinned(refinedBreaks(other, 2),
                std::clamp(kMaxProbes / result.parameters.size(), std::size_t{2}, kProbeLines));
    const std::size_t count = result.parameters.size();
    result.bends.resize((count - 1) / kProbes);
    std::vector<Vec3d> points(count * lines.size());
    if (isU) {
        std::vector<Vec3d> grid(points.size());
        evaluator.pointGrid(result.parameters, lines, grid);
        for (std::size_t i = 0; i < grid.size(); ++i) {
            points[i % lines.size() * count + i / lines.size()] = grid[i];
        }
    } else {
        evaluator.pointGrid(lines, result.parameters, points);
    }
    for (std::size_t line = 0; line < lines.size(); ++line) {
        for (std::size_t span = 0; span < result.bends.size(); ++span) {
            const Vec3d* first = &points[line * count + span * kProbes];
            measure(std::span<const Vec3d, kProbes + 1>(first, kProbes + 1),
                    line + 1 < lines.size() ? first + count : nullptr,
                    SurfaceSheet::kSamePlace * sheet.size(), result.bends[span]);
        }
    }
    const Vec3d* middle = &points[lines.size() / 2 * count];
    result.lengths.assign(1, 0);
    for (std::size_t i = 1; i < count; ++i) {
        result.lengths.push_back(result.lengths.back() + length(middle[i] - middle[i - 1]));
    }
    return result;
}

/// Segments that a span needs, at least 1.
double segmentsOf(const Bend& bend, double size, const TessellationSettings& settings, bool isFree)
{
    const double chord = std::min(settings.chordTolerance * size, settings.chordHeight);
    double count =
        std::max(bend.turn / settings.angleTolerance, std::sqrt(2 * bend.across / chord));
    count = std::max(count, std::sqrt(2 * bend.twist / chord));
    if (isFree && bend.turn > kVisibleTurn) {
        count = std::max(count, static_cast<double>(settings.curvedSpanSegments));
    } else if (isFree && bend.any > kStraight * size) {
        count = std::max(count, 2.0);
    }
    constexpr double kRounding = 1e-9; // 12 / 3 segments are 4, whatever the last digit says
    count = std::ceil(count - kRounding);
    return count >= 1 ? std::min(count, static_cast<double>(kMaxSegmentsPerSpan)) : 1;
}

/// Places that a mode begins with.
std::vector<double> firstLines(const Direction& direction, const LineSettings& settings)
{
    const std::vector<double>& probes = direction.parameters;
    const auto number =
        static_cast<std::size_t>(std::clamp(settings.number, 1, kMaxSegmentsPerSpan));
    std::vector<double> lines{probes.front()};
    if (settings.mode == LineMode::ByTolerance || settings.mode == LineMode::PerSpan) {
        const std::size_t pieces = settings.mode == LineMode::PerSpan ? number : 1;
        for (std::size_t i = kProbes; i < probes.size(); i += kProbes) {
            const double from = probes[i - kProbes];
            for (std::size_t k = 1; k < pieces; ++k) {
                lines.push_back(from + (probes[i] - from) *
                                           (static_cast<double>(k) / static_cast<double>(pieces)));
            }
            lines.push_back(probes[i]);
        }
        return lines;
    }
    const bool isByLength =
        settings.mode == LineMode::PerSurfaceByLength && direction.lengths.back() > 0;
    std::size_t at = 1;
    for (std::size_t k = 1; k < number; ++k) {
        const double share = static_cast<double>(k) / static_cast<double>(number);
        if (!isByLength) {
            lines.push_back(probes.front() + share * (probes.back() - probes.front()));
            continue;
        }
        const double wanted = share * direction.lengths.back();
        while (direction.lengths[at] < wanted) {
            ++at;
        }
        const double step = direction.lengths[at] - direction.lengths[at - 1];
        const double t = (wanted - direction.lengths[at - 1]) / step;
        const double line = probes[at - 1] + t * (probes[at] - probes[at - 1]);
        if (line > lines.back()) {
            lines.push_back(line);
        }
    }
    lines.push_back(probes.back());
    return lines;
}

/// Segments per interval between the first lines, so that each span gets its share.
std::vector<double> intervalSegments(const Direction& direction, const std::vector<double>& lines,
                                     double size, const TessellationSettings& settings, bool isFree)
{
    std::vector<double> counts(lines.size() - 1, 1);
    std::size_t span = 0;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        while (span > 0 && direction.parameters[span * kProbes] > lines[i]) {
            --span;
        }
        for (; span < direction.bends.size(); ++span) {
            const double from = direction.parameters[span * kProbes];
            const double to = direction.parameters[(span + 1) * kProbes];
            if (from >= lines[i + 1]) {
                break;
            }
            const double needed = segmentsOf(direction.bends[span], size, settings, isFree);
            const double share = std::min(1.0, (lines[i + 1] - lines[i]) / (to - from));
            counts[i] = std::max(counts[i], std::ceil(needed * share - 1e-6));
        }
        span = span > 0 ? span - 1 : 0;
    }
    return counts;
}

double sumOf(const std::vector<double>& counts)
{
    double sum = 0;
    for (const double count : counts) {
        sum += count;
    }
    return sum;
}

std::vector<double> cutLines(const std::vector<double>& lines, const std::vector<double>& counts)
{
    std::vector<double> result{lines.front()};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        for (double k = 1; k < counts[i]; ++k) {
            result.push_back(lines[i] + (lines[i + 1] - lines[i]) * (k / counts[i]));
        }
        result.push_back(lines[i + 1]);
    }
    return result;
}

/// Fewer segments per interval, and fewer lines where even that is too many.
std::vector<double> coarsened(const std::vector<double>& lines, std::vector<double> counts,
                              double factor)
{
    for (double& count : counts) {
        count = std::max(1.0, std::floor(count * factor));
    }
    return cutLines(lines, counts);
}

} // namespace

GridLines chooseGridLines(const SurfaceSheet& sheet, const TessellationSettings& settings)
{
    std::array<std::vector<double>, 2> lines;
    std::array<std::vector<double>, 2> counts;
    for (const std::size_t axis : {std::size_t{0}, std::size_t{1}}) {
        const Direction direction = measureDirection(sheet, axis == 0);
        const LineSettings& own = axis == 0 ? settings.u : settings.v;
        lines[axis] = firstLines(direction, own);
        counts[axis] = intervalSegments(direction, lines[axis], sheet.size(), settings,
                                        own.mode == LineMode::ByTolerance);
    }
    const double most = static_cast<double>(std::max<std::size_t>(settings.maxTriangles, 2)) / 2;
    const double cells = sumOf(counts[0]) * sumOf(counts[1]);
    GridLines result{{}, {}, cells > most};
    if (!result.isCoarsened) {
        result.us = cutLines(lines[0], counts[0]);
        result.vs = cutLines(lines[1], counts[1]);
        return result;
    }
    const double factor = std::sqrt(most / cells);
    result.us = coarsened(lines[0], counts[0], factor);
    result.vs = coarsened(lines[1], counts[1], factor);
    // Spans alone may be too many: then both directions keep every so many lines.
    while (static_cast<double>(result.cellCount()) > most) {
        std::vector<double>& longer = result.us.size() > result.vs.size() ? result.us : result.vs;
        longer = thinned(longer, longer.size() / 2 + 1);
    }
    return result;
}

} // namespace host::geometry
