#include "scene/DefaultRTModule.h"

#include "sceneapi/orvSceneapi_oo.h"

namespace orv {

DefaultRTModule::DefaultRTModule() : LightModule("orvrtopt.so") {}

void DefaultRTModule::writeOptions(orvSceneapi_oo& oo)
{
    oo.boolParameter("import_mode", m_importMode);
    oo.boolParameter("import_merge_groups", m_mergeGroups);
    oo.boolParameter("import_merge_objects", m_mergeObjects);
    oo.intParameter("import_up_vector", static_cast<std::int32_t>(m_upVector));
    oo.floatParameter("meter_scale", m_meterScale);
    oo.boolParameter("import_keep_original", m_keepOriginal);
    oo.boolParameter("import_center_geometry", m_centerGeometry);
    oo.boolParameter("import_snap_to_ground", m_snapToGround);
    oo.boolParameter("import_adjust_camera", m_adjustCamera);
    oo.boolParameter("import_adjust_environment", m_adjustEnvironment);
    if (!m_useCamera.empty()) {
        oo.stringParameter("import_use_camera", m_useCamera);
    }
    oo.boolParameter("ext", m_ext);
}

} // namespace orv
