// Names of node types by the codes that binary files have for them: a read-only table.
#pragma once

#include "host/file/binary/Tag.h"

#include <string_view>

namespace host::file::binary {

/// The name of a node type; empty for a code that the table does not have. Codes of types that came
/// with plug-ins are in it as far as they are known: files before 2014 do not tell them.
std::string_view findTypeOfCode(Tag code);

} // namespace host::file::binary
