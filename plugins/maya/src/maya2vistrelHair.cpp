// The hair half of the driver: the strands of Paint Effects shapes.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "scene/BezierCurves.h"
#include "scene/Diffuse.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnPfxGeometry.h>
#include <maya/MRenderLine.h>
#include <maya/MRenderLineArray.h>
#include <maya/MVectorArray.h>

namespace {

constexpr int kStrandOrder = 2;

float narrow(double value)
{
    return static_cast<float>(value);
}

/// Every point gets a radius and a colour: the batch's radius and white where Maya has none, so
/// that the values of later strands stay with their points.
void addStrand(const MRenderLine& line, float radius, orv::BezierCurves& curves)
{
    const MVectorArray points = line.getLine();
    const MDoubleArray widths = line.getWidth();
    const MVectorArray colors = line.getColor();
    for (unsigned int i = 0; i < points.length(); ++i) {
        const MVector& p = points[i];
        curves.addPoint(narrow(p.x), narrow(p.y), narrow(p.z));
        // the width is the radius, not twice it: so the renderer expects it
        curves.addPointRadius(i < widths.length() ? narrow(widths[i]) : radius);
        const MVector color = i < colors.length() ? colors[i] : MVector(1, 1, 1);
        curves.addPointColor(narrow(color.x), narrow(color.y), narrow(color.z));
    }
    curves.addCurve(static_cast<std::int32_t>(points.length()));
}

} // namespace

std::shared_ptr<orv::BezierCurves> Maya2Vistrel::convertHair(const MDagPath& path) const
{
    auto curves = std::make_shared<orv::BezierCurves>("");
    MObject node = path.node();
    const MFnPfxGeometry hair(node);
    MRenderLineArray mainLines;
    MRenderLineArray leafLines;
    MRenderLineArray flowerLines;
    // lines, widths and colours, in object space
    hair.getLineData(mainLines, leafLines, flowerLines, true, false, true, false, false, true,
                     false, false, false);
    const float radius = narrow(m_args.getDouble(CURVERADIUS, 1.0));
    curves->setRadius(radius);
    curves->setOrder(kStrandOrder);
    if (m_args.getBool(SMOOTH_CURVES, false)) {
        curves->enableFitToCubic();
    }
    FILE_LOG(INFO) << mainLines.length() << " lines in this hair";
    for (int i = 0; i < mainLines.length(); ++i) {
        MStatus status;
        const MRenderLine line = mainLines.renderLine(i, &status);
        TRACE_REPORT(status, "renderLine");
        addStrand(line, radius, *curves);
    }
    mainLines.deleteArray();
    leafLines.deleteArray();
    flowerLines.deleteArray();

    const auto material = std::make_shared<orv::Diffuse>("diffuse");
    material->setVertexColor(true);
    curves->setMaterial(material);
    return curves;
}
