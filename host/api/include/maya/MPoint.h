// A position with a weight. Control points come as Cartesian x, y, z with the weight apart.
#pragma once

#include <maya/MStatus.h>
#include <maya/MVector.h>

#include <iosfwd>

class MPoint {
public:
    constexpr MPoint() = default;
    constexpr MPoint(double x_, double y_, double z_ = 0, double w_ = 1)
        : x(x_), y(y_), z(z_), w(w_)
    {
    }
    constexpr MPoint(const MVector& offset) : x(offset.x), y(offset.y), z(offset.z) {}

    MStatus get(double numbers[4]) const;
    /// x, y, z, w by number 0 to 3.
    double operator[](unsigned int index) const
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    double& operator[](unsigned int index)
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }

    MPoint operator+(const MVector& offset) const
    {
        return {x + offset.x, y + offset.y, z + offset.z, w};
    }
    MPoint operator-(const MVector& offset) const
    {
        return {x - offset.x, y - offset.y, z - offset.z, w};
    }
    MVector operator-(const MPoint& other) const { return {x - other.x, y - other.y, z - other.z}; }
    /// The row vector (x, y, z, w) times the matrix.
    MPoint operator*(const MMatrix& matrix) const;
    double distanceTo(const MPoint& other) const;

    /// Exact, weight included; `isEquivalent` has the tolerance.
    bool operator==(const MPoint& other) const
    {
        return x == other.x && y == other.y && z == other.z && w == other.w;
    }
    bool isEquivalent(const MPoint& other, double tolerance = 1e-10) const;

    static const MPoint origin;

    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
};

std::ostream& operator<<(std::ostream& stream, const MPoint& point);
