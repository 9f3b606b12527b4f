// What the sections of one file share while it is read.
#pragma once

#include "host/file/Codeset.h"
#include "host/file/Command.h"
#include "host/file/ReadOptions.h"
#include "host/file/binary/Chunk.h"
#include "host/file/binary/Coverage.h"
#include "host/file/binary/Cursor.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace host::file::binary {

/// Buffers that keep their memory from chunk to chunk.
struct Buffers {
    std::vector<float> floats;
    std::vector<double> doubles;
    std::vector<std::int32_t> integers;
    std::vector<SparseNumber> sparse;
    std::vector<Value> values;
    PolyFaces faces;
};

class Reader {
public:
    static constexpr std::size_t kMaxValues = std::size_t{1} << 20;
    static constexpr std::size_t kMaxDeclaredTypes = 65536;

    Reader(std::span<const char> bytes, CommandSink& commandSink, const ReadOptions& options,
           Coverage* coverage);

    std::span<const char> file;
    Width width = Width::Bits32;
    CommandSink& sink;
    Buffers buffers;
    bool hasNode = false; ///< a node was created
    /// Bits: the sets of texture coordinates that the current node has told in chunks of their own.
    std::uint64_t toldUvSets = 0;
    /// Our ticks in one of the file's: 6000 a second before files told.
    double tickScale;
    /// Node types that the file declares, by their codes.
    std::map<std::uint32_t, std::string> declaredTypes;
    /// Elements that ranges of texts, components and the like may still have: each of them takes
    /// more memory than it has bytes.
    std::size_t valuesLeft = kMaxValues;

    ChunkWalk children(const Chunk& group) const { return {file, width, group}; }

    /// The text that a whole chunk is: such texts have no end mark, but some have one all the same.
    static std::string_view rawText(const Chunk& chunk);
    /// Raw bytes of the file as UTF-8; valid until the next chunk.
    std::string_view text(std::string_view raw);
    /// A text that lives until the next chunk.
    std::string_view keep(std::string text);

    /// Tells the sink where the chunk stands that comes now, and forgets the texts of the last one.
    void announce(const Chunk& chunk);
    /// The chunk was read to its end.
    void understood(std::string_view section, const Chunk& chunk);
    /// The chunk, or all of a group, means nothing here.
    void unknown(std::string_view section, const Chunk& chunk);
    /// The chunk could not be read to its end.
    void damaged(std::string_view section, const Chunk& chunk, std::string_view reason);
    /// Understood, or damaged where the cursor failed or has bytes left.
    void finish(std::string_view section, const Chunk& chunk, Cursor& cursor);
    /// Called between chunks; `offset` is where the reading stands.
    void passProgress(std::size_t offset);

private:
    void countAll(std::string_view section, const Chunk& chunk, bool isUnderstood,
                  std::string_view reason);

    const ReadOptions& m_options;
    Coverage* m_coverage;
    Codeset m_utf8;
    Codeset m_western;               ///< for texts that are no UTF-8
    std::deque<std::string> m_texts; ///< a deque: views of its elements stay valid as it grows
    std::size_t m_reported = 0;
    std::size_t m_announced = SIZE_MAX; ///< no chunk yet
};

// The sections of a file. Each reads one group whole.
void readHeader(Reader& reader, const Chunk& group);      // header.cpp
void readReferences(Reader& reader, const Chunk& group);  // references.cpp
void readNode(Reader& reader, const Chunk& group);        // nodes.cpp
void readParents(Reader& reader, const Chunk& group);     // connections.cpp
void readConnections(Reader& reader, const Chunk& group); // connections.cpp

/// A dynamic attribute's definition (ATTR).
void readAttributeDefinition(Reader& reader, const Chunk& chunk); // attributeDefinitions.cpp

} // namespace host::file::binary
