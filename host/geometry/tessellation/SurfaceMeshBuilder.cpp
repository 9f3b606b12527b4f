#include "host/geometry/tessellation/SurfaceMeshBuilder.h"

#include "host/geometry/tessellation/creases.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

double squaredDistance(const Vec3f& a, const Vec3f& b)
{
    const Vec3d between = toDouble(a) - toDouble(b);
    return dot(between, between);
}

bool isFinite(const Vec3f& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

} // namespace

SurfaceMeshBuilder::SurfaceMeshBuilder(const SurfaceSheet& sheet)
    : m_sheet(sheet)
    , m_perU(1 / (sheet.evaluator().endU() - sheet.evaluator().startU()))
    , m_perV(1 / (sheet.evaluator().endV() - sheet.evaluator().startV()))
{
}

std::uint32_t SurfaceMeshBuilder::addVertex(const SurfacePoint& point, double u, double v)
{
    const auto index = static_cast<std::uint32_t>(m_mesh.positions.size());
    m_mesh.positions.push_back(toFloat(point.position));
    m_mesh.normals.push_back(toFloat(point.normal));
    m_mesh.uvs.push_back({static_cast<float>((u - m_sheet.evaluator().startU()) * m_perU),
                          static_cast<float>((v - m_sheet.evaluator().startV()) * m_perV)});
    return index;
}

void SurfaceMeshBuilder::addCell(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d,
                                 bool swapsEdges)
{
    const std::vector<Vec3f>& places = m_mesh.positions;
    const bool isSwapped =
        swapsEdges && squaredDistance(places[b], places[c]) < squaredDistance(places[a], places[d]);
    if (isSwapped) {
        m_mesh.indices.insert(m_mesh.indices.end(), {a, b, c, b, d, c});
    } else {
        m_mesh.indices.insert(m_mesh.indices.end(), {a, b, d, a, d, c});
    }
}

void SurfaceMeshBuilder::addGrid(const GridLines& lines, bool swapsEdges)
{
    const std::size_t width = lines.vs.size();
    const std::size_t vertices = vertexCount() + lines.us.size() * width;
    m_mesh.positions.reserve(vertices);
    m_mesh.normals.reserve(vertices);
    m_mesh.uvs.reserve(vertices);
    m_mesh.indices.reserve(m_mesh.indices.size() + 6 * lines.cellCount());
    const auto first = static_cast<std::uint32_t>(vertexCount());
    std::vector<SurfacePoint> points(std::min(kBlockLines, lines.us.size()) * width);
    const std::vector<double> normalUs = normalParameters(lines.us);
    const std::vector<double> normalVs = normalParameters(lines.vs);
    const bool hasCreases = normalUs != lines.us || normalVs != lines.vs;
    std::vector<Vec3d> places(hasCreases ? points.size() : 0);
    for (std::size_t i = 0; i < lines.us.size(); i += kBlockLines) {
        const auto us = std::span(lines.us).subspan(i, std::min(kBlockLines, lines.us.size() - i));
        const std::size_t count = us.size() * width;
        m_sheet.block(std::span(normalUs).subspan(i, us.size()), normalVs,
                      std::span(points).first(count));
        if (hasCreases) {
            m_sheet.positions(us, lines.vs, std::span(places).first(count));
        }
        for (std::size_t k = 0; k < count; ++k) {
            points[k].position = hasCreases ? places[k] : points[k].position;
            addVertex(points[k], us[k / width], lines.vs[k % width]);
        }
    }
    const auto step = static_cast<std::uint32_t>(width);
    for (std::uint32_t i = 0; i + 1 < lines.us.size(); ++i) {
        for (std::uint32_t k = 0; k + 1 < step; ++k) {
            const std::uint32_t here = first + i * step + k;
            addCell(here, here + step, here + 1, here + step + 1, swapsEdges);
        }
    }
}

void SurfaceMeshBuilder::flip(std::size_t firstTriangle, std::size_t firstVertex)
{
    for (std::size_t i = 3 * firstTriangle; i < m_mesh.indices.size(); i += 3) {
        std::swap(m_mesh.indices[i + 1], m_mesh.indices[i + 2]);
    }
    for (std::size_t i = firstVertex; i < m_mesh.normals.size(); ++i) {
        Vec3f& normal = m_mesh.normals[i];
        normal = {-normal.x, -normal.y, -normal.z};
    }
}

void SurfaceMeshBuilder::dropDegenerate()
{
    std::vector<std::uint32_t>& indices = m_mesh.indices;
    const std::vector<Vec3f>& places = m_mesh.positions;
    std::vector<std::uint8_t> isDamaged(places.size());
    std::transform(places.begin(), places.end(), isDamaged.begin(),
                   [](const Vec3f& place) { return isFinite(place) ? 0 : 1; });
    std::size_t kept = 0;
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        const std::uint32_t a = indices[i], b = indices[i + 1], c = indices[i + 2];
        if (places[a] == places[b] || places[b] == places[c] || places[c] == places[a] ||
            (isDamaged[a] | isDamaged[b] | isDamaged[c]) != 0) {
            continue;
        }
        indices[kept] = a;
        indices[kept + 1] = b;
        indices[kept + 2] = c;
        kept += 3;
    }
    indices.resize(kept);
}

void SurfaceMeshBuilder::dropUnused()
{
    constexpr std::uint32_t kUnused = 0xffffffff;
    std::vector<std::uint32_t> newIndex(vertexCount(), kUnused);
    for (const std::uint32_t index : m_mesh.indices) {
        newIndex[index] = 0;
    }
    if (std::find(newIndex.begin(), newIndex.end(), kUnused) == newIndex.end()) {
        return;
    }
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < newIndex.size(); ++i) {
        if (newIndex[i] != kUnused) {
            m_mesh.positions[count] = m_mesh.positions[i];
            m_mesh.normals[count] = m_mesh.normals[i];
            m_mesh.uvs[count] = m_mesh.uvs[i];
            newIndex[i] = count++;
        }
    }
    m_mesh.positions.resize(count);
    m_mesh.normals.resize(count);
    m_mesh.uvs.resize(count);
    for (std::uint32_t& index : m_mesh.indices) {
        index = newIndex[index];
    }
}

void SurfaceMeshBuilder::completeNormals()
{
    const auto isMissing = [](const Vec3f& normal) {
        const double square = dot(toDouble(normal), toDouble(normal));
        return !(square > 0.25 && square < 4);
    };
    std::vector<Vec3f>& normals = m_mesh.normals;
    if (std::none_of(normals.begin(), normals.end(), isMissing)) {
        return;
    }
    std::vector<Vec3d> sums(normals.size());
    const std::vector<std::uint32_t>& indices = m_mesh.indices;
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        const Vec3d a = toDouble(m_mesh.positions[indices[i]]);
        const Vec3d area = cross(toDouble(m_mesh.positions[indices[i + 1]]) - a,
                                 toDouble(m_mesh.positions[indices[i + 2]]) - a);
        for (std::size_t k = i; k < i + 3; ++k) {
            sums[indices[k]] = sums[indices[k]] + area;
        }
    }
    for (std::size_t i = 0; i < normals.size(); ++i) {
        if (isMissing(normals[i])) {
            const Vec3f normal = toFloat(normalized(sums[i]));
            normals[i] = isMissing(normal) ? Vec3f{0, 1, 0} : normal;
        }
    }
}

RenderMesh SurfaceMeshBuilder::finish()
{
    dropDegenerate();
    dropUnused();
    completeNormals();
    m_mesh.faceFirstTriangle = {0, static_cast<std::uint32_t>(triangleCount())};
    return std::move(m_mesh);
}

} // namespace host::geometry
