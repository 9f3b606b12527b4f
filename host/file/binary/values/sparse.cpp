// Elements of a multi inside elements of another one: for each outer element a count and that many
// pairs of inner index and number.
#include "host/file/binary/values/PieceSender.h"
#include "host/file/binary/values/numberLayout.h"

#include <cassert>

namespace host::file::binary {
namespace {

constexpr std::size_t kPairBytes = sizeof(std::uint32_t) + sizeof(double);

/// True when the bytes are rows to their end.
bool areRows(Cursor cursor, const PlugStep& outer)
{
    for (std::int64_t i = outer.first; i <= outer.last && !cursor.hasFailed(); ++i) {
        cursor.takeItems(cursor.u32(), kPairBytes);
    }
    return !cursor.hasFailed() && cursor.isAtEnd();
}

void send(Reader& reader, ValueTask& task, std::size_t offset)
{
    task.command.sparse = reader.buffers.sparse;
    reader.sink.setAttribute(task.command);
    reader.buffers.sparse.clear();
    reader.passProgress(offset);
}

} // namespace

bool hasSparseForm(const ValueTask& task)
{
    const PlugPath& plug = task.command.plug;
    const PlugStep* const outer = outerStep(plug);
    const bool isScalar = task.tag == Tag("DBLE");
    if (!isScalar || outer == nullptr || plug.last().hasIndex()) {
        return false;
    }
    const PlugShape& shape = task.shape;
    const bool isSparse = shape.isNumbers ? shape.isMulti && shape.width == 1 : outer->isRange();
    const bool couldBePlain = task.cursor.left() == task.count * sizeof(double);
    return isSparse && ((shape.isNumbers && !couldBePlain) || areRows(task.cursor, *outer));
}

void readSparseNumbers(Reader& reader, ValueTask& task)
{
    const PlugStep* const outer = outerStep(task.command.plug);
    assert(outer != nullptr && "the outer step has an index");
    std::vector<SparseNumber>& sparse = reader.buffers.sparse;
    sparse.clear();
    task.command.payload = SetAttribute::Payload::SparseNumbers;
    Cursor& cursor = task.cursor;
    const std::size_t offset = task.offset - cursor.offset();
    for (std::int64_t i = outer->first; i <= outer->last && !cursor.hasFailed(); ++i) {
        const std::size_t count = cursor.u32();
        const std::span<const char> pairs = cursor.takeItems(count, kPairBytes);
        for (std::size_t at = 0; at < pairs.size(); at += kPairBytes) {
            const std::uint32_t inner = load<std::uint32_t>(pairs.data() + at);
            if (inner > kMaxIndex) {
                cursor.fail("an index of " + std::to_string(inner));
                break;
            }
            const double number = load<double>(pairs.data() + at + sizeof inner);
            sparse.push_back({static_cast<std::uint32_t>(i), inner, number});
            if (sparse.size() == kPieceNumbers) {
                send(reader, task, offset + cursor.offset());
            }
        }
    }
    send(reader, task, offset + cursor.offset());
}

} // namespace host::file::binary
