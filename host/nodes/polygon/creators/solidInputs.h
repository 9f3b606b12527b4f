// What the nodes that make solids have in common.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"
#include "host/nodes/numberInputs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace host::nodes {

/// The first inputs of every row of a solid, in this order.
enum SolidInput : std::size_t {
    kAxis = 0, ///< "axisX", "axisY", "axisZ"
    kHeightBaseline = 3,
    kUvSetName,
    kCreateUvs,
    kSolidState, ///< "nodeState", by which a node blocks
    kFirstSolidInput
};

/// Inputs of a row: those that all solids have, then its own.
template<class... Names>
constexpr std::array<std::string_view, kFirstSolidInput + sizeof...(Names)>
solidInputs(const Names&... names)
{
    return {"axisX",     "axisY",     "axisZ",     "heightBaseline",
            "uvSetName", "createUVs", "nodeState", std::string_view(names)...};
}

inline constexpr std::array<std::string_view, 1> kSolidOutputs{"output"};

/// Reads the inputs of a solid. Numbers that are not finite count as the fallback, and a solid has
/// no more faces, nor about as many points, than a limit. A count beyond it is noted and taken for
/// damage: the fallback stands in for it, so that a solid that nobody drew costs nobody a minute.
///
/// The counts of cells of a solid that is one grid multiply to no more than that (`cells`). One of
/// several bands about an axis has so many sides in each (`sides`, then `bands` for each direction
/// that is divided).
class SolidReader {
public:
    static constexpr std::int32_t kMostCells = 1 << 20;

    explicit SolidReader(ComputeContext& context, std::int32_t mostCells = kMostCells)
        : m_context(context), m_left(mostCells)
    {
        m_name = context.input(kUvSetName).data<std::string>();
    }

    geometry::SolidPlacement placement()
    {
        geometry::SolidPlacement placement;
        placement.axis = vectorInput(m_context, kAxis, {0, 1, 0});
        placement.heightBaseline = size(kHeightBaseline, 0);
        if (m_name != nullptr && !m_name->empty()) {
            placement.uvSetName = *m_name;
        }
        return placement;
    }
    double size(std::size_t position, double fallback)
    {
        const double number = m_context.number(position, fallback);
        return std::isfinite(number) ? number : fallback;
    }
    std::uint32_t cells(std::size_t position, std::int32_t fallback, std::int32_t least)
    {
        const std::int32_t most = std::max(least, m_left);
        const std::int32_t count = countUpTo(most, position, fallback, least);
        m_left /= std::max(1, count);
        return static_cast<std::uint32_t>(count);
    }
    /// A count of sides; `rings` are there at least: of faces or of points, whichever are more.
    std::uint32_t sides(std::size_t position, std::int32_t fallback, std::int32_t least,
                        std::int32_t rings)
    {
        const std::int32_t most = std::max(least, m_left / rings);
        const std::int32_t count = countUpTo(most, position, fallback, least);
        m_left = std::max(0, m_left / count - rings);
        return static_cast<std::uint32_t>(count);
    }
    /// A count of bands after `sides`, each of which is there `times`.
    std::uint32_t bands(std::size_t position, std::int32_t fallback, std::int32_t least,
                        std::int32_t times)
    {
        const std::int32_t most = least + m_left / times;
        const std::int32_t count = countUpTo(most, position, fallback, least);
        m_left -= (count - least) * times;
        return static_cast<std::uint32_t>(count);
    }
    /// The same, each once, for a count that follows from other inputs: at least 1.
    std::uint32_t derivedBands(double wanted)
    {
        const double most = 1.0 + m_left;
        if (wanted > most) {
            m_context.noteUncomputed();
        }
        const auto count = static_cast<std::int32_t>(std::clamp(wanted, 1.0, most));
        m_left -= count - 1;
        return static_cast<std::uint32_t>(count);
    }
    std::int32_t choice(std::size_t position, std::int32_t fallback)
    {
        return wholeInput(m_context, position, fallback, 0, 255);
    }
    bool flag(std::size_t position, bool fallback)
    {
        return flagInput(m_context, position, fallback);
    }
    /// How texture coordinates are made: 0 not at all.
    std::int32_t uvs(std::int32_t fallback) { return choice(kCreateUvs, fallback); }
    /// Whether a solid that is unrolled has texture coordinates. They always fill the same part of
    /// the unit square (2). The lengths that edges have (1) are noted; and so are their proportions
    /// (3), but for a shape of the usual ones, which scenes show to look the same in both.
    bool unrolledUvs(bool hasUsualProportions)
    {
        constexpr std::int32_t kLengths = 1;
        constexpr std::int32_t kFilled = 2;
        const std::int32_t way = uvs(kFilled);
        if (way == kLengths || (way > kFilled && !hasUsualProportions)) {
            m_context.noteLack(Lack::Textures);
        }
        return way != 0;
    }
    ComputeContext& context() { return m_context; }

    /// The computed solid: reads what is left, makes it once all inputs are there.
    template<class Settings, class Make>
    Value result(const Settings& settings, const Make& make)
    {
        const geometry::SolidPlacement where = placement();
        return m_context.isComplete() ? Value(make(settings, where)) : Value();
    }

private:
    std::int32_t countUpTo(std::int32_t most, std::size_t position, std::int32_t fallback,
                           std::int32_t least)
    {
        if (m_context.number(position, fallback) > most) {
            m_context.noteUncomputed();
            return std::clamp(fallback, least, most);
        }
        return wholeInput(m_context, position, fallback, least, most);
    }

    ComputeContext& m_context;
    Shared<std::string> m_name;
    std::int32_t m_left; ///< factor, or number of bands, up to the limit
};

} // namespace host::nodes
