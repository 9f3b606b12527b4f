// A B-spline surface and its trim regions as files store them.
#pragma once

#include "host/geometry/curve/CurveData.h"

#include <memory>

namespace host::geometry {

/// One edge of a trim boundary: curves in space and in the parameter plane that belong together.
struct TrimEdge {
    std::vector<CurveData> curves3d;
    double tolerance3d = 0;
    bool reversed = false;
    std::int32_t continuity = -1;
    std::vector<CurveData> curves2d;
    bool monotone = false;
    double tolerance2d = 0;
};

struct TrimBoundary {
    std::int32_t type = 0; ///< 0 outer, 1 hole
    std::vector<std::int32_t> edgeFlags;
    std::vector<TrimEdge> edges;
};

/// One connected region of a trimmed surface: the first boundary is the outer one, the others its
/// holes.
struct TrimRegion {
    bool flipNormal = false;
    std::vector<TrimBoundary> boundaries;
};

/// Control points: v runs fastest, (x y z) or (x y z w) each, centimetres; knots without the two
/// outermost of each direction. Coordinates are not multiplied by the weight.
struct SurfaceData {
    std::int32_t degreeU = 0, degreeV = 0;
    SplineForm formU = SplineForm::Open, formV = SplineForm::Open;
    bool rational = false;
    std::vector<double> knotsU, knotsV;
    std::vector<double> poles;
    std::vector<std::shared_ptr<const TrimRegion>> trims; ///< empty: untrimmed

    std::size_t stride() const { return rational ? 4 : 3; }
    std::size_t cvCountU() const { return knotsU.size() + 1 - static_cast<std::size_t>(degreeU); }
    std::size_t cvCountV() const { return knotsV.size() + 1 - static_cast<std::size_t>(degreeV); }
    /// The ends of the domain. Precondition: counts that fit the degrees.
    double startU() const { return knotsU[static_cast<std::size_t>(degreeU) - 1]; }
    double endU() const { return knotsU[cvCountU() - 1]; }
    double startV() const { return knotsV[static_cast<std::size_t>(degreeV) - 1]; }
    double endV() const { return knotsV[cvCountV() - 1]; }
    bool isTrimmed() const { return !trims.empty(); }
};

} // namespace host::geometry
