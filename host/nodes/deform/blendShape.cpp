// blendShape: points drawn towards other shapes, each by the weight of its target.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/deformTypes.h"
#include "host/nodes/deform/shapeTargetInputs.h"

#include <algorithm>

namespace host::nodes {
namespace {

constexpr auto kInputs = deformerInputs("weight", "inputPointsTarget", "inputComponentsTarget",
                                        "inputGeomTarget", "targetWeights", "baseWeights", "origin",
                                        "targetVisibility", "targetParentVisibility");
enum Input : std::size_t {
    kWeight = kFirstDeformerInput,
    kInputPointsTarget,
    kInputComponentsTarget,
    kInputGeomTarget,
    kTargetWeights,
    kBaseWeights,
    kOrigin,
    kTargetVisibility,
    kTargetParentVisibility
};

/// An item of a target that takes part, and how much.
struct ActiveItem {
    std::int32_t target = 0;
    std::int32_t item = 0;
    double share = 0;
    Value shape; ///< empty: its stored offsets count
};

/// The weight at which an item is reached in full: 6000 says 1, 5500 says a half.
double weightOfItem(std::int32_t item)
{
    return (static_cast<double>(item) - 5000) / 1000;
}

bool isVisible(ComputeContext& context, std::int32_t target)
{
    return context.element(kTargetVisibility, target).number(1) != 0 &&
           context.element(kTargetParentVisibility, target).number(1) != 0;
}

/// The items of a target that its weight takes. Those at weight 0 say nothing.
void addItems(ComputeContext& context, std::int32_t geometry, std::int32_t target, double weight,
              std::vector<ActiveItem>& active)
{
    const std::array<std::int32_t, 2> way{geometry, target};
    std::vector<std::int32_t> items = context.elementIndices(kInputPointsTarget, way);
    std::erase_if(items, [](std::int32_t item) { return weightOfItem(item) == 0; });
    std::vector<double> weights(items.size());
    std::transform(items.begin(), items.end(), weights.begin(), weightOfItem);
    for (const geometry::ItemShare& share : geometry::itemShares(weights, weight)) {
        if (share.share != 0) {
            const std::array<std::int32_t, 3> place{geometry, target, items[share.item]};
            active.push_back(
                {target, items[share.item], share.share, context.element(kInputGeomTarget, place)});
        }
    }
}

std::vector<ActiveItem> activeItems(ComputeContext& context, std::int32_t geometry)
{
    std::vector<ActiveItem> active;
    const std::array<std::int32_t, 1> way{geometry};
    for (const std::int32_t target : context.elementIndices(kInputPointsTarget, way)) {
        const double weight = context.element(kWeight, target).number(0);
        if (weight != 0 && std::isfinite(weight) && isVisible(context, target)) {
            addItems(context, geometry, target, weight, active);
        }
    }
    return active;
}

class Blender {
public:
    Blender(ComputeContext& context, const Deformation& deformation)
        : m_context(context)
        , m_deformation(deformation)
        , m_isInWorld(context.number(kOrigin, 1) == 0)
        , m_before(pointsOf(deformation.geometry()))
        , m_after(m_before)
    {
    }

    void add(const ActiveItem& item)
    {
        const std::array<std::int32_t, 2> way{m_deformation.which(), item.target};
        const std::vector<float> weights =
            pointWeights(m_context, kTargetWeights, way, m_before.size());
        if (!item.shape.isEmpty()) {
            geometry::addDeltas(deltasTo(item.shape), item.share, weights, m_after);
            return;
        }
        const auto stored = StoredTargets::of(m_context);
        const auto brackets = pointBrackets(m_deformation.geometry());
        const auto& deltas =
            stored->deltas(m_context, kInputPointsTarget, kInputComponentsTarget,
                           {m_deformation.which(), item.target, item.item}, brackets);
        geometry::addDeltas(deltas, item.share, weights, m_after);
    }

    Value result()
    {
        const std::array<std::int32_t, 1> way{m_deformation.which()};
        const auto base = pointWeights(m_context, kBaseWeights, way, m_before.size());
        return m_deformation.moved(m_before, std::move(m_after), base);
    }

private:
    /// From the geometry to another one, in their own spaces or in the world.
    geometry::PointDeltas deltasTo(const Value& shape)
    {
        const std::vector<Vec3d> target = pointsOf(shape);
        const std::size_t count = std::min(target.size(), m_before.size());
        Matrix4 toBase;
        if (m_isInWorld) {
            toBase = worldOf(m_context, shape) * inverse(m_deformation.worldMatrix());
        }
        geometry::PointDeltas deltas;
        deltas.points.reserve(count);
        deltas.offsets.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const Vec3d there = m_isInWorld ? transformPoint(target[i], toBase) : target[i];
            deltas.points.push_back(static_cast<std::uint32_t>(i));
            deltas.offsets.push_back(there - m_before[i]);
        }
        return deltas;
    }

    ComputeContext& m_context;
    const Deformation& m_deformation;
    bool m_isInWorld;
    std::vector<Vec3d> m_before;
    std::vector<Vec3d> m_after;
};

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const std::vector<ActiveItem> active = activeItems(context, deformation.which());
    if (!context.isComplete() || active.empty()) {
        return deformation.geometry();
    }
    Blender blender(context, deformation);
    for (const ActiveItem& item : active) {
        blender.add(item);
    }
    Value result = blender.result();
    return context.isComplete() ? result : Value();
}

} // namespace

constinit const NodeCompute kBlendShape{
    .type = "blendShape", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
