#include "host/geometry/mesh/texture/transferUvs.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace host::geometry {

bool haveSameCorners(const MeshTopology& a, const MeshTopology& b)
{
    if (&a == &b) {
        return true;
    }
    if (a.corners.size() != b.corners.size() || a.loopStart != b.loopStart) {
        return false;
    }
    for (std::uint32_t corner = 0; corner < a.corners.size(); ++corner) {
        if (a.cornerVertex(corner) != b.cornerVertex(corner)) {
            return false;
        }
    }
    return true;
}

std::shared_ptr<const MeshData> withUvSetOf(const MeshData& mesh, const MeshData& source,
                                            std::size_t set, std::string_view name, bool flipsU,
                                            bool flipsV)
{
    auto result = std::make_shared<MeshData>(mesh);
    UvSet taken = source.uvSets[set];
    taken.name = std::string(name);
    if ((flipsU || flipsV) && taken.points != nullptr) {
        std::vector<Vec2f> points = *taken.points;
        for (Vec2f& point : points) {
            point = {flipsU ? 1 - point.x : point.x, flipsV ? 1 - point.y : point.y};
        }
        taken.points = std::make_shared<const std::vector<Vec2f>>(std::move(points));
    }
    const auto own = std::find_if(result->uvSets.begin(), result->uvSets.end(),
                                  [name](const UvSet& each) { return each.name == name; });
    if (own != result->uvSets.end()) {
        *own = std::move(taken);
    } else {
        result->uvSets.push_back(std::move(taken));
    }
    if (result->currentUvSet.empty()) {
        result->currentUvSet = std::string(name);
    }
    return result;
}

std::shared_ptr<const MeshData> withStoredUvs(const MeshData& mesh, std::size_t set,
                                              const StoredUvs& stored)
{
    const auto isId = [&stored](std::int32_t id) {
        return id >= -1 && (id < 0 || static_cast<std::size_t>(id) < stored.u.size());
    };
    if (stored.u.size() != stored.v.size() ||
        stored.corners.size() != mesh.topology->corners.size() ||
        !std::all_of(stored.corners.begin(), stored.corners.end(), isId)) {
        return nullptr;
    }
    std::vector<Vec2f> points(stored.u.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        points[i] = {static_cast<float>(stored.u[i]), static_cast<float>(stored.v[i])};
    }
    auto result = std::make_shared<MeshData>(mesh);
    UvSet& own = result->uvSets[set];
    own.points = std::make_shared<const std::vector<Vec2f>>(std::move(points));
    own.corners = std::make_shared<const std::vector<std::int32_t>>(stored.corners.begin(),
                                                                    stored.corners.end());
    return result;
}

} // namespace host::geometry
