#include "host/geometry/animation/RotationCurves.h"

#include "host/math/angle.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// The keys that a curve can go through, ascending.
std::vector<CurveKey> usableKeys(const CurveKeys& curve)
{
    std::vector<CurveKey> keys;
    keys.reserve(curve.keys.size());
    std::copy_if(
        curve.keys.begin(), curve.keys.end(), std::back_inserter(keys),
        [](const CurveKey& key) { return std::isfinite(key.time) && std::isfinite(key.value); });
    std::stable_sort(keys.begin(), keys.end(), [](const CurveKey& left, const CurveKey& right) {
        return left.time < right.time;
    });
    return keys;
}

bool haveSameTimes(const std::vector<CurveKey>& a, const std::vector<CurveKey>& b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](const CurveKey& left, const CurveKey& right) { return left.time == right.time; });
}

Vec3d toVector(const std::array<double, 3>& v)
{
    return {v[0], v[1], v[2]};
}

Quaternion negated(const Quaternion& q)
{
    return {-q.x, -q.y, -q.z, -q.w};
}

/// Axis times half the angle of the rotation from one unit quaternion to another.
Vec3d logarithmOfWay(const Quaternion& from, const Quaternion& to)
{
    Quaternion way = product(to, conjugate(from));
    way = way.w < 0 ? negated(way) : way;
    const Vec3d vector{way.x, way.y, way.z};
    const double sine = length(vector);
    return sine > 0 ? vector * (angleOf(sine, way.w) / sine) : Vec3d{};
}

Quaternion exponential(const Vec3d& vector)
{
    const double angle = length(vector);
    const SineCosine part = sineCosine(angle);
    const Vec3d axis = normalized(vector) * part.sine;
    return {axis.x, axis.y, axis.z, part.cosine};
}

} // namespace

std::shared_ptr<const RotationCurves> RotationCurves::join(const std::array<CurveKeys, 3>& axes,
                                                           RotationOrder order, RotationBlend blend)
{
    const std::array<std::vector<CurveKey>, 3> keys{usableKeys(axes[0]), usableKeys(axes[1]),
                                                    usableKeys(axes[2])};
    if (keys[0].empty() || !haveSameTimes(keys[0], keys[1]) || !haveSameTimes(keys[0], keys[2])) {
        return nullptr;
    }
    auto joined = std::make_shared<RotationCurves>();
    joined->m_first = AnimationCurve(axes[0]);
    joined->m_order = order;
    joined->m_blend = blend;
    for (std::size_t i = 0; i < keys[0].size(); ++i) {
        Key key;
        key.angles = {keys[0][i].value, keys[1][i].value, keys[2][i].value};
        key.rotation = quaternionFromEuler(toVector(key.angles), order);
        key.leaving = keys[0][i].outType;
        if (i > 0 && dot(key.rotation, joined->m_keys.back().rotation) < 0) {
            key.rotation = negated(key.rotation);
        }
        joined->m_times.push_back(keys[0][i].time);
        joined->m_keys.push_back(key);
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        joined->m_rise[axis] =
            joined->m_keys.back().angles[axis] - joined->m_keys.front().angles[axis];
    }
    joined->setInnerPoints();
    return joined;
}

void RotationCurves::setInnerPoints()
{
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        Key& key = m_keys[i];
        key.inner = key.rotation;
        if (i > 0 && i + 1 < m_keys.size()) {
            const Vec3d ways = logarithmOfWay(key.rotation, m_keys[i - 1].rotation) +
                               logarithmOfWay(key.rotation, m_keys[i + 1].rotation);
            key.inner = product(exponential(ways * -0.25), key.rotation);
        }
    }
}

Vec3d RotationCurves::between(std::size_t key, double part) const
{
    const Key& left = m_keys[key];
    const Key& right = m_keys[key + 1];
    Quaternion rotation = slerp(left.rotation, right.rotation, part, false);
    if (m_blend == RotationBlend::Squad) {
        const Quaternion inner = slerp(left.inner, right.inner, part, false);
        rotation = slerp(rotation, inner, 2 * part * (1 - part), false);
    }
    const Vec3d straight = toVector(left.angles) * (1 - part) + toVector(right.angles) * part;
    return eulerNearest(eulerAngles(quaternionRotation(rotation), m_order), straight, m_order);
}

double RotationCurves::at(double time, std::size_t axis) const
{
    AnimationCurve::Wrapped among{time, 0, 0};
    if (std::isfinite(time)) {
        among = m_first.wrapped(time);
    }
    const auto after = std::upper_bound(m_times.begin(), m_times.end(), among.time);
    const auto position = static_cast<std::size_t>(after - m_times.begin());
    const double gain = among.passes * m_rise[axis];
    if (position == 0) {
        return m_keys.front().angles[axis] + gain;
    }
    const std::size_t key = position - 1;
    const Key& left = m_keys[key];
    if (position == m_keys.size() || among.time == m_times[key] ||
        left.leaving == TangentType::Step) {
        return left.angles[axis] + gain;
    }
    if (left.leaving == TangentType::StepNext) {
        return m_keys[position].angles[axis] + gain;
    }
    const double part = (among.time - m_times[key]) / (m_times[position] - m_times[key]);
    const Vec3d angles = between(key, part);
    const std::array<double, 3> all{angles.x, angles.y, angles.z};
    return all[axis] + gain;
}

} // namespace host::geometry
