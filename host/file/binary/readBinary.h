// The reader of the binary form of scenes (.mb): bytes become commands.
#pragma once

#include "host/file/Command.h"
#include "host/file/ReadOptions.h"
#include "host/support/Expected.h"

#include <span>

namespace host::file {

namespace binary {
struct Coverage;
}

/// Sends the commands of a scene to `sink`, in one forward pass; they are those that the text form
/// of the same save gives. A chunk that means nothing here is skipped whole and told to the sink's
/// `unknown`, one that cannot be read to its end to `damaged`; the reading goes on behind it. A
/// file that is cut short delivers what there is.
///
/// Failure  BadInput when the bytes do not begin with a group of the kind "Maya", or are cut short
///          before any node is created; `endOfScene` is then not called.
/// Memory   independent of the length of chunks of numbers and faces: they are handed over in
///          pieces, as consecutive commands whose first index advances.
/// `coverage`, if any, counts what was understood; counting costs time.
Expected<void> readBinary(std::span<const char> bytes, CommandSink& sink,
                          const ReadOptions& options = {}, binary::Coverage* coverage = nullptr);

} // namespace host::file
