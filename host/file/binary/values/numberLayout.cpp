#include "host/file/binary/values/numberLayout.h"

#include "host/file/binary/values/PieceSender.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace host::file::binary {
namespace {

struct TagRow {
    Tag tag;
    NumberType type;
    std::size_t width;     ///< 0: as many as the bytes make
    NumberStorage storage; ///< where the attribute is not known
};

// clang-format off
constexpr TagRow kTags[] = {
    {"CMPD", NumberType::Double, 0, NumberStorage::Double},
    {"DBL2", NumberType::Double, 2, NumberStorage::Double},
    {"DBL3", NumberType::Double, 3, NumberStorage::Double},
    {"DBL4", NumberType::Double, 4, NumberStorage::Double},
    {"DBLE", NumberType::Double, 1, NumberStorage::Double},
    {"FLT2", NumberType::Float,  2, NumberStorage::Float},
    {"FLT3", NumberType::Float,  3, NumberStorage::Float},
    {"LNG2", NumberType::Int32,  2, NumberStorage::Int32},
    {"LNG3", NumberType::Int32,  3, NumberStorage::Int32},
    {"SRT2", NumberType::Int16,  2, NumberStorage::Int32},
    {"SRT3", NumberType::Int16,  3, NumberStorage::Int32},
};
// clang-format on

constexpr std::size_t kNarrowTimeBytes = 4;
constexpr std::size_t kDoubleBytes = 8;
constexpr std::size_t kNarrowKeyBytes = kNarrowTimeBytes + kDoubleBytes;

constexpr std::size_t sizeOf(NumberType type)
{
    switch (type) {
    case NumberType::Int16:
        return 2;
    case NumberType::Int32:
    case NumberType::Float:
        return 4;
    case NumberType::Double:
        break;
    }
    return kDoubleBytes;
}

/// The bytes of an element whose times have 4 bytes.
std::size_t narrowBytes(const NumberLayout& layout)
{
    const std::size_t times = static_cast<std::size_t>(
        std::count(layout.isTime.begin(),
                   layout.isTime.begin() + static_cast<std::ptrdiff_t>(layout.width), true));
    return layout.width * kDoubleBytes - times * kNarrowTimeBytes;
}

/// A compound's numbers: those of its leaves, or all there are when the attribute is not known.
void settleCompound(NumberLayout& layout, const PlugShape& shape)
{
    layout.width = shape.isNumbers ? shape.width : layout.elementBytes / kDoubleBytes;
    // No number of doubles: a key of a time and a value.
    if (layout.elementBytes == kNarrowKeyBytes && (!shape.isNumbers || shape.width == 2)) {
        layout.width = 2;
        layout.isTime[0] = true;
        layout.isTime[1] = false;
    }
}

void settleScalar(NumberLayout& layout, const PlugShape& shape)
{
    if (layout.elementBytes == kNarrowTimeBytes) {
        layout.isTime[0] = true; // nothing else has so few bytes
    } else if (shape.isNumbers && layout.elementBytes == shape.width * kDoubleBytes) {
        layout.width = shape.width;
    }
}

/// What tag and attribute say, with elements of that many bytes.
NumberLayout expectedLayout(const TagRow& row, const PlugShape& shape, std::size_t elementBytes)
{
    NumberLayout layout;
    layout.type = row.type;
    layout.width = row.width;
    layout.elementBytes = elementBytes;
    layout.storage = shape.isNumbers ? shape.storage : row.storage;
    // A known attribute's kind alone decides. Its doubles may well be denormal, left over from sums
    // that nearly vanished, and must not become millions of ticks; its times may pass the bound up
    // to which bits can tell.
    const bool canBeTime = row.type == NumberType::Double;
    layout.isGuessed = canBeTime && !shape.isNumbers;
    for (std::size_t i = 0; canBeTime && shape.isNumbers && i < shape.units.size(); ++i) {
        layout.isTime[i] = shape.units[i] == UnitKind::Time;
    }
    if (row.tag == Tag("CMPD")) {
        settleCompound(layout, shape);
    } else if (row.tag == Tag("DBLE")) {
        settleScalar(layout, shape);
    }
    return layout;
}

Error failure(std::string message)
{
    return {ErrorCode::BadInput, std::move(message), {}};
}

} // namespace

Expected<NumberLayout> layoutOf(const ValueTask& task)
{
    const TagRow* const row =
        std::find_if(std::begin(kTags), std::end(kTags),
                     [&](const TagRow& each) { return each.tag == task.tag; });
    const std::size_t bytes = task.cursor.left();
    const PlugShape& shape = task.shape;
    if (row == std::end(kTags) || task.count == 0 || bytes % task.count != 0) {
        return failure(std::to_string(bytes) + " bytes for " + std::to_string(task.count) +
                       " elements");
    }
    if (row->width == 0 && shape.kind == AttributeKind::Compound && !shape.isNumbers) {
        return failure("a compound whose members are not all numbers");
    }
    NumberLayout layout = expectedLayout(*row, shape, bytes / task.count);
    const bool isPlain = layout.elementBytes == layout.width * sizeOf(layout.type);
    layout.hasNarrowTimes = !isPlain && layout.type == NumberType::Double &&
                            layout.width <= layout.isTime.size() &&
                            layout.elementBytes == narrowBytes(layout);
    const bool hasWidth = layout.width > 0 && layout.width <= kPieceNumbers;
    if (!hasWidth || (!isPlain && !layout.hasNarrowTimes)) {
        return failure("elements of " + std::to_string(layout.elementBytes) + " bytes");
    }
    return layout;
}

} // namespace host::file::binary
