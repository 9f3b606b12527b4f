#include "host/file/binary/values/values.h"

#include <limits>
#include <string>
#include <utility>

namespace host::file::binary {
namespace {

constexpr std::string_view kSection = "node";

enum HeadingFlag : std::uint8_t {
    kLocked = 0x01,
    kKeyable = 0x04,
    kHasSize = 0x08,
    kInChannelBox = 0x10,
    kNeverSeen = 0xc0
};

std::int8_t stateOf(std::uint8_t flags, HeadingFlag flag)
{
    return (flags & flag) != 0 ? 1 : 0;
}

/// Name, flags and array size. The flags are absolute: all of them are told.
void takeHeading(Reader& reader, ValueTask& task)
{
    Cursor& cursor = task.cursor;
    const std::string_view name = cursor.text();
    const std::uint8_t flags = cursor.u8();
    task.hasOddFlags = (flags & kNeverSeen) != 0;
    if ((flags & kHasSize) != 0) {
        task.command.sizeHint = cursor.u32();
    }
    if (cursor.hasFailed()) {
        return;
    }
    // Plugs of the current node begin with a dot, names in the file do not.
    std::string plugText(1, '.');
    plugText += reader.text(name);
    const auto plug = parsePlugPath(reader.keep(std::move(plugText)));
    if (!plug) {
        cursor.fail(plug.error().message);
        return;
    }
    task.command.plug = *plug;
    task.command.flags.isLocked = stateOf(flags, kLocked);
    task.command.flags.isKeyable = stateOf(flags, kKeyable);
    task.command.flags.isInChannelBox = stateOf(flags, kInChannelBox);
    task.count = static_cast<std::size_t>(elementCount(*plug));
}

} // namespace

void sendValue(Reader& reader, ValueTask& task, Value value)
{
    task.command.payload = SetAttribute::Payload::Value;
    reader.buffers.values.clear();
    reader.buffers.values.push_back(std::move(value));
    task.command.values = reader.buffers.values;
    reader.sink.setAttribute(task.command);
    reader.buffers.values.clear();
}

void readValue(Reader& reader, const Chunk& chunk)
{
    const ValueRow* const row = findValue(chunk.tag);
    const bool isSettings = chunk.tag == Tag("FLGS");
    // Plug-ins have numbers for tags.
    const bool isKnown = row != nullptr || isSettings || !chunk.tag.isPrintable();
    ValueTask task;
    task.tag = chunk.tag;
    task.cursor = Cursor(chunk.payload);
    takeHeading(reader, task);
    if (task.cursor.hasFailed()) {
        isKnown ? reader.damaged(kSection, chunk, task.cursor.reason())
                : reader.unknown(kSection, chunk);
        return;
    }
    // Flags and array size only; any kind of value may come without one, a plug-in's as well. An
    // array fills its chunk, so there it is one without elements.
    const bool isArray = row != nullptr && row->read == readArray;
    ValueReader read = row != nullptr ? row->read : nullptr;
    if (task.cursor.isAtEnd() && !isArray) {
        reader.sink.setAttribute(task.command);
    } else {
        task.shape = reader.sink.shapeOf(task.command.plug);
        task.offset = chunk.begin + task.cursor.offset();
        read = read != nullptr ? read : findValueByKind(task.shape.kind);
        if (read == nullptr) {
            reader.unknown(kSection, chunk);
            return;
        }
        read(reader, task);
        rememberUvSet(reader, task);
    }
    if (task.hasOddFlags) {
        task.cursor.fail("unknown flags of an attribute"); // told; the value is set all the same
    }
    if (!isKnown && read == nullptr) {
        reader.unknown(kSection, chunk);
        return;
    }
    reader.finish(kSection, chunk, task.cursor);
}

} // namespace host::file::binary
