// Elements of a multi inside elements of another one: for each outer element a count and that many
// pairs of inner index and number.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"
#include "host/file/numberPieces.h"

#include <cassert>

namespace host::file::ascii {
namespace {

void send(Reader& reader, PayloadTask& task)
{
    task.command.sparse = reader.buffers.sparse;
    reader.sink.setAttribute(task.command);
    reader.buffers.sparse.clear();
    reader.passProgress();
}

} // namespace

void readSparseNumbers(Reader& reader, PayloadTask& task)
{
    const PlugStep* const outer = outerStep(task.command.plug);
    assert(outer != nullptr && "the outer step has an index");
    const double factor = reader.scales.of(task.shape.units[0]);
    std::vector<SparseNumber>& sparse = reader.buffers.sparse;
    sparse.clear();
    task.command.payload = SetAttribute::Payload::SparseNumbers;
    Cursor cursor(reader);
    for (std::int64_t i = outer->first; i <= outer->last && !cursor.hasFailed(); ++i) {
        const std::size_t count = cursor.count(2);
        for (std::size_t k = 0; k < count && !cursor.hasFailed(); ++k) {
            const std::int64_t inner = cursor.integer(0, kMaxIndex);
            const double number = cursor.number() * factor;
            if (!cursor.hasFailed()) {
                sparse.push_back(
                    {static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(inner), number});
            }
            if (sparse.size() == kPieceNumbers) {
                send(reader, task);
            }
        }
    }
    cursor.expectEnd();
    send(reader, task);
    if (cursor.hasFailed()) {
        reader.damagedAtToken("setAttr", cursor.error().message);
    }
}

} // namespace host::file::ascii
