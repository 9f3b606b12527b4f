// Curves and surfaces in whole scenes. The last test reads the scenes in the folder that ORV_CORPUS
// names and is skipped without it.
#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/math/units.h"
#include "tests/support/OpenScene.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace {

using host::Vec3d;
using host::geometry::CurveEvaluator;
using host::geometry::SurfaceEvaluator;

class NurbsScene : public test::OpenScene {
protected:
    SurfaceEvaluator surface(std::string_view name)
    {
        const auto data = session.surface(node(name));
        return SurfaceEvaluator(data != nullptr ? *data : host::geometry::SurfaceData());
    }
    CurveEvaluator curve(std::string_view name)
    {
        const auto data = session.curve(node(name));
        return CurveEvaluator(data != nullptr ? *data : host::geometry::CurveData());
    }
    static void expectNear(const Vec3d& found, const Vec3d& expected, double tolerance = 1e-12)
    {
        EXPECT_NEAR(found.x, expected.x, tolerance);
        EXPECT_NEAR(found.y, expected.y, tolerance);
        EXPECT_NEAR(found.z, expected.z, tolerance);
    }
};

TEST_F(NurbsScene, MakesASphereOfItsHistoryAndTweaksIt)
{
    open(R"(
createNode transform -n "ball";
createNode nurbsSurface -n "ballShape" -p "ball";
    setAttr ".tw" yes;
    setAttr ".cp[12]" -type "double3" 0 5 0 ;
createNode makeNurbSphere -n "maker";
    setAttr ".ax" -type "double3" 0 1 0 ;
    setAttr ".r" 2;
connectAttr "maker.os" "ballShape.cr";
)");
    const SurfaceEvaluator ball = surface("ballShape");
    ASSERT_TRUE(ball.isValid());
    EXPECT_EQ(ball.endU(), 4); // four spans although the scene does not say so
    EXPECT_EQ(ball.endV(), 8);
    expectNear(ball.point(2, 4), {-2, 0, 0});
    // Control point (1, 1) weighs 1/4 at u = 1 and 4/6 at v = 0: 5 / 6 above the ring's height.
    const double ring = 2 * std::sqrt(0.5);
    expectNear(ball.point(1, 0), {ring, -ring + 5.0 / 6, 0});
    EXPECT_EQ(number("ballShape", "maxValueU"), 4);
}

TEST_F(NurbsScene, ReadsATorussMinorSweepAsAnAngle)
{
    open(R"(
createNode transform -n "ring";
createNode nurbsSurface -n "ringShape" -p "ring";
createNode makeNurbTorus -n "maker";
    setAttr ".ax" -type "double3" 0 1 0 ;
    setAttr ".r" 4;
    setAttr ".hr" 0.5;
    setAttr ".s" 3;
    setAttr ".msw" 120;
connectAttr "maker.os" "ringShape.cr";
)");
    const SurfaceEvaluator ring = surface("ringShape");
    ASSERT_TRUE(ring.isValid());
    // A tube of radius 2 about a circle of radius 4, begun at its bottom: after a third of a turn
    // it is 30 degrees above the outermost place.
    expectNear(ring.point(ring.startU(), 0), {4, -2, 0}, 1e-9);
    expectNear(ring.point(ring.endU(), 0), {4 + std::sqrt(3.0), 1, 0}, 1e-9);
    EXPECT_NEAR(number("maker", "minorSweep"), 2.0943951023931953, 1e-12);
}

TEST_F(NurbsScene, LimitsAChainOfDoublings)
{
    std::string scene = R"(
createNode transform -n "ball";
createNode nurbsSurface -n "ballShape" -p "ball";
createNode makeNurbSphere -n "n0";
)";
    for (int i = 1; i <= 30; ++i) {
        const std::string name = "n" + std::to_string(i);
        const std::string before = "n" + std::to_string(i - 1) + ".os\" \"" + name;
        scene += "createNode attachSurface -n \"" + name + "\";\n";
        scene += "connectAttr \"" + before + ".is1\";\nconnectAttr \"" + before + ".is2\";\n";
    }
    open(scene + "connectAttr \"n30.os\" \"ballShape.cr\";\n");
    const auto data = session.surface(node("ballShape"));
    ASSERT_NE(data, nullptr);
    // 77 points doubled until twice as many would be more than 2^20.
    EXPECT_GT(data->poles.size() / data->stride(), std::size_t{1} << 18);
    EXPECT_LE(data->poles.size() / data->stride(), std::size_t{1} << 20);
}

TEST_F(NurbsScene, HandsCurvesOnInTheWorldsCoordinates)
{
    open(R"(
createNode transform -n "holder";
    setAttr ".t" -type "double3" 0 10 0 ;
    setAttr ".s" -type "double3" 3 3 3 ;
createNode nurbsCurve -n "ringShape" -p "holder";
createNode nurbsCurve -n "copyShape" -p "holder";
createNode makeNurbCircle -n "maker";
    setAttr ".nr" -type "double3" 0 1 0 ;
createNode curveInfo -n "inWorld";
createNode curveInfo -n "atHome";
createNode reverseCurve -n "back";
createNode pointOnCurveInfo -n "place";
    setAttr ".pr" 2;
createNode transform -n "follower";
connectAttr "maker.oc" "ringShape.cr";
connectAttr "ringShape.ws" "inWorld.ic";
connectAttr "ringShape.l" "atHome.ic";
connectAttr "ringShape.ws[0]" "place.ic";
connectAttr "ringShape.l" "back.ic";
connectAttr "back.oc" "copyShape.cr";
connectAttr "place.p" "follower.t";
)");
    EXPECT_NEAR(number("inWorld", "arcLength"), 3 * number("atHome", "arcLength"), 1e-9);
    // A circle of eight sections is as long as the true one to four digits.
    EXPECT_NEAR(number("atHome", "arcLength"), 6.2832, 2e-2);
    EXPECT_NEAR(number("follower", "translateX"), -3, 1e-12);
    EXPECT_NEAR(number("follower", "translateY"), 10, 1e-12);
    expectNear(curve("copyShape").point(0), curve("ringShape").point(8));
    expectNear(curve("copyShape").point(6), {-1, 0, 0});
}

TEST_F(NurbsScene, TakesConnectedControlPoints)
{
    open(R"(
createNode transform -n "handle";
    setAttr ".t" -type "double3" 7 8 9 ;
createNode nurbsCurve -n "lineShape";
    setAttr ".cc" -type "nurbsCurve" 1 1 0 no 3
        2 0 1
        2
        0 0 0
        1 1 1
        ;
connectAttr "handle.t" "lineShape.cp[1]";
)");
    expectNear(curve("lineShape").point(1), {7, 8, 9});
    expectNear(curve("lineShape").point(0), {0, 0, 0});
}

TEST_F(NurbsScene, BuildsChainsOfHistory)
{
    // A line swept round an axis, cut at a quarter and moved.
    open(R"(
createNode nurbsCurve -n "profileShape";
    setAttr ".cc" -type "nurbsCurve" 1 1 0 no 3
        2 0 1
        2
        2 0 0
        2 4 0
        ;
createNode revolve -n "turn";
    setAttr ".ax" -type "double3" 0 1 0 ;
createNode detachSurface -n "cut";
    setAttr ".d" 0;
    setAttr -s 2 ".p[0:1]" 0 2;
    setAttr -s 2 ".k[0:1]" yes yes;
createNode transformGeometry -n "move";
    setAttr ".txf" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 100 0 0 1 ;
createNode nurbsSurface -n "partShape";
createNode nurbsSurface -n "loftShape";
createNode loft -n "skin";
    setAttr ".u" yes;
createNode nurbsCurve -n "otherShape";
    setAttr ".cc" -type "nurbsCurve" 1 1 0 no 3
        2 0 1
        2
        4 0 0
        4 4 0
        ;
connectAttr "profileShape.ws" "turn.ic";
connectAttr "turn.os" "cut.is";
connectAttr "cut.os[0]" "move.ig";
connectAttr "move.og" "partShape.cr";
connectAttr "profileShape.ws" "skin.ic[0]";
connectAttr "otherShape.ws" "skin.ic[1]";
connectAttr "skin.os" "loftShape.cr";
)");
    const SurfaceEvaluator part = surface("partShape");
    ASSERT_TRUE(part.isValid());
    expectNear(part.point(1, part.startV()), {102, 4, 0});
    expectNear(part.point(0, part.endV()), {100, 0, 2});
    expectNear(surface("loftShape").point(0.5, 0.5), {3, 2, 0});
}

TEST_F(NurbsScene, FollowsAPathThroughTime)
{
    open(R"(
createNode nurbsCurve -n "roadShape";
    setAttr ".cc" -type "nurbsCurve" 1 2 0 no 3
        3 0 1 2
        3
        0 0 0
        3 0 0
        4 0 0
        ;
createNode motionPath -n "path";
    setAttr ".fm" yes;
    setAttr ".f" yes;
    setAttr ".fa" 0;
    setAttr ".ua" 1;
createNode animCurveTU -n "way";
    setAttr ".tan" 2;
    setAttr -s 2 ".ktv[0:1]"  0 0 24 1;
createNode transform -n "car";
connectAttr "roadShape.ws" "path.gp";
connectAttr "way.o" "path.u";
connectAttr "path.ac" "car.t";
connectAttr "path.r" "car.r";
)");
    session.setCurrentTime(host::kTicksPerSecond / 2); // half of the way of 24 frames of film
    EXPECT_NEAR(number("car", "translateX"), 2, 1e-9);
    EXPECT_NEAR(number("car", "rotateY"), 0, 1e-9);
}

struct Found {
    std::size_t files = 0;
    std::size_t shapes = 0;
    std::size_t withHistory = 0;
};

class NurbsCorpus : public NurbsScene {
protected:
    Found found;

    template<class Evaluator, class Data>
    void look(host::session::NodeId shape, const std::shared_ptr<const Data>& data,
              const std::string& file)
    {
        const host::session::Plug create = session.findPlug(shape, "create");
        const bool hasHistory = static_cast<bool>(session.graph().inputOf(create));
        ++found.shapes;
        found.withHistory += hasHistory ? 1 : 0;
        if (data == nullptr) {
            // A shape that stores nothing and has no history is empty.
            EXPECT_FALSE(hasHistory) << file << ' ' << session.graph().node(shape).name;
            return;
        }
        EXPECT_TRUE(Evaluator(*data).isValid()) << file << ' ' << session.graph().node(shape).name;
    }

    void lookInto(const std::filesystem::path& file)
    {
        if (!session.open(file.string())) {
            return;
        }
        ++found.files;
        for (host::session::NodeId shape = 0; shape < session.graph().nodeCount(); ++shape) {
            const auto type = session.graph().node(shape).type;
            if (type.isA("nurbsCurve")) {
                look<CurveEvaluator>(shape, session.curve(shape), file.string());
            } else if (type.isA("nurbsSurface")) {
                look<SurfaceEvaluator>(shape, session.surface(shape), file.string());
            }
        }
    }
};

TEST_F(NurbsCorpus, EvaluatesEveryShapeToAValidRecord)
{
    const char* corpus = std::getenv("ORV_CORPUS");
    if (corpus == nullptr || !std::filesystem::is_directory(corpus)) {
        GTEST_SKIP() << "ORV_CORPUS names no folder";
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() == ".ma") {
            lookInto(entry.path());
        }
    }
    std::cout << found.files << " scenes, " << found.shapes << " curves and surfaces, "
              << found.withHistory << " with history\n";
    EXPECT_GT(found.shapes, 0U);
}

} // namespace
