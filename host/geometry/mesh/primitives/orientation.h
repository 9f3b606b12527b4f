// Turns solids to their axis.
#pragma once

#include "host/math/Vec.h"

#include <array>

namespace host::geometry {

/// The direction in which a solid is built.
enum class SolidUp { Y, Z };

/// The smallest turn that takes one direction to another.
class SmallestTurn {
public:
    /// `axis`: any length; one that is zero or not finite turns nothing. Turns by half a circle go
    /// about x.
    SmallestTurn(SolidUp up, const Vec3d& axis);

    bool isIdentity() const { return m_isIdentity; }
    Vec3d operator()(const Vec3d& point) const;

private:
    bool m_isIdentity = true;
    std::array<Vec3d, 3> m_rows;
};

} // namespace host::geometry
