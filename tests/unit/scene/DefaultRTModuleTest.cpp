#include "scene/DefaultRTModule.h"

#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

using test::Layout;
using test::SceneText;
using test::written;

TEST(DefaultRTModule, WritesElevenOptionsByDefault)
{
    DefaultRTModule module;
    EXPECT_EQ(module.getName(), "orvrtopt.so");
    EXPECT_EQ(written(module), "load \"orvrtopt.so\" {\n"
                               "\"import_mode\" on,\n"
                               "\"import_merge_groups\" on,\n"
                               "\"import_merge_objects\" on,\n"
                               "\"import_up_vector\" 0,\n"
                               "\"meter_scale\" 1,\n"
                               "\"import_keep_original\" off,\n"
                               "\"import_center_geometry\" on,\n"
                               "\"import_snap_to_ground\" off,\n"
                               "\"import_adjust_camera\" on,\n"
                               "\"import_adjust_environment\" on,\n"
                               "\"ext\" on,\n"
                               "}\n");
}

TEST(DefaultRTModule, WritesWhatWasSet)
{
    DefaultRTModule module;
    module.setImportMode(false);
    module.setMergeGroups(false);
    module.setMergeObjects(false);
    module.setUpVector(2);
    module.setMeterScale(39.37008F);
    module.setKeepOriginal(true);
    module.setCenterGeometry(false);
    module.setSnapToGround(true);
    module.setAdjustCamera(false);
    module.setAdjustEnvironment(false);
    module.setExt(false);
    EXPECT_EQ(written(module, Layout::Indented), "load \"orvrtopt.so\" {\n"
                                                 " \"import_mode\" off,\n"
                                                 " \"import_merge_groups\" off,\n"
                                                 " \"import_merge_objects\" off,\n"
                                                 " \"import_up_vector\" 2,\n"
                                                 " \"meter_scale\" 39.3701,\n"
                                                 " \"import_keep_original\" on,\n"
                                                 " \"import_center_geometry\" off,\n"
                                                 " \"import_snap_to_ground\" on,\n"
                                                 " \"import_adjust_camera\" off,\n"
                                                 " \"import_adjust_environment\" off,\n"
                                                 " \"ext\" off,\n"
                                                 "}\n");
}

TEST(DefaultRTModule, WritesTheCameraBetweenTheEnvironmentAndExt)
{
    DefaultRTModule module;
    module.setUseCamera("persp");
    EXPECT_NE(written(module).find("\"import_adjust_environment\" on,\n"
                                   "\"import_use_camera\" \"persp\",\n"
                                   "\"ext\" on,\n"
                                   "}\n"),
              std::string::npos);
    module.setUseCamera("");
    EXPECT_EQ(written(module).find("import_use_camera"), std::string::npos);
}

TEST(DefaultRTModule, WritesAnUnknownUpAxisAsMinusOne)
{
    DefaultRTModule module;
    module.setUpVector(static_cast<std::uint32_t>(-1));
    EXPECT_NE(written(module).find("\"import_up_vector\" -1,\n"), std::string::npos);
}

TEST(DefaultRTModule, HasNoDefinitionForm)
{
    SceneText scene;
    DefaultRTModule module;
    module.define(scene.oo());
    EXPECT_FALSE(module.isDefined());
    EXPECT_EQ(scene.text(), "");
}

} // namespace
} // namespace orv
