#include "host/geometry/tessellation/trimLoops.h"

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/math/angle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

constexpr double kSamePoint = 1e-6;      ///< ends of edges that are one point, in diagonals
constexpr double kOutside = 1e-4;        ///< of the domain that a curve may leave it unnoticed
constexpr double kPlaneDeparture = 0.02; ///< of a line from the curve in the plane, in diagonals

/// The rectangle of the parameters.
struct Domain {
    double startU = 0, endU = 1, startV = 0, endV = 1;

    explicit Domain(const SurfaceEvaluator& evaluator)
        : startU(evaluator.startU())
        , endU(evaluator.endU())
        , startV(evaluator.startV())
        , endV(evaluator.endV())
    {
    }
    double sizeU() const { return endU - startU; }
    double sizeV() const { return endV - startV; }
    /// Distance, with each direction measured in its length.
    double distance(const PlanePosition& a, const PlanePosition& b) const
    {
        const double u = (b.x - a.x) / sizeU();
        const double v = (b.y - a.y) / sizeV();
        return std::sqrt(u * u + v * v);
    }
    PlanePosition inside(const PlanePosition& p) const
    {
        return {std::clamp(p.x, startU, endU), std::clamp(p.y, startV, endV)};
    }
};

/// The same curve run the other way, its knots negated.
CurveData reversed(const CurveData& curve)
{
    CurveData result = curve;
    std::reverse(result.knots.begin(), result.knots.end());
    for (double& knot : result.knots) {
        knot = -knot;
    }
    const std::size_t stride = curve.stride();
    const std::size_t count = curve.cvCount();
    for (std::size_t i = 0; i < count; ++i) {
        std::copy_n(curve.poles.begin() + static_cast<std::ptrdiff_t>((count - 1 - i) * stride),
                    stride, result.poles.begin() + static_cast<std::ptrdiff_t>(i * stride));
    }
    return result;
}

/// Of a curve and its reversal exactly one is backward, unless they are the same.
bool isBackward(const CurveData& curve)
{
    const std::size_t stride = curve.stride();
    const std::size_t count = curve.cvCount();
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < stride; ++k) {
            const double ahead = curve.poles[i * stride + k];
            const double behind = curve.poles[(count - 1 - i) * stride + k];
            if (ahead != behind) {
                return ahead > behind;
            }
        }
    }
    return false;
}

class BoundarySampler {
public:
    BoundarySampler(const SurfaceSheet& sheet, const GridLines& lines,
                    const TessellationSettings& settings, std::size_t& pointsLeft,
                    TessellationNotes& notes)
        : m_pointsLeft(pointsLeft)
        , m_sheet(sheet)
        , m_lines(lines)
        , m_settings(settings)
        , m_notes(notes)
        , m_domain(sheet.evaluator())
    {
    }

    /// The polygon of a boundary; empty when it does not close.
    std::vector<PlanePosition> sample(const TrimBoundary& boundary);
    std::vector<PlanePosition> border() const;

private:
    struct Sample {
        double t = 0;
        PlanePosition place;
        Vec3d position;
    };
    using Places = std::vector<PlanePosition>;

    bool samplePiece(const CurveData& curve, Places& piece);
    bool runsAlongLine(const CurveData& curve, Places& piece) const;
    void refine(const CurveEvaluator& curve, double from, double to, Places& piece);
    Sample sampleAt(const CurveEvaluator& curve, double t);
    bool takePoint();
    bool mustSplit(const CurveEvaluator& curve, const Sample& a, const Sample& b);
    /// The pieces of a boundary so far.
    struct Chain {
        Places places;
        int pieces = 0;
        bool isBridged = false; ///< an edge is missing since the last piece
        bool hasBridges = false;
        bool isOpen = false;
    };
    void join(Places& piece, Chain& chain) const;
    void addEdge(const TrimEdge& edge, Chain& chain);

    std::size_t& m_pointsLeft;
    const SurfaceSheet& m_sheet;
    const GridLines& m_lines;
    const TessellationSettings& m_settings;
    TessellationNotes& m_notes;
    Domain m_domain;
};

BoundarySampler::Sample BoundarySampler::sampleAt(const CurveEvaluator& curve, double t)
{
    const Vec3d on = curve.point(t);
    const PlanePosition place{on.x, on.y};
    const PlanePosition inside = m_domain.inside(place);
    if (!(m_domain.distance(place, inside) <= kOutside)) {
        m_notes.add(TessellationNote::OutsideDomain);
    }
    return {t, inside, m_sheet.evaluator().point(inside.x, inside.y)};
}

/// Whether the line from a to b departs too far from the curve, by its quarters.
bool BoundarySampler::mustSplit(const CurveEvaluator& curve, const Sample& a, const Sample& b)
{
    std::array<Sample, 3> between;
    const Vec3d chord = b.position - a.position;
    const double tiny = SurfaceSheet::kSamePlace * m_sheet.size();
    const double tolerance =
        std::min(m_settings.chordTolerance * m_sheet.size(), m_settings.chordHeight);
    for (std::size_t i = 0; i < 3; ++i) {
        const double share = 0.25 * static_cast<double>(i + 1);
        between[i] = sampleAt(curve, a.t + share * (b.t - a.t));
        const PlanePosition onLine{a.place.x + share * (b.place.x - a.place.x),
                                   a.place.y + share * (b.place.y - a.place.y)};
        const Vec3d off = between[i].position - a.position;
        const double departure =
            length(chord) > tiny ? length(cross(off, chord)) / length(chord) : length(off);
        if (departure > std::max(tolerance, tiny) ||
            m_domain.distance(onLine, between[i].place) > kPlaneDeparture) {
            return true;
        }
    }
    const Vec3d first = between[0].position - a.position;
    const Vec3d last = b.position - between[2].position;
    // The first and the last quarter stand for their middles: three quarters of the turn.
    return length(first) > tiny && length(last) > tiny &&
           angleOf(length(cross(first, last)), dot(first, last)) >
               0.75 * m_settings.edgeAngleTolerance;
}

bool BoundarySampler::takePoint()
{
    if (m_pointsLeft == 0) {
        m_notes.add(TessellationNote::Coarsened);
        return false;
    }
    --m_pointsLeft;
    return true;
}

/// Appends the points after `from` up to `to`.
void BoundarySampler::refine(const CurveEvaluator& curve, double from, double to, Places& piece)
{
    struct Part {
        Sample end;
        int halvings = 0;
    };
    std::vector<Part> parts{{sampleAt(curve, to), 0}};
    Sample here = sampleAt(curve, from);
    while (!parts.empty()) {
        Part& part = parts.back();
        if (part.halvings < kMaxTrimHalvings && mustSplit(curve, here, part.end) && takePoint()) {
            const int halvings = ++part.halvings;
            parts.push_back({sampleAt(curve, 0.5 * (here.t + part.end.t)), halvings});
            continue;
        }
        here = part.end;
        piece.push_back(here.place);
        parts.pop_back();
    }
}

/// Samples a piece that keeps one of its parameters where the lines of the grid cross it.
bool BoundarySampler::runsAlongLine(const CurveData& curve, Places& piece) const
{
    const std::size_t stride = curve.stride();
    const std::size_t count = curve.cvCount();
    const PlanePosition from = m_domain.inside({curve.poles[0], curve.poles[1]});
    const PlanePosition to =
        m_domain.inside({curve.poles[(count - 1) * stride], curve.poles[(count - 1) * stride + 1]});
    const bool isAlongV = std::fabs(to.x - from.x) <= 1e-9 * m_domain.sizeU();
    const std::size_t axis = isAlongV ? 1 : 0;
    const double size = isAlongV ? m_domain.sizeU() : m_domain.sizeV();
    for (std::size_t i = 1; i < count; ++i) {
        const double step = curve.poles[i * stride + axis] - curve.poles[(i - 1) * stride + axis];
        const double run = isAlongV ? to.y - from.y : to.x - from.x;
        const double off = curve.poles[i * stride + 1 - axis] - curve.poles[1 - axis];
        if (step * run < 0 || std::fabs(off) > 1e-9 * size) {
            return false;
        }
    }
    const std::vector<double>& lines = isAlongV ? m_lines.vs : m_lines.us;
    const double start = isAlongV ? from.y : from.x;
    const double end = isAlongV ? to.y : to.x;
    const double margin = 1e-9 * (lines.back() - lines.front());
    const auto first = std::upper_bound(lines.begin(), lines.end(), std::min(start, end) + margin);
    const auto last = std::lower_bound(lines.begin(), lines.end(), std::max(start, end) - margin);
    Places between;
    for (auto line = first; line < last; ++line) {
        between.push_back(isAlongV ? PlanePosition{from.x, *line} : PlanePosition{*line, from.y});
    }
    if (start > end) {
        std::reverse(between.begin(), between.end());
    }
    piece.push_back(from);
    piece.insert(piece.end(), between.begin(), between.end());
    piece.push_back(to);
    return true;
}

/// False when the curve cannot be evaluated in the plane.
bool BoundarySampler::samplePiece(const CurveData& curve, Places& piece)
{
    if (curve.dimension != 2 || !isValidCurve(curve)) {
        return false;
    }
    const bool isTurned = isBackward(curve);
    const CurveEvaluator evaluator(isTurned ? reversed(curve) : curve);
    if (!runsAlongLine(isTurned ? reversed(curve) : curve, piece)) {
        const std::vector<double> parameters =
            refinedBreaks(evaluator.knots(), curve.degree == 1 ? 1 : 2);
        piece.push_back(sampleAt(evaluator, parameters.front()).place);
        for (std::size_t i = 1; i < parameters.size(); ++i) {
            refine(evaluator, parameters[i - 1], parameters[i], piece);
        }
    }
    if (isTurned) {
        std::reverse(piece.begin(), piece.end());
    }
    return true;
}

/// Appends a piece to the chain. A piece that fits with its end only is turned round, and so is the
/// first one when the second asks for it.
void BoundarySampler::join(Places& piece, Chain& chain) const
{
    constexpr double kNear = 1e-3;
    const auto gap = [&](const PlanePosition& a, const PlanePosition& b) {
        return m_domain.distance(a, b);
    };
    Places& places = chain.places;
    if (!places.empty() && gap(places.back(), piece.front()) > kNear) {
        if (chain.pieces == 1 && gap(places.back(), piece.back()) > kNear &&
            std::min(gap(places.front(), piece.front()), gap(places.front(), piece.back())) <=
                kNear) {
            std::reverse(places.begin(), places.end());
        }
        if (gap(places.back(), piece.back()) <= kNear &&
            gap(places.back(), piece.back()) < gap(places.back(), piece.front())) {
            std::reverse(piece.begin(), piece.end());
        }
        chain.isOpen =
            chain.isOpen || (!chain.isBridged && gap(places.back(), piece.front()) > kMaxTrimGap);
    }
    const bool isShared = !places.empty() && gap(places.back(), piece.front()) <= kSamePoint;
    places.insert(places.end(), piece.begin() + (isShared ? 1 : 0), piece.end());
    ++chain.pieces;
    chain.isBridged = false;
}

void BoundarySampler::addEdge(const TrimEdge& edge, Chain& chain)
{
    bool isSampled = !edge.curves2d.empty();
    for (const CurveData& curve : edge.curves2d) {
        Places piece;
        if (samplePiece(curve, piece)) {
            join(piece, chain);
        } else {
            isSampled = false;
            chain.isBridged = true;
        }
    }
    if (!isSampled) {
        chain.isBridged = true;
        chain.hasBridges = true;
        m_notes.add(TessellationNote::MissingParameterEdge);
    }
}

std::vector<PlanePosition> BoundarySampler::sample(const TrimBoundary& boundary)
{
    Chain chain;
    for (const TrimEdge& edge : boundary.edges) {
        addEdge(edge, chain);
    }
    Places& places = chain.places;
    if (places.size() < 2) {
        return {};
    }
    const double last = m_domain.distance(places.back(), places.front());
    if (chain.isOpen || (!chain.hasBridges && last > kMaxTrimGap)) {
        m_notes.add(TessellationNote::OpenBoundary);
        return {};
    }
    if (last <= kSamePoint) {
        places.pop_back();
    }
    places.erase(std::unique(places.begin(), places.end()), places.end());
    if (places.size() < 3) {
        m_notes.add(TessellationNote::EmptyBoundary);
    }
    return places;
}

/// The border of the domain, counter-clockwise.
std::vector<PlanePosition> BoundarySampler::border() const
{
    Places places;
    for (std::size_t i = 0; i + 1 < m_lines.us.size(); ++i) {
        places.push_back({m_lines.us[i], m_domain.startV});
    }
    for (std::size_t k = 0; k + 1 < m_lines.vs.size(); ++k) {
        places.push_back({m_domain.endU, m_lines.vs[k]});
    }
    for (std::size_t i = m_lines.us.size(); i-- > 1;) {
        places.push_back({m_lines.us[i], m_domain.endV});
    }
    for (std::size_t k = m_lines.vs.size(); k-- > 1;) {
        places.push_back({m_domain.startU, m_lines.vs[k]});
    }
    return places;
}

double areaOf(const std::vector<PlanePosition>& loop)
{
    double twice = 0;
    for (std::size_t i = 1; i + 1 < loop.size(); ++i) {
        twice += (loop[i].x - loop[0].x) * (loop[i + 1].y - loop[0].y) -
                 (loop[i].y - loop[0].y) * (loop[i + 1].x - loop[0].x);
    }
    return twice / 2;
}

} // namespace

std::vector<BoundaryLoop> sampleTrimRegion(const TrimRegion& region, const SurfaceSheet& sheet,
                                           const GridLines& lines,
                                           const TessellationSettings& settings,
                                           std::size_t& pointsLeft, TessellationNotes& notes)
{
    BoundarySampler sampler(sheet, lines, settings, pointsLeft, notes);
    std::vector<BoundaryLoop> loops;
    bool hasOuter = false;
    for (const TrimBoundary& boundary : region.boundaries) {
        const bool isHole = boundary.type == 1;
        BoundaryLoop loop{sampler.sample(boundary), isHole};
        if (loop.points.empty()) {
            continue;
        }
        hasOuter = hasOuter || !isHole;
        if ((areaOf(loop.points) > 0) == isHole) {
            std::reverse(loop.points.begin(), loop.points.end());
        }
        loops.push_back(std::move(loop));
    }
    if (!hasOuter) {
        loops.push_back({sampler.border(), false});
    }
    return loops;
}

} // namespace host::geometry
