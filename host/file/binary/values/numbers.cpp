// Numbers: each kind of the file straight into a buffer of the attribute's kind, handed over piece
// by piece.
#include "host/file/binary/values/PieceSender.h"
#include "host/file/binary/values/numberLayout.h"

#include <algorithm>
#include <type_traits>

namespace host::file::binary {
namespace {

template<class From, class To>
void convertAs(const char* bytes, std::span<To> target)
{
    To* const numbers = target.data();
    const std::size_t count = target.size();
    if constexpr (std::is_same_v<From, To>) {
        loadMany(bytes, count, numbers);
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            numbers[i] = converted<To>(load<From>(bytes + i * sizeof(From)));
        }
    }
}

/// All numbers of `target`, as if none was a time.
template<class To>
void convertNumbers(NumberType type, const char* bytes, std::span<To> target)
{
    switch (type) {
    case NumberType::Int16:
        convertAs<std::int16_t>(bytes, target);
        return;
    case NumberType::Int32:
        convertAs<std::int32_t>(bytes, target);
        return;
    case NumberType::Float:
        convertAs<float>(bytes, target);
        return;
    case NumberType::Double:
        convertAs<double>(bytes, target);
        return;
    }
}

template<class T, class To>
To timeAt(const char* bytes, double tickScale)
{
    return converted<To>(static_cast<double>(load<T>(bytes)) * tickScale);
}

/// Puts the times of 8 bytes where `convertNumbers` took them for plain numbers.
template<class To>
void replaceTimes(const NumberLayout& layout, double tickScale, const char* bytes,
                  std::span<To> target)
{
    for (std::size_t member = 0; member < layout.width; ++member) {
        const NumberMeaning meaning = layout.meaningOf(member);
        if (meaning == NumberMeaning::Plain) {
            continue;
        }
        for (std::size_t i = member; i < target.size(); i += layout.width) {
            const char* const place = bytes + i * sizeof(std::int64_t);
            if (meaning == NumberMeaning::Time || looksLikeTicks(load<std::uint64_t>(place))) {
                target[i] = timeAt<std::int64_t, To>(place, tickScale);
            }
        }
    }
}

/// Elements whose times have 4 bytes and whose other numbers are doubles.
template<class To>
void convertNarrow(const NumberLayout& layout, double tickScale, const char* bytes,
                   std::span<To> target)
{
    for (std::size_t i = 0; i < target.size(); i += layout.width) {
        for (std::size_t member = 0; member < layout.width; ++member) {
            const bool isTime = layout.meaningOf(member) == NumberMeaning::Time;
            target[i + member] = isTime ? timeAt<std::int32_t, To>(bytes, tickScale)
                                        : converted<To>(load<double>(bytes));
            bytes += isTime ? sizeof(std::int32_t) : sizeof(double);
        }
    }
}

template<class To>
void readPieces(Reader& reader, ValueTask& task, const NumberLayout& layout,
                std::vector<To>& buffer)
{
    const std::size_t offset = task.offset;
    const std::span<const char> bytes = task.cursor.takeItems(task.count, layout.elementBytes);
    const std::size_t elementsEach = kPieceNumbers / layout.width;
    buffer.resize(std::min(elementsEach, task.count) * layout.width);
    PieceSender pieces(reader, task);
    for (std::size_t begin = 0; begin < task.count; begin += elementsEach) {
        const std::size_t count = std::min(elementsEach, task.count - begin);
        const std::size_t position = begin * layout.elementBytes;
        const std::span<To> piece = std::span(buffer).first(count * layout.width);
        if (layout.hasNarrowTimes) {
            convertNarrow(layout, reader.tickScale, bytes.data() + position, piece);
        } else {
            convertNumbers(layout.type, bytes.data() + position, piece);
            if (layout.type == NumberType::Double) {
                replaceTimes(layout, reader.tickScale, bytes.data() + position, piece);
            }
        }
        pieces.send(std::span<const To>(piece), layout.width);
        reader.passProgress(offset + position);
    }
}

void readPieces(Reader& reader, ValueTask& task, const NumberLayout& layout)
{
    switch (layout.storage) {
    case NumberStorage::Float:
        readPieces(reader, task, layout, reader.buffers.floats);
        return;
    case NumberStorage::Double:
        readPieces(reader, task, layout, reader.buffers.doubles);
        return;
    case NumberStorage::Int32:
        readPieces(reader, task, layout, reader.buffers.integers);
        return;
    }
}

} // namespace

void readNumbers(Reader& reader, ValueTask& task)
{
    if (hasSparseForm(task)) {
        readSparseNumbers(reader, task);
        return;
    }
    const Expected<NumberLayout> layout = layoutOf(task);
    if (!layout) {
        task.cursor.fail(layout.error().message);
        return;
    }
    readPieces(reader, task, *layout);
}

} // namespace host::file::binary
