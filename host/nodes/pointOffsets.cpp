#include "host/nodes/pointOffsets.h"

#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/tweak.h"

namespace host::nodes {
namespace {

constexpr std::size_t kCoordinates = 3;

std::vector<geometry::OffsetRun> offsetRuns(const NumericArray& tweaks)
{
    std::vector<geometry::OffsetRun> runs;
    runs.reserve(tweaks.runs().size());
    for (const NumericArray::Run& run : tweaks.runs()) {
        runs.push_back({run.first, run.count, run.offset});
    }
    return runs;
}

/// Adds the tweaks in single precision, in which points are.
void addTweaks(std::vector<Vec3f>& points, const NumericArray& tweaks)
{
    const std::vector<geometry::OffsetRun> runs = offsetRuns(tweaks);
    if (const auto* floats = tweaks.numbers<float>()) {
        geometry::addOffsetsTo(points, runs, *floats);
        return;
    }
    std::vector<float> block;
    if (const auto* doubles = tweaks.numbers<double>()) {
        block.reserve(doubles->size());
        for (const double number : *doubles) {
            block.push_back(static_cast<float>(number));
        }
    }
    geometry::addOffsetsTo(points, runs, block);
}

Vec3f sum(const Vec3f& a, const Vec3f& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

} // namespace

PointOffsets::PointOffsets(ComputeContext& context, std::size_t offsets, std::size_t children)
{
    const NumericArray* stored = context.array(offsets);
    if (stored != nullptr && !stored->empty() && stored->width() == kCoordinates) {
        m_stored = stored;
    }
    for (const std::int32_t index : context.connectedIndices(offsets)) {
        const Vec3d offset{context.element(children, index).number(),
                           context.element(children + 1, index).number(),
                           context.element(children + 2, index).number()};
        m_living.push_back({static_cast<std::size_t>(index), toFloat(offset)});
    }
}

Shared<geometry::MeshData> PointOffsets::applied(const Shared<geometry::MeshData>& mesh) const
{
    if (empty()) {
        return mesh;
    }
    const std::span<const Vec3f> before = geometry::pointsOf(*mesh);
    auto offset = std::make_shared<std::vector<Vec3f>>(before.begin(), before.end());
    std::vector<Vec3f>& points = *offset;
    if (m_stored != nullptr) {
        addTweaks(points, *m_stored);
    }
    for (const Living& tweak : m_living) {
        if (tweak.point < points.size()) {
            points[tweak.point] = sum(before[tweak.point], tweak.offset);
        }
    }
    auto moved = std::make_shared<geometry::MeshData>(*mesh);
    moved->points = std::move(offset);
    return moved;
}

} // namespace host::nodes
