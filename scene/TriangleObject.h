// A triangle mesh: flat arrays of positions and corner indices, with optional texture coordinates,
// normals and vertex colours. Texture coordinates and normals may have index arrays of their own;
// without one they are per vertex.
#pragma once

#include "scene/LightGeometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv {

/// Two states: with data (`write` writes it in full) and defined (`define` wrote the data once and
/// let it go; `write` refers to it). Indices are not checked, only the lengths of the arrays.
class TriangleObject final : public LightGeometry {
public:
    /// An empty mesh that wears a `Diffuse` named "default".
    explicit TriangleObject(std::string name);
    ~TriangleObject() override;

    /// Writes an object in place, unless there are no triangles; then the complaints, if any, as an
    /// error directive.
    void write(orvSceneapi_oo& oo) override;
    /// Writes the definition (neither checked nor with its material) and releases the arrays.
    void define(orvSceneapi_oo& oo) override;
    /// Bytes of the seven arrays.
    std::size_t memorySize() const override;

    void addVertex(float x, float y, float z);
    void addTriangle(std::int32_t a, std::int32_t b, std::int32_t c);
    void addUV(float u, float v);
    void addUVIndices(std::int32_t a, std::int32_t b, std::int32_t c);
    void addNormal(float x, float y, float z);
    void addNormalIndices(std::int32_t a, std::int32_t b, std::int32_t c);
    void addVertexColor(float r, float g, float b);

    // Replace a whole array. Counts are numbers of values, not of vertices or triangles; a null
    // pointer goes with the count 0. The second form takes a vector over without a copy.
    void setVertices(const float* values, std::size_t count);
    void setVertices(std::vector<float>&& values);
    void setTriangles(const std::int32_t* values, std::size_t count);
    void setTriangles(std::vector<std::int32_t>&& values);
    void setUVs(const float* values, std::size_t count);
    void setUVs(std::vector<float>&& values);
    void setNormals(const float* values, std::size_t count);
    void setNormals(std::vector<float>&& values);

    const std::vector<float>& vertices() const { return m_vertices; }
    const std::vector<std::int32_t>& triangles() const { return m_triangles; }
    const std::vector<float>& uvs() const { return m_uvs; }
    const std::vector<float>& normals() const { return m_normals; }

    /// The complaints of the last `validate`, run together; empty when there were none.
    std::string getError() const { return m_error; }
    bool hasNoError() const { return m_error.empty(); }

    /// Compares the lengths of the arrays and keeps the complaints as the error text. True when the
    /// mesh may be written: it has triangles, or it is defined (then the error text stays).
    bool validate();
    /// True when every triangle index is at least 0 and less than the number of *values* in the
    /// vertices: looser by a factor of three than the number of vertices, and kept so.
    bool checkIndices() const;
    /// Empties the seven arrays; keeps their storage and the error text.
    void clearData();

private:
    std::string complaints() const;
    void writeGeometry(orvSceneapi_oo& oo) const;
    void writeArrays(orvSceneapi_oo& oo) const;
    /// Gives the storage of the (empty) arrays back.
    void releaseStorage();

    std::vector<float> m_vertices;
    std::vector<std::int32_t> m_triangles;
    std::vector<float> m_uvs;
    std::vector<std::int32_t> m_uvIndices;
    std::vector<float> m_normals;
    std::vector<std::int32_t> m_normalIndices;
    std::vector<float> m_vertexColors;
    std::string m_error;
};

} // namespace orv
