#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MFnCamera.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

constexpr double kDegrees = 180 / 3.14159265358979323846;

std::string shortText(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

TEST(MFnCamera, SeesTheDefaultFieldOfView)
{
    const OpenedScene scene;
    MStatus status(MStatus::kFailure);
    const MFnCamera camera(pathNamed("|persp|perspShape"), &status);
    ASSERT_TRUE(status);
    EXPECT_EQ(shortText(camera.horizontalFieldOfView(&status) * kDegrees), "54.4322");
    EXPECT_TRUE(status);
}

TEST(MFnCamera, SeesTheFieldOfViewOfFullFrameFilm)
{
    // 36 mm of film behind 35 mm: 2 atan(36 / 70).
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode camera -n \"c\" -p \"t\";\n"
                            "\tsetAttr \".hfa\" 1.41732283464567;\n\tsetAttr \".fl\" 35;\n");
    const double degrees = MFnCamera(pathNamed("|t|c")).horizontalFieldOfView() * kDegrees;
    EXPECT_NEAR(degrees, 54.432223, 1e-6);
    EXPECT_EQ(shortText(degrees), "54.4322");
}

TEST(MFnCamera, HasDefaultClippingPlanes)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode camera -n \"c\" -p \"t\";\n");
    const MFnCamera camera(pathNamed("|t|c"));
    EXPECT_DOUBLE_EQ(camera.nearClippingPlane(), 0.1);
    EXPECT_DOUBLE_EQ(camera.farClippingPlane(), 10000);
}

TEST(MFnCamera, GivesClippingPlanesInCentimetres)
{
    const OpenedScene scene("currentUnit -l meter -a degree -t film;\n"
                            "createNode transform -n \"t\";\n"
                            "createNode camera -n \"c\" -p \"t\";\n"
                            "\tsetAttr \".ncp\" 2;\n\tsetAttr \".fcp\" 30;\n");
    const MFnCamera camera(pathNamed("|t|c"));
    EXPECT_DOUBLE_EQ(camera.nearClippingPlane(), 200);
    EXPECT_DOUBLE_EQ(camera.farClippingPlane(), 3000);
}

TEST(MFnCamera, LeavesScaleSqueezeAndFilmFitOutOfTheFieldOfView)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "createNode camera -n \"c\" -p \"t\";\n"
                            "\tsetAttr \".cap\" -type \"double2\" 2 1;\n"
                            "\tsetAttr \".fl\" 25.4;\n"
                            "\tsetAttr \".lsr\" 2;\n\tsetAttr \".cs\" 3;\n\tsetAttr \".ff\" 2;\n"
                            "\tsetAttr \".o\" yes;\n");
    // Half the aperture of 2 inches is as long as the focal length of one inch: 45 degrees.
    EXPECT_NEAR(MFnCamera(pathNamed("|t|c")).horizontalFieldOfView() * kDegrees, 90, 1e-12);
}

TEST(MFnCamera, LooksAlongItsTransformInWorldSpace)
{
    const OpenedScene scene("createNode transform -n \"t\";\n"
                            "\tsetAttr \".t\" -type \"double3\" 1 2 3;\n"
                            "\tsetAttr \".r\" -type \"double3\" 0 90 0;\n"
                            "\tsetAttr \".s\" -type \"double3\" 4 5 6;\n"
                            "createNode camera -n \"c\" -p \"t\";\n");
    const MFnCamera camera(pathNamed("|t|c"));
    EXPECT_EQ(camera.eyePoint(MSpace::kWorld), MPoint(1, 2, 3));
    // A quarter turn about y takes -z to -x; the scale is normalised away.
    EXPECT_TRUE(camera.viewDirection(MSpace::kWorld).isEquivalent(MVector(-1, 0, 0)));
    EXPECT_TRUE(camera.upDirection(MSpace::kWorld).isEquivalent(MVector(0, 1, 0)));
    EXPECT_NEAR(camera.viewDirection(MSpace::kWorld).length(), 1, 1e-15);
}

TEST(MFnCamera, LooksAlongMinusZInItsOwnSpace)
{
    const OpenedScene scene;
    const MFnCamera camera(pathNamed("|persp|perspShape"));
    EXPECT_EQ(camera.eyePoint(), MPoint::origin);
    EXPECT_EQ(camera.viewDirection(), MVector::zNegAxis);
    EXPECT_EQ(camera.upDirection(), MVector::yAxis);
    MStatus status;
    camera.eyePoint(MSpace::kPostTransform, &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}

TEST(MFnCamera, NeedsAPathForWorldSpaceAndACameraToAttachTo)
{
    const OpenedScene scene;
    MStatus status;
    const MFnCamera camera(nodeNamed("perspShape"), &status);
    EXPECT_TRUE(status);
    camera.eyePoint(MSpace::kWorld, &status);
    EXPECT_FALSE(status);
    MFnCamera(pathNamed("|persp"), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}

} // namespace
