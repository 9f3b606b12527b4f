// Every statement but setAttr, in short and long spelling, and what surrounds statements.
#include "tests/unit/host_file/readText.h"

#include "host/file/ascii/setAttribute.h"
#include "host/file/ascii/statements/statements.h"

#include <gtest/gtest.h>

#include <algorithm>

using test::kHeader;
using test::readFile;
using test::readStatements;

namespace {

std::string withNode(const std::string& statements)
{
    return readFile(std::string(kHeader) + "createNode time -n \"t\";\n" + statements);
}

std::string after(const std::string& statements)
{
    const std::string lines = withNode(statements);
    const std::string opening = "createNode time name \"t\"\n";
    const std::size_t end = lines.rfind("end\n");
    return lines.starts_with(opening) && end != std::string::npos
               ? lines.substr(opening.size(), end - opening.size())
               : lines;
}

} // namespace

TEST(File, TheFirstSixBytesMustBeMaya)
{
    EXPECT_EQ(readFile(""), "error: the file does not begin with //Maya\n");
    EXPECT_EQ(readFile("//May"), "error: the file does not begin with //Maya\n");
    EXPECT_EQ(readFile("// Maya ASCII\ncreateNode time;"),
              "error: the file does not begin with //Maya\n");
}

TEST(File, AByteOrderMarkIsSkipped)
{
    EXPECT_EQ(readFile("\xef\xbb\xbf//Maya ASCII 2018 scene\ncreateNode time -n \"t\";"),
              "createNode time name \"t\"\nend\n");
}

TEST(File, CutShortBeforeAnyNodeIsAnError)
{
    EXPECT_EQ(readFile("//Maya"), "error: the file is cut short before any node is created\n");
    EXPECT_EQ(readFile("//Maya ASCII 2018 scene\nrequires maya \"2018\""),
              "damaged \"requires\": the file ends inside the statement\n"
              "error: the file is cut short before any node is created\n");
    EXPECT_EQ(readFile("//Maya ASCII 2018 scene\ncreateNode time -n \"t"),
              "damaged \"createNode\": the file ends inside the statement\n"
              "error: the file is cut short before any node is created\n");
}

TEST(File, WholeWithoutAnyNodeIsAScene)
{
    EXPECT_EQ(readFile("//Maya ASCII 2018 scene\nrequires maya \"2018\";\n"),
              "requires \"maya\" \"2018\"\nend\n");
}

TEST(File, ATruncatedFileDeliversWhatThereIs)
{
    EXPECT_EQ(after("select -ne \":a\";\nconnectAttr \"a.b\" \"c.d"),
              "select \":a\"\ndamaged \"connectAttr\": the file ends inside the statement\n");
}

TEST(File, BlanksCommentsAndEmptyStatementsAreSkipped)
{
    EXPECT_EQ(after(";; ; /* a; \" b */ select // c;\r\n\t-ne/**/\":a\" ;// End of x.ma"),
              "select \":a\"\n");
    EXPECT_EQ(after("/* never closed; select -ne \":a\";"), "");
}

TEST(File, UnknownStatementsAreSkippedToTheirSemicolonAndReported)
{
    EXPECT_EQ(after("frobnicate -x \"a;b\" (\"c\") { d; select -ne \":a\";"),
              "unknown \"frobnicate\"\nselect \":a\"\n");
    EXPECT_EQ(after("\"string\" 1; select -ne \":a\";"), "unknown \"string\"\nselect \":a\"\n");
}

TEST(File, ConflictMarkersAreSkippedLikeAnyUnknownWord)
{
    EXPECT_EQ(after("<<<<<<< HEAD\nselect -ne \":a\";\nselect -ne \":b\";\n=======\n"
                    "select -ne \":c\";\n>>>>>>> other\nselect -ne \":d\";\nselect -ne \":e\";"),
              "unknown \"<<<<<<<\"\nselect \":b\"\nunknown \"=======\"\nunknown \">>>>>>>\"\n"
              "select \":e\"\n");
}

TEST(File, StrayMarksDoNotSwallowTheNextStatement)
{
    EXPECT_EQ(after("} select -ne \":a\";"), "unknown \"}\"\nselect \":a\"\n");
}

TEST(File, PlacesAreLinesAndColumnsFromOne)
{
    test::NodeTableSink sink;
    const std::string file = std::string(kHeader) + "createNode time -n \"t\";\r\n\n"
                                                    "\tsetAttr \".o\"\n\t\t1 what;\n"
                                                    "  createNode;\n";
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink));
    ASSERT_EQ(sink.damages.size(), 2u);
    EXPECT_EQ(sink.damages[0], "line 5, column 5: setAttr: a number was expected");
    EXPECT_EQ(sink.damages[1], "line 6, column 3: createNode: no node type is named");
}

TEST(File, PlacesOfOffsetsAreHexadecimal)
{
    EXPECT_EQ((host::file::Place{0, 0, 8000}.text()), "offset 0x1f40");
    EXPECT_EQ((host::file::Place{12, 3, 8000}.text()), "line 12, column 3");
}

TEST(File, ProgressIsToldEveryFewMebibytes)
{
    std::string file =
        std::string(kHeader) + "createNode mesh -n \"m\";\nsetAttr \".vt[0:2999999]\"";
    for (int i = 0; i < 3000000; ++i) {
        file += " 1 2 3";
    }
    file += ";\n";
    std::vector<std::size_t> told;
    test::NodeTableSink sink;
    host::file::ReadOptions options;
    options.progress = [&](std::size_t bytes) { told.push_back(bytes); };
    ASSERT_TRUE(host::file::readAscii({file.data(), file.size()}, sink, options));
    ASSERT_EQ(told.size(), file.size() / (std::size_t{4} << 20));
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_LE(told.back(), file.size());
}

TEST(Statements, RequiresWithNodeTypes)
{
    EXPECT_EQ(after("requires maya \"2018ff07\";"), "requires \"maya\" \"2018ff07\"\n");
    EXPECT_EQ(after("requires -nodeType \"a\" -nodeType \"b\" -dataType \"d\" \"plug\" \"1.0\";"),
              "requires \"plug\" \"1.0\" nodeType \"a\" nodeType \"b\"\n");
}

TEST(Statements, CurrentUnitInBothSpellings)
{
    EXPECT_EQ(after("currentUnit -l meter -a radian -t pal;"),
              "currentUnit linear \"meter\" angular \"radian\" time \"pal\"\n");
    EXPECT_EQ(after("currentUnit -linear inch -angle degree -time ntsc;"),
              "currentUnit linear \"inch\" angular \"degree\" time \"ntsc\"\n");
    EXPECT_EQ(after("currentUnit -t 23.976fps;"),
              "currentUnit linear \"cm\" angular \"deg\" time \"23.976fps\"\n");
}

TEST(Statements, UnknownUnitsAreReportedAndLeaveTheFormerOnes)
{
    EXPECT_EQ(after("currentUnit -l m; currentUnit -l parsec -t never;"),
              "currentUnit linear \"m\" angular \"deg\" time \"film\"\n"
              "damaged \"currentUnit\": unknown linear unit 'parsec'\n"
              "damaged \"currentUnit\": unknown time unit 'never'\n"
              "currentUnit linear \"m\" angular \"deg\" time \"film\"\n");
}

TEST(Statements, FileInfoIsPassedOnAndRemovalsAreNot)
{
    EXPECT_EQ(after("fileInfo \"version\" \"2018\"; fileInfo -rm \"x\";"),
              "fileInfo \"version\" \"2018\"\n");
}

TEST(Statements, FileListsAndLoadsReferences)
{
    EXPECT_EQ(after("file -rdi 1 -ns \"N\" -rfn \"NRN\" -op \"v=0;\" -typ \"mayaAscii\" \"a.ma\";"),
              "reference \"a.ma\" node \"NRN\" namespace \"N\" listed\n");
    EXPECT_EQ(
        after("file -r -ns \"N\" -dr 1 -rfn \"NRN\" -op \"v=0;\" -typ \"mayaAscii\" \"//b\";"),
        "reference \"//b\" node \"NRN\" namespace \"N\" deferred\n");
    EXPECT_EQ(after("file -reference -renamingPrefix \"P\" -deferReference 0 -referenceNode \"R\" "
                    "-options \"\" -type \"mayaBinary\" -pm \"x\" -pt \"y\" -ap 1 -shd \"z\" -lck "
                    "-ts \"w\" -pr \"$VAR/c.mb\";"),
              "reference \"$VAR/c.mb\" node \"R\" namespace \"P\"\n");
    EXPECT_EQ(after("file -r;"), "damaged \"file\": no path is given\n");
    EXPECT_EQ(after("file \"c.mb\";"), "unknown \"file\"\n");
}

TEST(Statements, CreateNodeInBothSpellings)
{
    EXPECT_EQ(after("createNode transform -s -n \"persp\";"),
              "createNode transform name \"persp\" shared\n");
    EXPECT_EQ(after("createNode camera -shared -name \"a:b:c\" -parent \"|x|y->|z\" -skipSelect;"),
              "createNode camera name \"a:b:c\" parent \"|x|y->|z\" shared\n");
    EXPECT_EQ(after("createNode lambert -ss;"), "createNode lambert\n");
}

TEST(Statements, UnknownFlagsAreReportedAndTheStatementIsCarriedOut)
{
    EXPECT_EQ(after("createNode time -frob -n \"u\";"),
              "damaged \"createNode\": unknown flag -frob\ncreateNode time name \"u\"\n");
}

TEST(Statements, RenameSetsTheUuidOrTheName)
{
    EXPECT_EQ(after("rename -uid \"1234\"; rename -uuid \"5678\"; rename \"new\";"),
              "uuid \"1234\"\nuuid \"5678\"\nrename \"new\"\n");
    EXPECT_EQ(after("rename \"t\" \"new\";"), "rename \"new\"\n");
    EXPECT_EQ(after("rename \"other\" \"new\";"),
              "damaged \"rename\": another node than the current one is to be renamed\n");
    EXPECT_EQ(after("rename;"), "damaged \"rename\": no name is given\n");
}

TEST(Statements, SelectMakesANodeTheCurrentOne)
{
    EXPECT_EQ(after("select -ne \":time1\"; select -noExpand \":lambert1\"; select -cl;"),
              "select \":time1\"\nselect \":lambert1\"\n");
}

TEST(Statements, LockNodeOfTheCurrentNode)
{
    EXPECT_EQ(after("lockNode -l 1 ; lockNode -lock off; lockNode; lockNode -l 1 \"other\"; "
                    "lockNode -lu 1; lockNode -l 1 -lu 1 \"t\";"),
              "lockNode on\nlockNode off\nlockNode on\nlockNode on\n");
}

TEST(Statements, ParentAddsInstancesAndMoves)
{
    EXPECT_EQ(after("parent -s -nc -r -add \"|a|shape\" \"b\";"),
              "parent \"|a|shape\" below \"b\" added\n");
    EXPECT_EQ(after("parent -shape -noConnections -relative -addObject \"x\" \"y\" \"z\";"),
              "parent \"x\" \"y\" below \"z\" added\n");
    EXPECT_EQ(after("parent \"x\" \"y\"; parent -w \"x\"; parent -rm \"|a|x\" \"|b|x\";"),
              "parent \"x\" below \"y\"\nparent \"x\"\nparent \"|a|x\" \"|b|x\" removed\n");
    EXPECT_EQ(after("parent \"x\";"), "damaged \"parent\": a node or its parent is missing\n");
}

TEST(Statements, ConnectAndDisconnectInBothSpellings)
{
    EXPECT_EQ(after("connectAttr \"a.o\" \"b.i\"; connectAttr \"a.o\" \"b.i\" -na; "
                    "connectAttr -f \"a.o\" \"b.i\" -l on;"),
              "connectAttr \"a.o\" \"b.i\"\nconnectAttr \"a.o\" \"b.i\" nextAvailable\n"
              "connectAttr \"a.o\" \"b.i\" forced\n");
    EXPECT_EQ(after("connectAttr -force -nextAvailable -lock 1 -rd \"r.p\" \"a.o\" \"b.i\"; "
                    "disconnectAttr \"a.o\" \"b.i\" -na;"),
              "connectAttr \"a.o\" \"b.i\" nextAvailable forced\n"
              "disconnectAttr \"a.o\" \"b.i\" nextAvailable\n");
    EXPECT_EQ(after("connectAttr \"a.o\"; disconnectAttr \"a.o\";"),
              "damaged \"connectAttr\": a source or a destination is missing\n"
              "damaged \"disconnectAttr\": a source or a destination is missing\n");
}

TEST(Statements, WhatSaysNothingHereIsSkippedQuietly)
{
    EXPECT_EQ(after("relationship \"link\" \":lightLinker1\" \"a.msg\" \"b.msg\";\n"
                    "instanceable -a 0;\ndataStructure -fmt \"raw\" -as \"name=x\";\n"
                    "applyMetadata -fmt \"raw\" -v \"channel\";\n"),
              "");
}

TEST(AddAttr, FlagsInShortSpelling)
{
    EXPECT_EQ(after("addAttr -ci true -k true -sn \"wt\" -ln \"weight\" -dv 0.5 -min 0 -max 1 "
                    "-at \"double\";"),
              "addAttr \"weight\" short \"wt\" double initial 0.5\n");
    EXPECT_EQ(after("addAttr -s false -ci true -m -im false -uac -h true -sn \"c\" -ln \"cols\" "
                    "-at \"float3\" -nc 3;"),
              "addAttr \"cols\" short \"c\" compound multi children 3\n");
    EXPECT_EQ(after("addAttr -ci true -sn \"cr\" -ln \"colr\" -at \"float\" -p \"cols\" -m true;"),
              "addAttr \"colr\" short \"cr\" parent \"cols\" float multi\n");
    EXPECT_EQ(after("addAttr -ci true -sn \"e\" -ln \"en\" -min 0 -max 2 -smn 0 -smx 1 -dv 2 "
                    "-en \"a:b=5:c\" -nn \"Nice\" -ct \"x\" -ct \"y\" -at \"enum\";"),
              "addAttr \"en\" short \"e\" enum initial 2\n");
    EXPECT_EQ(after("addAttr -ci true -sn \"s\" -ln \"str\" -bt \"UNKN\" -dcb 0 -r -w 1 -is true "
                    "-hnv 1 -hxv true -uaf -uap -pxy \"a.b\" -dt \"string\";"),
              "addAttr \"str\" short \"s\" string\n");
}

TEST(AddAttr, FlagsInLongSpelling)
{
    EXPECT_EQ(after("addAttr -cachedInternally true -keyable true -shortName \"wt\" -longName "
                    "\"weight\" -defaultValue 2 -minValue 0 -maxValue 1 -attributeType \"long\" "
                    "-multi -indexMatters true -hidden no -readable yes -writable yes -storable on "
                    "-usedAsColor -parent \"p\" -niceName \"n\" -category \"c\" "
                    "-softMinValue 0 -softMaxValue 1 -enumName \"a:b\" -binaryTag \"b\" "
                    "-disconnectBehaviour 1 -usedAsFilename -usedAsProxy -proxy \"x\" "
                    "-internalSet false -hasMinValue 1 -hasMaxValue 1;"),
              "addAttr \"weight\" short \"wt\" parent \"p\" long multi initial 2\n");
    EXPECT_EQ(after("addAttr -longName \"m\" -dataType \"matrix\"; "
                    "addAttr -ln \"c\" -at compound -numberOfChildren 4;"),
              "addAttr \"m\" matrix\naddAttr \"c\" compound children 4\n");
}

TEST(AddAttr, DefaultsAreInTheCurrentUnits)
{
    EXPECT_EQ(after("currentUnit -l m -a rad -t pal; addAttr -ln \"l\" -at doubleLinear -dv 2;"
                    "addAttr -ln \"a\" -at doubleAngle -dv 3; addAttr -ln \"t\" -at time -dv 25;"),
              "currentUnit linear \"m\" angular \"rad\" time \"pal\"\n"
              "addAttr \"l\" doubleLinear initial 200\naddAttr \"a\" doubleAngle initial 3\n"
              "addAttr \"t\" time initial 141120000\n");
}

TEST(AddAttr, EveryTypeWordHasItsKind)
{
    EXPECT_EQ(
        after("addAttr -ln a -at bool; addAttr -ln a -at byte; addAttr -ln a -at char;"
              "addAttr -ln a -at short; addAttr -ln a -at message; addAttr -ln a -at generic;"
              "addAttr -ln a -at floatAngle; addAttr -ln a -at fltMatrix;"
              "addAttr -ln a -at long2; addAttr -ln a -at double4; addAttr -ln a -at spectrum;"
              "addAttr -ln a -dt nurbsCurve; addAttr -ln a -dt Int32Array;"
              "addAttr -ln a -dt attributeAlias; addAttr -ln a -dt pluginThing;"),
        "addAttr \"a\" bool\naddAttr \"a\" byte\naddAttr \"a\" char\naddAttr \"a\" short\n"
        "addAttr \"a\" message\naddAttr \"a\" any\naddAttr \"a\" floatAngle\n"
        "addAttr \"a\" fltMatrix\naddAttr \"a\" compound children 2\n"
        "addAttr \"a\" compound children 4\naddAttr \"a\" compound children 3\n"
        "addAttr \"a\" nurbsCurve\naddAttr \"a\" Int32Array\naddAttr \"a\" attributeAlias\n"
        "addAttr \"a\" any\n");
}

TEST(AddAttr, WhatNamesNoAttributeOrAnotherNodeIsReported)
{
    EXPECT_EQ(after("addAttr -at \"long\"; addAttr -ln \"x\" -at \"long\" \"other\";"),
              "damaged \"addAttr\": no attribute name is given\n"
              "damaged \"addAttr\": another node than the current one is named\n");
}

TEST(Tables, AreSortedAndUnique)
{
    using namespace host::file::ascii;
    const auto rows = statementTable();
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_LT(rows[i - 1].word, rows[i].word);
    }
    const auto expectFlags = [](std::span<const FlagRow> flags) {
        for (std::size_t i = 1; i < flags.size(); ++i) {
            EXPECT_LT(flags[i - 1].shortName, flags[i].shortName);
            for (std::size_t k = 0; k < i; ++k) {
                EXPECT_NE(flags[k].longName, flags[i].longName);
            }
        }
    };
    for (const StatementRow& row : rows) {
        expectFlags(row.flags);
        EXPECT_EQ(findStatement(row.word), &row);
    }
    expectFlags(setAttributeFlags());
}
