// Payloads of whole values, one for each element of the plug's range.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include <algorithm>
#include <string>

namespace host::file::ascii {
namespace {

constexpr std::string_view kWord = "setAttr";
constexpr std::size_t kPieceValues = 1024;
constexpr std::size_t kMaxOpaqueBytes = std::size_t{1} << 20; ///< what is longer is cut

/// Sends the values collected so far and moves on along the plug.
void send(Reader& reader, PayloadTask& task)
{
    std::vector<Value>& values = reader.buffers.values;
    PlugStep& step = task.command.plug.steps[runningStep(task.command.plug)];
    const std::int64_t count = static_cast<std::int64_t>(values.size());
    const std::int64_t last = step.last;
    if (step.hasIndex()) {
        step.last = step.first + count - 1;
    }
    task.command.payload = SetAttribute::Payload::Value;
    task.command.values = values;
    reader.sink.setAttribute(task.command);
    if (step.hasIndex()) {
        step.first += count;
        step.last = std::max(last, step.first);
    }
    values.clear();
    reader.passProgress();
}

} // namespace

void readValues(Reader& reader, PayloadTask& task, ValueReader read)
{
    std::vector<Value>& values = reader.buffers.values;
    values.clear();
    const std::int64_t room = elementCount(task.command.plug);
    const bool isRange = room > 1;
    std::int64_t taken = 0;
    std::string reason;
    while (reason.empty() && !reader.scanner.isAtEndOfStatement()) {
        if (taken == room) {
            reason = "more values than the plug takes";
            break;
        }
        auto value = read(reader);
        if (!value) {
            reason = value.error().message;
            break;
        }
        values.push_back(std::move(*value));
        ++taken;
        if (values.size() == kPieceValues) {
            send(reader, task);
        }
    }
    if (reason.empty() && reader.scanner.isAtEndOfFile()) {
        reason = "the file ends inside the statement";
    }
    if (reason.empty() && taken == 0) {
        values.emplace_back(); // a type without data: no value
    } else if (reason.empty() && isRange && taken < room) {
        reason = "fewer values than the range of the plug takes";
    }
    if (!values.empty()) {
        send(reader, task);
    }
    if (!reason.empty()) {
        reader.damagedAtToken(kWord, reason);
    }
}

void readOpaque(Reader& reader, PayloadTask& task, std::size_t start)
{
    Scanner& scanner = reader.scanner;
    std::size_t end = start;
    Token token = scanner.take();
    while (token.kind != Token::Kind::Semicolon && token.kind != Token::Kind::End) {
        end = scanner.offset();
        token = scanner.take();
    }
    if (token.kind == Token::Kind::End) {
        reader.damagedAtToken(kWord, "the file ends inside the statement");
        return;
    }
    std::string_view raw = scanner.bytes().substr(start, std::min(end - start, kMaxOpaqueBytes));
    while (!raw.empty() && static_cast<unsigned char>(raw.front()) <= ' ') {
        raw.remove_prefix(1);
    }
    OpaqueText opaque;
    opaque.type = task.type;
    reader.codeset.append(raw, opaque.text);
    reader.buffers.values.clear();
    reader.buffers.values.push_back(Value::of(std::move(opaque)));
    PlugStep& step = task.command.plug.steps[runningStep(task.command.plug)];
    step.last = step.first; // one text, whatever the range: nobody can tell its elements apart
    send(reader, task);
}

} // namespace host::file::ascii
