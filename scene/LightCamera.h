// A camera of the renderer: where it stands, what it sees, and the environment that surrounds it.
#pragma once

#include "scene/LightNode.h"
#include "sceneapi/orvSceneValues.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace orv {

class Animation;

/// Lengths in centimetres, angles in degrees. The order of the virtual functions is part of the
/// contract.
class LightCamera : public LightNode {
public:
    static constexpr std::uint32_t kPerspective = 0;
    static constexpr std::uint32_t kOrthographic = 1;

    /// A perspective camera of 60 degrees at the origin that looks along -z, without clipping
    /// planes.
    explicit LightCamera(std::string name);

    LightCamera(const LightCamera&) = delete;
    LightCamera& operator=(const LightCamera&) = delete;

    void write(orvSceneapi_oo& oo) override;
    /// Cameras have no definition form: does nothing.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    ~LightCamera() override;
    /// Writes the environment shader, the same for every camera, into the open camera block.
    /// Returns  its handle, valid until that block is closed; null when no scene API is attached.
    virtual const Blob* writeEnvironment(orvSceneapi_oo& oo);

    // Components are held in double precision but have single precision only: that of the file's
    // readers.
    void setPosition(float x, float y, float z);
    void setDirection(float x, float y, float z);
    /// Also makes the camera write its target.
    void setLookAt(float x, float y, float z);
    void setUp(float x, float y, float z);
    /// One angle; takes back `setFov4`.
    void setFov(float angleDegrees);
    /// Four values in place of the one angle.
    void setFov4(float a, float b, float c, float d);
    /// Written only when 0 < nearClip < farClip.
    void setClipping(float nearClip, float farClip);
    /// `kPerspective` or `kOrthographic`; an orthographic camera writes no field of view.
    void setProjection(std::uint32_t projection);
    void setTransform(const Matrix4& transform);
    /// Written in place of the transform.
    void setAnimation(std::shared_ptr<Animation> animation);

    const std::string& getName() const { return m_name; }
    const Double3& getPosition() const { return m_position; }
    const Double3& getDirection() const { return m_direction; }
    const Double3& getLookAt() const { return m_lookAt; }
    const Double3& getUp() const { return m_up; }
    float getFov() const { return m_fov; }
    float getNear() const { return m_nearClip; }
    float getFar() const { return m_farClip; }
    std::uint32_t getProjection() const { return m_projection; }
    bool hasTransform() const { return m_hasTransform; }

private:
    void writeProjection(orvSceneapi_oo& oo) const;
    void writeClipping(orvSceneapi_oo& oo) const;

    static constexpr std::uint32_t kOneAngle = 0;
    static constexpr std::uint32_t kFourValues = 1;

    std::string m_name;
    Double3 m_position{0, 0, 0};
    Double3 m_direction{0, 0, -1};
    Double3 m_lookAt{0, 0, -1};
    Double3 m_up{0, 1, 0};
    float m_fov = 60.0F;
    std::array<float, 4> m_fov4{};
    float m_nearClip = -1.0F;
    float m_farClip = -1.0F;
    std::shared_ptr<Animation> m_animation;
    bool m_hasTransform = false;
    bool m_hasLookAt = false;
    Matrix4 m_transform{};
    std::uint32_t m_projection = kPerspective;
    std::uint32_t m_fovMode = kOneAngle;
};

} // namespace orv
