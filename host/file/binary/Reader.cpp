#include "host/file/binary/Reader.h"

#include "host/math/units.h"

#include <utility>

namespace host::file::binary {
namespace {

constexpr std::size_t kProgressBytes = std::size_t{4} << 20;
constexpr std::size_t kKeptTexts = 64;
constexpr double kOldTicksPerSecond = 6000;

} // namespace

Reader::Reader(std::span<const char> bytes, CommandSink& commandSink, const ReadOptions& options,
               Coverage* coverage)
    : file(bytes)
    , sink(commandSink)
    , tickScale(static_cast<double>(kTicksPerSecond) / kOldTicksPerSecond)
    , m_options(options)
    , m_coverage(coverage)
    , m_utf8(kUtf8)
    , m_western(kWesternEuropean)
{
}

std::string_view Reader::rawText(const Chunk& chunk)
{
    const std::string_view whole(chunk.payload.data(), chunk.payload.size());
    return whole.substr(0, whole.find('\0'));
}

std::string_view Reader::text(std::string_view raw)
{
    if (m_utf8.isPlain(raw)) {
        return raw;
    }
    std::string decoded;
    m_western.append(raw, decoded);
    return keep(std::move(decoded));
}

std::string_view Reader::keep(std::string text)
{
    return m_texts.emplace_back(std::move(text));
}

void Reader::announce(const Chunk& chunk)
{
    if (m_texts.size() > kKeptTexts) {
        std::deque<std::string>().swap(m_texts);
    } else {
        m_texts.clear();
    }
    m_announced = chunk.offset;
    Place place;
    place.offset = chunk.offset;
    sink.at(place);
}

void Reader::understood(std::string_view section, const Chunk& chunk)
{
    countAll(section, chunk, true, {});
}

void Reader::unknown(std::string_view section, const Chunk& chunk)
{
    if (m_announced != chunk.offset) {
        announce(chunk);
    }
    sink.unknown((chunk.isGroup ? chunk.kind : chunk.tag).text());
    countAll(section, chunk, false, "unknown");
}

void Reader::damaged(std::string_view section, const Chunk& chunk, std::string_view reason)
{
    sink.damaged(chunk.tag.text(), reason);
    countAll(section, chunk, false, reason);
}

void Reader::finish(std::string_view section, const Chunk& chunk, Cursor& cursor)
{
    cursor.expectEnd();
    if (cursor.hasFailed()) {
        damaged(section, chunk, cursor.reason());
    } else {
        understood(section, chunk);
    }
}

void Reader::passProgress(std::size_t offset)
{
    if (offset < m_reported + kProgressBytes) {
        return;
    }
    m_reported = offset;
    if (m_options.progress) {
        m_options.progress(offset);
    }
}

/// Groups count as the leaves in them; what lies deeper than any file has counts as one.
void Reader::countAll(std::string_view section, const Chunk& chunk, bool isUnderstood,
                      std::string_view reason)
{
    if (m_coverage != nullptr) {
        m_coverage->count(section, chunk.tag, chunk.payload.size(), isUnderstood, reason);
    }
}

} // namespace host::file::binary
