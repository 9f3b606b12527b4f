// A node's group: its creation or selection, then its attributes and values.
#include "host/file/binary/Reader.h"
#include "host/file/binary/typeCodes.h"
#include "host/file/binary/values/values.h"

#include <string>

namespace host::file::binary {
namespace {

constexpr std::string_view kSection = "node";
constexpr std::size_t kIdBytes = 16;

enum CreationFlag : std::uint8_t {
    kShared = 0x01,
    kNoParent = 0x80 ///< no parent's name follows
};

/// What the file itself declares, then the table, then the code's own letters.
std::string_view typeOfCode(Reader& reader, Tag code)
{
    const auto declared = reader.declaredTypes.find(code.code);
    if (declared != reader.declaredTypes.end()) {
        return declared->second;
    }
    const std::string_view known = findTypeOfCode(code);
    return known.empty() ? reader.keep(code.text()) : known;
}

std::uint32_t loadLittleEndian(std::span<const char> bytes, std::size_t position)
{
    return __builtin_bswap32(loadBits<std::uint32_t>(bytes.data() + position));
}

/// The text form of an identity, whose four numbers have their lowest byte first.
std::string uuidText(std::span<const char> id)
{
    const std::uint32_t middle[] = {loadLittleEndian(id, 4), loadLittleEndian(id, 8)};
    std::string text;
    const auto append = [&text](std::uint32_t bits, int digits) {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
            text += "0123456789ABCDEF"[bits >> shift & 0xf];
        }
    };
    append(loadLittleEndian(id, 0), 8);
    for (const std::uint32_t number : middle) {
        text += '-';
        append(number >> 16, 4);
        text += '-';
        append(number & 0xffff, 4);
    }
    append(loadLittleEndian(id, 12), 8);
    return text;
}

/// False when the chunk does not tell which node.
bool createNode(Reader& reader, const Chunk& chunk, Tag code)
{
    Cursor cursor(chunk.payload);
    const std::uint8_t flags = cursor.u8();
    const std::string_view name = cursor.text();
    std::string_view parent;
    if ((flags & kNoParent) == 0 && !cursor.isAtEnd()) {
        parent = cursor.text();
    }
    if (cursor.hasFailed()) {
        reader.damaged(kSection, chunk, cursor.reason());
        return false;
    }
    CreateNode command;
    command.type = typeOfCode(reader, code);
    command.name = reader.text(name);
    command.parent = reader.text(parent);
    command.isShared = (flags & kShared) != 0;
    reader.hasNode = true;
    reader.sink.createNode(command);
    if (cursor.left() == kIdBytes) {
        reader.sink.uuid(uuidText(cursor.rest()));
    }
    reader.finish(kSection, chunk, cursor);
    return true;
}

void selectNode(Reader& reader, const Chunk& chunk)
{
    reader.sink.selectNode(reader.text(reader.rawText(chunk)));
    reader.understood(kSection, chunk);
}

} // namespace

void readNode(Reader& reader, const Chunk& group)
{
    reader.toldUvSets = 0;
    bool isNode = false; // what comes before the node is there has no place to go
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        reader.announce(*chunk);
        if (chunk->isCut) {
            reader.damaged(kSection, *chunk, "the chunk passes the end of its node");
        } else if (chunk->isGroup) {
            reader.unknown(kSection, *chunk);
        } else if (chunk->tag == Tag("CREA")) {
            isNode = createNode(reader, *chunk, group.kind) || isNode;
        } else if (chunk->tag == Tag("SLCT")) {
            selectNode(reader, *chunk);
            isNode = true;
        } else if (!isNode) {
            reader.unknown(kSection, group);
            return;
        } else if (chunk->tag == Tag("ATTR")) {
            readAttributeDefinition(reader, *chunk);
        } else {
            readValue(reader, *chunk);
        }
        reader.passProgress(walk.position());
    }
}

} // namespace host::file::binary
