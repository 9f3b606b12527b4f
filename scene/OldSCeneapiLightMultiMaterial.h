// The general material: a colour, or a texture, with highlights and transparency where they are
// set. The class name is spelled as the renderer's users know it.
#pragma once

#include "scene/Material.h"

#include <cstdint>
#include <string>

namespace orv {

/// Writes a plain diffuse shader until a texture, a specular colour or an alpha is given, whatever
/// their values; then the advanced one.
class OldSCeneapiLightMultiMaterial final : public Material {
public:
    explicit OldSCeneapiLightMultiMaterial(std::string name);

    void writeParameters(orvSceneapi_oo& oo) override;

    /// Back to the state after construction, except for the diffuse colour (and name and shader
    /// type).
    void reset();

    /// Rotation of the texture, in degrees.
    void setAngle(float angleDegrees) { m_angle = angleDegrees; }
    void setScaleU(float scale) { m_scaleU = scale; }
    void setScaleV(float scale) { m_scaleV = scale; }
    /// How the texture is laid on the surface, by the renderer's numbers.
    void setProjection(std::uint32_t projection) { m_projection = projection; }
    void setShiftU(float shift) { m_shiftU = shift; }
    void setShiftV(float shift) { m_shiftV = shift; }
    /// Path of the image file as the renderer shall read it; empty means no texture.
    void setTexture(const std::string& path) { m_texture = path; }
    /// Components are brought into 0..1.
    void setDiffuse(float r, float g, float b);
    /// Components are brought into 0..1. Any colour counts, black included.
    void setSpecular(float r, float g, float b);
    /// Opacity, kept as given; what is below 0.1 is written as 0.1.
    void setAlpha(float alpha);

    float getShiftU() const { return m_shiftU; }
    float getShiftV() const { return m_shiftV; }
    float getDiffuseR() const { return m_diffuse[0]; }
    float getDiffuseG() const { return m_diffuse[1]; }
    float getDiffuseB() const { return m_diffuse[2]; }

private:
    /// Null without a texture.
    const Blob* writeTexture(orvSceneapi_oo& oo) const;
    void writeAdvancedParameters(orvSceneapi_oo& oo, const Blob* texture) const;

    float m_angle = 0;
    float m_scaleU = 1;
    float m_scaleV = 1;
    std::uint32_t m_projection = 3;
    float m_shiftU = 0;
    float m_shiftV = 0;
    Float3 m_diffuse{0.8F, 0.8F, 0.8F}; // a light grey for who never sets it
    Float3 m_specular{0, 0, 0};
    float m_alpha = 1;
    bool m_hasSpecular = false;
    bool m_hasAlpha = false;
    std::string m_texture;
};

} // namespace orv
