// Settings that the history nodes of curves and those of surfaces share.
#pragma once

#include "host/geometry/curve/SplineRows.h"
#include "host/types/ComputeContext.h"

#include <vector>

namespace host::nodes {

/// The elements of a numeric multi, ascending.
std::vector<double> numbersInput(ComputeContext& context, std::size_t position);

/// New knots at parameters, or between them.
struct KnotInsertion {
    std::vector<double> parameters;
    std::vector<double> counts; ///< per parameter; the last holds for those after it
    bool adds = true;           ///< so many more, else so many in all
    bool isBetween = false;     ///< evenly between neighbouring parameters
};
/// From four neighbouring inputs: parameter, numberOfKnots, addKnots, insertBetween.
KnotInsertion readInsertion(ComputeContext& context, std::size_t first);
/// False where there would be too many control points, or insertions for one node: some are left
/// out then.
bool insert(geometry::SplineRows& rows, const KnotInsertion& insertion);

/// One direction of a rebuilding.
struct RebuildChoice {
    int type = 0; ///< 0 uniform, 1 reduce, 2 match, 3 simple knots, 5 ends; 7 Bezier (surfaces)
    std::int32_t spans = 4;
    std::int32_t degree = 3; ///< 0 as it was
    int keepRange = 1;
    bool keepsControlPoints = false;
    bool isSurface = true;
};
/// From five neighbouring inputs: rebuildType, spans, degree, keepRange, keepControlPoints.
RebuildChoice readRebuild(ComputeContext& context, std::size_t first);
/// False where the result is a stand-in for the true one.
bool rebuild(geometry::SplineRows& rows, const RebuildChoice& choice,
             const geometry::SplineRows& model);

/// The part between two parameters, shares of the domain when relative; all of it where low is not
/// below high.
geometry::SplineRows partInRange(const geometry::SplineRows& rows, double low, double high,
                                 bool isRelative);

} // namespace host::nodes
