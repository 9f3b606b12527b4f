#include "host/geometry/mesh/texture/layOutUvs.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/texture/UvEditor.h"
#include "host/geometry/mesh/texture/uvPieces.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace host::geometry {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Where a piece is, and where it comes to.
struct Piece {
    double lowU = kInfinity;
    double lowV = kInfinity;
    double highU = -kInfinity;
    double highV = -kInfinity;
    bool isTurned = false;
    double u = 0;
    double v = 0;

    bool isLaid() const { return std::isfinite(highU - lowU) && std::isfinite(highV - lowV); }
    double width() const { return isTurned ? highV - lowV : highU - lowU; }
    double height() const { return isTurned ? highU - lowU : highV - lowV; }
};

struct Size {
    double width = 0;
    double height = 0;
    double larger() const { return std::fmax(width, height); }
};

std::vector<Piece> boundsOf(const std::vector<Vec2f>& points,
                            std::span<const std::uint32_t> pieceOfId, std::uint32_t count)
{
    std::vector<Piece> pieces(count);
    for (std::size_t id = 0; id < points.size(); ++id) {
        if (pieceOfId[id] != kNone) {
            Piece& piece = pieces[pieceOfId[id]];
            piece.lowU = std::fmin(piece.lowU, points[id].x);
            piece.lowV = std::fmin(piece.lowV, points[id].y);
            piece.highU = std::fmax(piece.highU, points[id].x);
            piece.highV = std::fmax(piece.highV, points[id].y);
        }
    }
    return pieces;
}

/// Rows from below, filled from the left, each as high as its first piece.
class Rows {
public:
    explicit Rows(std::vector<Piece>& pieces) : m_pieces(pieces)
    {
        for (std::uint32_t piece = 0; piece < pieces.size(); ++piece) {
            if (pieces[piece].isLaid()) {
                m_order.push_back(piece);
            }
        }
        std::stable_sort(m_order.begin(), m_order.end(),
                         [&pieces](std::uint32_t a, std::uint32_t b) {
                             return pieces[a].height() > pieces[b].height();
                         });
    }

    /// Within the best width, with a gap; the size is with the gap all about.
    Size fill(double gap)
    {
        constexpr int kTries = 24;
        constexpr double kPerTry = 1.0 / 16;
        double area = 0;
        double widest = 0;
        for (const std::uint32_t piece : m_order) {
            const double width = m_pieces[piece].width() + gap;
            area += width * (m_pieces[piece].height() + gap);
            widest = std::fmax(widest, width);
        }
        double best = 0;
        double bestSize = kInfinity;
        for (int i = 0; i < kTries; ++i) {
            const double width = std::fmax(widest, std::sqrt(area) * (1 + i * kPerTry));
            const double size = fillTo(width, gap).larger();
            if (size < bestSize) {
                bestSize = size;
                best = width;
            }
        }
        return fillTo(best, gap);
    }

    Size fillTo(double width, double gap)
    {
        constexpr double kSlack = 1e-9; // what rounding may add to pieces that fit exactly
        Size size;
        double u = 0;
        double v = 0;
        for (const std::uint32_t number : m_order) {
            Piece& piece = m_pieces[number];
            const double wide = piece.width() + gap;
            if (u > 0 && u + wide > width * (1 + kSlack)) {
                u = 0;
                v = size.height;
            }
            piece.u = u + gap / 2;
            piece.v = v + gap / 2;
            u += wide;
            size.width = std::fmax(size.width, u);
            size.height = std::fmax(size.height, v + piece.height() + gap);
        }
        return size;
    }

private:
    std::vector<Piece>& m_pieces;
    std::vector<std::uint32_t> m_order;
};

Size arrangeAlongU(std::vector<Piece>& pieces)
{
    Size size;
    for (Piece& piece : pieces) {
        if (piece.isLaid()) {
            piece.u = size.width;
            size.width += piece.width();
            size.height = std::fmax(size.height, piece.height());
        }
    }
    return size;
}

/// Nothing moves, but all together count from their low corner on.
Size keepTogether(std::vector<Piece>& pieces)
{
    Piece all;
    for (const Piece& piece : pieces) {
        if (piece.isLaid()) {
            all.lowU = std::fmin(all.lowU, piece.lowU);
            all.lowV = std::fmin(all.lowV, piece.lowV);
            all.highU = std::fmax(all.highU, piece.highU);
            all.highV = std::fmax(all.highV, piece.highV);
        }
    }
    for (Piece& piece : pieces) {
        piece.u = piece.lowU - all.lowU;
        piece.v = piece.lowV - all.lowV;
    }
    return {all.highU - all.lowU, all.highV - all.lowV};
}

Size arrange(std::vector<Piece>& pieces, const UvLayout& layout)
{
    if (layout.arrangement == UvArrangement::None) {
        return keepTogether(pieces);
    }
    for (Piece& piece : pieces) {
        piece.isTurned = layout.laysDown && piece.height() > piece.width();
    }
    if (layout.arrangement == UvArrangement::AlongU) {
        return arrangeAlongU(pieces);
    }
    Rows rows(pieces);
    const Size tight = rows.fill(0);
    const double space = std::isfinite(layout.space) ? layout.space : 0;
    const double gap = std::clamp(space, 0.0, kMaxUvSpace) * tight.larger();
    return gap > 0 ? rows.fill(gap) : tight;
}

/// What makes the size one, as far as the layout wants it.
Size factorsOf(const Size& size, UvFit fit)
{
    const auto factor = [](double length) {
        return length > 0 && std::isfinite(1 / length) ? 1 / length : 1;
    };
    switch (fit) {
    case UvFit::Uniform:
        return {factor(size.larger()), factor(size.larger())};
    case UvFit::Stretched:
        return {factor(size.width), factor(size.height)};
    default:
        return {1, 1};
    }
}

float narrow(double number, float fallback)
{
    const auto result = static_cast<float>(number);
    return std::isfinite(result) ? result : fallback;
}

} // namespace

void layOut(std::vector<Vec2f>& points, std::span<const std::uint32_t> pieceOfId,
            std::uint32_t pieceCount, const UvLayout& layout)
{
    if (layout.arrangement == UvArrangement::None && layout.fit == UvFit::None) {
        return;
    }
    std::vector<Piece> pieces = boundsOf(points, pieceOfId, pieceCount);
    const Size factors = factorsOf(arrange(pieces, layout), layout.fit);
    for (std::size_t id = 0; id < points.size(); ++id) {
        if (pieceOfId[id] == kNone || !pieces[pieceOfId[id]].isLaid()) {
            continue;
        }
        const Piece& piece = pieces[pieceOfId[id]];
        Vec2f& point = points[id];
        const double u = piece.isTurned ? piece.highV - point.y : point.x - piece.lowU;
        const double v = piece.isTurned ? point.x - piece.lowU : point.y - piece.lowV;
        point = {narrow((piece.u + u) * factors.width, point.x),
                 narrow((piece.v + v) * factors.height, point.y)};
    }
}

std::shared_ptr<const MeshData> layOutUvs(const MeshData& mesh, std::size_t set,
                                          std::span<const std::uint32_t> faces,
                                          const UvLayout& layout, bool flipsReversed)
{
    UvEditor editor(mesh, set);
    std::vector<Vec2f>& points = editor.points();
    UvPieces pieces = uvPieces(*mesh.topology, editor.corners(), points.size());
    std::vector<bool> isNamed(pieces.count);
    for (const std::uint32_t face : faces) {
        if (pieces.ofFace[face] != kNone) {
            isNamed[pieces.ofFace[face]] = true;
        }
    }
    const std::vector<double> areas =
        flipsReversed ? pieceAreas(*mesh.topology, editor.corners(), points, pieces)
                      : std::vector<double>(pieces.count);
    for (std::size_t id = 0; id < points.size(); ++id) {
        std::uint32_t& piece = pieces.ofId[id];
        piece = piece != kNone && isNamed[piece] ? piece : kNone;
        if (piece != kNone && areas[piece] < 0) {
            points[id].x = -points[id].x;
        }
    }
    layOut(points, pieces.ofId, pieces.count, layout);
    return editor.finish();
}

} // namespace host::geometry
