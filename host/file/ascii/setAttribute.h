// The statement setAttr: its flags, its plug, and whose turn it is to read the payload.
#pragma once

#include "host/file/ascii/Arguments.h"

#include <cstdint>
#include <span>

namespace host::file::ascii {

/// Flags of setAttr but -type, sorted by the short spelling.
std::span<const FlagRow> setAttributeFlags();

/// Reads a setAttr whose first word was taken, up to its semicolon or to what is wrong with it.
void readSetAttribute(Reader& reader);

} // namespace host::file::ascii
