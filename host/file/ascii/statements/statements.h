// The statements of a scene by their words: what each takes and which command comes of it.
#pragma once

#include "host/file/ascii/Arguments.h"
#include "host/file/ascii/Reader.h"

#include <span>
#include <string_view>

namespace host::file::ascii {

/// What a statement of short arguments does; `arguments` were sorted out by its table of flags.
using StatementAction = void (*)(Reader& reader, const Arguments& arguments);

struct StatementRow {
    std::string_view word;
    std::span<const FlagRow> flags;
    StatementAction action; ///< null: the statement says nothing that matters here and is skipped
};

/// All statements but setAttr, sorted by word. A word that is not in it is unknown.
std::span<const StatementRow> statementTable();
const StatementRow* findStatement(std::string_view word);

// nodeStatements.cpp
void createNode(Reader& reader, const Arguments& arguments);
void renameNode(Reader& reader, const Arguments& arguments);
void selectNode(Reader& reader, const Arguments& arguments);
void lockNode(Reader& reader, const Arguments& arguments);
void parentNodes(Reader& reader, const Arguments& arguments);

// attributeStatements.cpp
void addAttribute(Reader& reader, const Arguments& arguments);
void connectAttributes(Reader& reader, const Arguments& arguments);
void disconnectAttributes(Reader& reader, const Arguments& arguments);

// sceneStatements.cpp
void requirePlugin(Reader& reader, const Arguments& arguments);
void currentUnit(Reader& reader, const Arguments& arguments);
void fileInfo(Reader& reader, const Arguments& arguments);
void referenceFile(Reader& reader, const Arguments& arguments);

} // namespace host::file::ascii
