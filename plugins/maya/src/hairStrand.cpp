#include "plugins/maya/src/hairStrand.h"

#include "scene/BezierCurves.h"

#include <maya/MDoubleArray.h>
#include <maya/MVectorArray.h>

#include <cstdint>

namespace {

float narrow(double value)
{
    return static_cast<float>(value);
}

} // namespace

void addStrand(const MVectorArray& points, const MDoubleArray& widths, const MVectorArray& colors,
               float radius, orv::BezierCurves& curves)
{
    for (unsigned int i = 0; i < points.length(); ++i) {
        const MVector& p = points[i];
        const MVector color = i < colors.length() ? colors[i] : MVector(1, 1, 1);
        curves.addPoint(narrow(p.x), narrow(p.y), narrow(p.z));
        curves.addPointRadius(i < widths.length() ? narrow(widths[i]) : radius);
        curves.addPointColor(narrow(color.x), narrow(color.y), narrow(color.z));
    }
    curves.addCurve(static_cast<std::int32_t>(points.length()));
}
