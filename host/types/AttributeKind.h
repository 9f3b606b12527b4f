// What an attribute holds, and what its numbers measure.
#pragma once

#include <cstdint>

namespace host {

/// The kind of an attribute. Compounds with numeric children (double3, float2, ...) are `Compound`
/// too: their children are attributes of their own, in order.
enum class AttributeKind : std::uint8_t {
    Bool,
    Byte,
    Char,
    Short,
    Long,
    Enum, // kept as whole numbers
    Float,
    FloatLinear,
    FloatAngle, // single precision
    Double,
    DoubleLinear,
    DoubleAngle,
    Time, // double precision
    Compound,
    Message,
    String,
    Matrix,
    FloatMatrix,
    StringArray,
    Int32Array,
    FloatArray,
    DoubleArray,
    VectorArray,
    PointArray,
    ComponentList,
    AttributeAlias,
    PolyFaces,
    PolyComponent,
    Mesh,
    NurbsCurve,
    NurbsSurface,
    NurbsTrimface,
    Lattice,
    Geometry,
    ReferenceEdits,
    Any // generic, plug-in or unknown data
};

/// What the numbers of an attribute measure: files give lengths, angles and times in their current
/// units.
enum class UnitKind : std::uint8_t { None, Linear, Angular, Time };

constexpr bool isNumeric(AttributeKind kind)
{
    return kind <= AttributeKind::Time;
}
constexpr bool isInteger(AttributeKind kind)
{
    return kind <= AttributeKind::Enum;
}
constexpr bool isSinglePrecision(AttributeKind kind)
{
    return kind >= AttributeKind::Float && kind <= AttributeKind::FloatAngle;
}
constexpr UnitKind unitOf(AttributeKind kind)
{
    switch (kind) {
    case AttributeKind::FloatLinear:
    case AttributeKind::DoubleLinear:
        return UnitKind::Linear;
    case AttributeKind::FloatAngle:
    case AttributeKind::DoubleAngle:
        return UnitKind::Angular;
    case AttributeKind::Time:
        return UnitKind::Time;
    default:
        return UnitKind::None;
    }
}

} // namespace host
