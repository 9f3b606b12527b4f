// What becomes of a value that a connection carries to an attribute of another kind.
#pragma once

#include "host/types/AttributeKind.h"
#include "host/types/Value.h"

namespace host::eval {

/// Numbers convert by value: to whole kinds rounded to the nearest (halves away from zero), to
/// booleans 0 or 1, to single precision rounded; lengths, angles and times keep their internal
/// number. Data goes to attributes that are no numbers as it is. Empty where the two cannot meet.
Value convertValue(const Value& value, AttributeKind kind);

} // namespace host::eval
