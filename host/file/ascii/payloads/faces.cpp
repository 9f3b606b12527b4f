// polyFaces: records of a tag and numbers. f outer loop, h hole; mu, mf, mh ids of texture
// coordinates; mc, fc ids of colours, which are left out.
#include "host/file/ascii/payloads/payloads.h"

#include <algorithm>
#include <limits>
#include <string>

namespace host::file::ascii {
namespace {

constexpr std::size_t kPieceCorners = 131072;
constexpr std::size_t kMaxUvSets = 64;

enum class Stop : std::uint8_t { None, EndOfStatement, EndOfFile, Bad };

class FaceReader {
public:
    FaceReader(Reader& reader, PayloadTask& task)
        : m_reader(reader)
        , m_command(task.command)
        , m_step(task.command.plug.steps[runningStep(task.command.plug)])
        , m_faces(reader.buffers.faces)
        , m_room(elementCount(task.command.plug))
        , m_hasRange(m_step.isRange())
        , m_p(reader.scanner.position())
        , m_end(reader.scanner.end())
    {
        m_command.payload = SetAttribute::Payload::Faces;
        forget();
    }

    void read()
    {
        while (m_stop == Stop::None) {
            readRecord();
        }
        m_reader.scanner.setPosition(m_p);
        closePiece();
        complain();
    }

private:
    // --- numbers

    void stop(Stop why, std::string_view reason)
    {
        m_stop = why;
        m_reason = reason;
    }

    /// The next number in odd clothes: behind a comment, quoted, with a fraction of zero.
    std::int64_t takeOddInteger()
    {
        Scanner& scanner = m_reader.scanner;
        scanner.setPosition(m_p);
        const Token token = scanner.take();
        m_p = scanner.position();
        if (token.kind == Token::Kind::End || m_p == m_end) {
            stop(Stop::EndOfFile, "the file ends inside the statement");
            return 0;
        }
        const auto number = token.isText() ? numberOfWord(token.text) : std::nullopt;
        if (!number) {
            stop(Stop::Bad, "a number was expected in a face");
            return 0;
        }
        return toInt32(*number);
    }

    std::int64_t takeInteger()
    {
        while (m_p < m_end && static_cast<unsigned char>(*m_p) <= ' ') {
            ++m_p;
        }
        std::int64_t number = 0;
        const char* const next = m_p < m_end ? readInteger(m_p, m_end, number) : nullptr;
        if (next == nullptr || next == m_end || !isDelimiter(*next)) {
            return takeOddInteger();
        }
        m_p = next;
        return number;
    }

    std::int32_t takeInt32()
    {
        const std::int64_t number = takeInteger();
        if (number < std::numeric_limits<std::int32_t>::min() ||
            number > std::numeric_limits<std::int32_t>::max()) {
            stop(Stop::Bad, "a number in a face exceeds 32 bits");
            return 0;
        }
        return static_cast<std::int32_t>(number);
    }

    /// A count of numbers that follow; checked against what the file can still hold.
    std::size_t takeCount()
    {
        const std::int32_t count = takeInt32();
        const std::int64_t room = (m_end - m_p) / 2 + 1;
        if (m_stop == Stop::None && (count < 0 || count > room)) {
            stop(Stop::Bad, "a count in a face exceeds the statement");
        }
        return m_stop == Stop::None ? static_cast<std::size_t>(count) : 0;
    }

    void takeInto(std::vector<std::int32_t>& target, std::size_t count)
    {
        const std::size_t before = target.size();
        target.resize(before + count);
        for (std::size_t i = 0; i < count; ++i) {
            target[before + i] = takeInt32();
            if (m_stop != Stop::None) {
                target.resize(before + i);
                return;
            }
        }
    }

    void skipNumbers(std::size_t count)
    {
        for (std::size_t i = 0; i < count && m_stop == Stop::None; ++i) {
            takeInt32();
        }
    }

    // --- records

    void readRecord()
    {
        while (m_p < m_end && static_cast<unsigned char>(*m_p) <= ' ') {
            ++m_p;
        }
        if (m_end - m_p > 2 && m_p[0] == 'f' && m_p[1] == ' ') {
            m_p += 2;
            readFace();
            return;
        }
        if (m_end - m_p > 3 && m_p[0] == 'm' && m_p[1] == 'u' && m_p[2] == ' ') {
            m_p += 3;
            readUvs(takeInt32(), 0);
            return;
        }
        readRareRecord();
    }

    void readRareRecord()
    {
        Scanner& scanner = m_reader.scanner;
        scanner.setPosition(m_p);
        const Token token = scanner.take();
        m_p = scanner.position();
        const std::string_view tag = token.isText() ? token.text : std::string_view();
        if (token.kind == Token::Kind::Semicolon) {
            stop(Stop::EndOfStatement, {});
        } else if (token.kind == Token::Kind::End || m_p == m_end) {
            stop(Stop::EndOfFile, "the file ends inside the statement");
        } else if (tag == "f") {
            readFace();
        } else if (tag == "h") {
            readHole();
        } else if (tag == "mu") {
            readUvs(takeInt32(), 0);
        } else if (tag == "mf") {
            readUvs(0, 0);
        } else if (tag == "mh") {
            readUvs(0, m_oldStyleUvs);
        } else if (tag == "mc") {
            takeInt32();
            skipNumbers(takeCount());
        } else if (tag == "fc") {
            skipNumbers(takeCount());
        } else {
            stop(Stop::Bad, "an unknown record stands in a face");
        }
    }

    void readFace()
    {
        if (m_faces.corners.size() >= kPieceCorners) {
            closePiece();
        }
        if (m_sentFaces + static_cast<std::int64_t>(m_faces.faceLoopCounts.size()) == m_room) {
            stop(Stop::Bad, "more faces than the range of the plug takes");
            return;
        }
        m_faceStart = m_faces.corners.size();
        m_oldStyleUvs = 0;
        const std::size_t count = takeCount();
        takeInto(m_faces.corners, count);
        if (m_stop != Stop::None) {
            m_faces.corners.resize(m_faceStart); // half a face is none
            return;
        }
        m_faces.loopSizes.push_back(static_cast<std::uint32_t>(count));
        m_faces.faceLoopCounts.push_back(1);
    }

    void readHole()
    {
        if (m_faces.faceLoopCounts.empty()) {
            stop(Stop::Bad, "a hole stands before its face");
            return;
        }
        const std::size_t before = m_faces.corners.size();
        const std::size_t count = takeCount();
        takeInto(m_faces.corners, count);
        if (m_stop != Stop::None) {
            m_faces.corners.resize(before);
            return;
        }
        m_faces.loopSizes.push_back(static_cast<std::uint32_t>(count));
        ++m_faces.faceLoopCounts.back();
    }

    /// Ids of a set for the current face's corners from its corner `firstCorner` on.
    void readUvs(std::int32_t set, std::size_t firstCorner)
    {
        const std::size_t count = takeCount();
        if (m_stop != Stop::None) {
            return;
        }
        std::vector<std::int32_t>* const ids = uvIds(set);
        if (ids == nullptr || m_faces.faceLoopCounts.empty()) {
            m_oddity = ids == nullptr ? "more sets of texture coordinates than can be kept"
                                      : "texture coordinates stand before their face";
            skipNumbers(count);
            return;
        }
        const std::size_t begin = std::min(m_faceStart + firstCorner, m_faces.corners.size());
        const std::size_t taken = std::min(count, m_faces.corners.size() - begin);
        ids->resize(begin, -1);
        takeInto(*ids, taken);
        skipNumbers(count - taken);
        m_oldStyleUvs = firstCorner + taken;
        const bool isFewer = firstCorner == 0 && count != 0 && count < firstLoopSize();
        if (taken < count || isFewer) {
            m_oddity = "a face has another number of texture coordinates than of corners";
        }
    }

    std::size_t firstLoopSize() const
    {
        return m_faces.loopSizes[m_faces.loopSizes.size() - m_faces.faceLoopCounts.back()];
    }

    /// The ids of a set, made where there are none yet; null where there are too many sets.
    std::vector<std::int32_t>* uvIds(std::int32_t set)
    {
        auto& sets = m_faces.uvSets;
        const auto found = std::lower_bound(
            sets.begin(), sets.end(), set,
            [](const PolyFaces::UvIds& row, std::int32_t number) { return row.set < number; });
        if (found != sets.end() && found->set == set) {
            return &found->ids;
        }
        if (set < 0 || sets.size() == kMaxUvSets) {
            return nullptr;
        }
        return &sets.insert(found, PolyFaces::UvIds{set, {}})->ids;
    }

    // --- pieces

    void forget()
    {
        m_faces.corners.clear();
        m_faces.loopSizes.clear();
        m_faces.faceLoopCounts.clear();
        m_faces.uvSets.clear();
    }

    void closePiece()
    {
        const std::int64_t count = static_cast<std::int64_t>(m_faces.faceLoopCounts.size());
        if (count > 0) {
            for (PolyFaces::UvIds& set : m_faces.uvSets) {
                set.ids.resize(m_faces.corners.size(), -1);
            }
            const std::int64_t last = m_step.last;
            if (m_step.hasIndex()) {
                m_step.last = m_step.first + count - 1;
            }
            m_command.faces = &m_faces;
            m_reader.sink.setAttribute(m_command);
            m_sentFaces += count;
            if (m_step.hasIndex()) {
                m_step.first += count;
                m_step.last = std::max(last, m_step.first);
            }
        }
        m_reader.scanner.setPosition(m_p);
        m_reader.passProgress();
        forget();
    }

    void complain()
    {
        const bool isShort = m_hasRange && m_sentFaces < m_room;
        if (m_reason.empty() && isShort) {
            m_reason = "fewer faces than the range of the plug takes";
        }
        if (m_reason.empty()) {
            m_reason = m_oddity;
        }
        if (!m_reason.empty()) {
            m_reader.damagedAtToken("setAttr", m_reason);
        }
    }

    Reader& m_reader;
    SetAttribute& m_command;
    PlugStep& m_step;
    PolyFaces& m_faces;
    std::int64_t m_room;
    bool m_hasRange;
    const char* m_p;
    const char* m_end;
    Stop m_stop = Stop::None;
    std::string_view m_reason; ///< of a literal
    std::string_view m_oddity; ///< of a literal
    std::int64_t m_sentFaces = 0;
    std::size_t m_faceStart = 0;
    std::size_t m_oldStyleUvs = 0;
};

} // namespace

void readFaces(Reader& reader, PayloadTask& task)
{
    // A list without an index is the list from its beginning.
    PlugStep& step = task.command.plug.steps[runningStep(task.command.plug)];
    if (!step.hasIndex()) {
        step.first = 0;
        step.last = std::numeric_limits<std::int32_t>::max() - 1;
        FaceReader(reader, task).read();
        return;
    }
    FaceReader(reader, task).read();
}

} // namespace host::file::ascii
