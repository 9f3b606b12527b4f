#include "apps/maya2vistrel/SceneStream.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

// A binary array begins, after "[ ", with 01 02 03, the letter of its elements and their 32-bit
// count, lowest byte first.
constexpr int kHeaderLength = 8;
constexpr char kFirstHeaderByte = 1;
constexpr char kDoubles = 'r';
constexpr std::size_t kLongestLine =
    4096; // statements of interest are short; of a longer line only the beginning is kept

/// The name of `progress "name" fraction`: text between the quotes.
std::string_view quotedName(std::string_view line)
{
    const std::size_t first = line.find('"');
    const std::size_t last = line.rfind('"');
    return first != std::string_view::npos && last > first
               ? line.substr(first + 1, last - first - 1)
               : std::string_view();
}

} // namespace

SceneStream::SceneStream(ProgressListener onProgress) : m_onProgress(std::move(onProgress)) {}

void SceneStream::feed(std::string_view bytes)
{
    m_byteCount += bytes.size();
    while (!bytes.empty()) {
        if (m_skip > 0) {
            const std::size_t step = std::min<std::uint64_t>(m_skip, bytes.size());
            bytes.remove_prefix(step);
            m_skip -= step;
            continue;
        }
        take(bytes.front());
        bytes.remove_prefix(1);
    }
}

void SceneStream::take(char byte)
{
    if (m_headerBytes > 0) {
        readHeader(byte);
        return;
    }
    if (byte == kFirstHeaderByte && m_line.ends_with("[ ")) {
        m_headerBytes = 1;
        return;
    }
    if (byte == '\n') {
        endLine();
        m_line.clear();
    } else if (m_line.size() < kLongestLine) {
        m_line += byte;
    }
}

void SceneStream::readHeader(char byte)
{
    if (m_headerBytes == 3) {
        m_elementLetter = byte;
        m_elementCount = 0;
    } else if (m_headerBytes > 3) {
        const int shift = 8 * (m_headerBytes - 4);
        m_elementCount |= static_cast<std::uint32_t>(static_cast<unsigned char>(byte)) << shift;
    }
    if (++m_headerBytes == kHeaderLength) {
        m_headerBytes = 0;
        m_skip = std::uint64_t{m_elementCount} * (m_elementLetter == kDoubles ? 8 : 4);
    }
}

void SceneStream::endLine()
{
    std::string_view line = m_line;
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    if (line.starts_with("progress ")) {
        const std::size_t blank = line.rfind(' ');
        m_onProgress(quotedName(line),
                     std::strtod(std::string(line.substr(blank)).c_str(), nullptr));
    } else if (line.starts_with("load \"orvrtopt.so\"")) {
        m_hasScene = true;
    } else if (line.starts_with("geometry \"triangles\"")) {
        ++m_meshCount;
    } else if (line.starts_with("geometry \"orv_curves\"")) {
        ++m_hairCount;
    } else if (line.starts_with("animation ")) {
        ++m_trackCount;
    } else if (line.starts_with("camera ")) {
        ++m_cameraCount;
    } else if (line.starts_with("#define material ")) {
        ++m_materialCount;
    }
}
