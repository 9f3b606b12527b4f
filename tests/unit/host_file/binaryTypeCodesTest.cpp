// Expectations: codes that stand in binary files whose scenes exist as text too; and the table's
// own source, read here word by word.
#include "host/file/binary/typeCodes.h"

#include "host/types/NodeType.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace host::file::binary {
namespace {

TEST(BinaryTypeCodes, NamesTypesOfLetters)
{
    EXPECT_EQ(findTypeOfCode("XFRM"), "transform");
    EXPECT_EQ(findTypeOfCode("DMSH"), "mesh");
    EXPECT_EQ(findTypeOfCode("DCAM"), "camera");
    EXPECT_EQ(findTypeOfCode("NCRV"), "nurbsCurve");
    EXPECT_EQ(findTypeOfCode("NSRF"), "nurbsSurface");
    EXPECT_EQ(findTypeOfCode("SHAD"), "shadingEngine");
    EXPECT_EQ(findTypeOfCode("PCTA"), "animCurveTA");
}

TEST(BinaryTypeCodes, NamesTypesOfPlugins)
{
    EXPECT_EQ(findTypeOfCode(Tag(0x00115c00)), "aiOptions");
}

TEST(BinaryTypeCodes, KnowsNothingOfOtherCodes)
{
    EXPECT_EQ(findTypeOfCode(Tag(0)), "");
    EXPECT_EQ(findTypeOfCode(Tag(0xffffffff)), "");
    EXPECT_EQ(findTypeOfCode("XFRN"), ""); // between two rows
    EXPECT_EQ(findTypeOfCode("xfrm"), "");
}

TEST(BinaryTypeCodes, HoldsEveryRowOfItsSource)
{
    std::ifstream source(ORV_SOURCE_DIR "/host/file/binary/tables/type_codes.txt");
    std::size_t count = 0;
    for (std::string line; std::getline(source, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::istringstream words(line);
        std::uint32_t code = 0;
        std::string name;
        words >> std::hex >> code >> name;
        EXPECT_EQ(findTypeOfCode(Tag(code)), name) << line;
        ++count;
    }
    EXPECT_EQ(count, 977U); // 608 of Maya, 369 of plug-ins
}

TEST(BinaryTypeCodes, SpellsTypesAsTheTableOfTypesDoes)
{
    // types that the codes are known of since files can have them and that scenes need
    for (const Tag code :
         {Tag("DMSH"), Tag("NSRF"), Tag("NCRV"), Tag("PCUB"), Tag("GRPP"), Tag("FSCL"), Tag("RPHO"),
          Tag("RLAM"), Tag("RTFT"), Tag("RPL2"), Tag("JOIN"), Tag("KHDL"), Tag("DPAR"), Tag("RNDL"),
          Tag("DSPL"), Tag("PCTL"), Tag("PCUU"), Tag("DUNT"), Tag("ABLW"), Tag("FBLS")}) {
        EXPECT_TRUE(NodeType::find(findTypeOfCode(code))) << code.text();
    }
}

} // namespace
} // namespace host::file::binary
