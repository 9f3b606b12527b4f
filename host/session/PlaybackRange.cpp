#include "host/session/PlaybackRange.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace host::session {
namespace {

struct FlagRow {
    std::string_view shortName;
    std::string_view longName;
    std::optional<double> PlaybackRange::*value;
};

constexpr std::array<FlagRow, 4> kFlags{{
    {"-aet", "-animationEndTime", &PlaybackRange::animationEnd},
    {"-ast", "-animationStartTime", &PlaybackRange::animationStart},
    {"-max", "-maxTime", &PlaybackRange::maximum},
    {"-min", "-minTime", &PlaybackRange::minimum},
}};

/// The next word: numbers and flags stand between blanks and quotes.
std::string_view takeWord(std::string_view& text)
{
    constexpr std::string_view kBlank = " \t\r\n\"";
    const std::size_t begin = text.find_first_not_of(kBlank);
    if (begin == std::string_view::npos) {
        text = {};
        return {};
    }
    const std::size_t end = std::min(text.find_first_of(kBlank, begin), text.size());
    const std::string_view word = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return word;
}

std::optional<double> parseFrame(std::string_view word)
{
    if (word.starts_with('+')) {
        word.remove_prefix(1);
    }
    double frame = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), frame);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    return isWhole && std::isfinite(frame) ? std::optional(frame) : std::nullopt;
}

/// One statement's flags. A flag whose number is missing or no number changes nothing.
void readFlags(std::string_view statement, PlaybackRange& range)
{
    std::string_view word = takeWord(statement);
    while (!word.empty()) {
        const auto row = std::find_if(kFlags.begin(), kFlags.end(), [&](const FlagRow& flag) {
            return word == flag.shortName || word == flag.longName;
        });
        word = takeWord(statement);
        if (row == kFlags.end()) {
            continue;
        }
        if (const std::optional<double> frame = parseFrame(word)) {
            range.*(row->value) = frame;
            word = takeWord(statement);
        }
    }
}

} // namespace

PlaybackRange parsePlaybackOptions(std::string_view script, PlaybackRange before)
{
    constexpr std::string_view kCommand = "playbackOptions";
    while (!script.empty()) {
        const std::size_t end = std::min(script.find(';'), script.size());
        const std::string_view statement = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        const std::size_t begin = statement.find(kCommand);
        if (begin != std::string_view::npos) {
            readFlags(statement.substr(begin + kCommand.size()), before);
        }
    }
    return before;
}

} // namespace host::session
