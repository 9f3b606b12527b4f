// The encoded arguments were worked out by hand from RFC 4648: "0 7" is 30 20 37, that is
// 001100 000010 000000 110111, that is M C A 3; the others likewise.
#include "importers/maya/src/ImportArgs.h"

#include "tests/support/DivertedOutput.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace {

ImportArgs decoded(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "program");
    return {static_cast<int>(arguments.size()), arguments.data()};
}

std::string printed(const ImportArgs& arguments)
{
    std::ostringstream stream;
    stream << arguments;
    return stream.str();
}

constexpr std::int32_t kAbsent = -99;

TEST(ImportArgs, HoldSevenAndThreeByDefault)
{
    EXPECT_EQ(printed(ImportArgs()), "MAJOR_VERSION: 7\nMINOR_VERSION: 3\n");
}

TEST(ImportArgs, AreEmptyWithoutArguments)
{
    const ImportArgs arguments = decoded({});
    EXPECT_EQ(arguments.getInt(MAJOR_VERSION, -1), -1);
    EXPECT_EQ(printed(arguments), "");
    EXPECT_EQ(printed(ImportArgs(0, nullptr)), "");
}

TEST(ImportArgs, SplitAtTheFirstBlankOnly)
{
    const ImportArgs arguments = decoded({"MTEgYSBi"}); // "11 a b"
    EXPECT_EQ(arguments.getString(IMPORT_FILENAME, "-"), "a b");
}

TEST(ImportArgs, TakeQuotedArguments)
{
    EXPECT_EQ(decoded({"\"MCA3\""}).getString(0, "-"), "7");
}

TEST(ImportArgs, LoseTheLastCharacterAfterAnOpeningQuoteWhateverItIs)
{
    const ImportArgs arguments = decoded({"\"MCA3"}); // MCA: "0 "
    EXPECT_TRUE(arguments.has(0));
    EXPECT_EQ(arguments.getString(0, "-"), "");
}

TEST(ImportArgs, SurviveALoneQuoteAndAnEmptyArgument)
{
    EXPECT_EQ(decoded({"\""}).getString(0, "-"), "");
    EXPECT_EQ(decoded({""}).getString(0, "-"), "");
}

TEST(ImportArgs, StoreTextWithoutABlankWholeUnderItsNumber)
{
    EXPECT_EQ(decoded({"MTI="}).getString(OUTPUT_FILENAME, "-"), "12");
}

TEST(ImportArgs, KeepTheLaterOfTwoArguments)
{
    EXPECT_EQ(decoded({"MCA3", "MCA5"}).getInt(MAJOR_VERSION, -1), 9); // "0 7", "0 9"
}

TEST(ImportArgs, TakeAKeyThatIsNoNumberForZero)
{
    EXPECT_EQ(decoded({"MCA3", "eCB5"}).getString(MAJOR_VERSION, "-"), "y"); // "0 7", "x y"
    EXPECT_EQ(decoded({"IDc="}).getString(MAJOR_VERSION, "-"), "7");         // " 7"
}

TEST(ImportArgs, StoreNegativeAndUnknownKeys)
{
    EXPECT_EQ(decoded({"LTUgYQ=="}).getString(-5, "-"), "a"); // "-5 a"
    EXPECT_EQ(decoded({"OTkgYQ=="}).getString(99, "-"), "a"); // "99 a"
}

TEST(ImportArgs, AddNoDefaultsToArguments)
{
    const ImportArgs arguments = decoded({"MTIgeA=="}); // "12 x"
    EXPECT_FALSE(arguments.has(MAJOR_VERSION));
    EXPECT_EQ(printed(arguments), "OUTPUT_FILENAME: x\n");
}

TEST(ImportArgs, UseWhatWasDecodedBeforeAForeignCharacter)
{
    EXPECT_EQ(decoded({"MCA3*MSAz"}).getString(MAJOR_VERSION, "-"), "7");
}

TEST(ImportArgs, ReturnTheDefaultForAMissingKey)
{
    const ImportArgs arguments;
    EXPECT_EQ(arguments.getString(FRAME, "text"), "text");
    EXPECT_EQ(arguments.getInt(FRAME, 12), 12);
    EXPECT_DOUBLE_EQ(arguments.getDouble(FRAME, 0.25), 0.25);
    EXPECT_TRUE(arguments.getBool(FRAME, true));
    EXPECT_FALSE(arguments.getBool(FRAME, false));
}

TEST(ImportArgs, ReadIntegersAsFarAsTheyGo)
{
    ImportArgs arguments;
    const auto read = [&](const char* text) {
        arguments.setString(FRAME, text);
        return arguments.getInt(FRAME, kAbsent);
    };
    EXPECT_EQ(read("12"), 12);
    EXPECT_EQ(read("  -7x"), -7);
    EXPECT_EQ(read("3.9"), 3);
    EXPECT_EQ(read(""), 0);
    EXPECT_EQ(read("none"), 0);
    EXPECT_EQ(read("99999999999999999999"), 2147483647);
    EXPECT_EQ(read("-4294967296"), -2147483647 - 1);
}

TEST(ImportArgs, ReadRealNumbersAsFarAsTheyGo)
{
    ImportArgs arguments;
    const auto read = [&](const char* text) {
        arguments.setString(CURVERADIUS, text);
        return arguments.getDouble(CURVERADIUS, -1.0);
    };
    EXPECT_DOUBLE_EQ(read("0.5"), 0.5);
    EXPECT_DOUBLE_EQ(read(" 2e-3cm"), 0.002);
    EXPECT_DOUBLE_EQ(read(""), 0.0);
    EXPECT_DOUBLE_EQ(read("thin"), 0.0);
}

TEST(ImportArgs, ReadOnlyZeroAndLowerCaseFalseAsFalse)
{
    ImportArgs arguments;
    const auto read = [&](const char* text) {
        arguments.setString(TESSELLATE, text);
        return arguments.getBool(TESSELLATE, true);
    };
    EXPECT_FALSE(read("0"));
    EXPECT_FALSE(read("false"));
    for (const char* text : {"FALSE", "False", "", "no", "off", "1", "00", "0 ", "true"}) {
        EXPECT_TRUE(read(text)) << text;
    }
}

TEST(ImportArgs, StoreNumbersAsStreamsWriteThem)
{
    ImportArgs arguments;
    const auto stored = [&](double value) {
        arguments.setDouble(CURVERADIUS, value);
        return arguments.getString(CURVERADIUS, "-");
    };
    EXPECT_EQ(stored(0.1), "0.1");
    EXPECT_EQ(stored(1.0), "1");
    EXPECT_EQ(stored(1234567.0), "1.23457e+06");
    EXPECT_EQ(stored(0.0000001), "1e-07");
    arguments.setInt(FRAME, -5);
    EXPECT_EQ(arguments.getString(FRAME, "-"), "-5");
    arguments.setInt(FRAME, 1234567); // no separators
    EXPECT_EQ(arguments.getString(FRAME, "-"), "1234567");
    arguments.setBool(TESSELLATE, true);
    EXPECT_EQ(arguments.getString(TESSELLATE, "-"), "true");
    arguments.setBool(TESSELLATE, false);
    EXPECT_EQ(arguments.getString(TESSELLATE, "-"), "false");
}

TEST(ImportArgs, HandOutHeapCopiesThatTheCallerFrees)
{
    ImportArgs arguments;
    arguments.setString(IMPORT_FILENAME, "a b");
    const char* const fallback = "-";
    char* const stored = arguments.getCString(IMPORT_FILENAME, fallback);
    char* const other = arguments.getCString(OUTPUT_FILENAME, fallback);
    EXPECT_STREQ(stored, "a b");
    EXPECT_STREQ(other, "-");
    EXPECT_NE(other, fallback);
    stored[0] = 'x';
    EXPECT_EQ(arguments.getString(IMPORT_FILENAME, "-"), "a b");
    std::free(stored);
    std::free(other);
}

class Blind : public ImportArgs {
public:
    bool has(std::int32_t) const override { return false; }
};

class Boasting : public ImportArgs {
public:
    bool has(std::int32_t) const override { return true; }
};

TEST(ImportArgs, AskTheVirtualHasInEveryGetter)
{
    const Blind blind;
    EXPECT_EQ(blind.getString(MAJOR_VERSION, "default"), "default");
    EXPECT_EQ(blind.getInt(MAJOR_VERSION, 1), 1);
    EXPECT_DOUBLE_EQ(blind.getDouble(MAJOR_VERSION, 1.5), 1.5);
    EXPECT_FALSE(blind.getBool(MAJOR_VERSION, false));
    char* const text = blind.getCString(MAJOR_VERSION, "default");
    EXPECT_STREQ(text, "default");
    std::free(text);
}

TEST(ImportArgs, SurviveAHasThatIsWrong)
{
    const Boasting boasting;
    EXPECT_EQ(boasting.getString(FRAME, "default"), "");
    EXPECT_EQ(boasting.getInt(FRAME, 1), 0);
}

#ifdef __GNUC__

/// The slot of a virtual operation: in the Itanium ABI a pointer to one holds 1 + its offset.
template<typename Operation>
std::ptrdiff_t slotOf(Operation operation)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(ImportArgs, HaveTenVirtualOperationsInAFixedOrder)
{
    EXPECT_EQ(slotOf(&ImportArgs::has), 0);
    EXPECT_EQ(slotOf(&ImportArgs::setString), 1);
    EXPECT_EQ(slotOf(&ImportArgs::getString), 2);
    EXPECT_EQ(slotOf(&ImportArgs::getCString), 3);
    EXPECT_EQ(slotOf(&ImportArgs::getInt), 4);
    EXPECT_EQ(slotOf(&ImportArgs::setInt), 5);
    EXPECT_EQ(slotOf(&ImportArgs::getBool), 6);
    EXPECT_EQ(slotOf(&ImportArgs::setBool), 7);
    EXPECT_EQ(slotOf(&ImportArgs::getDouble), 8);
    EXPECT_EQ(slotOf(&ImportArgs::setDouble), 9);

    struct Extended : ImportArgs {
        virtual void next() {}
    };
    EXPECT_EQ(slotOf(&Extended::next), 10);
}

#endif

static_assert(std::is_polymorphic_v<ImportArgs>);
static_assert(!std::has_virtual_destructor_v<ImportArgs>);

constexpr const char* kNames[] = {
    "MAJOR_VERSION",
    "MINOR_VERSION",
    "COMMAND",
    "TESSELLATION_QUALITY",
    "LOGLEVEL",
    "CURVERADIUS",
    "SMOOTH_CURVES",
    "INCLUDE_NURBS",
    "COLLAPSE_HIERARCHY",
    "SPLIT_LAYERS",
    "FRAME",
    "IMPORT_FILENAME",
    "OUTPUT_FILENAME",
    nullptr,
    "DEBUGOBX",
    "TESSELLATE",
    "TEXTURE_FOLDER",
    nullptr,
    "COMPUTE_NORMALS",
    "SEPARATE_PARTS",
    "UNIQUE_MATERIALS",
    "EXPERIMENTAL",
    "GROUP_TYPE",
    "ALT_TESSELLATION",
    "DESIRED_UNIT",
    "DEFORMABLE_MESHES",
    "MAYA_VERSION",
    "LAST",
};
constexpr char kNoName[] = "could not find string for import key!";

TEST(ImportArgs, NameEveryKeyButThirteenAndSeventeen)
{
    ASSERT_EQ(std::size(kNames), 28U);
    for (int key = 0; key < 28; ++key) {
        EXPECT_STREQ(ImportArgs::keyName(key), kNames[key] != nullptr ? kNames[key] : kNoName);
    }
    EXPECT_STREQ(ImportArgs::keyName(-1), kNoName);
    EXPECT_STREQ(ImportArgs::keyName(28), kNoName);
}

TEST(ImportArgs, FindEveryKeyByItsNameInEitherCase)
{
    for (int key = 0; key < 28; ++key) {
        if (kNames[key] == nullptr) {
            continue;
        }
        std::string name = kNames[key];
        EXPECT_EQ(ImportArgs::keyFromName(name), key);
        for (char& character : name) {
            character = character == '_' ? '_' : static_cast<char>(character - 'A' + 'a');
        }
        EXPECT_EQ(ImportArgs::keyFromName(name), key);
    }
}

TEST(ImportArgs, ReportAnUnknownNameOnStandardOutput)
{
    DivertedOutput output(stdout);
    EXPECT_EQ(ImportArgs::keyFromName("Frame_"), -1);
    EXPECT_EQ(output.text(), "I could not find a key for: frame_\n");
}

TEST(ImportArgs, CompareNamesWholeIncludingTheirLength)
{
    DivertedOutput output(stdout);
    EXPECT_EQ(ImportArgs::keyFromName("fram"), -1);
    EXPECT_EQ(ImportArgs::keyFromName(""), -1);
    EXPECT_EQ(ImportArgs::keyFromName(std::string("frame\0", 6)), -1);
}

TEST(ImportArgs, PrintByAscendingKeyWithTheSentenceForNamelessOnes)
{
    ImportArgs arguments;
    arguments.setString(LAST, "z");
    arguments.setString(17, "s");
    arguments.setString(-3, "n");
    arguments.setString(13, "");
    EXPECT_EQ(printed(arguments), "could not find string for import key!: n\n"
                                  "MAJOR_VERSION: 7\n"
                                  "MINOR_VERSION: 3\n"
                                  "could not find string for import key!: \n"
                                  "could not find string for import key!: s\n"
                                  "LAST: z\n");
}

class CountingBuffer : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override
    {
        ++flushes;
        return 0;
    }
};

TEST(ImportArgs, FlushEachPrintedLine)
{
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    ImportArgs().print(stream);
    EXPECT_EQ(buffer.flushes, 2);
}

TEST(ImportArgs, EncodeTheDefaultsAndDecodeThemAgain)
{
    const std::vector<std::string> texts = ImportArgs().toArgumentStrings();
    ASSERT_EQ(texts, (std::vector<std::string>{"MCA3", "MSAz"}));
    EXPECT_EQ(printed(decoded({texts[0].c_str(), texts[1].c_str()})), printed(ImportArgs()));
}

TEST(ImportArgs, EncodeEveryValueSoThatItComesBack)
{
    ImportArgs arguments;
    arguments.setString(IMPORT_FILENAME, "C:\\m\xc3\xa4"
                                         "dchen \"1\"\\a b.ma");
    arguments.setString(OUTPUT_FILENAME, "");
    arguments.setString(-4, " leading");
    std::vector<std::string> texts = arguments.toArgumentStrings();
    std::vector<const char*> pointers;
    for (const std::string& text : texts) {
        pointers.push_back(text.c_str());
    }
    EXPECT_EQ(printed(decoded(pointers)), printed(arguments));
}

void release(char** vector)
{
    for (char** text = vector; *text != nullptr; ++text) {
        std::free(*text);
    }
    std::free(static_cast<void*>(vector));
}

TEST(ImportArgs, MakeAnArgumentVectorThatEndsInNull)
{
    char** const vector = ImportArgs().toArgv("C:\\tools\\importer.exe");
    EXPECT_STREQ(vector[0], "C:\\tools\\importer.exe");
    EXPECT_STREQ(vector[1], "MCA3");
    EXPECT_STREQ(vector[2], "MSAz");
    for (int i = 3; i < 128; ++i) {
        EXPECT_EQ(vector[i], nullptr);
    }
    release(vector);
}

TEST(ImportArgs, MakeArgumentVectorsOfAnyLength)
{
    for (const int count : {126, 127, 300}) {
        ImportArgs arguments; // holds keys 0 and 1 already
        for (int key = 2; key < count; ++key) {
            arguments.setInt(key, key);
        }
        char** const vector = arguments.toArgv("p");
        EXPECT_NE(vector[count], nullptr);
        EXPECT_EQ(vector[count + 1], nullptr);
        release(vector);
    }
}

} // namespace
