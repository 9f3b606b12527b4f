// The reader of the text form of scenes (.ma): bytes become commands.
#pragma once

#include "host/file/Command.h"
#include "host/file/ReadOptions.h"
#include "host/support/Expected.h"

#include <cstddef>
#include <span>

namespace host::file {

/// Sends the commands of a scene to `sink`, in one forward pass. What is odd goes to the sink's
/// `unknown` and `damaged`, and the reading goes on; a file that ends inside a statement delivers
/// what there is.
///
/// Failure  BadInput when the bytes do not begin with "//Maya" (a byte order mark may stand before
///          it), or are cut short before any node is created; `endOfScene` is then not called.
/// Memory   independent of the length of statements of numbers and faces: they are handed over in
///          pieces, as consecutive commands whose first index advances.
Expected<void> readAscii(std::span<const char> bytes, CommandSink& sink,
                         const ReadOptions& options = {});

} // namespace host::file
