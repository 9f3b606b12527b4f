// A plain matt surface of one colour, or of the colours of the mesh's vertices.
#pragma once

#include "scene/Material.h"

#include <string>

namespace orv {

class Diffuse final : public Material {
public:
    explicit Diffuse(std::string name);

    void writeParameters(orvSceneapi_oo& oo) override;

    /// Components are brought into 0..1.
    void setColor(float r, float g, float b);
    const Float3& getColor() const { return m_color; }
    /// True takes the colour from the vertices; the colour set here is written as well, before it.
    void setVertexColor(bool vertexColor) { m_vertexColor = vertexColor; }

private:
    const Blob* writePlainShader(orvSceneapi_oo& oo) const;
    const Blob* writeVertexColorShader(orvSceneapi_oo& oo) const;

    Float3 m_color{0.75F, 0.5F, 0.5F};
    bool m_vertexColor = false;
};

} // namespace orv
