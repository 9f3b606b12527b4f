// A rational B-spline surface, with its trim curves and, beside it, a mesh of the same surface.
#pragma once

#include "scene/LightGeometry.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace orv {

class NurbsCurve;

/// Two states like a mesh: with data, and defined. Nothing is checked when it is written: counts of
/// knots and control points against orders are the builder's affair.
class NurbsSurface final : public LightGeometry {
public:
    /// What stands at the front of a knot vector until `extendKnots`: unmistakable where it is
    /// forgotten.
    static constexpr double kPlaceholderKnot = 12648430.0;
    /// Flags of the group that a surface is written in.
    static constexpr std::uint32_t kGroupFlags = 0x10000;

    /// An empty surface, its range inverted and its orders -1, that wears a `Diffuse` named
    /// "default".
    explicit NurbsSurface(std::string name);
    ~NurbsSurface() override;

    /// A group that holds the mesh, if there is one, in the surface's material, and the surface.
    void write(orvSceneapi_oo& oo) override;
    /// Writes the definition without material, then the mesh's; releases the data of the surface
    /// and its trims. Range and orders stay.
    void define(orvSceneapi_oo& oo) override;
    /// Bytes of knots, control points and trims.
    std::size_t memorySize() const override;

    void setRange(double uMin, double uMax, double vMin, double vMax);
    void setOrder(std::int32_t uOrder, std::int32_t vOrder);
    void addUKnot(double knot);
    void addVKnot(double knot);
    /// Coordinates multiplied by the weight, then the weight; u runs fastest.
    void addControlPoint(double x, double y, double z, double w);
    /// Puts a placeholder at the front of both knot vectors, before the knots are added.
    void padKnots();
    /// Completes both knot vectors once their knots are added.
    void extendKnots();

    void setTrims(std::shared_ptr<NurbsCurve> trims);
    const std::shared_ptr<NurbsCurve>& getTrims() const { return m_trims; }
    /// Also gives the mesh the surface's name.
    void setMesh(std::shared_ptr<LightGeometry> mesh);
    const std::shared_ptr<LightGeometry>& getMesh() const { return m_mesh; }
    bool hasMesh() const { return m_mesh != nullptr; }

    const std::vector<double>& uKnots() const { return m_uKnots; }
    const std::vector<double>& vKnots() const { return m_vKnots; }
    const std::vector<double>& controlPoints() const { return m_controlPoints; }

    /// Empties knots and control points; keeps their storage.
    void clearData();

private:
    void writeGeometry(orvSceneapi_oo& oo) const;
    void writeArrays(orvSceneapi_oo& oo) const;
    /// Gives the storage of the (empty) arrays back.
    void releaseStorage();

    // the smallest and largest single-precision numbers: a range that was never set
    static constexpr double kUnsetMin = std::numeric_limits<float>::max();
    static constexpr double kUnsetMax = std::numeric_limits<float>::min();

    double m_uMin = kUnsetMin;
    double m_uMax = kUnsetMax;
    double m_vMin = kUnsetMin;
    double m_vMax = kUnsetMax;
    std::int32_t m_uOrder = -1;
    std::int32_t m_vOrder = -1;
    std::vector<double> m_uKnots;
    std::vector<double> m_vKnots;
    std::vector<double> m_controlPoints;
    std::shared_ptr<NurbsCurve> m_trims;
    std::shared_ptr<LightGeometry> m_mesh;
};

} // namespace orv
