// The text of every statement, without indentation (as files begin) and with it, two blocks deep.
#include "tests/unit/sceneapi/WrittenText.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using Writer = orvScene_api_file;

struct Row {
    const char* name;
    std::function<void(Writer&)> calls;
    std::string plain;
    std::string indented;
};

constexpr double kMatrix[16] = {1, 0, 0,    0, 0,       0.5,   -0.0,   0,
                                0, 0, 1e-7, 0, 1234567, -2.25, 100000, 1};
constexpr float kFloatMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9.5f, 1};
const double kX = 0.1;
const double kY = -0.0;
const double kZ = 1e20;
constexpr orv::Blob kText{.bytes = "text", .length = 4, .binary = 0};
constexpr orv::Blob kLines{.bytes = "a\nb\n", .length = 4, .binary = 0};
constexpr orv::Blob kBytes{.bytes = "\x01\0\n\xff", .length = 4, .binary = 1};
constexpr unsigned char kHexBytes[] = {0x00, 0x9a, 0xff};

std::string bytes(const char* text, std::size_t size)
{
    return {text, size};
}

const std::vector<Row>& rows()
{
    static const std::string kMatrixText =
        " 1 0 0 0 0 0.5 -0 0 0 0 1e-07 0 1.23457e+06 -2.25 100000 1\n";
    static const std::vector<Row> kRows = {
        {"GroupInPlace",
         [](Writer& w) {
             w.beginGroup("g", true);
             w.endGroup();
         },
         "\ngroup \"g\" {\n}\n", "\n  group \"g\" {\n  }\n"},
        {"GroupDefinition",
         [](Writer& w) {
             w.beginGroup("g", false);
             w.endGroup();
         },
         "\n#define group \"g\" {\n}\n", "\n  #define   group \"g\" {\n  }\n"},
        {"ObjectInPlace",
         [](Writer& w) {
             w.beginObject("o", true);
             w.endObject();
         },
         "object \"o\" {\n}\n", "  object \"o\" {\n  }\n"},
        {"ObjectDefinition",
         [](Writer& w) {
             w.beginObject("o", false);
             w.endObject();
         },
         "#define object \"o\" {\n}\n", "  #define object \"o\" {\n  }\n"},
        {"Geometry",
         [](Writer& w) {
             w.beginGeometry("triangle");
             w.endGeometry();
         },
         "geometry \"triangle\" {\n}\n", "  geometry \"triangle\" {\n  }\n"},
        {"Animation",
         [](Writer& w) {
             w.beginAnimation("a", "t");
             w.endAnimation();
         },
         "animation \"a\" \"t\" {\n}\n", "  animation \"a\"   \"t\" {\n  }\n"},
        {"Load",
         [](Writer& w) {
             w.beginLoad("module.so");
             w.endLoad();
         },
         "load \"module.so\" {\n}\n", "  load \"module.so\" {\n  }\n"},
        {"Options",
         [](Writer& w) {
             w.beginOptions();
             w.endOptions();
         },
         "\noptions {\n}\n", "  \n  options {\n  }\n"},
        {"CameraWithoutName",
         [](Writer& w) {
             w.beginCamera(nullptr);
             w.endCamera();
         },
         "\ncamera {\n}\n", "  \n  camera {\n  }\n"},
        {"CameraWithName",
         [](Writer& w) {
             w.beginCamera("c");
             w.endCamera();
         },
         "\ncamera \"c\" {\n}\n", "  \n  camera \"c\" {\n  }\n"},
        {"Image",
         [](Writer& w) {
             w.beginImage();
             w.endImage();
         },
         "\nimage {\n}\n", "  \n  image {\n  }\n"},
        {"Output",
         [](Writer& w) {
             w.beginOutput("a", "b", "c");
             w.endOutput();
         },
         "output \"a\" \"b\" \"c\" {\n}\n", "  output \"a\" \"b\" \"c\" {\n  }\n"},
        {"Light",
         [](Writer& w) {
             w.beginLight("l");
             w.endLight();
         },
         "\nlight \"l\" {\n}\n", "\n  light \"l\" {\n  }\n"},
        {"Accel",
         [](Writer& w) {
             w.beginAccel("a");
             w.endAccel();
         },
         "\naccel \"a\" {\n}\n", "  \n  accel \"a\" {\n  }\n"},
        {"Transform", [](Writer& w) { w.transform(kMatrix); }, "transform" + kMatrixText,
         "  transform" + kMatrixText},
        {"SetTransform", [](Writer& w) { w.setTransform(kMatrix); }, "set transform" + kMatrixText,
         "  set transform" + kMatrixText},
        {"Scale", [](Writer& w) { w.scale(&kX, &kY, &kZ); }, "scale 0.1 -0 1e+20\n",
         "  scale 0.1 -0 1e+20\n"},
        {"Rotate", [](Writer& w) { w.rotate(&kX, &kY, &kZ); }, "rotate 0.1 -0 1e+20\n",
         "  rotate 0.1 -0 1e+20\n"},
        {"Translate", [](Writer& w) { w.translate(&kX, &kY, &kZ); }, "translate 0.1 -0 1e+20\n",
         "  translate 0.1 -0 1e+20\n"},
        {"DefineMatrix",
         [](Writer& w) {
             w.defineMatrix("m");
             w.endMatrix();
         },
         "#define matrix \"m\" {\n}\n", "  #define matrix \"m\" {\n  }\n"},
        {"MaterialInPlace",
         [](Writer& w) {
             w.beginMaterial("m", true);
             w.endMaterial();
         },
         "material \"m\" {\n}\n", "  material \"m\" {\n  }\n"},
        {"MaterialDefinition",
         [](Writer& w) {
             w.beginMaterial("m", false);
             w.endMaterial();
         },
         "\n#define material \"m\" {\n}\n", "  \n  #define   material \"m\" {\n  }\n"},
        {"UseMaterial", [](Writer& w) { w.useMaterial("m"); }, "material \"m\"\n",
         "  material \"m\"\n"},
        {"ShaderReferenceText", [](Writer& w) { w.shaderReference(0, &kText); }, "surface text\n",
         "  surface   text  \n"},
        {"ShaderReferenceLines", [](Writer& w) { w.shaderReference(3, &kLines); },
         "reflection map a\nb\n\n", "  reflection map   a\n  b\n  \n"},
        {"ShaderReferenceBytes", [](Writer& w) { w.shaderReference(2, &kBytes); },
         "volume " + bytes("\x01\0\n\xff", 4) + "\n",
         "  volume " + bytes("\x01\0\n\xff", 4) + "  \n"},
        {"ShaderReferenceNothing", [](Writer& w) { w.shaderReference(9, nullptr); }, "", ""},
        {"ShaderReferenceUnknownKind", [](Writer& w) { w.shaderReference(4, &kText); },
         "// assuming surface shader\nsurface text\n",
         "  // assuming surface shader\n  surface   text  \n"},
        {"ShaderByIdSurface", [](Writer& w) { w.shaderById(0, 1); }, "surface 1\n",
         "  surface 1\n"},
        {"ShaderByIdShadow", [](Writer& w) { w.shaderById(1, -7); }, "shadow -7\n",
         "  shadow -7\n"},
        {"ShaderByIdVolume", [](Writer& w) { w.shaderById(2, 0); }, "volume 0\n", "  volume 0\n"},
        {"ShaderByIdReflectionMap", [](Writer& w) { w.shaderById(3, 12); }, "reflection map 12\n",
         "  reflection map 12\n"},
        {"ShaderByIdUnknownKind", [](Writer& w) { w.shaderById(-1, 2); },
         "// assuming surface shader\nsurface 2\n", "  // assuming surface shader\n  surface 2\n"},
        {"NamedShader",
         [](Writer& w) {
             w.beginShader("s", "t");
             w.endShader();
         },
         "#define shader \"s\" \"t\" {\n}\n", "  #define shader \"s\" \"t\" {\n  }\n"},
        {"ShaderWithNumber",
         [](Writer& w) {
             w.beginShaderById("t", 3);
             w.endShader();
         },
         "#define shader 3 t {\n}\n", "  #define shader 3 t {\n  }\n"},
        {"AnonymousShaderAlone",
         [](Writer& w) {
             w.beginShader(nullptr, "t");
             w.endShader();
         },
         "", ""},
        {"NamedInt", [](Writer& w) { w.namedInt("n", -5); }, "\"n\" ! -5,\n", "  \"n\" ! -5,\n"},
        {"NamedBlob", [](Writer& w) { w.namedBlob("n", &kText); }, "\"n\" ! text,\n",
         "  \"n\" !   text  ,\n"},
        {"EmptyArray",
         [](Writer& w) {
             w.beginArray("a");
             w.endArray();
         },
         "\"a\" [\n ],\n", "  \"a\" [\n    ],\n"},
        {"Attribute", [](Writer& w) { w.attribute("model set", "a\"b"); },
         "attribute \"model set\" xX612262\n", "  attribute \"model set\" xX612262\n"},
        {"Printf", [](Writer& w) { w.printf("%d\n\n%s", 7, "x\n"); }, "7\n\nx\n", "  7\n  \n  x\n"},
        {"PrintfOfNothing", [](Writer& w) { w.printf("%s", ""); }, "", "  "},
        {"Version", [](Writer& w) { w.version(9); }, "version 9\n\n", "  version 9\n  \n"},
        {"VersionMinusOneIsEight", [](Writer& w) { w.version(-1); }, "version 8\n\n",
         "  version 8\n  \n"},
        {"Progress", [](Writer& w) { w.progress("loading", 0.0625f); },
         "progress \"loading\" 0.062\n\n", "  progress \"loading\" 0.062\n\n"},
        {"IconText", [](Writer& w) { w.icon(&kText); }, "icon text\n", "  icon   text  \n"},
        {"IconBytes", [](Writer& w) { w.icon(&kBytes); }, "icon " + bytes("\x01\0\n\xff", 4) + "\n",
         "  icon " + bytes("\x01\0\n\xff", 4) + "  \n"},
        {"HexLine", [](Writer& w) { w.hexLine("key", kHexBytes, 3); }, "key bX009aff\n",
         "  key bX009aff  \n"},
        {"Id", [](Writer& w) { w.id(4294967295u); }, "id 4294967295\n", "  id 4294967295\n"},
        {"FlagsAreDecimal",
         [](Writer& w) {
             w.flags(0x8001);
             w.flags(0x10000);
         },
         "flags 32769\nflags 65536\n", "  flags 32769\n  flags 65536\n"},
        {"Render", [](Writer& w) { w.render(); }, "\nrender\n", "  \n  render\n"},
        {"PrintMessage", [](Writer& w) { w.printMessage("say \"x\""); }, "#print \"say \"x\"\"\n",
         "  #print \"  say \"x\"\"\n"},
        {"Error", [](Writer& w) { w.error("no\nway"); }, "#error \"no\nway\"\n",
         "  #error \"  no\n  way\"\n"},
        {"ModifyCamera",
         [](Writer& w) {
             w.modifyCamera("c");
             w.endCamera();
         },
         "#modify \ncamera \"c\" {\n}\n", "  #modify   \n  camera \"c\" {\n  }\n"},
        {"DefineGeometry",
         [](Writer& w) {
             w.defineGeometry("g", "t");
             w.endGeometry();
         },
         "#define geometry \"g\" \"t\" {\n}\n", "  #define geometry \"g\" \"t\" {\n  }\n"},
        {"Motion", [](Writer& w) { w.motion(0.5, kFloatMatrix); },
         "motion 0.5 {\ntransform 1 0 0 0 0 1 0 0 0 0 1 0 7 8 9.5 1\n}\n",
         "  motion 0.5 {\n   transform 1 0 0 0 0 1 0 0 0 0 1 0 7 8 9.5 1   \n  }\n"},
        {"ModifyMaterial",
         [](Writer& w) {
             w.modifyMaterial("m");
             w.endMaterial();
         },
         "#modify material \"m\" {\n}\n", "  #modify material \"m\" {\n  }\n"},
        {"Frame", [](Writer& w) { w.frame(-3); }, "frame -3 {\n", "  frame -3 {\n"},
        {"Instance", [](Writer& w) { w.instance("i"); }, "instance \"i\"\n", "  instance \"i\"\n"},
        {"OperationsWithoutText",
         [](Writer& w) {
             w.noEffect();
             w.reservedOperation();
             w.pushCaptureBuffer();
             w.popCaptureBuffer();
         },
         "", ""},
    };
    return kRows;
}

class Statement : public testing::TestWithParam<std::size_t> {};

TEST_P(Statement, HasItsTextWithoutIndentation)
{
    const Row& row = rows()[GetParam()];
    EXPECT_EQ(written(row.calls), row.plain);
}

TEST_P(Statement, HasItsTextWithIndentation)
{
    const Row& row = rows()[GetParam()];
    EXPECT_EQ(writtenIndented(row.calls), row.indented);
}

INSTANTIATE_TEST_SUITE_P(Rows, Statement, testing::Range(std::size_t{0}, rows().size()),
                         [](const auto& test) { return std::string(rows()[test.param].name); });

// Names

TEST(Name, WithQuoteLineEndOrNonAsciiByteIsHexadecimal)
{
    const auto use = [](const char* name) {
        return written([&](Writer& w) { w.useMaterial(name); });
    };
    EXPECT_EQ(use("a\"b"), "material xX612262\n");
    EXPECT_EQ(use("a\nb"), "material xX610a62\n");
    EXPECT_EQ(use("\r"), "material xX0d\n");
    EXPECT_EQ(use("\xc3\xa9"), "material xXc3a9\n");
    EXPECT_EQ(use("\x80"), "material xX80\n");
}

TEST(Name, WithBlankBackslashOrNothingIsQuoted)
{
    const auto use = [](const char* name) {
        return written([&](Writer& w) { w.useMaterial(name); });
    };
    EXPECT_EQ(use("a b"), "material \"a b\"\n");
    EXPECT_EQ(use("C:\\t\tx\x7f"), "material \"C:\\t\tx\x7f\"\n");
    EXPECT_EQ(use(""), "material \"\"\n");
    EXPECT_EQ(use(nullptr), "material \"\"\n");
}

TEST(Name, InsideALineHasNoIndentationAndFirstOnALineHasIt)
{
    EXPECT_EQ(writtenIndented([](Writer& w) { w.attribute("a", "b"); }),
              "  attribute \"a\" \"b\"\n");
    EXPECT_EQ(writtenIndented([](Writer& w) { w.namedInt("a", 1); }), "  \"a\" ! 1,\n");
    EXPECT_EQ(writtenIndented([](Writer& w) { w.namedInt("\xff", 1); }), "xXff ! 1,\n");
}

// Pieces

TEST(Piece, OfPrintfIsCutAtOneMebibyteLessOne)
{
    const std::string text(1 << 20, 'x');
    EXPECT_EQ(written([&](Writer& w) { w.printf("%s", text.c_str()); }).size(), (1u << 20) - 1);
    const std::string fits(text, 1);
    EXPECT_EQ(written([&](Writer& w) { w.printf("%s", fits.c_str()); }).size(), (1u << 20) - 1);
    const std::string shorter(text, 2);
    EXPECT_EQ(written([&](Writer& w) { w.printf("%s", shorter.c_str()); }), shorter);
}

TEST(Piece, OfAHugeNameLosesItsClosingQuote)
{
    const std::string name(1 << 20, 'n');
    const std::string text = written([&](Writer& w) { w.useMaterial(name.c_str()); });
    EXPECT_EQ(text, "material \"" + name.substr(0, (1 << 20) - 2) + "\n");
}

TEST(Piece, OfHugeMessageBlobAndKeywordIsCut)
{
    const std::string text(2 << 20, 'm');
    const orv::Blob blob{.bytes = text.c_str(), .length = 2 << 20, .binary = 0};
    const orv::Blob binary{.bytes = text.c_str(), .length = 2 << 20, .binary = 1};
    constexpr std::size_t kCut = (1 << 20) - 1;
    EXPECT_EQ(written([&](Writer& w) { w.error(text.c_str()); }).size(), 8 + kCut + 2);
    EXPECT_EQ(written([&](Writer& w) { w.icon(&blob); }).size(), 5 + kCut + 1);
    EXPECT_EQ(written([&](Writer& w) { w.icon(&binary); }).size(), 5 + text.size() + 1);
    EXPECT_EQ(written([&](Writer& w) { w.hexLine(text.c_str(), "", 0); }).size(), kCut + 2 + 1);
}

TEST(Piece, OfHexadecimalNamesIsNotCut)
{
    const std::string name(1 << 20, '"');
    EXPECT_EQ(written([&](Writer& w) { w.useMaterial(name.c_str()); }).size(),
              9 + 2 + (2u << 20) + 1);
}

TEST(Piece, IsCutBeforeIndentationIsAdded)
{
    std::string text;
    for (int i = 0; i < 1 << 19; ++i) {
        text += "x\n";
    }
    // 2^20 - 1 characters: the last newline is lost; two blanks before each of the 2^19 lines.
    EXPECT_EQ(writtenIndented([&](Writer& w) { w.printf("%s", text.c_str()); }).size(),
              (1u << 20) - 1 + 2 * (1u << 19));
}

// Numbers in statements

TEST(Progress, HasThreeDecimals)
{
    const auto text = [](float fraction) {
        return written([&](Writer& w) { w.progress("p", fraction); });
    };
    EXPECT_EQ(text(0.0f), "progress \"p\" 0.000\n\n");
    EXPECT_EQ(text(1.0f), "progress \"p\" 1.000\n\n");
    EXPECT_EQ(text(0.9996f), "progress \"p\" 1.000\n\n");
    EXPECT_EQ(text(-0.5f), "progress \"p\" -0.500\n\n");
}

TEST(Progress, ReachesTheSystemAtOnce)
{
    const TestFile file;
    std::FILE* stream = platform::openUtf8(file.utf8(), "wb+");
    {
        orvScene_api_file writer(stream, false);
        writer.progress("p", 0.5f);
        EXPECT_EQ(file.bytes(), "progress \"p\" 0.500\n\n");
    }
    std::fclose(stream);
}

} // namespace
