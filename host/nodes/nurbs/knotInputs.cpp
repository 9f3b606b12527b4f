#include "host/nodes/nurbs/knotInputs.h"

#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/curve/rebuild.h"
#include "host/nodes/nurbs/splineInputs.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::SplineRows;

/// More knots than this are not inserted by one node.
constexpr std::size_t kMaxInserted = 1u << 12;
/// Of one knot.
constexpr std::size_t kMostCopies = 64;

geometry::KeptRange keptRange(int number)
{
    return number == 0   ? geometry::KeptRange::ZeroToOne
           : number == 2 ? geometry::KeptRange::ZeroToSpans
                         : geometry::KeptRange::Same;
}

std::size_t countAt(const KnotInsertion& insertion, std::size_t position)
{
    const auto& counts = insertion.counts;
    const double count = counts.empty() ? 1 : counts[std::min(position, counts.size() - 1)];
    return count >= 1 ? static_cast<std::size_t>(std::min(count, double{kMostCopies})) : 0;
}

} // namespace

std::vector<double> numbersInput(ComputeContext& context, std::size_t position)
{
    std::vector<double> numbers;
    for (const std::int32_t index : context.elementIndices(position)) {
        numbers.push_back(context.element(position, index).number(0));
    }
    return numbers;
}

KnotInsertion readInsertion(ComputeContext& context, std::size_t first)
{
    KnotInsertion insertion;
    insertion.parameters = numbersInput(context, first);
    insertion.counts = numbersInput(context, first + 1);
    insertion.adds = context.number(first + 2, 1) != 0;
    insertion.isBetween = context.number(first + 3, 0) != 0;
    return insertion;
}

bool insert(SplineRows& rows, const KnotInsertion& insertion)
{
    std::vector<double> at = insertion.parameters;
    const std::size_t most = geometry::kMaxInsertionWork / kMostCopies / rows.points.size();
    bool isWhole = at.size() <= std::min(most, kMaxInserted);
    if (!isWhole) {
        at.resize(std::min(most, kMaxInserted));
    }
    if (insertion.isBetween) {
        std::sort(at.begin(), at.end());
        for (std::size_t i = 0; i + 1 < at.size(); ++i) {
            const std::size_t count = countAt(insertion, i);
            for (std::size_t k = 1; k <= count; ++k) {
                const double share = static_cast<double>(k) / static_cast<double>(count + 1);
                const double u = at[i] + (at[i + 1] - at[i]) * share;
                isWhole = geometry::insertKnot(rows, u, 1) && isWhole;
            }
        }
        return isWhole;
    }
    const double tolerance = geometry::kKnotTolerance * (rows.end() - rows.start());
    for (std::size_t i = 0; i < at.size(); ++i) {
        const geometry::KnotVector line(rows.knots, rows.degree, rows.form);
        const std::size_t present = insertion.adds ? 0 : line.multiplicity(at[i], tolerance);
        const std::size_t wanted = countAt(insertion, i);
        const std::size_t missing = wanted > present ? wanted - present : 0;
        isWhole = geometry::insertKnot(rows, at[i], missing) && isWhole;
    }
    return isWhole;
}

RebuildChoice readRebuild(ComputeContext& context, std::size_t first)
{
    constexpr std::int32_t kMostSpans = geometry::kMaxRebuiltSpans;
    RebuildChoice choice;
    choice.type = wholeInput(context, first, 0, 0, 16);
    choice.spans = countInput(context, first + 1, 4, kMostSpans, 0);
    choice.degree = wholeInput(context, first + 2, 3, 0, 7);
    choice.keepRange = wholeInput(context, first + 3, 1, 0, 2);
    choice.keepsControlPoints = flagInput(context, first + 4, false);
    return choice;
}

bool rebuild(SplineRows& rows, const RebuildChoice& choice, const SplineRows& model)
{
    const double start = rows.start();
    const double end = rows.end();
    const SplineRows before = rows;
    bool isExact = true;
    switch (choice.type) {
    case 0:
        isExact = choice.keepsControlPoints;
        rows = choice.keepsControlPoints
                   ? geometry::uniformKnotsKeepingPoints(rows)
                   : geometry::uniform(rows, choice.degree, static_cast<std::size_t>(choice.spans));
        break;
    case 2:
        isExact = false;
        rows = geometry::withKnotsOf(rows, model);
        break;
    case 3:
        rows = geometry::withSimpleKnots(rows);
        isExact = rows.knots == before.knots;
        break;
    case 5:
        rows = geometry::clamped(rows);
        break;
    case 7:
        rows = choice.isSurface ? geometry::inBezierPieces(rows) : rows;
        isExact = choice.isSurface;
        break;
    default: // reducing, and what is not documented
        return false;
    }
    if (rows.points.empty()) {
        rows = before;
        return false;
    }
    geometry::setRange(rows, keptRange(choice.keepRange), start, end);
    return isExact;
}

SplineRows partInRange(const SplineRows& rows, double low, double high, bool isRelative)
{
    if (rows.points.empty() || !(low < high)) {
        return rows;
    }
    const double length = rows.end() - rows.start();
    if (isRelative) {
        low = rows.start() + low * length;
        high = rows.start() + high * length;
    }
    low = std::clamp(low, rows.start(), rows.end());
    high = std::clamp(high, rows.start(), rows.end());
    const SplineRows part = geometry::partOf(rows, low, high);
    return part.points.empty() ? rows : part;
}

} // namespace host::nodes
