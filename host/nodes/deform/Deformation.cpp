#include "host/nodes/deform/Deformation.h"

#include <algorithm>

namespace host::nodes {
namespace {

/// True for an expression that names all points.
bool namesAll(const Value& expression)
{
    const auto text = expression.data<std::string>();
    return text == nullptr || text->empty() || *text == "*";
}

Vec3d between(const Vec3d& from, const Vec3d& to, double way)
{
    return way == 1 ? to : from + (to - from) * way;
}

} // namespace

Deformation::Deformation(ComputeContext& context)
    : m_context(context), m_which(std::max(0, context.index()))
{
    constexpr double kHasNoEffect = 1;
    const std::array<std::int32_t, 1> way{m_which};
    m_geometry = context.element(kInputGeometry, way);
    m_groupId = context.element(kGroupId, way).number(0);
    const Value tags = context.element(kComponentTags, way);
    m_envelope = context.number(kEnvelope, 1);
    const double state = context.number(kState, 0);
    m_isIdle = m_geometry.isEmpty() || m_envelope == 0 || state == kHasNoEffect;
    if (context.isComplete() && !m_isIdle && !namesAll(tags)) {
        context.noteUncomputed();
    }
}

Value Deformation::moved(const std::vector<Vec3d>& before, std::vector<Vec3d> after,
                         const std::vector<float>& weights) const
{
    const auto inRange = m_groupId > 0 && m_groupId < 2147483648.0;
    const auto group =
        inRange ? pointGroup(m_geometry, static_cast<std::int32_t>(m_groupId)) : nullptr;
    const auto wayOf = [&](std::size_t point) {
        return point < weights.size() ? m_envelope * double{weights[point]} : m_envelope;
    };
    if (group != nullptr) {
        std::vector<Vec3d> points = before;
        for (const std::uint32_t point : *group) {
            if (point < points.size()) {
                points[point] = between(before[point], after[point], wayOf(point));
            }
        }
        return withPoints(m_geometry, points);
    }
    if (m_envelope != 1 || !weights.empty()) {
        for (std::size_t point = 0; point < after.size(); ++point) {
            after[point] = between(before[point], after[point], wayOf(point));
        }
    }
    return withPoints(m_geometry, after);
}

Value Deformation::passed() const
{
    if (!m_isIdle) {
        m_context.noteUncomputed();
    }
    return m_geometry;
}

std::vector<float> pointWeights(ComputeContext& context, std::size_t position,
                                std::span<const std::int32_t> outer, std::size_t count,
                                float fallback)
{
    const NumericArray* stored = context.array(position, outer);
    const std::vector<std::int32_t> living = context.connectedIndices(position, outer);
    std::vector<float> weights;
    if ((stored == nullptr || stored->empty() || stored->width() != 1) && living.empty()) {
        return weights;
    }
    weights.assign(count, fallback);
    if (stored != nullptr && stored->width() == 1) {
        const auto* floats = stored->numbers<float>();
        for (const NumericArray::Run& run : stored->runs()) {
            const std::size_t end =
                std::min<std::size_t>(count, std::size_t{run.first} + run.count);
            for (std::size_t at = run.first; at < end; ++at) {
                weights[at] =
                    floats != nullptr
                        ? (*floats)[run.offset + at - run.first]
                        : static_cast<float>(stored->number(static_cast<std::uint32_t>(at), 0));
            }
        }
    }
    std::vector<std::int32_t> way(outer.begin(), outer.end());
    way.push_back(0);
    for (const std::int32_t index : living) {
        way.back() = index;
        const double weight = context.element(position, way).number(double{fallback});
        if (static_cast<std::size_t>(index) < count) {
            weights[static_cast<std::size_t>(index)] = static_cast<float>(weight);
        }
    }
    return weights;
}

} // namespace host::nodes
