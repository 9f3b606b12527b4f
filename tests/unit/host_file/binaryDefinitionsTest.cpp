// ATTR: dynamic attributes.
#include "tests/unit/host_file/readBinaryFile.h"

#include <gtest/gtest.h>

using test::BinaryBytes;
using test::BinaryDefinition;
using test::BinaryScene;
using test::kMaya2011;
using test::kMaya2012;
using test::kMaya2019;
using test::kMaya85;
using test::readChunks;

namespace {

constexpr unsigned kKeyable = 0x00f84000;

/// The line of a definition: the same in files with short and with long flags.
std::string defined(const BinaryDefinition& definition)
{
    const BinaryScene narrow(kMaya85);
    const BinaryScene wide(withFiller(kMaya2019, '\xaa'));
    const std::string lines = readChunks(wide, wide.definition(definition));
    EXPECT_EQ(readChunks(narrow, narrow.definition(definition)), lines);
    return lines;
}

BinaryDefinition typed(std::string type)
{
    BinaryDefinition definition{"aTYP", "data", "d"};
    definition.types = {std::move(type)};
    return definition;
}

} // namespace

TEST(BinaryDefinitions, FlagsHaveTwoBytesUntil2011AndFourAfterwards)
{
    for (const test::BinaryManner& manner : {kMaya85, kMaya2011, kMaya2012, kMaya2019}) {
        const BinaryScene mb(manner);
        EXPECT_EQ(readChunks(mb, mb.definition({"aDBL", "weight", "wt"})),
                  "addAttr \"weight\" short \"wt\" double\n");
    }
}

TEST(BinaryDefinitions, LimitsAndDefault)
{
    BinaryDefinition definition{"aDBL", "weight", "wt"};
    definition.initial = 0.5;
    EXPECT_EQ(defined(definition), "addAttr \"weight\" short \"wt\" double initial 0.5\n");
    definition.least = 0;
    EXPECT_EQ(defined(definition), "addAttr \"weight\" short \"wt\" double initial 0.5\n");
    definition.softMost = 2;
    definition.most = 10;
    definition.softLeast = 1;
    EXPECT_EQ(defined(definition), "addAttr \"weight\" short \"wt\" double initial 0.5\n");
    definition.initial = {};
    EXPECT_EQ(defined(definition), "addAttr \"weight\" short \"wt\" double\n");
}

TEST(BinaryDefinitions, DefaultsAreInInternalUnits)
{
    BinaryDefinition definition{"aAGL", "angle", "an"};
    definition.initial = 1.5;
    EXPECT_EQ(defined(definition), "addAttr \"angle\" short \"an\" doubleAngle initial 1.5\n");
    definition.kind = "aLNR";
    EXPECT_EQ(defined(definition), "addAttr \"angle\" short \"an\" doubleLinear initial 1.5\n");
}

TEST(BinaryDefinitions, EnumNamesAndNiceNames)
{
    BinaryDefinition definition{"aENM", "space", "sp"};
    definition.enumNames = "world:local=5:parent";
    definition.initial = 5;
    definition.least = 0;
    definition.most = 6;
    EXPECT_EQ(defined(definition), "addAttr \"space\" short \"sp\" enum initial 5\n");
    definition.niceName = "Follow the space";
    EXPECT_EQ(defined(definition), "addAttr \"space\" short \"sp\" enum initial 5\n");
}

TEST(BinaryDefinitions, CompoundsAndTheirChildren)
{
    BinaryDefinition compound{"aCPD", "group", "gr", kKeyable | 1};
    compound.children = 2;
    EXPECT_EQ(defined(compound), "addAttr \"group\" short \"gr\" compound multi children 2\n");
    BinaryDefinition child{"aFLT", "one", "o"};
    child.parent = "group";
    child.niceName = "The one";
    EXPECT_EQ(defined(child), "addAttr \"one\" short \"o\" parent \"group\" float\n");
    BinaryDefinition vector{"aDB3", "offset", "of"};
    vector.types = {"DBL3"};
    vector.children = 3;
    EXPECT_EQ(defined(vector), "addAttr \"offset\" short \"of\" compound children 3\n");
}

TEST(BinaryDefinitions, TheKindsOfScalars)
{
    constexpr std::pair<const char*, const char*> kKinds[] = {
        {"aBOL", "bool"},  {"aBYT", "byte"},         {"aCHR", "char"},        {"aSI1", "short"},
        {"aLI1", "long"},  {"aENM", "enum"},         {"aFLT", "float"},       {"aDBL", "double"},
        {"aTIM", "time"},  {"aLNR", "doubleLinear"}, {"aAGL", "doubleAngle"}, {"aMSG", "message"},
        {"aMTX", "matrix"}};
    for (const auto& [kind, word] : kKinds) {
        EXPECT_EQ(defined({kind, "a", "b"}),
                  "addAttr \"a\" short \"b\" " + std::string(word) + "\n");
    }
    EXPECT_EQ(defined({"aNEW", "a", "b"}), "addAttr \"a\" short \"b\" any\n");
}

TEST(BinaryDefinitions, TheKindsOfVectorsTellTheirChildren)
{
    constexpr std::pair<const char*, int> kKinds[] = {{"aDB2", 2}, {"aDB3", 3}, {"aFL2", 2},
                                                      {"aFL3", 3}, {"aLI2", 2}, {"aLI3", 3},
                                                      {"aSI2", 2}, {"aSI3", 3}};
    for (const auto& [kind, children] : kKinds) {
        EXPECT_EQ(defined({kind, "a", "b"}),
                  "addAttr \"a\" short \"b\" compound children " + std::to_string(children) + "\n");
    }
}

TEST(BinaryDefinitions, TypedDataByTheFirstType)
{
    constexpr std::pair<const char*, const char*> kTypes[] = {
        {"STR ", "string"},     {"STR#", "stringArray"},    {"DBL#", "doubleArray"},
        {"I32#", "Int32Array"}, {"VEC#", "vectorArray"},    {"PNT#", "pointArray"},
        {"MATR", "matrix"},     {"CMP#", "componentList"},  {"ATAL", "attributeAlias"},
        {"NRBC", "nurbsCurve"}, {"NRBS", "nurbsSurface"},   {"MESH", "mesh"},
        {"LATT", "lattice"},    {"REFE", "referenceEdits"}, {"FLT#", "floatArray"},
        {"NEW!", "any"}};
    for (const auto& [type, word] : kTypes) {
        EXPECT_EQ(defined(typed(type)), "addAttr \"data\" short \"d\" " + std::string(word) + "\n");
    }
    BinaryDefinition several = typed("VEC#");
    several.types = {"VEC#", "STR ", "PNT#"};
    EXPECT_EQ(defined(several), "addAttr \"data\" short \"d\" vectorArray\n");
    several.types = {};
    EXPECT_EQ(defined(several), "addAttr \"data\" short \"d\" any\n");
}

TEST(BinaryDefinitions, ValuesOfADefinedAttributeFollowItsKind)
{
    const BinaryScene mb(kMaya2019);
    BinaryDefinition vector{"aDB3", "offset", "of"};
    vector.children = 3;
    std::string chunks = mb.definition(vector);
    for (const char* name : {"X", "Y", "Z"}) {
        BinaryDefinition child{"aDBL", std::string("offset") + name, std::string("of") + name};
        child.parent = "offset";
        chunks += mb.definition(child);
    }
    EXPECT_EQ(readChunks(mb, chunks + mb.doubles("of", {1, 2, 3})),
              "addAttr \"offset\" short \"of\" compound children 3\n"
              "addAttr \"offsetX\" short \"ofX\" parent \"offset\" double\n"
              "addAttr \"offsetY\" short \"ofY\" parent \"offset\" double\n"
              "addAttr \"offsetZ\" short \"ofZ\" parent \"offset\" double\n" +
                  test::plainFlags(".of") + "setAttr .of double x 3: 1 2 3\n");
}

TEST(BinaryDefinitions, ADefaultThatIsNoNumberDamagesTheDefinition)
{
    BinaryDefinition definition{"aDBL", "weight", "wt"};
    for (const std::string& bytes :
         {BinaryBytes().raw("STR ").text("a").bytes(), BinaryBytes().raw("DBLE").bytes(),
          BinaryBytes().raw("DBLE").u16(1).bytes(),
          BinaryBytes().raw("DBLE").f64(1).u8(0).bytes()}) {
        definition.initialBytes = bytes;
        const BinaryScene mb(kMaya2019);
        const std::string lines = readChunks(mb, mb.definition(definition) + mb.flags("v"));
        EXPECT_TRUE(lines.starts_with("damaged \"ATTR\": ")) << lines;
        EXPECT_TRUE(lines.ends_with("\n" + test::plainFlags(".v"))) << lines;
    }
}

TEST(BinaryDefinitions, EveryPrefixIsDamagedAndSaysSo)
{
    BinaryDefinition definition{"aENM", "weight", "wt", kKeyable | 1, 0, "parent", "Nice", "a:b"};
    definition.least = 0;
    definition.most = 1;
    definition.softLeast = 0.25;
    definition.softMost = 0.75;
    definition.initial = 1;
    for (const test::BinaryManner& manner : {kMaya85, kMaya2019}) {
        const BinaryScene mb(manner);
        // 8 or 16 bytes of heading in front, the padding behind: cut inside the payload. (The
        // default alone may have four bytes instead of eight: that is a time.)
        const std::string chunk = mb.definition(definition);
        const std::size_t heading = mb.heading("ATTR", 0).size();
        const std::size_t flagBytes = manner.hasWideFlags ? 4 : 2;
        // kind, flags, count and one type, five texts, memory, four limits, DBLE and number
        const std::size_t size = 4 + flagBytes + 8 + 7 + 3 + 7 + 5 + 4 + 4 + 32 + 12;
        for (std::size_t cut = 0; cut < size; ++cut) {
            const std::string lines =
                readChunks(mb, mb.leaf("ATTR", std::string_view(chunk).substr(heading, cut)));
            if (cut == size - 4) {
                EXPECT_TRUE(lines.starts_with("addAttr ")) << lines;
            } else {
                EXPECT_TRUE(lines.starts_with("damaged \"ATTR\": ")) << cut << lines;
            }
        }
        EXPECT_TRUE(readChunks(mb, chunk).starts_with("addAttr "));
    }
}

TEST(BinaryDefinitions, CountsThatLieAreReported)
{
    const BinaryScene mb(kMaya2019);
    const std::string bytes = BinaryBytes().raw("aTYP").u32(0x4000).u32(0x40000001).raw("STR ");
    EXPECT_TRUE(readChunks(mb, mb.leaf("ATTR", bytes)).starts_with("damaged \"ATTR\": "));
    BinaryDefinition huge{"aCPD", "group", "gr"};
    huge.children = 0xffffffffu;
    EXPECT_EQ(readChunks(mb, mb.definition(huge)),
              "addAttr \"group\" short \"gr\" compound children 2147483647\n");
    EXPECT_EQ(readChunks(mb, mb.definition({"aDBL", "", "wt"})),
              "damaged \"ATTR\": no attribute name is given\n");
}
