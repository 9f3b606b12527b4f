// Shapes of nonlinear handles on their way to the deformer: a list of numbers, the kind first.
#pragma once

#include "host/geometry/deform/nonLinearShapes.h"
#include "host/types/Value.h"

#include <optional>

namespace host::nodes {

/// None where the value is no such list (files store one without the kind).
std::optional<geometry::NonLinearShape> shapeOf(const Value& value);

} // namespace host::nodes
