// Scenes of either format, told apart by their first bytes.
#pragma once

#include "host/file/Command.h"
#include "host/file/ReadOptions.h"
#include "host/support/Expected.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace host::file {

enum class SceneFormat : std::uint8_t {
    Unknown,
    Ascii, ///< begins with "//Maya", perhaps behind a byte order mark
    Binary ///< begins with "FOR4" or "FOR8"
};

/// By content alone: names of files say nothing.
SceneFormat recogniseFormat(std::string_view firstBytes);

/// Sends the commands of a scene to `sink` (`readAscii`, `readBinary`). Failure: BadInput, also for
/// bytes of neither format; `endOfScene` is then not called.
Expected<void> readScene(std::span<const char> bytes, CommandSink& sink,
                         const ReadOptions& options = {});

} // namespace host::file
