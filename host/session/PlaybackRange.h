// The playback range that a scene keeps as the text of a script node.
#pragma once

#include <optional>
#include <string_view>

namespace host::session {

/// Frames; none where the script does not say.
struct PlaybackRange {
    std::optional<double> minimum;
    std::optional<double> maximum;
    std::optional<double> animationStart;
    std::optional<double> animationEnd;
};

/// Reads "playbackOptions -min 1 -max 120 -ast 1 -aet 200" as data: flags in any order, short or
/// long; of several the last one with a number holds. What the statements do not say stays as it is
/// in `before`. Nothing is executed.
PlaybackRange parsePlaybackOptions(std::string_view script, PlaybackRange before = {});

} // namespace host::session
