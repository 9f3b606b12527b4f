#include "host/file/ascii/Reader.h"

#include "host/math/units.h"

#include <algorithm>
#include <utility>

namespace host::file::ascii {
namespace {

constexpr std::size_t kProgressBytes = std::size_t{4} << 20;
constexpr std::size_t kKeptTexts = 64;
constexpr std::size_t kKeptTextBytes = 4096;

} // namespace

Reader::Reader(std::string_view bytes, std::size_t start, unsigned codePage,
               CommandSink& commandSink, const ReadOptions& options)
    : codeset(codePage)
    , scanner(bytes, codeset)
    , sink(commandSink)
    , m_options(options)
    , m_lines(bytes)
{
    scanner.moveTo(start);
    scales.angular = findAngularUnit(angularUnit).value_or(1);
    scales.time = findTimeUnit(timeUnit).value_or(1);
}

std::string_view Reader::text(const Token& token)
{
    if (scanner.isPlain(token)) {
        return token.text;
    }
    std::string decoded;
    scanner.appendText(token, decoded);
    return keep(std::move(decoded));
}

std::string_view Reader::keep(std::string text)
{
    if (m_textsInUse == m_texts.size()) {
        m_texts.emplace_back();
    }
    std::string& place = m_texts[m_textsInUse++];
    place = std::move(text);
    return place;
}

void Reader::forgetTexts()
{
    if (m_texts.size() > kKeptTexts) {
        m_texts.clear();
    } else {
        for (std::size_t i = 0; i < m_textsInUse; ++i) {
            if (m_texts[i].capacity() > kKeptTextBytes) {
                std::string().swap(m_texts[i]);
            }
        }
    }
    m_textsInUse = 0;
}

void Reader::announce(std::size_t offset)
{
    m_announced = offset;
    sink.at(m_lines.placeOf(offset));
}

void Reader::damagedAtToken(std::string_view word, std::string_view reason)
{
    announce(std::max(scanner.tokenOffset(), m_announced));
    sink.damaged(word, reason);
}

void Reader::passProgress()
{
    if (scanner.offset() - m_reported < kProgressBytes) {
        return;
    }
    m_reported = scanner.offset();
    // Lines are counted now: a listener may give the memory of what is behind back to the system.
    m_lines.placeOf(m_reported);
    m_announced = m_reported;
    if (m_options.progress) {
        m_options.progress(m_reported);
    }
}

} // namespace host::file::ascii
