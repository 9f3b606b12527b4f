// Binary scenes that are cut short or lie about their sizes.
#include "host/file/binary/Coverage.h"
#include "tests/support/CheckingSink.h"
#include "tests/support/binaryScenes.h"
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

#include <sstream>

using test::BinaryManner;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2012;
using test::kMaya2015;
using test::kMaya2016;
using test::kMaya2019;
using test::kMaya85;

namespace {

struct Reading {
    std::vector<std::string> commands; ///< lines without damages, units and the end
    std::vector<std::string> damages;
    std::string error;
    bool hasEnded = false;
};

Reading read(std::string_view file)
{
    test::CheckingSink sink;
    std::string lines;
    host::file::CommandPrinter printer([&](std::string_view line) { lines += line; }, &sink);
    const auto copy = std::make_unique<char[]>(file.size());
    std::copy(file.begin(), file.end(), copy.get());
    const auto result = host::file::readBinary({copy.get(), file.size()}, printer);
    Reading reading;
    reading.error = result ? "" : result.error().message;
    reading.hasEnded = sink.hasEnded;
    EXPECT_EQ(sink.faults, "");
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("damaged ")) {
            reading.damages.push_back(line);
        } else if (line != "end" && !line.starts_with("currentUnit ")) {
            reading.commands.push_back(
                line); // units are told at a header's end, where there are any
        }
    }
    return reading;
}

bool isBeginning(const std::vector<std::string>& part, const std::vector<std::string>& whole)
{
    return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

/// A chunk's payload without heading and padding.
std::string payloadOf(const BinaryScene& mb, const std::string& chunk)
{
    const std::size_t heading = mb.heading("....", 0).size();
    std::size_t size = 0;
    for (std::size_t i = heading - 4; i < heading; ++i) {
        size = size << 8 | static_cast<unsigned char>(chunk[i]);
    }
    return chunk.substr(heading, size);
}

/// The scene with other bytes as payload of one chunk of one node, and all else around it whole.
std::string sceneOfOneChunk(const BinaryScene& mb, const test::BinaryNodeChunks& entry,
                            std::size_t at, std::string_view payload)
{
    std::string chunks;
    for (std::size_t i = 0; i <= at; ++i) {
        chunks += i == at ? mb.leaf(entry.chunks[i].substr(0, 4), payload) : entry.chunks[i];
    }
    return mb.file(mb.node(entry.code, entry.node, chunks + mb.flags("last")) +
                   mb.node("TIME", {"next"}));
}

} // namespace

TEST(BinaryDamage, TheWholeSceneIsUnderstoodToItsLastByte)
{
    for (const BinaryManner& manner :
         {kMaya85, kMaya2011, kMaya2012, kMaya2015, kMaya2016, kMaya2019}) {
        const BinaryScene mb(manner);
        const std::string file = test::sceneOfAllValues(mb);
        const Reading whole = read(file);
        EXPECT_EQ(whole.error, "");
        EXPECT_TRUE(whole.hasEnded);
        EXPECT_TRUE(whole.damages.empty()) << manner.version << whole.damages.front();
        host::file::binary::Coverage coverage;
        const std::string lines = test::readBinaryFile(file, &coverage);
        EXPECT_EQ(lines.find("unknown \""), std::string::npos)
            << lines.substr(lines.find("unknown \""), 40);
        for (const auto& [key, reason] : coverage.firstReason) {
            ADD_FAILURE() << manner.version << " " << key.first << " " << key.second.text()
                          << reason;
        }
        EXPECT_EQ(coverage.all.chunks, coverage.all.understoodChunks);
        EXPECT_EQ(coverage.all.bytes, coverage.all.understoodBytes);
    }
}

TEST(BinaryDamage, EveryPrefixIsAnErrorOrAShorterScene)
{
    for (const BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const std::string file = test::sceneOfAllValues(BinaryScene(manner));
        const Reading whole = read(file);
        std::size_t lastCount = 0;
        for (std::size_t size = 0; size < file.size(); ++size) {
            const Reading part = read(std::string_view(file).substr(0, size));
            ASSERT_TRUE(isBeginning(part.commands, whole.commands))
                << manner.version << " " << size << " "
                << (part.commands.empty() ? "" : part.commands.back());
            ASSERT_EQ(part.hasEnded, part.error.empty()) << size;
            // A longer prefix never says less; a scene that ends before its end says so.
            ASSERT_GE(part.commands.size(), lastCount) << size;
            ASSERT_TRUE(!part.error.empty() || !part.damages.empty()) << size;
            ASSERT_LE(part.damages.size(), 2u) << size;
            lastCount = part.commands.size();
        }
        EXPECT_EQ(lastCount, whole.commands.size());
    }
}

TEST(BinaryDamage, APrefixWithoutAnyNodeIsAnError)
{
    const BinaryScene mb(kMaya2019);
    const std::string head = mb.header(mb.fileInfo("a", "b"));
    const std::string file = mb.file(head + mb.node("TIME", {"t"}));
    // 20 bytes of the top group's heading; of the node: 20 of the group, 16 of the chunk, 3 of
    // flags and name, 16 of the id. A creation without its id is one: nothing more is there.
    const std::size_t needed = 20 + head.size() + 20 + 16 + 3 + 16;
    for (std::size_t size = 0; size < file.size(); ++size) {
        const Reading part = read(std::string_view(file).substr(0, size));
        EXPECT_EQ(part.error.empty(), size >= needed) << size << part.error;
    }
}

TEST(BinaryDamage, APayloadCutShortCostsNothingBehindIt)
{
    for (const BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const BinaryScene mb(manner);
        for (const test::BinaryNodeChunks& entry : test::nodesOfAllValues(mb)) {
            for (std::size_t at = 0; at < entry.chunks.size(); ++at) {
                const std::string payload = payloadOf(mb, entry.chunks[at]);
                for (std::size_t size = 0; size < payload.size(); ++size) {
                    const Reading part =
                        read(sceneOfOneChunk(mb, entry, at, payload.substr(0, size)));
                    const auto& lines = part.commands;
                    const std::size_t tail = manner.hasIds ? 3 : 2;
                    ASSERT_GT(lines.size(), tail) << entry.node.name << at << " " << size;
                    EXPECT_EQ(lines[lines.size() - tail] + "\n", test::plainFlags(".last"))
                        << entry.node.name << at << " " << size;
                    EXPECT_LE(part.damages.size(), 1u) << entry.node.name << at << " " << size;
                }
            }
        }
    }
}

TEST(BinaryDamage, AByteTooManyIsToldAndCostsNothingBehindIt)
{
    const BinaryScene mb(kMaya2019);
    for (const test::BinaryNodeChunks& entry : test::nodesOfAllValues(mb)) {
        for (std::size_t at = 0; at < entry.chunks.size(); ++at) {
            const std::string payload = payloadOf(mb, entry.chunks[at]) + "!";
            const Reading part = read(sceneOfOneChunk(mb, entry, at, payload));
            const auto isUnknown = [](const std::string& line) {
                return line.starts_with("unknown ");
            };
            const auto unknown =
                std::count_if(part.commands.begin(), part.commands.end(), isUnknown);
            EXPECT_EQ(part.damages.size() + static_cast<std::size_t>(unknown), 1u)
                << entry.node.name << at;
            EXPECT_EQ(part.commands[part.commands.size() - 3] + "\n", test::plainFlags(".last"));
        }
    }
}

TEST(BinaryDamage, FourBytesThatAreAllOnesAnywhereCostAtMostTheirChunk)
{
    // Whatever is a count becomes more than any file can hold, whatever is an index becomes -1.
    for (const BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const BinaryScene mb(manner);
        for (const test::BinaryNodeChunks& entry : test::nodesOfAllValues(mb)) {
            for (std::size_t at = 0; at < entry.chunks.size(); ++at) {
                const std::string payload = payloadOf(mb, entry.chunks[at]);
                for (std::size_t i = 0; i + 4 <= payload.size(); ++i) {
                    for (const char byte : {'\xff', '\x7f', '\x80'}) {
                        std::string changed = payload;
                        changed.replace(i, 4, std::string(1, byte) + std::string(3, '\xff'));
                        const Reading part = read(sceneOfOneChunk(mb, entry, at, changed));
                        const auto& lines = part.commands;
                        EXPECT_EQ(lines[lines.size() - (manner.hasIds ? 3 : 2)] + "\n",
                                  test::plainFlags(".last"))
                            << entry.node.name << at << " " << i;
                        EXPECT_LE(part.damages.size(), 1u);
                    }
                }
            }
        }
    }
}

TEST(BinaryDamage, SizesThatLieAnywhereEndInASceneOrAnError)
{
    for (const BinaryManner& manner : {kMaya2011, kMaya2019}) {
        const std::string file = test::sceneOfAllValues(BinaryScene(manner));
        const std::size_t width = manner.isWide ? 8 : 4;
        for (std::size_t i = 0; i + width <= file.size(); i += 12) {
            for (const char byte : {'\0', '\x7f', '\xff'}) {
                std::string changed = file;
                changed.replace(i, width,
                                std::string(1, byte) +
                                    std::string(width - 1, byte == 0 ? '\0' : '\xff'));
                const Reading part = read(changed);
                ASSERT_EQ(part.hasEnded, part.error.empty()) << i;
            }
        }
    }
}
