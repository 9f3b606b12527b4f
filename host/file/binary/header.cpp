// HEAD: version, units, file info, plug-ins.
#include "host/file/binary/Reader.h"
#include "host/math/units.h"

#include <charconv>
#include <string>

namespace host::file::binary {
namespace {

constexpr std::string_view kSection = "HEAD";

/// Texts that nothing depends on: who saved when, how many objects, metadata.
constexpr Tag kIgnored[] = {"BCSZ", "CHNG", "DATS", "ICON", "INCL",
                            "INFO", "MADE", "OBJN", "SMTD", "UVER"};

bool isIgnored(Tag tag)
{
    for (const Tag ignored : kIgnored) {
        if (tag == ignored) {
            return true;
        }
    }
    return false;
}

void takeTicks(Reader& reader, const Chunk& chunk)
{
    const std::string_view text = reader.rawText(chunk);
    std::int64_t perSecond = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), perSecond);
    if (read.ec != std::errc() || perSecond <= 0) {
        reader.damaged(kSection, chunk, "the number of ticks in a second is no positive number");
        return;
    }
    reader.tickScale = static_cast<double>(kTicksPerSecond) / static_cast<double>(perSecond);
    reader.understood(kSection, chunk);
}

void takeFileInfo(Reader& reader, const Chunk& chunk)
{
    Cursor cursor(chunk.payload);
    const std::string_view key = cursor.text();
    const std::string_view value = cursor.text();
    if (!cursor.hasFailed()) {
        reader.sink.fileInfo(reader.text(key), reader.text(value));
    }
    reader.finish(kSection, chunk, cursor);
}

void takePlugin(Reader& reader, const Chunk& chunk)
{
    Cursor cursor(chunk.payload);
    const std::string_view name = cursor.text();
    const std::string_view version = cursor.text();
    std::vector<std::string_view> types;
    if (!cursor.isAtEnd()) {
        cursor.text(); // options, as the text form writes them
    }
    while (!cursor.isAtEnd()) {
        const std::string_view type = reader.text(cursor.text());
        const Tag code = cursor.tag();
        if (reader.declaredTypes.size() >= Reader::kMaxDeclaredTypes) {
            cursor.fail("more node types of plug-ins than are kept");
        }
        if (!cursor.hasFailed() && !type.empty()) {
            reader.declaredTypes.try_emplace(code.code, type);
            types.push_back(type);
        }
    }
    if (!cursor.hasFailed()) {
        reader.sink.requirePlugin(reader.text(name), reader.text(version), types);
    }
    reader.finish(kSection, chunk, cursor);
}

/// The units that the scene is shown in; no number of the file is in them.
class UnitWords {
public:
    /// True when the chunk names a unit.
    bool take(Reader& reader, const Chunk& chunk)
    {
        const std::string_view word = reader.rawText(chunk);
        bool isKnown = false;
        if (chunk.tag == Tag("LUNI")) {
            isKnown = findLinearUnit(word).has_value();
            m_linear = isKnown ? std::string(word) : m_linear;
        } else if (chunk.tag == Tag("AUNI")) {
            isKnown = findAngularUnit(word).has_value();
            m_angular = isKnown ? std::string(word) : m_angular;
        } else if (chunk.tag == Tag("TUNI")) {
            isKnown = findTimeUnit(word).has_value();
            m_time = isKnown ? std::string(word) : m_time;
        } else {
            return false;
        }
        m_isGiven = true;
        if (isKnown) {
            reader.understood(kSection, chunk);
        } else {
            reader.damaged(kSection, chunk,
                           "unknown unit '" + std::string(reader.text(word.substr(0, 40))) + "'");
        }
        return true;
    }

    void send(Reader& reader) const
    {
        if (m_isGiven) {
            reader.sink.currentUnit({m_linear, m_angular, m_time, true});
        }
    }

private:
    std::string m_linear = "cm";
    std::string m_angular = "deg";
    std::string m_time = "film";
    bool m_isGiven = false;
};

void readHeaderChunk(Reader& reader, const Chunk& chunk, UnitWords& units)
{
    if (chunk.tag == Tag("VERS")) {
        reader.sink.requirePlugin("maya", reader.text(reader.rawText(chunk)), {});
        reader.understood(kSection, chunk);
    } else if (chunk.tag == Tag("TDUR")) {
        takeTicks(reader, chunk);
    } else if (chunk.tag == Tag("FINF")) {
        takeFileInfo(reader, chunk);
    } else if (chunk.tag == Tag("PLUG")) {
        takePlugin(reader, chunk);
    } else if (isIgnored(chunk.tag)) {
        reader.understood(kSection, chunk);
    } else if (!units.take(reader, chunk)) {
        reader.unknown(kSection, chunk);
    }
}

} // namespace

void readHeader(Reader& reader, const Chunk& group)
{
    UnitWords units;
    ChunkWalk walk = reader.children(group);
    while (const auto chunk = walk.next()) {
        reader.announce(*chunk);
        if (chunk->isCut) {
            reader.damaged(kSection, *chunk, "the chunk passes the end of the header");
        } else if (chunk->isGroup) {
            reader.unknown(kSection, *chunk);
        } else {
            readHeaderChunk(reader, *chunk, units);
        }
    }
    units.send(reader);
}

} // namespace host::file::binary
