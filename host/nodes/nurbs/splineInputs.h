// Curves and surfaces as inputs and outputs of computations.
#pragma once

#include "host/geometry/nurbs/SurfaceData.h"
#include "host/nodes/numberInputs.h"

namespace host::nodes {

using SharedCurve = Shared<geometry::CurveData>;
using SharedSurface = Shared<geometry::SurfaceData>;

inline SharedCurve curveInput(ComputeContext& context, std::size_t position)
{
    return context.input(position).data<geometry::CurveData>();
}

inline SharedSurface surfaceInput(ComputeContext& context, std::size_t position)
{
    return context.input(position).data<geometry::SurfaceData>();
}

/// A surface as a value; none where it has no points.
inline Value surfaceValue(geometry::SurfaceData surface)
{
    return surface.poles.empty() ? Value() : Value::of(std::move(surface));
}

inline Value curveValue(geometry::CurveData curve)
{
    return curve.poles.empty() ? Value() : Value::of(std::move(curve));
}

} // namespace host::nodes
