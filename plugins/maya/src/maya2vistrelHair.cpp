// The hair half of the driver: the strands of Paint Effects shapes.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/hairStrand.h"
#include "scene/BezierCurves.h"
#include "scene/Diffuse.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnPfxGeometry.h>
#include <maya/MRenderLine.h>
#include <maya/MRenderLineArray.h>
#include <maya/MVectorArray.h>

namespace {

constexpr int kStrandOrder = 2;

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
    const float radius = static_cast<float>(m_args.getDouble(CURVERADIUS, 1.0));
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
        addStrand(line.getLine(), line.getWidth(), line.getColor(), radius, *curves);
    }
    mainLines.deleteArray();
    leafLines.deleteArray();
    flowerLines.deleteArray();

    const auto material = std::make_shared<orv::Diffuse>("diffuse");
    material->setVertexColor(true);
    curves->setMaterial(material);
    return curves;
}
