// The values that cross the scene API: their codes and the records behind the pointers. A value is
// a code and a pointer to its data; what each code points to stands beside it.
#pragma once

#include <array>
#include <cstdint>

namespace orv {

/// Codes of single values.
enum ValueType : std::uint32_t {
    kFloat3 = 1,  // 3 floats
    kFloat4 = 2,  // 4 floats
    kFloat = 3,   // float; NaN and what is not strictly inside the float range are written as -1
    kDouble = 4,  // double, written with 16 decimals
    kDouble3 = 5, // 3 doubles
    kInt = 6,     // 32-bit integer
    kBool = 7,    // bool
    kFloatMatrix = 9,  // 16 floats
    kString = 10,      // the bytes of a zero-terminated string (the pointer is the string)
    kName = 13,        // as kString
    kFloat2 = 14,      // 2 floats
    kColor4 = 15,      // 4 floats
    kInt2 = 16,        // 2 integers
    kInt3 = 17,        // 3 integers
    kInt4 = 18,        // 4 integers
    kDoubledInt = 23,  // 32-bit integer; such a parameter is written twice
    kBlob = 65536,     // Blob (in arrayElement: a pointer to a Blob)
    kListBit = 0x8000, // added to a code: the data is a List of such elements
};

/// Codes of lists.
enum ListType : std::uint32_t {
    kFloat3List = kListBit + kFloat3,         // 3 floats an element
    kFloat4List = kListBit + kFloat4,         // 4 floats an element
    kFloatList = kListBit + kFloat,           // float
    kDoubleList = kListBit + kDouble,         // double
    kDouble3List = kListBit + kDouble3,       // 3 doubles an element
    kIntList = kListBit + kInt,               // 32-bit integer
    kBoolList = kListBit + kBool,             // bool
    kMatrixList = kListBit + kFloatMatrix,    // 16 *doubles* an element (Matrix4)
    kStringList = kListBit + kString,         // const char*
    kNameList = kListBit + kName,             // const char*
    kDoubledIntList = kListBit + kDoubledInt, // 32-bit integer
};

/// The data of a list: `count` elements (triples count as one). The elements stay the caller's.
struct List {
    const void* elements = nullptr;
    std::uint32_t count = 0;
};

/// Bytes of a shader or an icon. Text (`binary` 0) is zero-terminated and written up to the zero,
/// whatever `length` says; binary bytes are written as they are, `length` of them. Null bytes are
/// an empty blob.
struct Blob {
    const char* bytes = nullptr;
    std::uint32_t length = 0;
    std::uint32_t binary = 0;
};

/// What shaderReference and shaderById attach a shader to.
enum ShaderKind : int { kSurface = 0, kShadow = 1, kVolume = 2, kReflectionMap = 3 };

/// A 4x4 matrix in Maya's row order: translation in elements 12 to 14.
using Matrix4 = std::array<double, 16>;
using Float3 = std::array<float, 3>;
using Double3 = std::array<double, 3>;

static_assert(sizeof(Matrix4) == 128 && sizeof(Float3) == 12 && sizeof(Double3) == 24);

} // namespace orv
