// What a new scene holds before any file is read.
#pragma once

#include "host/file/Command.h"

namespace host::session {

/// Sends the commands that build a new scene: the four cameras, the default material and its sets,
/// the clock, layers and render settings. It ends with `endOfScene`.
void sendDefaultScene(file::CommandSink& sink);

} // namespace host::session
