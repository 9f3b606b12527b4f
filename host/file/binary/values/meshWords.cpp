#include "host/file/binary/values/meshWords.h"

#include "host/support/wideProcessors.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace host::file::binary {
namespace {

// Flags can be looked at without turning the bytes of a word over.

std::uint32_t rawWord(Words words, std::size_t at)
{
    std::uint32_t word;
    std::memcpy(&word, words.from(at), sizeof word);
    return word;
}

/// A word as it stands in a file.
std::uint32_t asInFile(std::uint32_t word)
{
    return std::endian::native == std::endian::little ? swapped(word) : word;
}

} // namespace

HOST_ALSO_FOR_WIDE_PROCESSORS void loadEdges(const char* bytes, std::size_t count,
                                             std::int32_t* target)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto start = load<std::uint32_t>(bytes + 8 * i);
        target[3 * i] = static_cast<std::int32_t>(start & kVertexNumber);
        target[3 * i + 1] = load<std::int32_t>(bytes + 8 * i + 4);
        target[3 * i + 2] = static_cast<std::int32_t>(~start >> 31);
    }
}

HOST_ALSO_FOR_WIDE_PROCESSORS std::int32_t loadCorners(Words corners, std::int32_t* target)
{
    std::int32_t highest = 0;
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto word = load<std::int32_t>(corners.from(i));
        const std::int32_t edge = word & static_cast<std::int32_t>(kEdgeNumber);
        highest = edge > highest ? edge : highest;
        target[i] = edge ^ word >> 31; // all bits turned over: -1 - edge
    }
    return highest;
}

HOST_ALSO_FOR_WIDE_PROCESSORS std::size_t countEnds(Words corners, std::uint32_t flags)
{
    const std::uint32_t mask = asInFile(flags);
    std::uint32_t ends = 0; // a piece has fewer corners than 2^32
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        ends += (rawWord(corners, i) & mask) != 0 ? 1U : 0U;
    }
    return ends;
}

HOST_ALSO_FOR_WIDE_PROCESSORS bool areQuads(Words corners)
{
    const std::uint32_t inside = asInFile(kEndsLoop | kEndsFace);
    const std::uint32_t atEnd = asInFile(kEndsFace);
    const std::size_t count = corners.size();
    if (count % 4 != 0) {
        return false;
    }
    std::uint32_t endsInside = 0;
    std::uint32_t endsAtAll = atEnd;
    for (std::size_t i = 0; i < count; i += 4) {
        endsInside |= rawWord(corners, i) | rawWord(corners, i + 1) | rawWord(corners, i + 2);
        endsAtAll &= rawWord(corners, i + 3);
    }
    return (endsInside & inside) == 0 && endsAtAll != 0;
}

void measureRuns(Words corners, std::uint32_t flags, std::uint32_t* target)
{
    std::size_t runs = 0;
    std::uint32_t size = 0;
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const bool isEnd = (corners[i] & flags) != 0;
        ++size;
        target[runs] = size; // without a branch: overwritten until the run ends
        runs += isEnd ? 1 : 0;
        size = isEnd ? 0 : size;
    }
}

void countLoops(Words corners, std::uint32_t* target)
{
    std::size_t faces = 0;
    std::uint32_t loops = 0;
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t word = corners[i];
        loops += (word & (kEndsLoop | kEndsFace)) != 0 ? 1U : 0U;
        if ((word & kEndsFace) != 0) {
            target[faces++] = loops;
            loops = 0;
        }
    }
}

std::size_t closedCorners(Words corners)
{
    std::size_t count = corners.size();
    while (count > 0 && (corners[count - 1] & kEndsFace) == 0) {
        --count;
    }
    return count;
}

std::size_t endOfPiece(Words corners, std::size_t begin, std::size_t size)
{
    std::size_t end = std::min(corners.size(), begin + size);
    while ((corners[end - 1] & kEndsFace) == 0) {
        ++end;
    }
    return end;
}

} // namespace host::file::binary
