// A Maya NURBS surface as a renderer surface.
#pragma once

#include <memory>

class MFnNurbsSurface;
class MObjectArray;
namespace orv {
class NurbsCurve;
class NurbsSurface;
} // namespace orv

/// Fills an empty surface: knot domain, orders, knots (Maya's lack the two outermost ones of each
/// direction; they are extrapolated), control points in object space, and trims if the surface has
/// any. What Maya cannot answer stays empty.
void convertNurbsSurface(MFnNurbsSurface& maya, std::shared_ptr<orv::NurbsSurface> surface);

/// The trim loops of all regions, the outer boundary of each marked as such; never a null pointer.
std::shared_ptr<orv::NurbsCurve> convertTrims(MFnNurbsSurface& maya);

/// Adds one loop of the curves among a boundary's edges; none when no edge is a curve.
void addTrimLoop(MObjectArray& edges, bool isOuter, orv::NurbsCurve& trims);
