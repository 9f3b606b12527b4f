// Opening files, commands, time and animation.
#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MDoubleArray.h>
#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MLibrary.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names answers(const char* command)
{
    MStringArray result;
    EXPECT_TRUE(MGlobal::executeCommand(command, result, false, false));
    Names names;
    for (unsigned int i = 0; i < result.length(); ++i) {
        names.push_back(text(result[i]));
    }
    return names;
}

TEST(MFileIO, NumbersItsReferenceModes)
{
    EXPECT_EQ(MFileIO::kLoadDefault, 0);
    EXPECT_EQ(MFileIO::kLoadAllReferences, 1);
    EXPECT_EQ(MFileIO::kLoadNoReferences, 2);
}

TEST(MFileIO, NamesTheOpenFileAbsolutelyWithForwardSlashes)
{
    const OpenedScene scene("createNode transform -n \"t\";\n");
    ASSERT_TRUE(scene.status);
    std::string expected = text(utf8(scene.file));
    std::replace(expected.begin(), expected.end(), '\\', '/');
    EXPECT_EQ(MFileIO::currentFile(), expected.c_str());
}

TEST(MFileIO, NamesAFileOpenedByARelativePathAbsolutely)
{
    const OpenedScene scene("createNode transform -n \"t\";\n");
    const auto folder = std::filesystem::current_path();
    std::filesystem::current_path(scene.file.parent_path());
    EXPECT_TRUE(openFile(scene.file.filename()));
    std::filesystem::current_path(folder);
    const std::string current = text(MFileIO::currentFile());
    const std::string name = text(utf8(scene.file.filename()));
    EXPECT_TRUE(std::filesystem::path(current).is_absolute()) << current;
    EXPECT_EQ(current.substr(current.rfind('/') + 1), name);
}

TEST(MFileIO, OpensFilesWithNamesBeyondAscii)
{
    MLibrary::initialize("test", false);
    const auto file = writeFile("host_api.ma", "//Maya ASCII 2018 scene\n"
                                               "createNode transform -n \"t\";\n");
    const auto renamed = file.parent_path() / std::filesystem::path(u8"host_\u00e4\u20ac api.ma");
    std::filesystem::rename(file, renamed);
    EXPECT_TRUE(openFile(renamed));
    EXPECT_FALSE(nodeNamed("t").isNull());
    std::filesystem::remove(renamed);
    MLibrary::cleanup(0, false);
}

TEST(MFileIO, FailsForAMissingFileAndLeavesANewScene)
{
    const OpenedScene scene("createNode transform -n \"t\";\n");
    ASSERT_FALSE(nodeNamed("t").isNull());
    testing::internal::CaptureStderr();
    const MStatus status = openFile(scene.file.parent_path() / "host_api_nowhere.ma");
    const std::string messages = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(status);
    EXPECT_EQ(messages.substr(0, 7), "Error: ") << messages;
    EXPECT_TRUE(nodeNamed("t").isNull());
    EXPECT_FALSE(nodeNamed("perspShape").isNull());
    const std::string current = text(MFileIO::currentFile());
    EXPECT_EQ(current.substr(current.rfind('/') + 1), "untitled");
}

TEST(MFileIO, FailsForWhatIsNoScene)
{
    const OpenedScene scene;
    for (const char* content : {"", "solid cube\n", "//Maya ASCII 2018 scene\nrequires may"}) {
        const auto file = writeFile("host_api_no_scene.ma", content);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(openFile(file)) << content;
        EXPECT_NE(testing::internal::GetCapturedStderr(), "") << content;
        std::filesystem::remove(file);
    }
}

TEST(MFileIO, SucceedsWithErrorsInsideAFileAndWarns)
{
    const OpenedScene scene("requires \"somePlugin\" \"1.0\";\n"
                            "createNode someoneElsesNode -n \"n\";\n"
                            "createNode transform -n \"t\";\n"
                            "\tsetAttr \".noSuchAttribute\" 5;\n"
                            "inventedCommand -x \"t\";\n"
                            "connectAttr \"nobody.x\" \"t.tx\";\n");
    EXPECT_TRUE(scene.status);
    EXPECT_FALSE(nodeNamed("t").isNull());
    EXPECT_FALSE(nodeNamed("n").isNull());
    EXPECT_NE(scene.messages.find("Warning: "), std::string::npos);
    EXPECT_NE(scene.messages.find("someoneElsesNode"), std::string::npos) << scene.messages;
}

TEST(MFileIO, PrintsABoundedNumberOfWarnings)
{
    std::string statements = "createNode transform -n \"t\";\n";
    for (int i = 0; i < 300; ++i) {
        statements += "createNode invented" + std::to_string(i) + " -n \"n\";\n";
    }
    const OpenedScene scene(statements);
    EXPECT_TRUE(scene.status);
    const auto lines = std::count(scene.messages.begin(), scene.messages.end(), '\n');
    EXPECT_EQ(lines, 51);
    EXPECT_NE(scene.messages.find("250 more"), std::string::npos) << scene.messages;
}

TEST(MFileIO, OpensOneSceneAfterAnother)
{
    const OpenedScene scene("createNode transform -n \"first\";\n");
    const auto other = writeFile("host_api_second.ma", "//Maya ASCII 2018 scene\n"
                                                       "createNode transform -n \"second\";\n");
    ASSERT_TRUE(openFile(other));
    EXPECT_TRUE(nodeNamed("first").isNull());
    EXPECT_FALSE(nodeNamed("second").isNull());
    std::filesystem::remove(other);
}

TEST(MGlobal, ListsShapesOnceEach)
{
    const OpenedScene scene("createNode transform -n \"a\";\n"
                            "createNode locator -n \"l\" -p \"a\";\n"
                            "createNode mesh -n \"hidden\" -p \"a\";\n\tsetAttr \".io\" yes;\n"
                            "createNode transform -n \"b\";\n"
                            "parent -s -nc -r -add \"|a|l\" \"b\";\n");
    Names names = answers("ls -shapes");
    std::sort(names.begin(), names.end());
    ASSERT_EQ(names.size(), 6u) << "four cameras, the locator once, the intermediate mesh";
    EXPECT_TRUE(std::find(names.begin(), names.end(), "perspShape") != names.end());
    EXPECT_TRUE(std::find(names.begin(), names.end(), "hidden") != names.end());
}

TEST(MGlobal, TellsTheLinearUnitInItsShortForm)
{
    struct Row {
        const char* file;
        const char* answer;
    };
    for (const Row& row :
         {Row{"", "cm"}, Row{"currentUnit -l millimeter;\n", "mm"},
          Row{"currentUnit -l centimeter;\n", "cm"},
          Row{"currentUnit -l meter -a degree -t pal;\n", "m"},
          Row{"currentUnit -l kilometer;\n", "km"}, Row{"currentUnit -l inch;\n", "in"},
          Row{"currentUnit -l foot;\n", "ft"}, Row{"currentUnit -l yard;\n", "yd"},
          Row{"currentUnit -l mile;\n", "mi"}}) {
        const OpenedScene scene(std::string(row.file) + "createNode transform -n \"t\";\n");
        EXPECT_EQ(answers("currentUnit -query -linear"), Names{row.answer});
        MString single;
        EXPECT_TRUE(MGlobal::executeCommand("currentUnit -query -linear", single));
        EXPECT_EQ(single, row.answer);
    }
}

TEST(MGlobal, FailsForOtherCommandsAndLeavesTheResult)
{
    const OpenedScene scene;
    MStringArray texts;
    texts.append(MString("kept"));
    EXPECT_FALSE(MGlobal::executeCommand("ls", texts));
    EXPECT_FALSE(MGlobal::executeCommand("system(\"true\")", texts));
    EXPECT_EQ(texts.length(), 1u);
    EXPECT_TRUE(MGlobal::executeCommand("ls -shapes"));
    EXPECT_FALSE(MGlobal::executeCommand("delete persp"));
    MString single("kept");
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", single)) << "four texts are not one";
    EXPECT_EQ(single, "kept");
    int number = 7;
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", number));
    EXPECT_EQ(number, 7);
    double real = 7;
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", real));
    EXPECT_EQ(real, 7);
    MIntArray numbers(1, 7);
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", numbers));
    EXPECT_EQ(numbers.length(), 1u);
    MDoubleArray reals(1, 7);
    EXPECT_FALSE(MGlobal::executeCommand("ls -shapes", reals));
    EXPECT_EQ(reals.length(), 1u);
}

TEST(MGlobal, HasYAsTheUpAxisByDefault)
{
    const OpenedScene scene;
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(MGlobal::upAxis(&status), MVector(0, 1, 0));
    EXPECT_TRUE(status);
}

TEST(MGlobal, WarnsOnStandardErrorOnly)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    MGlobal::displayWarning("watch out");
    MGlobal::displayError("wrong");
    MGlobal::displayInfo("by the way");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Warning: watch out\nError: wrong\nby the way\n");
}

TEST(MGlobal, IsOfVersion2018)
{
    EXPECT_EQ(MAYA_API_VERSION, 20180000);
    EXPECT_EQ(MGlobal::apiVersion(), 20180000);
}

TEST(MGlobal, SetsTheSceneTime)
{
    const OpenedScene scene("currentUnit -l centimeter -a degree -t pal;\n"
                            "createNode transform -n \"t\";\n");
    EXPECT_EQ(MTime::uiUnit(), MTime::kPALFrame);
    EXPECT_TRUE(MGlobal::viewFrame(MTime(1, MTime::kSeconds)));
    EXPECT_EQ(MAnimControl::currentTime().unit(), MTime::kPALFrame);
    EXPECT_EQ(MAnimControl::currentTime().value(), 25);
    EXPECT_TRUE(MGlobal::viewFrame(10.0)) << "a number counts in the working unit";
    EXPECT_EQ(MAnimControl::currentTime().as(MTime::kMilliseconds), 400);
    EXPECT_TRUE(MAnimControl::setCurrentTime(MTime(48, MTime::kFilm)));
    EXPECT_EQ(MAnimControl::currentTime().value(), 50);
}

TEST(MTime, TakesItsWorkingUnitFromTheFile)
{
    struct Row {
        const char* name;
        MTime::Unit unit;
    };
    for (const Row& row : {Row{"game", MTime::kGames}, Row{"film", MTime::kFilm},
                           Row{"ntsc", MTime::kNTSCFrame}, Row{"show", MTime::kShowScan},
                           Row{"palf", MTime::kPALField}, Row{"ntscf", MTime::kNTSCField},
                           Row{"23.976fps", MTime::k23_976FPS}, Row{"120fps", MTime::k120FPS},
                           Row{"sec", MTime::kSeconds}, Row{"90fps", MTime::kUserDef}}) {
        const OpenedScene scene("currentUnit -l centimeter -a degree -t " + std::string(row.name) +
                                ";\ncreateNode transform -n \"t\";\n");
        EXPECT_EQ(MTime::uiUnit(), row.unit) << row.name;
    }
    const OpenedScene scene("currentUnit -l centimeter -a degree -t 90fps;\n"
                            "createNode transform -n \"t\";\n");
    EXPECT_EQ(MTime(90, MTime::uiUnit()).as(MTime::kSeconds), 1);
}

TEST(MAnimControl, GivesThePlaybackRangeAndNotTheAnimationRange)
{
    const OpenedScene scene(
        "createNode script -n \"sceneConfigurationScriptNode\";\n"
        "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min 5 -max 60 -ast 1 -aet 200 \";\n"
        "\tsetAttr \".st\" 6;\n");
    EXPECT_EQ(MAnimControl::minTime().value(), 5);
    EXPECT_EQ(MAnimControl::maxTime().value(), 60);
}

TEST(MTime, MakesAnotherUnitTheWorkingOne)
{
    EXPECT_FALSE(MTime::setUIUnit(MTime::kPALFrame)); // no scene is open
    const OpenedScene scene(
        "createNode script -n \"sceneConfigurationScriptNode\";\n"
        "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min 12 -max 24\";\n"
        "\tsetAttr \".st\" 6;\n");
    EXPECT_EQ(MTime::uiUnit(), MTime::kFilm);
    EXPECT_TRUE(MTime::setUIUnit(MTime::kPALFrame));
    EXPECT_EQ(MTime::uiUnit(), MTime::kPALFrame);
    EXPECT_EQ(MAnimControl::maxTime().unit(), MTime::kPALFrame);
    EXPECT_EQ(MAnimControl::maxTime().value(), 25); // one second still
    EXPECT_EQ(MAnimControl::minTime().value(), 12.5);
    EXPECT_TRUE(MTime::setUIUnit(MTime::k23_976FPS));
    EXPECT_EQ(MTime(24000, MTime::uiUnit()).as(MTime::kSeconds), 1001);
    EXPECT_FALSE(MTime::setUIUnit(MTime::kInvalid));
    EXPECT_FALSE(MTime::setUIUnit(MTime::kLast));
    EXPECT_EQ(MTime::uiUnit(), MTime::k23_976FPS);
}

TEST(MAnimControl, NeverGivesARangeThatEndsBeforeItBegins)
{
    const OpenedScene scene(
        "createNode script -n \"sceneConfigurationScriptNode\";\n"
        "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min 50 -max 20\";\n"
        "\tsetAttr \".st\" 6;\n"
        "createNode script -n \"other\";\n"
        "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min 1\";\n");
    EXPECT_EQ(MAnimControl::minTime().value(), 50);
    EXPECT_EQ(MAnimControl::maxTime().value(), 50);
}

TEST(MAnimControl, GivesOneToOneHundredAndTwentyWithoutARange)
{
    const OpenedScene scene("createNode transform -n \"t\";\n");
    EXPECT_EQ(MAnimControl::minTime().value(), 1);
    EXPECT_EQ(MAnimControl::maxTime().value(), 120);
    EXPECT_EQ(MAnimControl::minTime().unit(), MTime::kFilm);
}

constexpr const char* kAnimated = "createNode transform -n \"parent\";\n"
                                  "createNode transform -n \"child\" -p \"parent\";\n"
                                  "createNode transform -n \"still\";\n"
                                  "createNode animCurveTL -n \"curve\";\n"
                                  "\tsetAttr -s 2 \".ktv[0:1]\"  1 0 24 10;\n"
                                  "connectAttr \"curve.o\" \"parent.tx\";\n";

TEST(MAnimUtil, CountsCurvesOfTheNodeItself)
{
    const OpenedScene scene(kAnimated);
    MStatus status(MStatus::kFailure);
    EXPECT_TRUE(MAnimUtil::isAnimated(pathNamed("|parent"), false, &status));
    EXPECT_TRUE(status);
    EXPECT_FALSE(MAnimUtil::isAnimated(pathNamed("|parent|child")));
    EXPECT_FALSE(MAnimUtil::isAnimated(pathNamed("|still"), true));
    EXPECT_TRUE(MAnimUtil::isAnimated(nodeNamed("parent")));
    EXPECT_FALSE(MAnimUtil::isAnimated(nodeNamed("still"), true));
    EXPECT_FALSE(MAnimUtil::isAnimated(nodeNamed("world"), true));
}

TEST(MAnimUtil, CountsThoseOfParentsWhenAsked)
{
    const OpenedScene scene(kAnimated);
    EXPECT_TRUE(MAnimUtil::isAnimated(pathNamed("|parent|child"), true));
    EXPECT_TRUE(MAnimUtil::isAnimated(nodeNamed("child"), true));
    EXPECT_FALSE(MAnimUtil::isAnimated(nodeNamed("child"), false));
}

TEST(MAnimUtil, AsksTheParentsOfThePathOnly)
{
    const OpenedScene scene(std::string(kAnimated) +
                            "parent -s -nc -r -add \"|parent|child\" \"still\";\n");
    EXPECT_FALSE(MAnimUtil::isAnimated(pathNamed("|still|child"), true));
    EXPECT_TRUE(MAnimUtil::isAnimated(pathNamed("|parent|child"), true));
    EXPECT_TRUE(MAnimUtil::isAnimated(nodeNamed("child"), true)) << "all parents of all instances";
}

} // namespace
