#include "host/geometry/mesh/primitives/boxes.h"

#include <array>

namespace host::geometry {
namespace {

/// Places from `start` on, each one step after the one before, in single precision: the digits of
/// Maya.
std::vector<float> steppedPlaces(float start, float step, std::uint32_t count)
{
    std::vector<float> places;
    places.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        places.push_back(start);
        start = start + step;
    }
    return places;
}

std::vector<float> dividedLength(double size, std::uint32_t cells)
{
    return steppedPlaces(static_cast<float>(-size / 2), static_cast<float>(size / cells),
                         cells + 1);
}

/// Which end of a run of cells a place is.
enum class Side : std::uint32_t { Right = 0, Left = 1 };

/// The numbers of all parts of a cube, and its writing.
class CubeWriter {
public:
    CubeWriter(SolidBuilder& builder, const CubeSettings& settings)
        : m_builder(builder)
        , m_settings(settings)
        , m_width(settings.widthCells)
        , m_height(settings.heightCells)
        , m_depth(settings.depthCells)
        , m_rowCount(2 * (m_height + m_depth))
        , m_rowSize(m_width + 1)
    {
    }

    void write()
    {
        addPoints();
        if (m_settings.uvs == CubeUvs::Cross) {
            addCross();
        } else if (m_settings.uvs == CubeUvs::EachSide) {
            addSquares();
        }
        addEdges();
        addRowFaces();
        addSideFaces(Side::Right);
        addSideFaces(Side::Left);
    }

private:
    using Number = std::uint32_t;

    Number row(Number number) const { return number == m_rowCount ? 0 : number; }
    Number rowPoint(Number number, Number x) const { return row(number) * m_rowSize + x; }
    Number rowEdge(Number number, Number x) const { return row(number) * m_width + x; }
    Number upEdge(Number number, Number x) const
    {
        return m_rowCount * m_width + number * m_rowSize + x;
    }
    Number innerPointCount() const { return (m_height - 1) * (m_depth - 1); }
    Number innerEdgeCount() const { return (m_height - 1) * m_depth + m_height * (m_depth - 1); }
    Number column(Side side) const { return side == Side::Right ? m_width : 0; }
    /// The row at height y (0 below) and depth z (0 at the back) of a side's border.
    Number borderRow(Number y, Number z) const
    {
        if (z == m_depth) {
            return y;
        }
        if (z == 0) {
            return 2 * m_height + m_depth - y;
        }
        return y == 0 ? 2 * m_height + m_depth + z : m_height + m_depth - z;
    }
    bool isInner(Number y, Number z) const { return y > 0 && y < m_height && z > 0 && z < m_depth; }
    Number sidePoint(Side side, Number y, Number z) const
    {
        return isInner(y, z)
                   ? m_rowCount * m_rowSize + static_cast<Number>(side) * innerPointCount() +
                         (y - 1) * (m_depth - 1) + z - 1
                   : rowPoint(borderRow(y, z), column(side));
    }
    /// The edge of a side from depth z to z + 1: the one of a border runs from front to back above
    /// and from back to front below, inner ones from back to front.
    Number depthEdge(Side side, Number y, Number z) const
    {
        if (y == 0) {
            return upEdge(2 * m_height + m_depth + z, column(side));
        }
        if (y == m_height) {
            return upEdge(m_height + m_depth - 1 - z, column(side));
        }
        return m_firstInnerEdge + static_cast<Number>(side) * innerEdgeCount() + (y - 1) * m_depth +
               z;
    }
    /// The edge of a side from height y to y + 1: at the back it runs downwards.
    Number heightEdge(Side side, Number y, Number z) const
    {
        if (z == m_depth) {
            return upEdge(y, column(side));
        }
        if (z == 0) {
            return upEdge(2 * m_height + m_depth - 1 - y, column(side));
        }
        return m_firstInnerEdge + static_cast<Number>(side) * innerEdgeCount() +
               (m_height - 1) * m_depth + y * (m_depth - 1) + z - 1;
    }

    void addPoints()
    {
        const auto xs = dividedLength(m_settings.width, m_width);
        const auto ys = dividedLength(m_settings.height, m_height);
        const auto zs = dividedLength(m_settings.depth, m_depth);
        const auto addRow = [&](double y, double z) {
            for (const float x : xs) {
                m_builder.addPoint({x, y, z});
            }
        };
        for (Number y = 0; y <= m_height; ++y) {
            addRow(ys[y], zs[m_depth]);
        }
        for (Number z = m_depth; z-- > 1;) {
            addRow(ys[m_height], zs[z]);
        }
        for (Number y = m_height + 1; y-- > 0;) {
            addRow(ys[y], zs[0]);
        }
        for (Number z = 1; z < m_depth; ++z) {
            addRow(ys[0], zs[z]);
        }
        for (const float x : {xs.back(), xs.front()}) {
            for (Number y = 1; y < m_height; ++y) {
                for (Number z = 1; z < m_depth; ++z) {
                    m_builder.addPoint({x, ys[y], zs[z]});
                }
            }
        }
    }

    /// Front, top, back and bottom one above the other, a quarter each; right and left beside the
    /// front.
    void addCross()
    {
        m_hasCross = true;
        const auto us = steppedPlaces(0.375F, 0.25F / static_cast<float>(m_width), m_rowSize);
        const float heightStep = 0.25F / static_cast<float>(m_height);
        const float depthStep = 0.25F / static_cast<float>(m_depth);
        float v = 0;
        for (Number number = 0; number <= m_rowCount; ++number) {
            for (const float u : us) {
                m_builder.addUv(u, v);
            }
            const bool isHigh = number % (m_height + m_depth) < m_height;
            v = v + (isHigh ? heightStep : depthStep);
        }
        const auto vs = steppedPlaces(0, heightStep, m_height + 1);
        for (const float first : {0.875F, 0.125F}) {
            const auto columns =
                steppedPlaces(first, first > 0.5F ? -depthStep : depthStep, m_depth);
            for (const float height : vs) {
                for (const float u : columns) {
                    m_builder.addUv(u, height);
                }
            }
        }
    }

    /// The unit square; every side has the places of its cells in it, sides of equal counts share
    /// none.
    void addSquares()
    {
        for (const auto& [across, up] : sideCells()) {
            m_squareStart.push_back(m_builder.uvCount());
            const auto us = steppedPlaces(0, 1 / static_cast<float>(across), across + 1);
            const auto vs = steppedPlaces(0, 1 / static_cast<float>(up), up + 1);
            for (const float v : vs) {
                for (const float u : us) {
                    m_builder.addUv(u, v);
                }
            }
        }
    }
    /// Cells across and up of front, top, back, bottom, right, left.
    std::array<std::array<Number, 2>, 6> sideCells() const
    {
        return {{{m_width, m_height},
                 {m_width, m_depth},
                 {m_width, m_height},
                 {m_width, m_depth},
                 {m_depth, m_height},
                 {m_depth, m_height}}};
    }
    Number squareUv(Number side, Number across, Number up) const
    {
        return m_squareStart[side] + up * (sideCells()[side][0] + 1) + across;
    }

    /// Of the face between row `number` and the next, at its corner (x, up).
    Number rowUv(Number number, Number x, Number up) const
    {
        if (m_hasCross) {
            return (number + up) * m_rowSize + x;
        }
        if (m_squareStart.empty()) {
            return 0;
        }
        const Number half = m_height + m_depth;
        const Number inHalf = number % half;
        const bool isHigh = inHalf < m_height;
        return squareUv(number / half * 2 + (isHigh ? 0 : 1), x,
                        (isHigh ? inHalf : inHalf - m_height) + up);
    }
    Number sideUv(Side side, Number y, Number z) const
    {
        if (m_hasCross) {
            const Number first =
                (m_rowCount + 1) * m_rowSize + static_cast<Number>(side) * (m_height + 1) * m_depth;
            return z == m_depth ? y * m_rowSize + column(side) : first + y * m_depth + z;
        }
        return m_squareStart.empty() ? 0
                                     : squareUv(4 + static_cast<Number>(side),
                                                side == Side::Right ? m_depth - z : z, y);
    }

    /// Rows on which two sides of the cube meet.
    bool isBorderRow(Number number) const
    {
        const Number half = m_height + m_depth;
        return number % half == 0 || number % half == m_height;
    }
    void addEdges()
    {
        for (Number number = 0; number < m_rowCount; ++number) {
            for (Number x = 0; x < m_width; ++x) {
                m_builder.addEdge(rowPoint(number, x), rowPoint(number, x + 1),
                                  !isBorderRow(number));
            }
        }
        for (Number number = 0; number < m_rowCount; ++number) {
            for (Number x = 0; x <= m_width; ++x) {
                m_builder.addEdge(rowPoint(number, x), rowPoint(number + 1, x),
                                  x > 0 && x < m_width);
            }
        }
        m_firstInnerEdge = rowEdge(m_rowCount - 1, m_width) + m_rowCount * m_rowSize;
        addInnerEdges(Side::Right);
        addInnerEdges(Side::Left);
    }
    void addInnerEdges(Side side)
    {
        for (Number y = 1; y < m_height; ++y) {
            for (Number z = 0; z < m_depth; ++z) {
                m_builder.addEdge(sidePoint(side, y, z), sidePoint(side, y, z + 1), true);
            }
        }
        for (Number y = 0; y < m_height; ++y) {
            for (Number z = 1; z < m_depth; ++z) {
                m_builder.addEdge(sidePoint(side, y, z), sidePoint(side, y + 1, z), true);
            }
        }
    }

    void addRowFaces()
    {
        for (Number number = 0; number < m_rowCount; ++number) {
            for (Number x = 0; x < m_width; ++x) {
                m_builder.addForward(rowEdge(number, x), rowUv(number, x, 0));
                m_builder.addForward(upEdge(number, x + 1), rowUv(number, x + 1, 0));
                m_builder.addBackward(rowEdge(number + 1, x), rowUv(number, x + 1, 1));
                m_builder.addBackward(upEdge(number, x), rowUv(number, x, 1));
                m_builder.endFace();
            }
        }
    }

    /// Walks an edge of a side from one corner of a cell to another.
    void addSideCorner(Side side, Number edge, Number y, Number z)
    {
        const bool isForward = m_builder.topology().edges[edge].start == sidePoint(side, y, z);
        const Number uv = sideUv(side, y, z);
        isForward ? m_builder.addForward(edge, uv) : m_builder.addBackward(edge, uv);
    }
    /// Cells row by row from below, from the back to the front. A loop begins below, on the right
    /// side at the front, on the left side at the back, and runs along z first.
    void addSideFaces(Side side)
    {
        for (Number y = 0; y < m_height; ++y) {
            for (Number z = 0; z < m_depth; ++z) {
                const Number first = side == Side::Right ? z + 1 : z;
                const Number second = side == Side::Right ? z : z + 1;
                addSideCorner(side, depthEdge(side, y, z), y, first);
                addSideCorner(side, heightEdge(side, y, second), y, second);
                addSideCorner(side, depthEdge(side, y + 1, z), y + 1, second);
                addSideCorner(side, heightEdge(side, y, first), y + 1, first);
                m_builder.endFace();
            }
        }
    }

    SolidBuilder& m_builder;
    const CubeSettings& m_settings;
    Number m_width;
    Number m_height;
    Number m_depth;
    Number m_rowCount;
    Number m_rowSize;
    Number m_firstInnerEdge = 0;
    bool m_hasCross = false;
    std::vector<Number> m_squareStart; ///< of each side; empty unless `EachSide`
};

} // namespace

std::shared_ptr<const MeshData> makeCube(const CubeSettings& settings,
                                         const SolidPlacement& placement)
{
    SolidBuilder builder;
    CubeWriter(builder, settings).write();
    return builder.finish(placement, -placement.heightBaseline * settings.height / 2);
}

} // namespace host::geometry
