// Int32Array, doubleArray, floatArray, vectorArray, pointArray, dataPolyComponent.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include <array>
#include <limits>

namespace host::file::ascii {
namespace {

template<class T>
Expected<Value> valueOr(const Cursor& cursor, T data)
{
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(data));
}

constexpr std::array<std::string_view, 4> kDomains{"Edge", "Vertex", "UV", "Face"};

PolyComponentData::Domain takeDomain(Cursor& cursor)
{
    for (std::size_t i = 0; i < kDomains.size(); ++i) {
        if (cursor.takeIf(kDomains[i])) {
            return static_cast<PolyComponentData::Domain>(i);
        }
    }
    cursor.fail("Edge, Vertex, UV or Face was expected");
    return PolyComponentData::Domain::Edge;
}

} // namespace

Expected<Value> readInt32Array(Reader& reader)
{
    Cursor cursor(reader);
    const std::size_t count = cursor.count(1);
    std::vector<std::int32_t> integers;
    integers.reserve(count);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        integers.push_back(toInt32(cursor.number()));
    }
    return valueOr(cursor, std::move(integers));
}

Expected<Value> readDoubleArray(Reader& reader)
{
    Cursor cursor(reader);
    std::vector<double> numbers = cursor.numbers(cursor.count(1));
    return valueOr(cursor, std::move(numbers));
}

Expected<Value> readVectorArray(Reader& reader)
{
    Cursor cursor(reader);
    const std::size_t count = cursor.count(3);
    std::vector<Vec3d> vectors;
    vectors.reserve(count);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        const double x = cursor.number();
        const double y = cursor.number();
        vectors.push_back({x, y, cursor.number()});
    }
    return valueOr(cursor, std::move(vectors));
}

Expected<Value> readPointArray(Reader& reader)
{
    Cursor cursor(reader);
    const std::size_t count = cursor.count(4);
    const double factor = reader.scales.linear;
    std::vector<std::array<double, 4>> points;
    points.reserve(count);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        std::array<double, 4> point{};
        for (double& coordinate : point) {
            coordinate = cursor.number();
        }
        points.push_back({point[0] * factor, point[1] * factor, point[2] * factor, point[3]});
    }
    return valueOr(cursor, std::move(points));
}

Expected<Value> readPolyComponent(Reader& reader)
{
    Cursor cursor(reader);
    cursor.expect("Index_Data");
    PolyComponentData data;
    data.domain = takeDomain(cursor);
    const std::size_t count = cursor.count(1);
    std::vector<double> numbers;
    while (!cursor.hasFailed() && numbers.size() < 2 * count && !cursor.isAtEnd()) {
        numbers.push_back(cursor.number());
    }
    // Pairs of index and value, or indices alone.
    const std::size_t step = numbers.size() == count ? 1 : 2;
    if (!cursor.hasFailed() && numbers.size() != step * count) {
        cursor.fail("the entries do not fit their count");
    }
    for (std::size_t i = 0; i < numbers.size() && !cursor.hasFailed(); i += step) {
        const double index = numbers[i];
        if (!(index >= 0 && index <= std::numeric_limits<std::int32_t>::max())) {
            cursor.fail("a component index is out of range");
            break;
        }
        data.indices.push_back(static_cast<std::uint32_t>(index));
        if (step == 2) {
            data.values.push_back(numbers[i + 1]);
        }
    }
    return valueOr(cursor, std::move(data));
}

} // namespace host::file::ascii
