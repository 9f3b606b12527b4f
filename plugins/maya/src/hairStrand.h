// One line of a Paint Effects shape as a curve of the renderer.
#pragma once

class MDoubleArray;
class MVectorArray;
namespace orv {
class BezierCurves;
}

/// Adds a curve of these points. The widths become the points' radii as they are, not halved: so
/// the renderer expects it. Where there are fewer widths or colours than points the rest gets
/// `radius` and white, so that the values of later strands stay with their points.
void addStrand(const MVectorArray& points, const MDoubleArray& widths, const MVectorArray& colors,
               float radius, orv::BezierCurves& curves);
