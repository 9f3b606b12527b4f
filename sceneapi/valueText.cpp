#include "sceneapi/valueText.h"

#include "sceneapi/numberText.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

namespace orv {
namespace {

// clang-format off
constexpr ScalarLayout kScalars[] = {
    {kFloat3,      Component::Float,   3},
    {kFloat4,      Component::Float,   4},
    {kDouble,      Component::FixedDouble, 1},
    {kDouble3,     Component::Double,  3},
    {kInt,         Component::Integer, 1},
    {kFloatMatrix, Component::Float,  16},
    {kFloat2,      Component::Float,   2},
    {kColor4,      Component::Float,   4},
    {kInt2,        Component::Integer, 2},
    {kInt3,        Component::Integer, 3},
    {kInt4,        Component::Integer, 4},
    {kDoubledInt,  Component::Integer, 1},
};

constexpr ListLayout kLists[] = {
    {kFloat3List,     Component::Float,         3,  12, 'c'},
    {kFloat4List,     Component::Float,         4,  16, 0},
    {kFloatList,      Component::Float,         1,   4, 'f'},
    {kDoubleList,     Component::FixedDouble,   1,   8, 'r'},
    {kDouble3List,    Component::Double,        3,  24, 0},
    {kIntList,        Component::Integer,       1,   4, 'i'},
    {kBoolList,       Component::Boolean,       1,   1, 0},
    {kMatrixList,     Component::MatrixDouble, 16, 128, 0},
    {kStringList,     Component::String,        1, sizeof(const char*), 0},
    {kNameList,       Component::String,        1, sizeof(const char*), 0},
    {kDoubledIntList, Component::Integer,       1,   4, 0},
};
// clang-format on

template<typename Row>
constexpr bool before(const Row& a, const Row& b)
{
    return a.type < b.type;
}
static_assert(std::is_sorted(std::begin(kScalars), std::end(kScalars), before<ScalarLayout>));
static_assert(std::is_sorted(std::begin(kLists), std::end(kLists), before<ListLayout>));

template<typename Row>
const Row* find(std::span<const Row> rows, std::uint32_t type)
{
    const auto row = std::lower_bound(rows.begin(), rows.end(), type,
                                      [](const Row& r, std::uint32_t t) { return r.type < t; });
    return row != rows.end() && row->type == type ? &*row : nullptr;
}

template<typename T>
T load(const char* data, int index)
{
    T value;
    std::memcpy(&value, data + static_cast<std::size_t>(index) * sizeof(T), sizeof(T));
    return value;
}

double finite(double value)
{
    return std::isfinite(value) ? value : -1.0;
}

/// One component; `Clean` replaces what is not finite.
template<bool Clean>
char* writeComponent(char* out, Component component, const char* data, int index)
{
    const auto clean = [](double value) { return Clean ? finite(value) : value; };
    switch (component) {
    case Component::Float:
        return writeGeneral(out, clean(load<float>(data, index)));
    case Component::Double:
    case Component::MatrixDouble:
        return writeGeneral(out, clean(load<double>(data, index)));
    case Component::FixedDouble:
        return writeFixed16(out, clean(load<double>(data, index)));
    case Component::Integer:
        return writeInteger(out, load<std::int32_t>(data, index));
    case Component::Boolean:
        *out = load<unsigned char>(data, index) != 0 ? '1' : '0';
        return out + 1;
    case Component::String:
        break;
    }
    return out;
}

/// Components with a blank between them, no reserve.
template<bool Clean>
char* writeComponents(char* out, Component component, int count, const char* data)
{
    out = writeComponent<Clean>(out, component, data, 0);
    for (int i = 1; i < count; ++i) {
        *out++ = ' ';
        out = writeComponent<Clean>(out, component, data, i);
    }
    return out;
}

constexpr std::size_t kMaxElementText = kMaxFixedText + 16;
static_assert(kMaxElementText >= 16 * (kMaxGeneralText + 1) + 2);

void appendString(TextTarget& target, const char* text, std::size_t maxString)
{
    if (text != nullptr) {
        target.append(std::string_view(text).substr(0, maxString));
    }
}

} // namespace

const ScalarLayout* findScalarLayout(std::uint32_t type)
{
    return find<ScalarLayout>(kScalars, type);
}

const ListLayout* findListLayout(std::uint32_t type)
{
    return find<ListLayout>(kLists, type);
}

void appendScalar(TextTarget& target, const ScalarLayout& layout, const void* value)
{
    target.commit(writeComponents<false>(target.reserve(kMaxElementText), layout.component,
                                         layout.count, static_cast<const char*>(value)));
}

void appendCheckedFloat(TextTarget& target, float value)
{
    constexpr float kBound = std::numeric_limits<float>::max();
    const bool inside = value > -kBound && value < kBound; // false for NaN
    target.commit(writeGeneral(target.reserve(kMaxGeneralText), inside ? value : -1.0));
}

void appendList(TextTarget& target, const ListLayout& layout, const List& list, std::size_t blanks,
                std::size_t maxString)
{
    const auto* data = static_cast<const char*>(list.elements);
    const std::uint32_t count = data != nullptr ? list.count : 0;
    for (std::uint32_t i = 0; i < count; ++i, data += layout.stride) {
        if (layout.component == Component::String) {
            appendString(target, load<const char*>(data, 0), maxString);
        }
        char* out = target.reserve(kMaxElementText);
        if (layout.component != Component::String) {
            out = writeComponents<true>(out, layout.component, layout.count, data);
        }
        if (layout.component == Component::MatrixDouble) {
            *out++ = ' ';
        }
        *out++ = i + 1 < count ? ',' : ' ';
        const bool breaks = i > 0 && i % 8 == 0;
        if (breaks) {
            *out++ = '\n';
        }
        target.commit(out);
        if (breaks) {
            target.appendBlanks(blanks);
        }
    }
}

} // namespace orv
