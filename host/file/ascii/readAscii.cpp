#include "host/file/ascii/readAscii.h"

#include "host/file/ascii/Reader.h"
#include "host/file/ascii/setAttribute.h"
#include "host/file/ascii/statements/statements.h"

#include <string>

namespace host::file {
namespace ascii {
namespace {

constexpr std::string_view kMagic = "//Maya";
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view kCutShort = "the file ends inside the statement";
constexpr std::size_t kMaxShownBytes = 80; ///< of an unknown word

void readArguments(Reader& reader, const StatementRow& row, Arguments& arguments)
{
    if (!arguments.read(reader, row.flags)) {
        reader.damaged(row.word, kCutShort);
        return;
    }
    if (!arguments.unknownFlag().empty()) {
        reader.damaged(row.word, "unknown flag " + std::string(arguments.unknownFlag()));
    }
    row.action(reader, arguments);
}

/// Words that mean nothing here, stray marks and strings, markers that version control leaves.
void readUnknown(Reader& reader, const Token& word)
{
    Token shown = word;
    shown.text = shown.text.substr(0, kMaxShownBytes);
    reader.sink.unknown(reader.text(shown));
}

/// One statement; the scanner stands at its first token. False when the file ends inside it.
bool readStatement(Reader& reader, Arguments& arguments)
{
    const Token word = reader.scanner.take();
    reader.announce(reader.scanner.tokenOffset());
    if (word.kind == Token::Kind::Mark) {
        readUnknown(reader, word);
        return true; // what follows a stray brace may be a statement
    }
    if (word.kind == Token::Kind::Word && word.text == "setAttr") {
        readSetAttribute(reader);
    } else if (const StatementRow* row =
                   word.kind == Token::Kind::Word ? findStatement(word.text) : nullptr) {
        if (row->action != nullptr) {
            readArguments(reader, *row, arguments);
        }
    } else {
        readUnknown(reader, word);
    }
    return reader.scanner.skipStatement();
}

Expected<void> readFile(std::string_view file, CommandSink& sink, const ReadOptions& options)
{
    const bool hasMark = file.starts_with(kByteOrderMark);
    const std::size_t start = hasMark ? kByteOrderMark.size() : 0;
    const std::string_view text = file.substr(start);
    if (!text.starts_with(kMagic)) {
        return Error{ErrorCode::BadInput, "the file does not begin with //Maya", {}};
    }
    Reader reader(file, start, findCodePage(text, hasMark), sink, options);
    Arguments arguments;
    bool isWhole = false; // at least one statement, and the last one is not cut short
    while (!reader.scanner.isAtEndOfFile()) {
        if (*reader.scanner.position() == ';') {
            reader.scanner.skipStatement();
            continue;
        }
        isWhole = readStatement(reader, arguments);
        reader.forgetTexts();
        reader.passProgress();
    }
    if (!reader.hasNode && !isWhole) {
        return Error{ErrorCode::BadInput, "the file is cut short before any node is created", {}};
    }
    sink.endOfScene();
    return {};
}

} // namespace
} // namespace ascii

Expected<void> readAscii(std::span<const char> bytes, CommandSink& sink, const ReadOptions& options)
{
    return ascii::readFile({bytes.data(), bytes.size()}, sink, options);
}

} // namespace host::file
