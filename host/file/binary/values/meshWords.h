// The lists of a mesh's block: numbers of 4 bytes with flags in their highest bits.
#pragma once

#include "host/file/binary/bigEndian.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace host::file::binary {

// A corner: the number of its edge and three flags.
inline constexpr std::uint32_t kEdgeNumber = 0x1fffffff;
inline constexpr std::uint32_t kEndsFace = 0x20000000;
inline constexpr std::uint32_t kEndsLoop = 0x40000000; ///< also set where a face ends
// The highest bit: the edge is walked from its end to its start.

// An edge: two vertices. The first one's highest bit says that the edge is hard.
inline constexpr std::uint32_t kVertexNumber = 0x7fffffff;

/// Numbers of 4 bytes as the file has them.
class Words {
public:
    Words() = default;
    explicit Words(std::span<const char> bytes) : m_bytes(bytes) {}
    std::size_t size() const { return m_bytes.size() / 4; }
    bool isEmpty() const { return m_bytes.empty(); }
    std::uint32_t operator[](std::size_t at) const { return load<std::uint32_t>(from(at)); }
    const char* from(std::size_t at) const { return m_bytes.data() + 4 * at; }
    Words part(std::size_t first, std::size_t count) const
    {
        return Words(m_bytes.subspan(4 * first, 4 * count));
    }

private:
    std::span<const char> m_bytes;
};

/// Edges of two numbers become edges of three: start, end, 1 for soft and 0 for hard.
void loadEdges(const char* bytes, std::size_t count, std::int32_t* target);

/// Corners as signed references: e, or -1 - e for an edge that is walked backwards. The result is
/// the highest edge number; 0 of no corners.
std::int32_t loadCorners(Words corners, std::int32_t* target);

/// The corners that have one of the flags; at most 2^32 - 1 corners.
std::size_t countEnds(Words corners, std::uint32_t flags);

/// Whether all faces have one loop of four corners; the last corner ends a face.
bool areQuads(Words corners);

/// The corners of each run that ends with one of the flags; `target` has room for `countEnds`, the
/// last corner ends a run.
void measureRuns(Words corners, std::uint32_t flags, std::uint32_t* target);

/// The loops of each face; `target` has room for all.
void countLoops(Words corners, std::uint32_t* target);

/// Corners up to the end of the last face that has one.
std::size_t closedCorners(Words corners);

/// Where a piece of about `size` corners from `begin` on ends: with a face. The last corner of all
/// ends one.
std::size_t endOfPiece(Words corners, std::size_t begin, std::size_t size);

} // namespace host::file::binary
