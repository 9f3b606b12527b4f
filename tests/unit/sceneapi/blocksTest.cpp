// What the writer remembers between calls: open blocks, keyword context, depth, captured shaders,
// the locale.
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>

namespace {

using Writer = orvScene_api_file;

constexpr std::int32_t kOne = 1;

/// One parameter: "p" 1, in the quoted form, p 1 as a keyword.
void parameter(Writer& w)
{
    w.parameter("p", orv::kInt, &kOne);
}

constexpr const char* kQuoted = "\"p\" 1,\n";
constexpr const char* kKeyword = "p 1\n";

// Keyword context

TEST(Context, StartsQuoted)
{
    EXPECT_EQ(written(parameter), kQuoted);
}

struct ContextRow {
    const char* name;
    void (*open)(Writer&);
    void (*close)(Writer&);
    const char* inside;         // after an opener in quoted context
    const char* insideKeywords; // after an opener in keyword context
    const char* after;          // after the closer, opened in quoted context
    const char* afterKeywords;
};

const ContextRow kContexts[] = {
    {"Group", [](Writer& w) { w.beginGroup("x", true); }, [](Writer& w) { w.endGroup(); }, kKeyword,
     kKeyword, kQuoted, kKeyword},
    {"Object", [](Writer& w) { w.beginObject("x", true); }, [](Writer& w) { w.endObject(); },
     kKeyword, kKeyword, kQuoted, kKeyword},
    {"Geometry", [](Writer& w) { w.beginGeometry("x"); }, [](Writer& w) { w.endGeometry(); },
     kQuoted, kQuoted, kQuoted, kKeyword},
    {"DefinedGeometry", [](Writer& w) { w.defineGeometry("x", "t"); },
     [](Writer& w) { w.endGeometry(); }, kQuoted, kQuoted, kQuoted, kKeyword},
    {"Animation", [](Writer& w) { w.beginAnimation("x", "t"); },
     [](Writer& w) { w.endAnimation(); }, kQuoted, kQuoted, kQuoted, kKeyword},
    {"Accel", [](Writer& w) { w.beginAccel("x"); }, [](Writer& w) { w.endAccel(); }, kQuoted,
     kQuoted, kQuoted, kKeyword},
    {"Load", [](Writer& w) { w.beginLoad("x"); }, [](Writer& w) { w.endLoad(); }, kQuoted, kKeyword,
     kQuoted, kKeyword},
    {"Light", [](Writer& w) { w.beginLight("x"); }, [](Writer& w) { w.endLight(); }, kQuoted,
     kKeyword, kQuoted, kKeyword},
    {"Material", [](Writer& w) { w.beginMaterial("x", true); }, [](Writer& w) { w.endMaterial(); },
     kQuoted, kKeyword, kQuoted, kKeyword},
    {"Matrix", [](Writer& w) { w.defineMatrix("x"); }, [](Writer& w) { w.endMatrix(); }, kQuoted,
     kKeyword, kQuoted, kKeyword},
    {"NamedShader", [](Writer& w) { w.beginShader("x", "t"); }, [](Writer& w) { w.endShader(); },
     kQuoted, kQuoted, kQuoted, kKeyword},
    {"NumberedShader", [](Writer& w) { w.beginShaderById("t", 1); },
     [](Writer& w) { w.endShader(); }, kQuoted, kQuoted, kQuoted, kKeyword},
    {"Output", [](Writer& w) { w.beginOutput("a", "b", "c"); }, [](Writer& w) { w.endOutput(); },
     kQuoted, kQuoted, kKeyword, kKeyword},
    {"Options", [](Writer& w) { w.beginOptions(); }, [](Writer& w) { w.endOptions(); }, kKeyword,
     kKeyword, kQuoted, kQuoted},
    {"Camera", [](Writer& w) { w.beginCamera(nullptr); }, [](Writer& w) { w.endCamera(); },
     kKeyword, kKeyword, kQuoted, kQuoted},
    {"Image", [](Writer& w) { w.beginImage(); }, [](Writer& w) { w.endImage(); }, kKeyword,
     kKeyword, kQuoted, kQuoted},
};

class Context : public testing::TestWithParam<ContextRow> {
protected:
    /// What the two parameters, one inside and one behind the block, look like.
    static std::string parameters(bool keywords)
    {
        return written([&](Writer& w) {
            if (keywords) {
                w.beginGroup("outer", true);
            }
            w.printf("@");
            GetParam().open(w);
            w.printf("@");
            parameter(w);
            w.printf("@");
            GetParam().close(w);
            w.printf("@");
            parameter(w);
        });
    }
    static std::string part(const std::string& text, int index)
    {
        std::size_t at = 0;
        for (int i = 0; i < index; ++i) {
            at = text.find('@', at) + 1;
        }
        return text.substr(at, text.find('@', at) - at);
    }
};

TEST_P(Context, InsideAndAfterABlockOpenedInQuotedContext)
{
    const std::string text = parameters(false);
    EXPECT_EQ(part(text, 2), GetParam().inside);
    EXPECT_EQ(part(text, 4), GetParam().after);
}

TEST_P(Context, InsideAndAfterABlockOpenedInKeywordContext)
{
    const std::string text = parameters(true);
    EXPECT_EQ(part(text, 2), GetParam().insideKeywords);
    EXPECT_EQ(part(text, 4), GetParam().afterKeywords);
}

INSTANTIATE_TEST_SUITE_P(Blocks, Context, testing::ValuesIn(kContexts),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Context, IsRestoredThroughMoreLevelsThanItsFirstRoom)
{
    const std::string text = written([](Writer& w) {
        for (int i = 0; i < 50; ++i) {
            w.beginGroup("g", true);
            w.beginGeometry("m");
        }
        for (int i = 0; i < 50; ++i) {
            w.endGeometry();
            w.printf("k:");
            parameter(w);
            w.endGroup();
            w.printf("q:");
            parameter(w);
        }
    });
    std::size_t keywords = 0;
    std::size_t quoted = 0;
    for (std::size_t at = 0; (at = text.find("k:p 1\n", at)) != std::string::npos; ++at) {
        ++keywords;
    }
    for (std::size_t at = 0; (at = text.find("q:\"p\" 1,\n", at)) != std::string::npos; ++at) {
        ++quoted;
    }
    EXPECT_EQ(keywords, 50u);
    EXPECT_EQ(quoted, 50u); // geometries quote, and so does what lies around the outermost group
}

TEST(Context, SurvivesClosersWithoutOpeners)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.endGroup();
                  w.endShader();
                  w.endGeometry();
                  parameter(w);
              }),
              std::string("}\n}\n}\n") + kQuoted);
}

// Top-level blocks

TEST(TopLevel, IsRefusedWhileAnotherIsOpen)
{
    using Open = bool (*)(Writer&);
    const Open openers[] = {
        [](Writer& w) { return w.beginOptions(); },
        [](Writer& w) { return w.beginCamera(nullptr); },
        [](Writer& w) { return w.beginCamera("c"); },
        [](Writer& w) { return w.beginImage(); },
        [](Writer& w) { return w.modifyCamera("c"); },
    };
    for (const Open outer : openers) {
        const std::string alone = written([&](Writer& w) { EXPECT_TRUE(outer(w)); });
        for (const Open inner : openers) {
            EXPECT_EQ(written([&](Writer& w) {
                          outer(w);
                          EXPECT_FALSE(inner(w));
                      }),
                      alone);
        }
    }
}

TEST(TopLevel, OptionsInsideACameraAreRefusedSilently)
{
    EXPECT_EQ(written([](Writer& w) {
                  EXPECT_TRUE(w.beginCamera(nullptr));
                  EXPECT_FALSE(w.beginOptions());
                  EXPECT_TRUE(w.endCamera());
                  EXPECT_TRUE(w.beginOptions());
              }),
              "\ncamera {\n}\n\noptions {\n");
}

TEST(TopLevel, ObjectIsNeverRefusedButRefusesOthers)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginOptions();
                  EXPECT_TRUE(w.beginObject("o", true));
                  EXPECT_FALSE(w.beginCamera("c"));
                  w.endObject();
                  EXPECT_TRUE(w.beginCamera("c"));
              }),
              "\noptions {\nobject \"o\" {\n}\n\ncamera \"c\" {\n");
}

TEST(TopLevel, ClosingAnotherBlockWritesNothingButResets)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginCamera(nullptr);
                  EXPECT_FALSE(w.endOptions());
                  parameter(w);
                  EXPECT_TRUE(w.beginImage());
                  EXPECT_FALSE(w.endCamera());
                  parameter(w);
              }),
              std::string("\ncamera {\n") + kQuoted + "\nimage {\n" + kQuoted);
}

TEST(Geometry, InsideADefinitionWritesNothingUntilTheEndClosesIt)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.defineGeometry("g", "t");
                  EXPECT_TRUE(w.beginGeometry("inner"));
                  parameter(w);
                  w.endGeometry();
                  w.beginGeometry("next");
              }),
              std::string("#define geometry \"g\" \"t\" {\n") + kQuoted +
                  "}\ngeometry \"next\" {\n");
}

TEST(Object, IsInvisibleOnlyByItsFlag)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginObject("o", true);
                  w.setObjectFlags(0x4000);
                  w.endObject();
              }),
              "object \"o\" {\ninvisible on\n}\n");
    EXPECT_EQ(written([](Writer& w) {
                  w.setObjectFlags(0x4000);
                  w.beginObject("o", true); // clears it
                  w.endObject();
                  w.beginObject("p", true);
                  w.setObjectFlags(~0x4000u);
                  w.endObject();
              }),
              "object \"o\" {\n}\nobject \"p\" {\n}\n");
}

TEST(Object, IndentsItsLastStatementLikeItsOthers)
{
    EXPECT_EQ(writtenIndented([](Writer& w) {
                  w.beginObject("o", true);
                  w.setObjectFlags(0x4000);
                  w.endObject();
              }),
              "  object \"o\" {\n   invisible on\n  }\n");
}

// Depth and flags

TEST(Indentation, IsOffByBit0x400000AndOffAtFirst)
{
    const auto nested = [](Writer& w) {
        w.beginGroup("g", true);
        w.flags(1);
    };
    EXPECT_EQ(written(nested), "\ngroup \"g\" {\nflags 1\n");
    const auto with = [&](std::uint32_t flags) {
        return written([&](Writer& w) {
            w.setFlags(flags);
            nested(w);
        });
    };
    EXPECT_EQ(with(0x400000), "\ngroup \"g\" {\nflags 1\n");
    EXPECT_EQ(with(1), "\ngroup \"g\" {\n flags 1\n");
    EXPECT_EQ(with(0), "\ngroup \"g\" {\n flags 1\n");
}

TEST(Indentation, OfNegativeDepthIsNone)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.setFlags(1);
                  w.endLoad();
                  w.endLoad();
                  w.id(1);
                  w.beginLoad("a");
                  w.id(2);
                  w.beginLoad("b");
                  w.beginLoad("c");
                  w.id(3);
              }),
              "}\n}\nid 1\nload \"a\" {\nid 2\nload \"b\" {\nload \"c\" {\n id 3\n");
}

TEST(SetFlags, TellsWhetherBinaryArraysAreOn)
{
    written([](Writer& w) {
        EXPECT_FALSE(w.setFlags(1));
        EXPECT_TRUE(w.setFlags(2));
        EXPECT_TRUE(w.setFlags(0xffffffff));
        EXPECT_FALSE(w.setFlags(~2u));
        EXPECT_EQ(w.formatFlags(), ~2u);
    });
}

TEST(Queries, HaveFixedAnswers)
{
    written([](Writer& w) {
        EXPECT_EQ(w.firstCapability(), 10);
        EXPECT_EQ(w.secondCapability(), 10);
        EXPECT_EQ(w.thirdCapability(), 0);
        EXPECT_FALSE(w.reservedQuery());
        EXPECT_FALSE(w.firstFeature());
        EXPECT_FALSE(w.secondFeature());
        EXPECT_FALSE(w.thirdFeature());
    });
}

// Captured shaders

constexpr float kColor[3] = {1, 0.5f, 0};

/// One anonymous shader of the type with one colour.
void shader(Writer& w, const char* type)
{
    w.beginShader(nullptr, type);
    w.parameter("diffuse", orv::kFloat3, kColor);
    w.endShader();
}

TEST(CapturedShader, IsOneBlockFromItsTypeToItsBrace)
{
    written([](Writer& w) {
        shader(w, "orv_diffuse");
        const orv::Blob* handle = w.captureBuffer();
        ASSERT_NE(handle, nullptr);
        EXPECT_STREQ(handle->bytes, "\"orv_diffuse\" {\n\"diffuse\" 1 0.5 0,\n}");
        EXPECT_EQ(handle->length, std::strlen(handle->bytes));
        EXPECT_EQ(handle->binary, 0u);
    });
}

TEST(CapturedShader, HandleTakenBeforeOrAfterItsEndNamesTheFinishedText)
{
    const std::string text = "\"t\" {\n\"diffuse\" 1 0.5 0,\n}";
    EXPECT_EQ(written([](Writer& w) {
                  w.beginMaterial("m", true);
                  w.beginShader(nullptr, "t");
                  const orv::Blob* early = w.captureBuffer();
                  w.parameter("diffuse", orv::kFloat3, kColor);
                  w.endShader();
                  const orv::Blob* late = w.captureBuffer();
                  EXPECT_EQ(early, late);
                  w.shaderReference(orv::kSurface, early);
                  w.shaderReference(orv::kShadow, late);
                  w.endMaterial();
              }),
              "material \"m\" {\nsurface " + text + "\nshadow " + text + "\n}\n");
}

TEST(CapturedShader, HandleStaysValidWhileAnotherShaderIsBegun)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginMaterial("m", true);
                  shader(w, "texture");
                  const orv::Blob* texture = w.captureBuffer();
                  w.beginShader(nullptr, "advanced");
                  w.parameter("diffuse", orv::kFloat3, kColor);
                  w.namedBlob("diffuse", texture);
                  const orv::Blob* advanced = w.captureBuffer();
                  w.endShader();
                  w.shaderReference(orv::kSurface, advanced);
                  w.endMaterial();
              }),
              "material \"m\" {\n"
              "surface \"advanced\" {\n\"diffuse\" 1 0.5 0,\n"
              "\"diffuse\" ! \"texture\" {\n\"diffuse\" 1 0.5 0,\n},\n}\n}\n");
}

TEST(CapturedShader, HandleOutlivesManyOthers)
{
    const std::string text = written([](Writer& w) {
        w.beginMaterial("m", true);
        shader(w, "first");
        const orv::Blob* first = w.captureBuffer();
        for (int i = 0; i < 100; ++i) {
            shader(w, "other");
        }
        w.shaderReference(orv::kSurface, first);
        w.endMaterial();
    });
    EXPECT_EQ(text, "material \"m\" {\nsurface \"first\" {\n\"diffuse\" 1 0.5 0,\n}\n}\n");
}

TEST(CapturedShader, NestsWithTheHandlesKeptAside)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginMaterial("m", true);
                  w.pushCaptureBuffer(); // never fetched back
                  w.beginShader(nullptr, "outer");
                  w.pushCaptureBuffer();
                  shader(w, "inner");
                  const orv::Blob* inner = w.captureBuffer();
                  EXPECT_TRUE(w.popCaptureBuffer());
                  w.parameter("diffuse", orv::kFloat3, kColor);
                  w.namedBlob("diffuse", inner);
                  const orv::Blob* before = w.captureBuffer();
                  w.endShader();
                  const orv::Blob* outer = w.captureBuffer();
                  EXPECT_EQ(before, outer);
                  EXPECT_NE(inner, outer);
                  w.shaderReference(orv::kSurface, outer);
                  w.flags(4096);
                  w.endMaterial();
                  EXPECT_FALSE(w.popCaptureBuffer());
              }),
              "material \"m\" {\n"
              "surface \"outer\" {\n\"diffuse\" 1 0.5 0,\n"
              "\"diffuse\" ! \"inner\" {\n\"diffuse\" 1 0.5 0,\n},\n}\n"
              "flags 4096\n}\n");
}

TEST(CapturedShader, NestedWithoutKeepingHandlesStillWritesIntoItsOwnText)
{
    written([](Writer& w) {
        w.beginShader(nullptr, "outer");
        shader(w, "inner");
        w.parameter("diffuse", orv::kFloat3, kColor);
        w.endShader();
        EXPECT_STREQ(w.captureBuffer()->bytes, "\"outer\" {\n\"diffuse\" 1 0.5 0,\n}");
    });
}

TEST(CapturedShader, HandleEndsWithItsMaterialOrCamera)
{
    written([](Writer& w) {
        EXPECT_EQ(w.captureBuffer(), nullptr);
        w.beginMaterial("m", true);
        shader(w, "t");
        EXPECT_NE(w.captureBuffer(), nullptr);
        w.endMaterial();
        EXPECT_EQ(w.captureBuffer(), nullptr);
        w.beginCamera("c");
        shader(w, "t");
        EXPECT_NE(w.captureBuffer(), nullptr);
        w.endCamera();
        EXPECT_EQ(w.captureBuffer(), nullptr);
    });
}

TEST(CapturedShader, OfAnOuterBlockSurvivesAnInnerMaterial)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginCamera("c");
                  shader(w, "mine");
                  const orv::Blob* handle = w.captureBuffer();
                  w.beginMaterial("m", true);
                  shader(w, "other");
                  w.endMaterial();
                  w.parameter("reflection map", orv::kBlob, handle);
                  w.endCamera();
              }),
              "\ncamera \"c\" {\nmaterial \"m\" {\n}\n"
              "reflection map \"mine\" {\n\"diffuse\" 1 0.5 0,\n}\n}\n");
}

TEST(CapturedShader, TextStartsEmptyAfterEarlierOnes)
{
    for (int i = 0; i < 3; ++i) {
        written([](Writer& w) {
            w.beginMaterial("m", true);
            shader(w, "a_long_type_name");
            w.endMaterial();
            w.beginMaterial("n", true);
            shader(w, "b");
            EXPECT_STREQ(w.captureBuffer()->bytes, "\"b\" {\n\"diffuse\" 1 0.5 0,\n}");
            w.endMaterial();
        });
    }
}

TEST(CapturedShader, IsQuotedInsideAndGivesContextAndDepthBack)
{
    EXPECT_EQ(writtenIndented([](Writer& w) {
                  w.beginGroup("g", true);
                  w.beginShader(nullptr, "t");
                  parameter(w);
                  w.endShader();
                  parameter(w);
                  EXPECT_STREQ(w.captureBuffer()->bytes, "\"t\" {\n \"p\" 1,\n}");
              }),
              "\n  group \"g\" {\n   p 1\n");
}

TEST(CapturedShader, IsIndentedWhereItIsWritten)
{
    EXPECT_EQ(writtenIndented([](Writer& w) {
                  w.beginMaterial("m", true);
                  shader(w, "t");
                  w.shaderReference(orv::kSurface, w.captureBuffer());
                  w.parameter("reflection map", orv::kBlob, w.captureBuffer());
              }),
              "  material \"m\" {\n"
              "   surface    \"t\" {\n    \"diffuse\" 1 0.5 0,\n   }   \n"
              "   \"reflection map\"   \"t\" {\n   \"diffuse\" 1 0.5 0,\n  },\n");
}

TEST(CapturedShader, MayHoldTextThatIsNotAscii)
{
    written([](Writer& w) {
        w.beginShader(nullptr, "t");
        w.parameter("texture", orv::kString, "\xc3\xa9.png");
        w.endShader();
        EXPECT_STREQ(w.captureBuffer()->bytes, "\"t\" {\n\"texture\" xXc3a92e706e67,\n}");
    });
}

TEST(CapturedShader, WithBinaryArraysIsWrittenWhole)
{
    const std::string text = written(
        [](Writer& w) {
            const std::int32_t zero = 0;
            const orv::List list{.elements = &zero, .count = 1};
            w.beginShader(nullptr, "t");
            w.parameter("n", orv::kIntList, &list);
            w.endShader();
            w.shaderReference(orv::kSurface, w.captureBuffer());
        },
        true);
    EXPECT_EQ(text,
              std::string("surface \"t\" {\n\"n\" [ \x01\x02\x03i\x01\0\0\0\0\0\0\0] ,\n}\n", 38));
}

TEST(CapturedShader, MayTakeItsOwnTextIn)
{
    const std::string type(5000, 't');
    written([&](Writer& w) {
        w.beginShader(nullptr, type.c_str());
        w.namedBlob("self", w.captureBuffer());
        w.endShader();
        std::string soFar = "\"";
        soFar.append(type).append("\" {\n\"self\" ! ");
        EXPECT_TRUE(w.captureBuffer()->bytes == soFar + soFar + ",\n}");
    });
}

TEST(CapturedShader, HoldsAMebibyteOfText)
{
    std::vector<std::int32_t> values(300000, 1234567);
    const orv::List list{.elements = values.data(), .count = 300000};
    written([&](Writer& w) {
        w.beginShader(nullptr, "t");
        w.parameter("n", orv::kIntList, &list);
        w.endShader();
        const std::string text = w.captureBuffer()->bytes;
        EXPECT_EQ(text.size(), 6u + 4 + 2 + 300000 * 8 + 299992 / 8 + 2 + 2 + 1);
        EXPECT_TRUE(text.ends_with("1234567 ] ,\n}"));
    });
}

TEST(NamedShader, IsWrittenAtOnceEvenInsideACapturedOne)
{
    EXPECT_EQ(written([](Writer& w) {
                  w.beginShader(nullptr, "outer");
                  w.beginShader("s", "t");
                  parameter(w);
                  w.endShader();
                  parameter(w);
                  w.endShader();
                  EXPECT_STREQ(w.captureBuffer()->bytes, "\"outer\" {\n\"p\" 1,\n}");
              }),
              std::string("#define shader \"s\" \"t\" {\n") + kQuoted + "}\n");
}

// Stream and locale

TEST(Writer, LeavesAStreamThatItWasHandedOpen)
{
    const TestFile file;
    std::FILE* stream = platform::openUtf8(file.utf8(), "wb+");
    ASSERT_NE(stream, nullptr);
    {
        orvScene_api_file writer(stream, false);
        writer.id(1);
    }
    EXPECT_GE(std::fputs("after\n", stream), 0);
    std::fclose(stream);
    EXPECT_EQ(file.bytes(), "id 1\nafter\n");
}

TEST(Writer, ClosesTheFileThatItOpened)
{
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / "vistrel-writer-test.obx";
    {
        orvScene_api_file writer(path.string().c_str(), true);
        writer.id(7);
    }
    std::FILE* stream = std::fopen(path.string().c_str(), "rb");
    ASSERT_NE(stream, nullptr);
    char bytes[16] = {};
    EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, stream), 5u);
    std::fclose(stream);
    EXPECT_STREQ(bytes, "id 7\n");
    std::filesystem::remove(path);
}

TEST(Writer, FallsBackToStandardOutputSilently)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        orvScene_api_file writer("no/such/folder/scene.obx", false);
        writer.printMessage("here");
    }
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "#print \"here\"\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

#ifndef _WIN32
TEST(Writer, KeepsTheErrnoOfAWriteThatFellShort)
{
    std::FILE* full = std::fopen("/dev/full", "wb");
    ASSERT_NE(full, nullptr);
    {
        orvScene_api_file writer(full, false);
        EXPECT_EQ(writer.writeError(), 0);
        writer.id(1);
        writer.flush();
        EXPECT_EQ(writer.writeError(), ENOSPC);
        writer.id(2);
        writer.flush();
        EXPECT_EQ(writer.writeError(), ENOSPC);
    }
    std::fclose(full);
}
#endif

TEST(Locale, IsCForNumbersWhileAWriterLives)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    const char* other = nullptr;
    for (const char* name :
         {"de_DE.UTF-8", "de_DE", "German_Germany.1252", "German", "C.UTF-8", "POSIX"}) {
        if (other == nullptr && std::setlocale(LC_NUMERIC, name) != nullptr) {
            other = std::setlocale(LC_NUMERIC, nullptr);
        }
    }
    ASSERT_NE(other, nullptr);
    const std::string outside = other;
    EXPECT_EQ(written([](Writer& w) {
                  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
                  w.printf("%g %.2f\n", 0.5, 1.25);
              }),
              "0.5 1.25\n");
    EXPECT_EQ(std::setlocale(LC_NUMERIC, nullptr), outside);
    std::setlocale(LC_NUMERIC, before.c_str());
}

} // namespace
