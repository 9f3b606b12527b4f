#include "plugins/maya/src/surfaceConversion.h"

#include "importers/maya/src/Log.h"
#include "scene/NurbsCurve.h"
#include "scene/NurbsSurface.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>
#include <maya/MTrimBoundaryArray.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

/// Knots of one direction between the placeholder and the end: as many as the surface says, or
/// fewer where Maya gave fewer.
template<typename Add>
void addKnots(const MDoubleArray& knots, int count, Add add)
{
    const unsigned int length =
        std::min(knots.length(), static_cast<unsigned int>(std::max(count, 0)));
    for (unsigned int i = 0; i < length; ++i) {
        add(knots[i]);
    }
}

/// Maya stores v fastest, the renderer u; the renderer's coordinates are multiplied by the weight.
void addControlPoints(const MPointArray& points, int countU, int countV, orv::NurbsSurface& surface)
{
    const auto nu = static_cast<std::size_t>(std::max(countU, 0));
    const auto nv = static_cast<std::size_t>(std::max(countV, 0));
    if (nu * nv > points.length()) {
        return;
    }
    for (std::size_t v = 0; v < nv; ++v) {
        for (std::size_t u = 0; u < nu; ++u) {
            const MPoint& p = points[static_cast<unsigned int>(u * nv + v)];
            surface.addControlPoint(p.w * p.x, p.w * p.y, p.w * p.z, p.w);
        }
    }
}

void addEdge(MFnNurbsCurve& edge, orv::NurbsCurve& trims)
{
    double start = 0;
    double end = 0;
    edge.getKnotDomain(start, end);
    trims.addEdgeOrder(edge.degree() + 1);
    trims.addEdgeRange(start, end);

    MPointArray points;
    edge.getCVs(points, MSpace::kObject);
    for (unsigned int i = 0; i < points.length(); ++i) {
        const MPoint& p = points[i];
        trims.addEdgeUVW(p.w * p.x, p.w * p.y, p.w);
    }

    MDoubleArray knots;
    edge.getKnots(knots);
    trims.addEdgeKnotCount(static_cast<std::int32_t>(knots.length()) + 2);
    const std::size_t first = trims.edgeKnotCount();
    trims.addEdgeKnot(0.0); // replaced by the extension
    for (unsigned int i = 0; i < knots.length(); ++i) {
        trims.addEdgeKnot(knots[i]);
    }
    trims.extendEdgeKnots(first);
}

} // namespace

void convertNurbsSurface(MFnNurbsSurface& maya, std::shared_ptr<orv::NurbsSurface> surface)
{
    double startU = 0;
    double endU = 0;
    double startV = 0;
    double endV = 0;
    maya.getKnotDomain(startU, endU, startV, endV);
    surface->setRange(startU, endU, startV, endV);
    FILE_LOG(DEBUG4) << "Nurbs degree (u,v): " << maya.degreeU() << ", " << maya.degreeV();
    surface->setOrder(maya.degreeU() + 1, maya.degreeV() + 1);

    MDoubleArray knotsU;
    MDoubleArray knotsV;
    maya.getKnotsInU(knotsU);
    maya.getKnotsInV(knotsV);
    surface->padKnots();
    addKnots(knotsU, maya.numKnotsInU(), [&](double knot) { surface->addUKnot(knot); });
    addKnots(knotsV, maya.numKnotsInV(), [&](double knot) { surface->addVKnot(knot); });
    surface->extendKnots();
    FILE_LOG(DEBUG4) << "knots (u,v): " << maya.numKnotsInU() << ", " << maya.numKnotsInV();

    MPointArray points;
    maya.getCVs(points, MSpace::kObject);
    addControlPoints(points, maya.numCVsInU(), maya.numCVsInV(), *surface);
    if (maya.isTrimmedSurface()) {
        surface->setTrims(convertTrims(maya));
    }
}

std::shared_ptr<orv::NurbsCurve> convertTrims(MFnNurbsSurface& maya)
{
    auto trims = std::make_shared<orv::NurbsCurve>();
    const unsigned int regions = maya.numRegions();
    // spelling and blanks are kept: readers of the log look for them
    FILE_LOG(DEBUG4) << "writting " << regions << " trimcurves";
    for (unsigned int region = 0; region < regions; ++region) {
        MTrimBoundaryArray boundaries;
        maya.getTrimBoundaries(boundaries, region, true);
        for (unsigned int i = 0; i < boundaries.length(); ++i) {
            MObjectArray edges = boundaries[i];
            FILE_LOG(DEBUG4) << "here is   " << edges.length() << " edges";
            addTrimLoop(edges, i == 0, *trims);
        }
    }
    return trims;
}

void addTrimLoop(MObjectArray& edges, bool isOuter, orv::NurbsCurve& trims)
{
    std::int32_t count = 0;
    for (unsigned int i = 0; i < edges.length(); ++i) {
        MObject& edge = edges[i];
        if (edge.hasFn(MFn::kNurbsCurve)) {
            MFnNurbsCurve curve(edge);
            addEdge(curve, trims);
            ++count;
        }
    }
    if (count > 0) {
        trims.addTrim(count, isOuter ? 1 : 0);
    }
}
