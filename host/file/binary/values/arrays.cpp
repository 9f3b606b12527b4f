// Arrays of numbers: no count, they fill the chunk.
#include "host/file/binary/values/values.h"

#include <array>

namespace host::file::binary {
namespace {

template<class T>
std::vector<T> takeNumbers(Cursor& cursor)
{
    return cursor.numbers<T>(cursor.left() / sizeof(T));
}

/// As doubles.
template<class T>
Value numbersOf(Cursor& cursor)
{
    const std::span<const char> bytes = cursor.takeItems(cursor.left() / sizeof(T), sizeof(T));
    std::vector<double> numbers(bytes.size() / sizeof(T));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = static_cast<double>(load<T>(bytes.data() + i * sizeof(T)));
    }
    return Value::of(std::move(numbers));
}

Value vectorsOf(Cursor& cursor)
{
    constexpr std::size_t kBytes = 3 * sizeof(double);
    const std::span<const char> bytes = cursor.takeItems(cursor.left() / kBytes, kBytes);
    std::vector<Vec3d> vectors(bytes.size() / kBytes);
    for (std::size_t i = 0; i < vectors.size(); ++i) {
        const char* const p = bytes.data() + i * kBytes;
        vectors[i] = {load<double>(p), load<double>(p + 8), load<double>(p + 16)};
    }
    return Value::of(std::move(vectors));
}

Value pointsOf(Cursor& cursor)
{
    constexpr std::size_t kBytes = 4 * sizeof(double);
    const std::span<const char> bytes = cursor.takeItems(cursor.left() / kBytes, kBytes);
    std::vector<std::array<double, 4>> points(bytes.size() / kBytes);
    for (std::size_t i = 0; i < points.size(); ++i) {
        loadMany(bytes.data() + i * kBytes, 4, points[i].data());
    }
    return Value::of(std::move(points));
}

Value doublesOf(Cursor& cursor)
{
    return Value::of(takeNumbers<double>(cursor));
}
Value integersOf(Cursor& cursor)
{
    return Value::of(takeNumbers<std::int32_t>(cursor));
}
/// Sixteen numbers a matrix, one matrix after another.
Value matricesOf(Cursor& cursor)
{
    constexpr std::size_t kNumbers = 16;
    return Value::of(
        cursor.numbers<double>(cursor.left() / (kNumbers * sizeof(double)) * kNumbers));
}

struct ArrayRow {
    Tag tag;
    Value (*take)(Cursor& cursor); ///< whole elements; a rest is left
};

// clang-format off
constexpr ArrayRow kArrays[] = {
    {"DBL#", doublesOf},
    {"FLT#", numbersOf<float>},
    {"I32#", integersOf},
    {"I64#", numbersOf<std::int64_t>},
    {"MAT#", matricesOf},
    {"PNT#", pointsOf},
    {"VEC#", vectorsOf},
};
// clang-format on

} // namespace

void readArray(Reader& reader, ValueTask& task)
{
    if (task.count != 1) {
        task.cursor.fail("arrays of a range cannot be told apart");
        return;
    }
    for (const ArrayRow& row : kArrays) {
        if (row.tag != task.tag) {
            continue;
        }
        Value value = row.take(task.cursor);
        task.cursor.expectEnd();
        if (!task.cursor.hasFailed()) {
            sendValue(reader, task, std::move(value));
        }
    }
}

} // namespace host::file::binary
