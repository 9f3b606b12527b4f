// What the statements of one file share while it is read.
#pragma once

#include "host/file/Command.h"
#include "host/file/ascii/LineCounter.h"
#include "host/file/ascii/Scanner.h"
#include "host/file/ascii/readAscii.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace host::file::ascii {

/// Factors from the file's current units to centimetres, radians and ticks.
struct UnitScales {
    double linear = 1;
    double angular = 1;
    double time = 1;

    double of(UnitKind kind) const
    {
        return kind == UnitKind::Linear    ? linear
               : kind == UnitKind::Angular ? angular
               : kind == UnitKind::Time    ? time
                                           : 1;
    }
};

/// Buffers that keep their memory from statement to statement.
struct Buffers {
    std::vector<float> floats;
    std::vector<double> doubles;
    std::vector<std::int32_t> integers;
    std::vector<SparseNumber> sparse;
    std::vector<Value> values;
    PolyFaces faces;
};

/// The type that the last setAttr named, for the statements that go on with the same plug without
/// naming it again.
struct LastType {
    std::string plug; ///< text before the last index
    std::string type;
};

class Reader {
public:
    Reader(std::string_view bytes, std::size_t start, unsigned codePage, CommandSink& commandSink,
           const ReadOptions& options);

    Codeset codeset;
    Scanner scanner;
    CommandSink& sink;
    UnitScales scales;
    std::string linearUnit = "cm"; ///< words of the last currentUnit
    std::string angularUnit = "deg";
    std::string timeUnit = "film";
    Buffers buffers;
    LastType lastType;
    std::string currentNode; ///< as the last createNode or select named it
    bool hasNode = false;    ///< a node was created

    /// The token's text as UTF-8; valid until the next statement.
    std::string_view text(const Token& token);
    /// A text that lives until the next statement.
    std::string_view keep(std::string text);
    void forgetTexts();

    /// Tells the sink where the statement stands that began at `offset`.
    void announce(std::size_t offset);
    /// Reports the announced statement as damaged.
    void damaged(std::string_view word, std::string_view reason) { sink.damaged(word, reason); }
    /// The same, at the token that was looked at last.
    void damagedAtToken(std::string_view word, std::string_view reason);
    /// Called between pieces and statements.
    void passProgress();

private:
    const ReadOptions& m_options;
    LineCounter m_lines;
    std::deque<std::string> m_texts; ///< a deque: views of its elements stay valid as it grows
    std::size_t m_textsInUse = 0;
    std::size_t m_reported = 0;
    std::size_t m_announced = 0;
};

} // namespace host::file::ascii
