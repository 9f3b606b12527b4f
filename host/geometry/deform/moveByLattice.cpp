#include "host/geometry/deform/moveByLattice.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace host::geometry {
namespace {

/// The weights of a run of points along one direction.
struct Basis {
    std::size_t first = 0;
    std::vector<double> weights;
};

/// All Bernstein polynomials of degree count - 1 at t in 0..1.
void bernstein(double t, std::size_t count, Basis& basis)
{
    basis.first = 0;
    basis.weights.assign(count, 0);
    basis.weights[0] = 1;
    for (std::size_t degree = 1; degree < count; ++degree) {
        for (std::size_t i = degree; i > 0; --i) {
            basis.weights[i] = basis.weights[i] * (1 - t) + basis.weights[i - 1] * t;
        }
        basis.weights[0] *= 1 - t;
    }
}

/// The knot at a position of a clamped even vector over 0..spans.
double knot(std::ptrdiff_t at, std::ptrdiff_t degree, std::ptrdiff_t spans)
{
    return static_cast<double>(std::clamp<std::ptrdiff_t>(at - degree, 0, spans));
}

std::size_t degreeOf(int influence, std::size_t count)
{
    return std::min(static_cast<std::size_t>(std::max(1, influence)), count - 1);
}

/// The B-splines of a degree that are not 0 at t in 0..1, over `count` points.
void spline(double t, std::size_t count, int influence, Basis& basis)
{
    const auto degree = static_cast<std::ptrdiff_t>(degreeOf(influence, count));
    const std::ptrdiff_t spans = static_cast<std::ptrdiff_t>(count) - degree;
    const double x = t * static_cast<double>(spans);
    const std::ptrdiff_t span =
        std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(std::floor(x)), 0, spans - 1);
    basis.first = static_cast<std::size_t>(span);
    basis.weights.assign(static_cast<std::size_t>(degree) + 1, 0);
    basis.weights[0] = 1;
    const std::ptrdiff_t at = span + degree; // x lies between knots `at` and `at` + 1
    for (std::ptrdiff_t d = 1; d <= degree; ++d) {
        double carried = 0;
        for (std::ptrdiff_t i = 0; i < d; ++i) {
            const double right = knot(at + i + 1, degree, spans);
            const double left = knot(at + i + 1 - d, degree, spans);
            const double part = basis.weights[static_cast<std::size_t>(i)] / (right - left);
            basis.weights[static_cast<std::size_t>(i)] = carried + (right - x) * part;
            carried = (x - left) * part;
        }
        basis.weights[static_cast<std::size_t>(d)] = carried;
    }
}

std::vector<Vec3d> offsetsOf(const LatticeData& lattice)
{
    const LatticeData rest = restLattice(lattice.s, lattice.t, lattice.u);
    std::vector<Vec3d> offsets(lattice.points.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        offsets[i] = lattice.points[i] - rest.points[i];
    }
    return offsets;
}

class Mover {
public:
    Mover(const LatticeData& lattice, const LatticeSettings& settings)
        : m_settings(settings)
        , m_counts{static_cast<std::size_t>(lattice.s), static_cast<std::size_t>(lattice.t),
                   static_cast<std::size_t>(lattice.u)}
        , m_offsets(offsetsOf(lattice))
    {
    }

    Vec3d moved(const Vec3d& point)
    {
        std::array<double, 3> inside{point.x + 0.5, point.y + 0.5, point.z + 0.5};
        for (double& place : inside) {
            if (!std::isfinite(place)) {
                return point;
            }
            place = std::clamp(place, 0.0, 1.0);
        }
        return point + offsetAt(inside);
    }

private:
    Vec3d offsetAt(const std::array<double, 3>& place)
    {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (m_settings.isLocal) {
                spline(place[axis], m_counts[axis], m_settings.influence[axis], m_basis[axis]);
            } else {
                bernstein(place[axis], m_counts[axis], m_basis[axis]);
            }
        }
        Vec3d sum;
        for (std::size_t u = 0; u < m_basis[2].weights.size(); ++u) {
            Vec3d layer;
            for (std::size_t t = 0; t < m_basis[1].weights.size(); ++t) {
                layer = layer + alongS(t, u) * m_basis[1].weights[t];
            }
            sum = sum + layer * m_basis[2].weights[u];
        }
        return sum;
    }

    Vec3d alongS(std::size_t t, std::size_t u) const
    {
        const std::size_t line = (u + m_basis[2].first) * m_counts[1] + t + m_basis[1].first;
        const std::size_t first = line * m_counts[0] + m_basis[0].first;
        Vec3d sum;
        for (std::size_t s = 0; s < m_basis[0].weights.size(); ++s) {
            sum = sum + m_offsets[first + s] * m_basis[0].weights[s];
        }
        return sum;
    }

    LatticeSettings m_settings;
    std::array<std::size_t, 3> m_counts;
    std::vector<Vec3d> m_offsets;
    std::array<Basis, 3> m_basis;
};

} // namespace

LatticeData restLattice(std::int32_t s, std::int32_t t, std::int32_t u)
{
    LatticeData lattice{s, t, u, {}};
    const auto place = [](std::int32_t i, std::int32_t count) {
        return static_cast<double>(i) / (count - 1) - 0.5;
    };
    for (std::int32_t k = 0; k < u; ++k) {
        for (std::int32_t j = 0; j < t; ++j) {
            for (std::int32_t i = 0; i < s; ++i) {
                lattice.points.push_back({place(i, s), place(j, t), place(k, u)});
            }
        }
    }
    return lattice;
}

bool isValidLattice(const LatticeData& lattice)
{
    std::size_t all = 1;
    for (const std::int32_t count : {lattice.s, lattice.t, lattice.u}) {
        if (count < 2 || count > kMaxLatticeDivisions) {
            return false;
        }
        all *= static_cast<std::size_t>(count);
    }
    return lattice.points.size() == all;
}

double latticeReach(const LatticeSettings& settings, const Vec3d& point)
{
    constexpr double kTouching = 1e-9; // points on the box are inside whatever was rounded
    const auto beyond = [](double place) { return std::fmax(std::fabs(place) - 0.5, 0); };
    const double distance = length({beyond(point.x), beyond(point.y), beyond(point.z)});
    if (distance <= kTouching || settings.outside == LatticeOutside::Moves) {
        return 1;
    }
    const double reach = settings.falloffDistance;
    const bool isReached = settings.outside == LatticeOutside::FallsOff && distance < reach;
    return isReached ? 1 - distance / reach : 0;
}

std::uint64_t latticeWork(const LatticeData& lattice, const LatticeSettings& settings,
                          std::size_t pointCount)
{
    const std::array<std::int32_t, 3> counts{lattice.s, lattice.t, lattice.u};
    std::uint64_t work = pointCount;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto count = static_cast<std::size_t>(counts[axis]);
        work *= settings.isLocal ? degreeOf(settings.influence[axis], count) + 1 : count;
    }
    return work;
}

void moveByLattice(const LatticeData& lattice, const LatticeSettings& settings,
                   std::span<Vec3d> points)
{
    Mover mover(lattice, settings);
    for (Vec3d& point : points) {
        point = mover.moved(point);
    }
}

} // namespace host::geometry
