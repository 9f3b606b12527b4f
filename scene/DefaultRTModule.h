// The renderer's import options: how it places and merges the model that the scene file brings.
#pragma once

#include "scene/LightModule.h"

#include <cstdint>
#include <string>

namespace orv {

class DefaultRTModule final : public LightModule {
public:
    DefaultRTModule();

    void writeOptions(orvSceneapi_oo& oo) override;

    void setImportMode(bool on) { m_importMode = on; }
    void setMergeGroups(bool on) { m_mergeGroups = on; }
    void setMergeObjects(bool on) { m_mergeObjects = on; }
    /// The code of the axis that points upwards; an unknown one (-1) comes out of the file as -1.
    void setUpVector(std::uint32_t code) { m_upVector = code; }
    /// Units of the scene in a metre.
    void setMeterScale(float unitsPerMeter) { m_meterScale = unitsPerMeter; }
    void setKeepOriginal(bool on) { m_keepOriginal = on; }
    void setCenterGeometry(bool on) { m_centerGeometry = on; }
    void setSnapToGround(bool on) { m_snapToGround = on; }
    void setAdjustCamera(bool on) { m_adjustCamera = on; }
    void setAdjustEnvironment(bool on) { m_adjustEnvironment = on; }
    /// Name of the camera to take over; empty (the default) writes no such option.
    void setUseCamera(const std::string& name) { m_useCamera = name; }
    void setExt(bool on) { m_ext = on; }

private:
    bool m_importMode = true;
    bool m_mergeGroups = true;
    bool m_mergeObjects = true;
    std::uint32_t m_upVector = 0;
    float m_meterScale = 1;
    bool m_keepOriginal = false;
    bool m_centerGeometry = true;
    bool m_snapToGround = false;
    bool m_adjustCamera = true;
    bool m_adjustEnvironment = true;
    std::string m_useCamera;
    bool m_ext = true;
};

} // namespace orv
