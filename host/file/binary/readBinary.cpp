#include "host/file/binary/readBinary.h"

#include "host/file/binary/Reader.h"

#include <string>

namespace host::file {
namespace binary {
namespace {

constexpr Tag kMaya = "Maya";
constexpr std::string_view kCutShort = "the file ends inside the chunk";

using SectionReader = void (*)(Reader& reader, const Chunk& group);

void skipQuietly(Reader& reader, const Chunk& group)
{
    reader.understood("Maya", group);
}

/// A chunk that means nothing here, or whose kind the file no longer has.
void leaveOut(Reader& reader, std::string_view section, const Chunk& chunk)
{
    if (!chunk.isCut) {
        reader.unknown(section, chunk);
        return;
    }
    reader.announce(chunk);
    reader.damaged(section, chunk, kCutShort);
}

/// A list of kind CONS holds the group of connections.
void readConnectionList(Reader& reader, const Chunk& group)
{
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        if (chunk->isGroup && chunk->kind == Tag("CONN")) {
            readConnections(reader, *chunk);
        } else {
            leaveOut(reader, "CONS", *chunk);
        }
    }
}

struct SectionRow {
    Tag kind;
    SectionReader read;
};

// Groups of any other kind are nodes.
constexpr SectionRow kSections[] = {
    {"CONN", readConnections}, {"CONS", readConnectionList}, {"FRDI", readReferences},
    {"FREF", readReferences},  {"HEAD", readHeader},         {"LKCU", skipQuietly},
    {"PING", readParents},
};

void readSection(Reader& reader, const Chunk& group)
{
    for (const SectionRow& row : kSections) {
        if (row.kind == group.kind) {
            row.read(reader, group);
            return;
        }
    }
    readNode(reader, group);
}

void readScene(Reader& reader, const Chunk& scene)
{
    ChunkWalk walk = reader.children(scene);
    while (const auto chunk = walk.next()) {
        if (chunk->isGroup) {
            readSection(reader, *chunk);
        } else {
            leaveOut(reader, "Maya", *chunk);
        }
        reader.passProgress(walk.position());
    }
    if (scene.isCut) {
        reader.announce(scene);
        reader.damaged("Maya", scene, kCutShort);
    }
}

Expected<void> readFile(std::span<const char> file, CommandSink& sink, const ReadOptions& options,
                        Coverage* coverage)
{
    Reader reader(file, sink, options, coverage);
    const std::string_view text(file.data(), file.size());
    if (text.starts_with("FOR8")) {
        reader.width = Width::Bits64;
    } else if (!text.starts_with("FOR4")) {
        return Error{ErrorCode::BadInput, "the file does not begin with FOR4 or FOR8", {}};
    }
    bool isCut = false;
    ChunkWalk walk(file, reader.width, 0, file.size());
    const auto first = walk.next();
    if (!first || !first->isGroup || first->kind != kMaya) {
        return Error{ErrorCode::BadInput, "the file's first group is not of the kind Maya", {}};
    }
    for (auto chunk = first; chunk; chunk = walk.next()) {
        if (chunk->isGroup && chunk->kind == kMaya) {
            readScene(reader, *chunk);
            isCut = isCut || chunk->isCut;
        } else {
            reader.unknown("file", *chunk);
        }
    }
    if (!reader.hasNode && isCut) {
        return Error{ErrorCode::BadInput, "the file is cut short before any node is created", {}};
    }
    sink.endOfScene();
    return {};
}

} // namespace
} // namespace binary

Expected<void> readBinary(std::span<const char> bytes, CommandSink& sink,
                          const ReadOptions& options, binary::Coverage* coverage)
{
    return binary::readFile(bytes, sink, options, coverage);
}

} // namespace host::file
