#include "host/session/PlaybackRange.h"

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
    double frame = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), frame);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    return isWhole && std::isfinite(frame) ? std::optional(frame) : std::nullopt;
}

} // namespace

PlaybackRange parsePlaybackOptions(std::string_view script)
{
    constexpr std::string_view kCommand = "playbackOptions";
    PlaybackRange range;
    const std::size_t begin = script.find(kCommand);
    if (begin == std::string_view::npos) {
        return range;
    }
    std::string_view rest = script.substr(begin + kCommand.size());
    rest = rest.substr(0, rest.find(';'));
    for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
        for (const FlagRow& row : kFlags) {
            if (word == row.shortName || word == row.longName) {
                range.*row.value = parseFrame(takeWord(rest));
            }
        }
    }
    return range;
}

} // namespace host::session
