#include "host/eval/convertValue.h"

#include <cmath>

namespace host::eval {

Value convertValue(const Value& value, AttributeKind kind)
{
    if (!value.isNumber()) {
        return isNumeric(kind) ? Value() : value;
    }
    const double number = value.number();
    if (kind == AttributeKind::Bool) {
        return Value(number != 0 ? 1.0 : 0.0);
    }
    if (isInteger(kind)) {
        return Value(std::round(number));
    }
    if (isSinglePrecision(kind)) {
        return Value(static_cast<double>(static_cast<float>(number)));
    }
    return value;
}

} // namespace host::eval
