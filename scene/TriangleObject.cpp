#include "scene/TriangleObject.h"

#include "scene/Diffuse.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace orv {

namespace {

/// A new vector, not an assignment: the old storage may be far too large.
template<typename T>
void release(std::vector<T>& values)
{
    std::vector<T>().swap(values);
}

template<typename T>
void replace(std::vector<T>& values, const T* first, std::size_t count)
{
    if (count == 0) {
        values.clear();
        return;
    }
    values.assign(first, first + count);
}

std::string text(std::size_t number)
{
    return std::to_string(number);
}

} // namespace

TriangleObject::TriangleObject(std::string name) : LightGeometry(std::move(name))
{
    LightGeometry::setMaterial(std::make_shared<Diffuse>("default"));
}

TriangleObject::~TriangleObject() = default;

void TriangleObject::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    if (validate()) {
        api->beginObject(name().c_str(), true);
        writeGeometry(oo);
        if (const std::shared_ptr<Material> material = getMaterial()) {
            material->write(oo);
        }
        api->endObject();
    }
    if (!hasNoError()) {
        api->error(m_error.c_str());
    }
}

void TriangleObject::define(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginObject(name().c_str(), false);
    const std::uint32_t id = oo.newId();
    // Always in full, as if nothing was defined before: a second call writes empty arrays.
    writeArrays(oo);
    api->endObject();
    clearData();
    releaseStorage();
    setDefinitionId(id);
}

std::size_t TriangleObject::memorySize() const
{
    const std::size_t count = m_vertices.size() + m_triangles.size() + m_uvs.size() +
                              m_uvIndices.size() + m_normals.size() + m_normalIndices.size() +
                              m_vertexColors.size();
    static_assert(sizeof(float) == 4 && sizeof(std::int32_t) == 4);
    return 4 * count;
}

void TriangleObject::addVertex(float x, float y, float z)
{
    m_vertices.insert(m_vertices.end(), {x, y, z});
}

void TriangleObject::addTriangle(std::int32_t a, std::int32_t b, std::int32_t c)
{
    m_triangles.insert(m_triangles.end(), {a, b, c});
}

void TriangleObject::addUV(float u, float v)
{
    m_uvs.insert(m_uvs.end(), {u, v});
}

void TriangleObject::addUVIndices(std::int32_t a, std::int32_t b, std::int32_t c)
{
    m_uvIndices.insert(m_uvIndices.end(), {a, b, c});
}

void TriangleObject::addNormal(float x, float y, float z)
{
    m_normals.insert(m_normals.end(), {x, y, z});
}

void TriangleObject::addNormalIndices(std::int32_t a, std::int32_t b, std::int32_t c)
{
    m_normalIndices.insert(m_normalIndices.end(), {a, b, c});
}

void TriangleObject::addVertexColor(float r, float g, float b)
{
    m_vertexColors.insert(m_vertexColors.end(), {r, g, b});
}

void TriangleObject::setVertices(const float* values, std::size_t count)
{
    replace(m_vertices, values, count);
}

void TriangleObject::setVertices(std::vector<float>&& values)
{
    m_vertices = std::move(values);
}

void TriangleObject::setTriangles(const std::int32_t* values, std::size_t count)
{
    replace(m_triangles, values, count);
}

void TriangleObject::setTriangles(std::vector<std::int32_t>&& values)
{
    m_triangles = std::move(values);
}

void TriangleObject::setUVs(const float* values, std::size_t count)
{
    replace(m_uvs, values, count);
}

void TriangleObject::setUVs(std::vector<float>&& values)
{
    m_uvs = std::move(values);
}

void TriangleObject::setNormals(const float* values, std::size_t count)
{
    replace(m_normals, values, count);
}

void TriangleObject::setNormals(std::vector<float>&& values)
{
    m_normals = std::move(values);
}

bool TriangleObject::validate()
{
    if (isDefined()) {
        return true;
    }
    m_error = complaints();
    return !m_triangles.empty();
}

std::string TriangleObject::complaints() const
{
    std::string message;

    if (m_normals.empty() && !m_normalIndices.empty()) {
        message += "No normals defined for index";
    } else if (!m_normalIndices.empty() && m_normalIndices.size() != m_triangles.size()) {
        message += "Normals count does not match number of triangles " +
                   text(m_normalIndices.size()) + " vs " + text(m_triangles.size());
    } else if (!m_normals.empty() && m_normalIndices.empty() &&
               m_normals.size() != m_vertices.size()) {
        message += "Number of normals does not equal number of vertices";
    }

    if (m_uvs.empty() && !m_uvIndices.empty()) {
        message += "No uvs defined for index";
    } else if (!m_uvIndices.empty() && m_uvIndices.size() != m_triangles.size()) {
        message += "UV index count does not match triangle count";
    } else if (!m_uvs.empty() && m_uvIndices.empty() && m_vertices.size() * 2 != m_uvs.size() * 3) {
        // the two blanks are kept: readers of the file look for the text
        message += "Number of uvs(" + text(m_uvs.size()) + ")  does not match vertex count(" +
                   text(m_vertices.size()) + ")";
    }

    if (!m_vertexColors.empty() && m_vertexColors.size() != m_vertices.size()) {
        // spelling is kept: readers of the file look for it
        message += "VetexColor count does not match number of vertices";
    }
    if (m_triangles.empty()) {
        message += "No triangles defined";
    }
    return message;
}

bool TriangleObject::checkIndices() const
{
    const std::size_t bound = m_vertices.size();
    return std::all_of(m_triangles.begin(), m_triangles.end(), [bound](std::int32_t index) {
        return index >= 0 && static_cast<std::size_t>(index) < bound;
    });
}

void TriangleObject::clearData()
{
    m_vertices.clear();
    m_triangles.clear();
    m_uvs.clear();
    m_uvIndices.clear();
    m_normals.clear();
    m_normalIndices.clear();
    m_vertexColors.clear();
}

void TriangleObject::releaseStorage()
{
    release(m_vertices);
    release(m_triangles);
    release(m_uvs);
    release(m_uvIndices);
    release(m_normals);
    release(m_normalIndices);
    release(m_vertexColors);
}

void TriangleObject::writeGeometry(orvSceneapi_oo& oo) const
{
    if (isDefined()) {
        writeInstance(oo);
    } else {
        writeArrays(oo);
    }
}

void TriangleObject::writeArrays(orvSceneapi_oo& oo) const
{
    oo.sceneApi()->beginGeometry("triangles");
    oo.pointsParameter("vertices", m_vertices);
    oo.intListParameter("triangles", m_triangles);
    if (!m_uvIndices.empty()) {
        oo.intListParameter("triangles_uv", m_uvIndices);
    }
    if (!m_uvs.empty()) {
        oo.floatListParameter("uv_tex", m_uvs);
    }
    if (!m_normalIndices.empty()) {
        oo.intListParameter("triangles_norm", m_normalIndices);
    }
    if (!m_normals.empty()) {
        oo.pointsParameter("normals", m_normals);
    }
    if (!m_vertexColors.empty()) {
        oo.pointsParameter("vcolors", m_vertexColors);
    }
    oo.sceneApi()->endGeometry();
}

} // namespace orv
