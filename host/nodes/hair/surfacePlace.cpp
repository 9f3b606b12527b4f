#include "host/nodes/hair/surfacePlace.h"

#include "host/geometry/hair/MeshSurface.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace host::nodes {
namespace {

/// The last few things made of shared data, each as long as its data lives.
template<class Data, class Made>
class Recent {
public:
    template<class Make>
    std::shared_ptr<const Made> get(const std::shared_ptr<const Data>& data,
                                    const std::string& variant, Make make)
    {
        for (Entry& entry : m_entries) {
            const std::shared_ptr<const Data> known = entry.data.lock();
            if (known == nullptr) {
                entry.made = nullptr;
            } else if (known == data && entry.variant == variant) {
                return entry.made;
            }
        }
        Entry& oldest = m_entries[m_next];
        m_next = (m_next + 1) % m_entries.size();
        oldest = {data, variant, make()};
        return oldest.made;
    }

private:
    struct Entry {
        std::weak_ptr<const Data> data;
        std::string variant;
        std::shared_ptr<const Made> made;
    };
    std::array<Entry, 4> m_entries;
    std::size_t m_next = 0;
};

double across(double low, double high, double share)
{
    return low + (high - low) * share;
}

} // namespace

std::optional<geometry::SurfacePoint>
placeOnMesh(const std::shared_ptr<const geometry::MeshData>& mesh, const std::string& uvSet,
            double u, double v)
{
    static Recent<geometry::MeshData, geometry::MeshSurface> recent;
    const auto surface = recent.get(
        mesh, uvSet, [&] { return std::make_shared<const geometry::MeshSurface>(*mesh, uvSet); });
    return surface->at(u, v);
}

std::optional<geometry::SurfacePoint>
placeOnSurface(const std::shared_ptr<const geometry::SurfaceData>& surface, double u, double v)
{
    static Recent<geometry::SurfaceData, geometry::SurfaceEvaluator> recent;
    const auto evaluator = recent.get(
        surface, {}, [&] { return std::make_shared<const geometry::SurfaceEvaluator>(*surface); });
    if (!evaluator->isValid() || !std::isfinite(u) || !std::isfinite(v)) {
        return std::nullopt;
    }
    return evaluator->evaluate(across(evaluator->startU(), evaluator->endU(), u),
                               across(evaluator->startV(), evaluator->endV(), v));
}

} // namespace host::nodes
