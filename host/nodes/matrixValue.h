// Matrices as values.
#pragma once

#include "host/math/Matrix4.h"
#include "host/types/Value.h"

namespace host::nodes {

/// The matrix that a value holds; identity where it holds none.
inline Matrix4 matrixOf(const Value& value)
{
    const auto held = value.data<Matrix4>();
    return held != nullptr ? *held : Matrix4{};
}

inline Value matrixValue(const Matrix4& matrix)
{
    return Value::of(matrix);
}

} // namespace host::nodes
