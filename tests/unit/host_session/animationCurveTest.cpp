// Animated attributes of all kinds in whole scenes. Expectations are worked out by hand: straight
// curves at fractions of their spans, cubic ones by their polynomials.
#include "host/geometry/curve/CurveData.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/normals.h"
#include "host/math/units.h"
#include "tests/support/OpenScene.h"

#include <cmath>
#include <numbers>

namespace {

using host::session::Plug;

class AnimationCurves : public test::OpenScene {
protected:
    /// Sets the time to a frame of film.
    void goTo(double frame) { session.setCurrentTime(std::llround(frame * 5880000)); }
    double at(double frame, std::string_view nodeName, std::string_view attribute)
    {
        goTo(frame);
        return number(nodeName, attribute);
    }
    /// A curve with straight lines between its keys.
    static std::string straight(const std::string& type, const std::string& name,
                                const std::string& keys)
    {
        return "createNode " + type + " -n \"" + name +
               "\"; setAttr \".tan\" 2; setAttr \".wgt\" no; setAttr -s 2 \".ktv[0:1]\" " + keys +
               ";\n";
    }
    static std::string connect(const std::string& from, const std::string& to)
    {
        return "connectAttr \"" + from + "\" \"" + to + "\";\n";
    }
};

TEST_F(AnimationCurves, RunInTheSceneTime)
{
    open("createNode transform -n \"a\";" + straight("animCurveTL", "c", "1 0 11 20") +
         connect("c.o", "a.tx"));
    EXPECT_EQ(at(1, "a", "tx"), 0);
    EXPECT_EQ(at(6, "a", "tx"), 10); // half of the way
    EXPECT_EQ(at(8.5, "a", "tx"), 15);
    EXPECT_EQ(at(-100, "a", "tx"), 0);
    EXPECT_EQ(at(100, "a", "tx"), 20);
    EXPECT_EQ(session.localMatrix(node("a"))->m[3][0], 20);
}

TEST_F(AnimationCurves, TakeTimesAndValuesInTheUnitsOfTheFile)
{
    // Frames of 1/30 s, metres, and minutes of angle: 5400 are a right angle.
    open("currentUnit -l meter -a minute -t ntsc; createNode transform -n \"a\";" +
         straight("animCurveTL", "length", "0 1 30 2") +
         straight("animCurveTA", "angle", "0 0 30 5400") + connect("length.o", "a.tx") +
         connect("angle.o", "a.rx"));
    session.setCurrentTime(host::kTicksPerSecond / 2); // half a second: frame 15 of 30
    EXPECT_NEAR(number("a", "tx"), 150, 1e-12);
    EXPECT_NEAR(number("a", "rx"), std::numbers::pi / 4, 1e-15);
}

TEST_F(AnimationCurves, KeepTangentsInSecondsAndInternalUnits)
{
    // One metre in one second; leaving the first key level and reaching the last one with 3 m/s:
    // in centimetres 100 (3 s^2 - 2 s^3) + 300 (s^3 - s^2), which is 12.5 at the middle.
    open("currentUnit -l meter -a degree -t film; createNode animCurveTL -n \"c\";"
         "setAttr \".tan\" 1; setAttr \".wgt\" no; setAttr -s 2 \".ktv[0:1]\" 0 0 24 1;"
         "setAttr -s 2 \".kix[0:1]\" 1 1; setAttr -s 2 \".kiy[0:1]\" 0 300;"
         "setAttr -s 2 \".kox[0:1]\" 1 1; setAttr -s 2 \".koy[0:1]\" 0 0;");
    EXPECT_NEAR(at(12, "c", "o"), 12.5, 1e-12);
    EXPECT_NEAR(at(24, "c", "o"), 100, 1e-12);
}

TEST_F(AnimationCurves, AreWeightedUnlessTheFileSaysOtherwise)
{
    // Handles of no length on both sides: time and value run alike, so the curve is straight. The
    // same unweighted has vertical tangents, which count as level: 3 s^2 - 2 s^3.
    const std::string keys = "setAttr \".tan\" 1; setAttr -s 2 \".ktv[0:1]\" 0 0 24 32;";
    open("createNode animCurveTU -n \"w\";" + keys + "createNode animCurveTU -n \"u\";" + keys +
         "setAttr \".wgt\" no;");
    EXPECT_NEAR(at(6, "w", "o"), 8, 1e-12);
    EXPECT_NEAR(at(6, "u", "o"), 5, 1e-12); // 32 * (3/16 - 2/64)
}

TEST_F(AnimationCurves, TakeTheTimeThatIsConnected)
{
    // The warp runs at half speed from frame 0 to 10.
    open(straight("animCurveTT", "warp", "0 0 20 10") + straight("animCurveTL", "c", "0 0 10 100") +
         connect("warp.o", "c.i") + straight("animCurveTL", "d", "0 0 10 100") +
         connect(":time1.o", "d.i"));
    EXPECT_NEAR(at(5, "c", "o"), 25, 1e-9);
    EXPECT_NEAR(at(5, "d", "o"), 50, 1e-9);
    EXPECT_NEAR(at(10, "c", "o"), 50, 1e-9);
    EXPECT_EQ(at(10, "time1", "unwarpedTime"), 58800000);
}

TEST_F(AnimationCurves, AreDrivenByNumbersThroughConversions)
{
    // 45 degrees of rotation drive 3 cm of translation: the conversion turns radians to degrees.
    open("createNode transform -n \"driver\"; setAttr \".rx\" 45;"
         "createNode transform -n \"driven\";"
         "createNode unitConversion -n \"toDegrees\"; setAttr \".cf\" 57.295779513082323;" +
         straight("animCurveUL", "key", "0 0 90 6") + connect("driver.rx", "toDegrees.i") +
         connect("toDegrees.o", "key.i") + connect("key.o", "driven.ty"));
    EXPECT_NEAR(number("driven", "ty"), 3, 1e-12);
    EXPECT_TRUE(session.isAnimated(node("driven")));
    EXPECT_FALSE(session.isAnimated(node("driver")));
}

TEST_F(AnimationCurves, OfSeveralDriversAreSummed)
{
    open(
        "createNode transform -n \"a\"; createNode blendWeighted -n \"b\"; setAttr \".w[2]\" 0.5;" +
        straight("animCurveTL", "c", "0 0 10 10") + straight("animCurveTL", "d", "0 0 10 100") +
        connect("c.o", "b.i[0]") + connect("d.o", "b.i[2]") + connect("b.o", "a.tx"));
    EXPECT_NEAR(at(5, "a", "tx"), 5 + 0.5 * 50, 1e-9);
}

TEST_F(AnimationCurves, SwitchVisibilityAtTheirSteps)
{
    open("createNode transform -n \"a\"; createNode mesh -n \"s\" -p \"a\";"
         "createNode animCurveTU -n \"v\"; setAttr \".tan\" 9; setAttr \".wgt\" no;"
         "setAttr -s 2 \".ktv[0:1]\" 1 1 5 0; setAttr -s 2 \".kot[0:1]\" 5 5;" +
         connect("v.o", "a.v"));
    goTo(4.999);
    EXPECT_TRUE(session.isVisible(path("s")));
    goTo(5);
    EXPECT_FALSE(session.isVisible(path("s")));
    goTo(1);
    EXPECT_TRUE(session.isVisible(path("s")));
}

TEST_F(AnimationCurves, SwitchDisplayLayers)
{
    open("createNode transform -n \"a\"; createNode displayLayer -n \"layer\";"
         "createNode animCurveTU -n \"v\"; setAttr \".tan\" 5; setAttr \".wgt\" no;"
         "setAttr -s 2 \".ktv[0:1]\" 1 0 3 1;" +
         connect("v.o", "layer.v") + connect("layer.di", "a.do"));
    goTo(2);
    EXPECT_FALSE(session.isVisible(path("a")));
    goTo(3);
    EXPECT_TRUE(session.isVisible(path("a")));
}

TEST_F(AnimationCurves, MoveCameraLensesAndColours)
{
    open("createNode camera -n \"cam\"; createNode lambert -n \"l\";" +
         straight("animCurveTU", "f", "1 35 11 85") + straight("animCurveTU", "r", "1 0 11 1") +
         straight("animCurveTL", "far", "1 100 11 200") + connect("f.o", "cam.fl") +
         connect("r.o", "l.cr") + connect("far.o", "cam.fcp"));
    EXPECT_NEAR(at(6, "cam", "fl"), 60, 1e-9);
    EXPECT_NEAR(number("cam", "fcp"), 150, 1e-9);
    EXPECT_EQ(number("l", "colorR"), 0.5);
    EXPECT_EQ(number("l", "colorG"), 0.5); // its default
    EXPECT_NEAR(at(1, "cam", "fl"), 35, 1e-9);
}

TEST_F(AnimationCurves, MovePointsOfMeshes)
{
    open("createNode transform -n \"a\"; createNode mesh -n \"s\" -p \"a\";" + test::squareMesh() +
         "setAttr -s 2 \".pt[0:1]\" 0 0 0.5  0 0 0.25;" +
         straight("animCurveTL", "y", "1 0 11 10") + straight("animCurveTL", "z", "1 0 11 -4") +
         connect("y.o", "s.pt[1].py") + connect("z.o", "s.pt[8].pz"));
    const auto point = [&](std::size_t index) {
        return host::toDouble(host::geometry::pointsOf(*session.mesh(node("s")))[index]);
    };
    goTo(6);
    EXPECT_EQ(point(0), (host::Vec3d{0, 0, 0.5}));
    EXPECT_EQ(point(1), (host::Vec3d{1, 5, 0.25})); // stored in z, animated in y
    EXPECT_EQ(point(8), (host::Vec3d{2, 0, 0}));    // 2 - 2 half of the way
    goTo(11);
    EXPECT_EQ(point(1), (host::Vec3d{1, 10, 0.25}));
    EXPECT_EQ(point(8), (host::Vec3d{2, 0, -2}));
    EXPECT_EQ(point(0), (host::Vec3d{0, 0, 0.5}));
}

TEST_F(AnimationCurves, MoveControlPoints)
{
    open("createNode transform -n \"a\"; createNode nurbsCurve -n \"s\" -p \"a\";"
         "setAttr \".cc\" -type \"nurbsCurve\" 1 1 0 no 3 2 0 1 2 1 2 3 4 5 6;"
         "setAttr \".tw\" yes; setAttr \".rtw\" yes;" +
         straight("animCurveTL", "y", "1 0 11 10") + connect("y.o", "s.cp[1].yv"));
    goTo(6);
    const auto curve = session.curve(node("s"));
    ASSERT_NE(curve, nullptr);
    const std::size_t second = curve->stride();
    EXPECT_EQ(curve->poles[second], 4);
    EXPECT_EQ(curve->poles[second + 1], 5 + 5); // half of the way added to what is stored
    EXPECT_EQ(curve->poles[1], 2);
}

TEST_F(AnimationCurves, AreSoughtThroughRingsOnce)
{
    open("createNode transform -n \"a\"; createNode transform -n \"b\";"
         "createNode character -n \"c\"; createNode character -n \"d\";"
         "createNode unitConversion -n \"u\"; createNode unitConversion -n \"v\";" +
         connect("c.lv[0]", "d.lv[0]") + connect("d.lv[0]", "c.lv[0]") +
         connect("c.lv[0]", "a.tx") + connect("u.o", "v.i") + connect("v.o", "u.i") +
         connect("u.o", "b.tx"));
    EXPECT_FALSE(session.isAnimated(node("a")));
    EXPECT_FALSE(session.isAnimated(node("b")));
    EXPECT_TRUE(std::isfinite(number("a", "tx")));
    EXPECT_TRUE(std::isfinite(number("b", "tx")));
}

TEST_F(AnimationCurves, AreNotFollowedAlongReferences)
{
    open("createNode transform -n \"a\"; addAttr -ln \"ref\" -at \"message\";"
         "createNode transform -n \"b\";" +
         straight("animCurveTL", "x", "0 0 10 10") + connect("x.msg", "a.ref") +
         connect("x.o", "b.tx"));
    EXPECT_FALSE(session.isAnimated(node("a")));
    EXPECT_TRUE(session.isAnimated(node("b")));
}

TEST_F(AnimationCurves, FollowSettingsThatAreConnected)
{
    // Constant after the last key until frame 5, a cycle of two frames from then on.
    open("createNode transform -n \"a\";"
         "createNode animCurveTU -n \"kind\"; setAttr \".wgt\" no;"
         "setAttr -s 2 \".ktv[0:1]\" 1 0 5 3; setAttr -s 2 \".kot[0:1]\" 5 5;" +
         straight("animCurveTL", "x", "1 0 3 2") + connect("kind.o", "x.pst") +
         connect("x.o", "a.tx"));
    EXPECT_EQ(at(4, "a", "tx"), 2);
    EXPECT_EQ(at(6, "a", "tx"), 1);
    EXPECT_EQ(at(4, "a", "tx"), 2);
}

TEST_F(AnimationCurves, InARingAreAskedAgainAtEachTime)
{
    // x = c + y and y = x: whichever is asked first, a ring gives a node the same at one time.
    const std::string scene =
        "createNode transform -n \"a\"; createNode transform -n \"b\";"
        "createNode addDoubleLinear -n \"x\"; createNode addDoubleLinear -n \"y\";" +
        straight("animCurveTL", "c", "0 0 10 10") + connect("c.o", "x.i1") +
        connect("y.o", "x.i2") + connect("x.o", "y.i1") + connect("x.o", "a.tx") +
        connect("y.o", "b.tx");
    open(scene);
    goTo(2);
    number("a", "tx");
    const double afterOther = at(4, "b", "tx");
    open(scene);
    EXPECT_EQ(at(4, "b", "tx"), afterOther);
}

TEST_F(AnimationCurves, PassThroughCharactersAndMutes)
{
    open("createNode transform -n \"a\"; createNode character -n \"c\"; setAttr \".lv[2]\" 7;"
         "createNode mute -n \"m\"; createNode mute -n \"silent\"; setAttr \".m\" yes;"
         "setAttr \".h\" -3;" +
         straight("animCurveTL", "x", "0 0 10 10") + connect("x.o", "c.lv[1]") +
         connect("c.lv[1]", "a.tx") + connect("c.lv[2]", "a.ty") + connect("x.o", "m.i") +
         connect("m.o", "a.sx") + connect("x.o", "silent.i") + connect("silent.o", "a.sy"));
    EXPECT_NEAR(at(4, "a", "tx"), 4, 1e-12);
    EXPECT_EQ(number("a", "ty"), 7);
    EXPECT_NEAR(number("a", "sx"), 4, 1e-12);
    EXPECT_EQ(number("a", "sy"), -3);
}

TEST_F(AnimationCurves, AddUpInLayers)
{
    open(
        "createNode transform -n \"a\";"
        "createNode animLayer -n \"add\"; setAttr \".wgt\" 0.5;"
        "createNode animLayer -n \"over\"; setAttr \".ovrd\" yes; setAttr \".wgt\" 0.25;"
        "createNode animBlendNodeAdditiveDL -n \"one\";"
        "createNode animBlendNodeAdditiveDL -n \"two\";" +
        straight("animCurveTL", "base", "0 0 10 10") + straight("animCurveTL", "more", "0 8 10 8") +
        straight("animCurveTL", "high", "0 40 10 40") + connect("base.o", "one.ia") +
        connect("more.o", "one.ib") + connect("add.bgwt", "one.wa") +
        connect("add.fgwt", "one.wb") + connect("one.o", "two.ia") + connect("high.o", "two.ib") +
        connect("over.bgwt", "two.wa") + connect("over.fgwt", "two.wb") + connect("two.o", "a.tx"));
    // 5 + 0.5 * 8 = 9 below; three quarters of it pass through, a quarter is 40.
    EXPECT_NEAR(at(5, "a", "tx"), 0.75 * 9 + 0.25 * 40, 1e-9);
    EXPECT_TRUE(session.isAnimated(node("a")));
}

TEST_F(AnimationCurves, BlendWithConstraintsByWeight)
{
    open("createNode transform -n \"a\"; createNode pairBlend -n \"p\"; setAttr \".w\" 0.25;"
         "setAttr \".itx2\" 100; setAttr \".tym\" 2; setAttr \".ity2\" 9;" +
         straight("animCurveTL", "x", "0 0 10 10") + connect("x.o", "p.itx1") +
         connect("x.o", "p.ity1") + connect("p.otx", "a.tx") + connect("p.oty", "a.ty"));
    EXPECT_NEAR(at(4, "a", "tx"), 0.75 * 4 + 0.25 * 100, 1e-9);
    EXPECT_EQ(number("a", "ty"), 9);
}

TEST_F(AnimationCurves, OfRotationsTakeTheShortestArcWhenAsked)
{
    // From 0 to 90 degrees about x and, in the other object, from 350 to 10 the short way. An even
    // turn about one axis is at a quarter of the angle after a quarter of the time.
    std::string scene = "createNode transform -n \"a\"; createNode transform -n \"b\";";
    const auto rotations = [&](const std::string& object, const std::string& x) {
        for (const std::string axis : {"x", "y", "z"}) {
            const std::string curve = object + "_" + axis;
            scene += "createNode animCurveTA -n \"" + curve +
                     "\"; setAttr \".tan\" 9; setAttr \".wgt\" no; setAttr \".roti\" 3;"
                     "setAttr -s 2 \".ktv[0:1]\" " +
                     (axis == "x" ? x : "0 0 8 0") + ";" +
                     connect(curve + ".o", object + ".r" + axis);
        }
    };
    rotations("a", "0 0 8 90");
    rotations("b", "0 350 8 10");
    open(scene);
    const double degree = std::numbers::pi / 180;
    goTo(2);
    EXPECT_NEAR(number("a", "rx"), 22.5 * degree, 1e-12);
    EXPECT_NEAR(number("a", "ry"), 0, 1e-12);
    // 355 degrees or, nearer to the straight line from 350 to 10 (265), 355 itself.
    EXPECT_NEAR(std::remainder(number("b", "rx"), 2 * std::numbers::pi), -5 * degree, 1e-11);
    goTo(8);
    EXPECT_NEAR(number("b", "rx"), 10 * degree, 1e-12); // the key's own
}

TEST_F(AnimationCurves, OfRotationsStayIndependentWhereOneTurnsTwoObjects)
{
    std::string scene = "createNode transform -n \"a\"; createNode transform -n \"b\";";
    const auto curve = [&](const std::string& name, const std::string& keys) {
        scene += "createNode animCurveTA -n \"" + name +
                 "\"; setAttr \".tan\" 2; setAttr \".wgt\" no; setAttr \".roti\" 3;"
                 "setAttr -s 2 \".ktv[0:1]\" " +
                 keys + ";";
    };
    curve("x", "0 0 8 90");
    for (const std::string object : {"a", "b"}) {
        scene += connect("x.o", object + ".rx");
        for (const std::string axis : {"y", "z"}) {
            curve(object + axis, object == "a" ? "0 0 8 0" : "0 0 8 90");
            scene += connect(object + axis + ".o", object + ".r" + axis);
        }
    }
    open(scene);
    EXPECT_NEAR(at(2, "a", "rx"), 22.5 * std::numbers::pi / 180, 1e-12);
    EXPECT_EQ(number("b", "rx"), number("a", "rx"));
}

TEST_F(AnimationCurves, MayDriveOneAnother)
{
    // Two curves in a ring: no value is right, but there is one.
    open(straight("animCurveUU", "p", "0 1 10 2") + straight("animCurveUU", "q", "0 1 10 2") +
         connect("p.o", "q.i") + connect("q.o", "p.i"));
    EXPECT_TRUE(std::isfinite(number("p", "o")));
}

TEST_F(AnimationCurves, WithOddKeysGiveSomething)
{
    open("createNode animCurveTL -n \"none\";"
         "createNode animCurveTL -n \"one\"; setAttr \".ktv[7]\" 3 5; setAttr \".pst\" 4;"
         "createNode animCurveTL -n \"same\"; setAttr -s 3 \".ktv[0:2]\" 4 1 4 2 4 3;"
         "createNode animCurveTL -n \"back\"; setAttr \".tan\" 2; setAttr \".wgt\" no;"
         "setAttr -s 3 \".ktv[0:2]\" 10 100 0 0 5 20;");
    EXPECT_EQ(at(3, "none", "o"), 0);
    EXPECT_EQ(at(50, "one", "o"), 5);
    EXPECT_EQ(at(4, "same", "o"), 3); // the last given
    EXPECT_NEAR(at(2.5, "back", "o"), 10, 1e-12);
    EXPECT_NEAR(at(7.5, "back", "o"), 60, 1e-12);
}

} // namespace
