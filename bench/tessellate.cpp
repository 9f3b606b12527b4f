// How fast surfaces are cut into triangles, against merely evaluating points, derivatives and
// normals on a grid of the same density.
//
//   bench_tessellate
//
// The surface is a wavy sheet of 60 x 60 cubic spans, whole and with 25 round holes. Prints medians
// of alternating runs in millions of triangles per second, and their ratios.
#include "host/geometry/tessellation/tessellate.h"
#include "host/geometry/tessellation/GridLines.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

using namespace host::geometry;

constexpr int kRuns = 9;
constexpr int kSpans = 60;
constexpr int kHolesPerRow = 5;

SurfaceData sheet()
{
    SurfaceData surface;
    surface.degreeU = surface.degreeV = 3;
    for (int i = -2; i <= kSpans + 2; ++i) {
        surface.knotsU.push_back(std::clamp(i, 0, kSpans));
    }
    surface.knotsV = surface.knotsU;
    for (int u = 0; u < kSpans + 3; ++u) {
        for (int v = 0; v < kSpans + 3; ++v) {
            surface.poles.insert(surface.poles.end(),
                                 {1.0 * u, 1.0 * v, 2 * std::sin(0.5 * u) * std::cos(0.4 * v)});
        }
    }
    return surface;
}

/// Four quarters of a circle as one quadratic curve, clockwise.
CurveData circle(double u, double v, double radius)
{
    CurveData curve;
    curve.degree = 2;
    curve.spans = 4;
    curve.form = SplineForm::Closed;
    curve.rational = true;
    curve.dimension = 2;
    curve.knots = {0, 0, 1, 1, 2, 2, 3, 3, 4, 4};
    constexpr int kX[] = {1, 1, 0, -1, -1, -1, 0, 1, 1};
    constexpr int kY[] = {0, -1, -1, -1, 0, 1, 1, 1, 0};
    for (int i = 0; i < 9; ++i) {
        curve.poles.insert(curve.poles.end(), {u + radius * kX[i], v + radius * kY[i],
                                               i % 2 == 0 ? 1 : std::sqrt(0.5)});
    }
    return curve;
}

/// The whole domain with round holes.
std::shared_ptr<const TrimRegion> holes()
{
    TrimRegion region;
    for (int i = 0; i < kHolesPerRow * kHolesPerRow; ++i) {
        constexpr double kStep = kSpans / kHolesPerRow;
        TrimBoundary boundary;
        boundary.type = 1;
        boundary.edges.resize(1);
        boundary.edges[0].curves2d.push_back(circle(
            (i / kHolesPerRow + 0.5) * kStep, (i % kHolesPerRow + 0.5) * kStep, 0.35 * kStep));
        region.boundaries.push_back(boundary);
    }
    return std::make_shared<const TrimRegion>(region);
}

template<class Action>
double secondsOf(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main()
{
    const SurfaceData whole = sheet();
    SurfaceData trimmed = whole;
    trimmed.trims.push_back(holes());
    const GridLines lines = chooseGridLines(SurfaceSheet(whole), {});
    const SurfaceEvaluator evaluator(whole);
    std::vector<double> plainSeconds, wholeSeconds, trimmedSeconds;
    std::size_t wholeTriangles = 0, trimmedTriangles = 0;
    for (int run = 0; run < kRuns; ++run) {
        plainSeconds.push_back(secondsOf([&] {
            std::vector<SurfacePoint> points(lines.us.size() * lines.vs.size());
            evaluator.evaluateGrid(lines.us, lines.vs, points);
        }));
        wholeSeconds.push_back(
            secondsOf([&] { wholeTriangles = tessellate(whole, {}).mesh.indices.size() / 3; }));
        trimmedSeconds.push_back(
            secondsOf([&] { trimmedTriangles = tessellate(trimmed, {}).mesh.indices.size() / 3; }));
    }
    const auto rate = [](std::size_t triangles, const std::vector<double>& seconds) {
        return static_cast<double>(triangles) / median(seconds) / 1e6;
    };
    const double plain = rate(2 * lines.cellCount(), plainSeconds);
    const double untrimmed = rate(wholeTriangles, wholeSeconds);
    const double cut = rate(trimmedTriangles, trimmedSeconds);
    std::printf("grid %.1f Mtriangles/s worth of points\n", plain);
    std::printf("untrimmed %.1f Mtriangles/s (%zu triangles)\n", untrimmed, wholeTriangles);
    std::printf("trimmed %.1f Mtriangles/s (%zu triangles)\n", cut, trimmedTriangles);
    std::printf("ratio-untrimmed %.3f\nratio-trimmed %.3f\n", untrimmed / plain, cut / plain);
    return 0;
}
