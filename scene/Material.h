// How the surface of a geometry looks: a named block that holds one network of shaders. Written in
// place, or once as a definition and referred to by name afterwards.
#pragma once

#include "scene/LightNode.h"
#include "sceneapi/orvSceneValues.h"

#include <string>

namespace orv {

/// Base of materials. The order of the virtual functions is part of the contract.
class Material : public LightNode {
public:
    explicit Material(std::string name);

    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;

    /// A reference once the material is defined, the whole block in place before.
    void write(orvSceneapi_oo& oo) override;
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    ~Material() override;
    /// Writes the shaders and ties them to the material's block, which is open.
    virtual void writeParameters(orvSceneapi_oo& oo) = 0;

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name);
    /// Type name of the surface shader; empty unless a subclass sets it.
    const std::string& getShaderType() const { return m_shaderType; }
    void setShaderType(const std::string& type);

    /// Kept for who builds the material; no material writes it. The identity at first.
    void setTextureMatrix(const Matrix4& matrix) { m_textureMatrix = matrix; }
    const Matrix4& getTextureMatrix() const { return m_textureMatrix; }

protected:
    /// Every component brought into 0..1; what is no number becomes 0.
    static Float3 clamped(float r, float g, float b);

private:
    bool m_defined = false;
    std::string m_name;
    std::string m_shaderType;
    Matrix4 m_textureMatrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

} // namespace orv
