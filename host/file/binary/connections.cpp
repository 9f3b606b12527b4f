// CONN: connections and relationships. PING: further parents.
#include "host/file/binary/Reader.h"

namespace host::file::binary {
namespace {

constexpr std::string_view kConnections = "CONN";
constexpr std::string_view kParents = "PING";
constexpr std::string_view kPastEnd = "the chunk passes the end of its group";

void readConnection(Reader& reader, const Chunk& chunk)
{
    constexpr std::uint8_t kNextAvailable = 1;
    constexpr std::uint8_t kLocked = 2;
    Cursor cursor(chunk.payload);
    const std::uint8_t flags = cursor.u8();
    const std::string_view source = cursor.text();
    const std::string_view destination = cursor.text();
    if (!cursor.hasFailed()) {
        Connection connection;
        connection.source = reader.text(source);
        connection.destination = reader.text(destination);
        connection.isNextAvailable = (flags & kNextAvailable) != 0;
        reader.sink.connect(connection);
    }
    if ((flags & ~(kNextAvailable | kLocked)) != 0) {
        cursor.fail("unknown flags of a connection"); // told; the connection is made all the same
    }
    reader.finish(kConnections, chunk, cursor);
}

/// Light links and the like, which no picture of the scene's shapes depends on.
void readRelationship(Reader& reader, const Chunk& chunk)
{
    Cursor cursor(chunk.payload);
    cursor.text();
    cursor.text();
    const std::size_t count = cursor.count(1);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        cursor.text();
    }
    reader.finish(kConnections, chunk, cursor);
}

void readParent(Reader& reader, const Chunk& chunk)
{
    Cursor cursor(chunk.payload);
    cursor.u8(); // always 2
    const std::string_view object = cursor.text();
    const std::string_view parent = cursor.text();
    if (!cursor.hasFailed()) {
        const std::string_view objects[] = {reader.text(object)};
        ParentNodes command;
        command.nodes = objects;
        command.parent = reader.text(parent);
        command.isAdded = true;
        reader.sink.parentNodes(command);
    }
    reader.finish(kParents, chunk, cursor);
}

} // namespace

void readConnections(Reader& reader, const Chunk& group)
{
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        reader.announce(*chunk);
        if (chunk->isCut) {
            reader.damaged(kConnections, *chunk, kPastEnd);
        } else if (!chunk->isGroup && chunk->tag == Tag("CWFL")) {
            readConnection(reader, *chunk);
        } else if (!chunk->isGroup && chunk->tag == Tag("RELA")) {
            readRelationship(reader, *chunk);
        } else {
            reader.unknown(kConnections, *chunk);
        }
        reader.passProgress(walk.position());
    }
}

void readParents(Reader& reader, const Chunk& group)
{
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        reader.announce(*chunk);
        if (chunk->isCut) {
            reader.damaged(kParents, *chunk, kPastEnd);
        } else if (!chunk->isGroup && chunk->tag == Tag("PRNT")) {
            readParent(reader, *chunk);
        } else {
            reader.unknown(kParents, *chunk);
        }
    }
}

} // namespace host::file::binary
