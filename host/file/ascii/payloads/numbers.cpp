// Numbers: straight from the text into a buffer of their final type, handed over piece by piece.
#include "host/file/ascii/numbers.h"

#include "host/file/ascii/payloads/payloads.h"
#include "host/file/numberPieces.h"

#include <algorithm>
#include <limits>
#include <string>

namespace host::file::ascii {
namespace {

constexpr std::string_view kWord = "setAttr";

enum class Stop : std::uint8_t { Full, EndOfStatement, EndOfFile, NoNumber };

/// Factors of the numbers of an element, where any of them is not 1.
struct Scaling {
    std::array<double, PlugShape::kMaxWidth> factors{};
    std::size_t width = 1;
    bool isNeeded = false;
};

Scaling scalingOf(const UnitScales& scales, const PlugShape& shape, std::size_t width)
{
    Scaling scaling;
    scaling.width = width;
    for (std::size_t i = 0; i < scaling.factors.size(); ++i) {
        scaling.factors[i] = scales.of(shape.units[i]);
        scaling.isNeeded = scaling.isNeeded || (i < width && scaling.factors[i] != 1);
    }
    return scaling;
}

/// A number that is not written in the common form, a comment, or what ends the list.
struct OddToken {
    Stop stop = Stop::Full; ///< Full: `number` was read
    double number = 0;
};

OddToken takeOddToken(Scanner& scanner)
{
    const Token token = scanner.take();
    const bool isCut = scanner.position() == scanner.end(); // its other half may be missing
    if (token.kind == Token::Kind::Semicolon) {
        return {Stop::EndOfStatement};
    }
    if (token.kind == Token::Kind::End || isCut) {
        return {Stop::EndOfFile};
    }
    const auto number = token.kind == Token::Kind::Word ? numberOfWord(token.text) : std::nullopt;
    return number ? OddToken{Stop::Full, *number} : OddToken{Stop::NoNumber};
}

/// Reads the token at `p` if it is a number in the common form: its end, or null.
template<class T>
const char* readCommon(const char* p, const char* end, double factor, T& stored)
{
    if constexpr (std::is_same_v<T, std::int32_t>) {
        std::int64_t whole = 0;
        const char* const next = readInteger(p, end, whole);
        if (next == nullptr || next == end || !isDelimiter(*next)) {
            return nullptr;
        }
        constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
        constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();
        stored = static_cast<std::int32_t>(std::clamp(whole, kLowest, kHighest));
        return next;
    } else {
        double number = 0;
        const char* const next = readDouble(p, end, number);
        if (next == nullptr || next == end || !isDelimiter(*next)) {
            return nullptr;
        }
        stored = static_cast<T>(number * factor);
        return next;
    }
}

/// Fills `buffer` from `count` on until it is full or the list ends.
template<class T, bool kIsScaled>
Stop fill(Scanner& scanner, const Scaling& scaling, std::vector<T>& buffer, std::size_t& count)
{
    T* const target = buffer.data();
    const std::size_t capacity = buffer.size();
    const char* p = scanner.position();
    const char* const end = scanner.end();
    std::size_t stored = count;
    std::size_t component = 0;
    Stop stop = Stop::Full;
    while (stored < capacity) {
        while (p < end && static_cast<unsigned char>(*p) <= ' ') {
            ++p;
        }
        const double factor = kIsScaled ? scaling.factors[component] : 1;
        const char* const next = p < end ? readCommon<T>(p, end, factor, target[stored]) : nullptr;
        if (next != nullptr) {
            p = next;
        } else {
            scanner.setPosition(p);
            const OddToken odd = takeOddToken(scanner);
            p = scanner.position();
            if (odd.stop != Stop::Full) {
                stop = odd.stop;
                break;
            }
            target[stored] = converted<T>(odd.number * factor);
        }
        ++stored;
        if constexpr (kIsScaled) {
            component = component + 1 == scaling.width ? 0 : component + 1;
        }
    }
    scanner.setPosition(p);
    count = stored;
    return stop;
}

template<class T>
Stop fill(Scanner& scanner, const Scaling& scaling, std::vector<T>& buffer, std::size_t& count)
{
    const bool isScaled = scaling.isNeeded && !std::is_same_v<T, std::int32_t>;
    return isScaled ? fill<T, true>(scanner, scaling, buffer, count)
                    : fill<T, false>(scanner, scaling, buffer, count);
}

/// Hands elements over, one command after another along the plug's running step.
class PieceSender {
public:
    PieceSender(Reader& reader, PayloadTask& task, std::int64_t limit)
        : m_reader(reader)
        , m_command(task.command)
        , m_step(task.command.plug.steps[runningStep(task.command.plug)])
        , m_left(limit)
    {
        m_command.payload = SetAttribute::Payload::Numbers;
    }

    /// Sends at most as many elements as there is room for; the others are counted.
    template<class T>
    void send(std::span<const T> numbers, std::size_t width)
    {
        const std::size_t given = numbers.size() / width;
        const std::size_t sent =
            static_cast<std::size_t>(std::min(static_cast<std::int64_t>(given), m_left));
        m_excess += given - sent;
        m_left -= static_cast<std::int64_t>(sent);
        if (sent == 0) {
            return;
        }
        const std::int64_t last = m_step.last;
        if (m_step.hasIndex()) {
            m_step.last = m_step.first + static_cast<std::int64_t>(sent) - 1;
        }
        m_command.numbers = blockOf(numbers.first(sent * width), width);
        m_reader.sink.setAttribute(m_command);
        if (m_step.hasIndex()) {
            m_step.first += static_cast<std::int64_t>(sent);
            m_step.last = std::max(last, m_step.first);
        }
        m_hasSent = true;
    }

    std::int64_t left() const { return m_left; }
    bool hasExcess() const { return m_excess > 0; }
    bool hasSent() const { return m_hasSent; }

private:
    Reader& m_reader;
    SetAttribute& m_command;
    PlugStep& m_step;
    std::int64_t m_left;
    std::size_t m_excess = 0;
    bool m_hasSent = false;
};

/// What is wrong with a list that ended this way; empty if nothing is.
std::string complaint(Stop stop, const PieceSender& pieces, bool isRange)
{
    if (stop == Stop::EndOfFile) {
        return "the file ends inside the statement";
    }
    if (stop == Stop::NoNumber) {
        return "a number was expected";
    }
    if (pieces.hasExcess()) {
        return "more numbers than the plug takes";
    }
    if (isRange && pieces.left() > 0) {
        return "fewer numbers than the range of the plug takes";
    }
    return {};
}

template<class T>
void readPieces(Reader& reader, PayloadTask& task, std::vector<T>& buffer)
{
    const std::size_t width = std::clamp<std::size_t>(task.shape.width, 1, PlugShape::kMaxWidth);
    PlugPath& plug = task.command.plug;
    PlugStep& step = plug.steps[runningStep(plug)];
    const bool isRange = step.isRange();
    const bool isOpenList = task.shape.isMulti && !plug.last().hasIndex() && !isRange;
    if (isOpenList) {
        step.first = step.last = 0;
    }
    PieceSender pieces(reader, task,
                       isOpenList ? std::numeric_limits<std::int32_t>::max() : elementCount(plug));
    const Scaling scaling = scalingOf(reader.scales, task.shape, width);
    buffer.resize(kPieceNumbers / width * width);
    Stop stop = Stop::Full;
    std::size_t count = 0;
    while (stop == Stop::Full && !pieces.hasExcess()) {
        count = 0;
        stop = fill(reader.scanner, scaling, buffer, count);
        pieces.send(std::span<const T>(buffer).first(count / width * width), width);
        reader.passProgress();
    }
    const std::size_t rest = count % width;
    if (stop == Stop::EndOfStatement && rest > 0) {
        // The first children of a compound: an element of its own, narrower than the plug.
        pieces.send(std::span<const T>(buffer).subspan(count - rest, rest), rest);
    }
    const std::string reason = complaint(stop, pieces, isRange);
    if (!reason.empty()) {
        reader.damagedAtToken(kWord, reason);
    } else if (!pieces.hasSent()) {
        task.command.payload = SetAttribute::Payload::None;
        reader.sink.setAttribute(task.command);
    }
}

} // namespace

void readNumbers(Reader& reader, PayloadTask& task)
{
    switch (task.shape.storage) {
    case NumberStorage::Float:
        readPieces(reader, task, reader.buffers.floats);
        return;
    case NumberStorage::Double:
        readPieces(reader, task, reader.buffers.doubles);
        return;
    case NumberStorage::Int32:
        readPieces(reader, task, reader.buffers.integers);
        return;
    }
}

void readUntypedNumbers(Reader& reader, PayloadTask& task)
{
    const std::size_t start = reader.scanner.offset();
    std::vector<double> numbers;
    std::size_t count = 0;
    Stop stop = Stop::Full;
    while (stop == Stop::Full) {
        numbers.resize(count + std::min(kPieceNumbers, reader.scanner.bytesLeft() / 2 + 2));
        stop = fill(reader.scanner, Scaling{}, numbers, count);
        reader.passProgress();
    }
    if (stop == Stop::NoNumber) {
        reader.scanner.moveTo(start);
        readOpaque(reader, task, start);
        return;
    }
    const std::size_t elements = static_cast<std::size_t>(elementCount(task.command.plug));
    const std::size_t width =
        count % elements == 0 ? std::max<std::size_t>(count / elements, 1) : 1;
    PieceSender pieces(reader, task, elementCount(task.command.plug));
    pieces.send(std::span<const double>(numbers).first(count), width);
    if (stop == Stop::EndOfFile) {
        reader.damagedAtToken(kWord, "the file ends inside the statement");
    }
}

} // namespace host::file::ascii
