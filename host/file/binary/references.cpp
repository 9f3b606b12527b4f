// FRDI, FREF: files that the scene refers to. Their nodes are not in the file.
#include "host/file/binary/Reader.h"

namespace host::file::binary {
namespace {

constexpr std::string_view kSection = "FREF";
constexpr Tag kEntry = "FRDI"; ///< of the list of references; FREF is a load

void readReference(Reader& reader, const Chunk& chunk)
{
    Cursor cursor(chunk.payload);
    Reference reference;
    reference.isTableOfContents = chunk.tag == kEntry;
    if (reference.isTableOfContents) {
        cursor.u32(); // depth
    }
    const std::string_view path = cursor.text();
    std::string_view nameSpace = cursor.text();
    cursor.u8(); // whether a namespace is used
    reference.isDeferred = cursor.u8() != 0;
    const std::string_view node = cursor.text();
    if (cursor.hasFailed()) {
        reader.damaged(kSection, chunk, cursor.reason());
        return;
    }
    reference.path = reader.text(path);
    reference.nameSpace = reader.text(nameSpace);
    reference.nodeName = reader.text(node);
    reader.sink.reference(reference);
    // Zeros, options and the type of the file follow: nothing depends on them.
    reader.understood(kSection, chunk);
}

} // namespace

void readReferences(Reader& reader, const Chunk& group)
{
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        reader.announce(*chunk);
        if (chunk->isCut) {
            reader.damaged(kSection, *chunk, "the chunk passes the end of its group");
        } else if (chunk->isGroup || (chunk->tag != kEntry && chunk->tag != Tag("FREF"))) {
            reader.unknown(kSection, *chunk);
        } else {
            readReference(reader, *chunk);
        }
    }
}

} // namespace host::file::binary
