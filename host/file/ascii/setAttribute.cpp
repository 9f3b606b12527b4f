#include "host/file/ascii/setAttribute.h"

#include "host/file/ascii/payloads/payloads.h"

#include <string>

namespace host::file::ascii {
namespace {

using enum FlagValue;

// clang-format off
constexpr FlagRow kFlags[] = {
    {"av", "alteredValue", None},
    {"c",  "clamp",        None},
    {"ca", "caching",      Boolean},
    {"cb", "channelBox",   Boolean},
    {"ch", "capacityHint", Text},
    {"k",  "keyable",      Boolean},
    {"l",  "lock",         Boolean},
    {"s",  "size",         Text},
};
// clang-format on

constexpr std::string_view kWord = "setAttr";

/// What stands before the payload.
struct Heading {
    AttributeFlags flags;
    std::int64_t sizeHint = -1;
    std::string_view plug;
    std::string_view type;
    bool isGood = true;
};

std::int8_t takeBoolean(Scanner& scanner)
{
    const Token next = scanner.peek();
    const auto truth = next.isText() ? booleanOfWord(next.text) : std::nullopt;
    if (!truth) {
        return 1; // the flag alone means yes
    }
    scanner.take();
    return *truth ? 1 : 0;
}

void takeFlagValue(Scanner& scanner, const FlagRow& row, Heading& heading)
{
    if (row.value == None) {
        return;
    }
    if (row.value == Text) {
        const Token value = scanner.take();
        const double number = value.isText() ? numberOfWord(value.text).value_or(-1) : -1;
        if (row.shortName == "s" && number >= 0) {
            heading.sizeHint = toInt32(number);
        }
        return;
    }
    const std::int8_t state = takeBoolean(scanner);
    if (row.shortName == "k") {
        heading.flags.isKeyable = state;
    } else if (row.shortName == "l") {
        heading.flags.isLocked = state;
    } else if (row.shortName == "cb") {
        heading.flags.isInChannelBox = state;
    }
}

bool isTypeFlag(std::string_view word)
{
    return word == "-type" || word == "-typ";
}

/// Flags in any order around the plug. Behind the plug only what is a flag of the table counts:
/// "-nan" and "-inf" are numbers.
Heading takeHeading(Reader& reader)
{
    Scanner& scanner = reader.scanner;
    Heading heading;
    while (true) {
        const Token token = scanner.peek();
        if (!token.isText()) {
            break;
        }
        const bool isWord = token.kind == Token::Kind::Word;
        if (isWord && isTypeFlag(token.text)) {
            scanner.take();
            const Token type = scanner.take();
            heading.type = type.isText() ? reader.text(type) : std::string_view();
        } else if (const FlagRow* row = isWord ? findFlag(kFlags, token.text) : nullptr) {
            scanner.take();
            takeFlagValue(scanner, *row, heading);
        } else if (!heading.plug.empty()) {
            break;
        } else if (looksLikeFlag(token)) {
            reader.damagedAtToken(kWord, "unknown flag " + std::string(reader.text(token)));
            heading.isGood = false;
            break;
        } else {
            scanner.take();
            heading.plug = reader.text(token);
            if (heading.plug.empty()) {
                break;
            }
        }
    }
    return heading;
}

/// The plug's text before its last index: what the statements of one long list have in common.
std::string_view listName(std::string_view plug)
{
    return plug.substr(0, plug.rfind('['));
}

/// A multi inside an indexed element of another one, itself without an index: counts and pairs.
bool isSparseForm(const PayloadTask& task)
{
    const PlugPath& plug = task.command.plug;
    if (!task.shape.isNumbers || !task.shape.isMulti || task.shape.width != 1 ||
        plug.last().hasIndex()) {
        return false;
    }
    for (std::size_t i = 0; i + 1 < plug.stepCount; ++i) {
        if (plug.steps[i].hasIndex()) {
            return true;
        }
    }
    return false;
}

/// The type that the payload follows when the attribute does not tell: this statement's own, or the
/// one of the statement that it continues.
void settleType(Reader& reader, PayloadTask& task, std::string_view plugText)
{
    const std::string_view list = listName(plugText);
    if (!task.type.empty()) {
        reader.lastType.plug = list;
        reader.lastType.type = task.type;
    } else if (!task.shape.isKnown && !list.empty() && reader.lastType.plug == list) {
        task.type = reader.keep(reader.lastType.type);
    }
}

const PayloadRow* rowOf(const PayloadTask& task)
{
    if (!task.type.empty()) {
        return findPayload(task.type);
    }
    return task.shape.isKnown ? findPayload(task.shape.kind) : nullptr;
}

/// An attribute that is not known and a statement that names no type: the first token decides.
void readUntyped(Reader& reader, PayloadTask& task)
{
    const std::size_t start = reader.scanner.offset();
    const Token first = reader.scanner.peek();
    const bool isNumber = first.kind == Token::Kind::Word && numberOfWord(first.text).has_value();
    if (isNumber) {
        readUntypedNumbers(reader, task);
    } else if (first.kind == Token::Kind::String || first.isMark('(')) {
        readValues(reader, task, readString);
    } else {
        readOpaque(reader, task, start);
    }
}

void readPayload(Reader& reader, PayloadTask& task)
{
    const PayloadRow* const row = rowOf(task);
    const bool isNumbers = row != nullptr && row->form == PayloadForm::Numbers;
    if (task.shape.isNumbers && (row == nullptr || isNumbers)) {
        if (isNumbers) {
            task.shape.width = row->width;
        }
        isSparseForm(task) ? readSparseNumbers(reader, task) : readNumbers(reader, task);
        return;
    }
    if (row == nullptr && task.type.empty()) {
        readUntyped(reader, task);
        return;
    }
    if (isNumbers) {
        task.shape.isNumbers = true;
        task.shape.width = row->width;
        task.shape.storage = row->storage;
        task.shape.units = {};
        readNumbers(reader, task);
        return;
    }
    if (row == nullptr || row->form == PayloadForm::Opaque) {
        readOpaque(reader, task, reader.scanner.offset());
    } else if (row->form == PayloadForm::Faces) {
        readFaces(reader, task);
    } else {
        readValues(reader, task, row->read);
    }
}

} // namespace

std::span<const FlagRow> setAttributeFlags()
{
    return kFlags;
}

void readSetAttribute(Reader& reader)
{
    const Heading heading = takeHeading(reader);
    if (!heading.isGood) {
        return;
    }
    const auto plug = parsePlugPath(heading.plug);
    if (!plug) {
        reader.damagedAtToken(kWord, plug.error().message);
        return;
    }
    PayloadTask task;
    task.command.plug = *plug;
    task.command.flags = heading.flags;
    task.command.sizeHint = heading.sizeHint;
    task.type = heading.type;
    const bool hasPayload = !reader.scanner.isAtEndOfStatement() || !task.type.empty();
    if (!hasPayload) {
        if (reader.scanner.isAtEndOfFile()) {
            reader.damagedAtToken(kWord, "the file ends inside the statement");
            return;
        }
        reader.sink.setAttribute(task.command);
        return;
    }
    task.shape = reader.sink.shapeOf(*plug);
    settleType(reader, task, heading.plug);
    readPayload(reader, task);
}

} // namespace host::file::ascii
