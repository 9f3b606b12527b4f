#include "host/geometry/mesh/texture/UvEditor.h"

#include <algorithm>

namespace host::geometry {
namespace {

template<class T>
std::vector<T> copyOf(const std::shared_ptr<const std::vector<T>>& shared)
{
    return shared != nullptr ? *shared : std::vector<T>();
}

/// Which of `count` ids the corners have.
std::vector<bool> usedIds(std::span<const std::int32_t> corners, std::size_t count)
{
    std::vector<bool> isUsed(count);
    for (const std::int32_t id : corners) {
        if (id >= 0) {
            isUsed[static_cast<std::size_t>(id)] = true;
        }
    }
    return isUsed;
}

} // namespace

std::optional<std::size_t> findUvSet(const MeshData& mesh, std::string_view name)
{
    const std::string_view wanted = name.empty() ? std::string_view(mesh.currentUvSet) : name;
    for (std::size_t set = 0; set < mesh.uvSets.size(); ++set) {
        if (mesh.uvSets[set].name == wanted) {
            return set;
        }
    }
    return name.empty() && !mesh.uvSets.empty() ? std::optional<std::size_t>(0) : std::nullopt;
}

std::size_t uvCount(const UvSet& set)
{
    return set.points != nullptr ? set.points->size() : 0;
}

UvEditor::UvEditor(const MeshData& mesh, std::size_t set, std::string_view newName)
    : m_mesh(mesh), m_set(set), m_newName(newName)
{
    if (set < mesh.uvSets.size()) {
        m_points = copyOf(mesh.uvSets[set].points);
        m_corners = copyOf(mesh.uvSets[set].corners);
    }
    m_corners.resize(mesh.topology->corners.size(), -1);
}

std::int32_t UvEditor::add(const Vec2f& point)
{
    m_points.push_back(point);
    return static_cast<std::int32_t>(m_points.size() - 1);
}

void UvEditor::clear(std::span<const std::uint32_t> faces)
{
    for (const std::uint32_t face : faces) {
        std::fill(m_corners.begin() + topology().firstCorner(face),
                  m_corners.begin() + topology().endCorner(face), -1);
    }
}

std::vector<std::uint32_t> UvEditor::idsOfFaces(std::span<const std::uint32_t> faces) const
{
    std::vector<bool> isThere(m_points.size());
    for (const std::uint32_t face : faces) {
        const std::uint32_t end = topology().endCorner(face);
        for (std::uint32_t corner = topology().firstCorner(face); corner < end; ++corner) {
            if (m_corners[corner] >= 0) {
                isThere[static_cast<std::size_t>(m_corners[corner])] = true;
            }
        }
    }
    std::vector<std::uint32_t> ids;
    for (std::uint32_t id = 0; id < isThere.size(); ++id) {
        if (isThere[id]) {
            ids.push_back(id);
        }
    }
    return ids;
}

void UvEditor::merge(DisjointSets& sets)
{
    const std::size_t count = m_points.size();
    std::vector<double> sumU(count);
    std::vector<double> sumV(count);
    std::vector<std::uint32_t> members(count);
    for (std::uint32_t id = 0; id < count; ++id) {
        const std::uint32_t lowest = sets.lowest(id);
        sumU[lowest] += m_points[id].x;
        sumV[lowest] += m_points[id].y;
        ++members[lowest];
    }
    for (std::size_t id = 0; id < count; ++id) {
        if (members[id] > 1) {
            m_points[id] = {static_cast<float>(sumU[id] / members[id]),
                            static_cast<float>(sumV[id] / members[id])};
        }
    }
    for (std::int32_t& id : m_corners) {
        id = id >= 0 ? static_cast<std::int32_t>(sets.lowest(static_cast<std::uint32_t>(id))) : id;
    }
}

void UvEditor::removeUnused()
{
    const std::vector<bool> isUsed = usedIds(m_corners, m_points.size());
    std::vector<std::int32_t> numbers(m_points.size(), -1);
    std::int32_t count = 0;
    for (std::size_t id = 0; id < isUsed.size(); ++id) {
        if (isUsed[id]) {
            m_points[static_cast<std::size_t>(count)] = m_points[id];
            numbers[id] = count++;
        }
    }
    m_points.resize(static_cast<std::size_t>(count));
    for (std::int32_t& id : m_corners) {
        id = id >= 0 ? numbers[static_cast<std::size_t>(id)] : -1;
    }
}

std::shared_ptr<const MeshData> UvEditor::finish()
{
    auto result = std::make_shared<MeshData>(m_mesh);
    if (m_set >= result->uvSets.size()) {
        m_set = result->uvSets.size();
        result->uvSets.push_back({std::string(m_newName), nullptr, nullptr});
        result->currentUvSet = m_newName;
    }
    UvSet& set = result->uvSets[m_set];
    set.points = std::make_shared<const std::vector<Vec2f>>(std::move(m_points));
    set.corners = std::make_shared<const std::vector<std::int32_t>>(std::move(m_corners));
    return result;
}

} // namespace host::geometry
