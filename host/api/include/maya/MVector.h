// A direction or offset of three doubles.
#pragma once

#include <maya/MStatus.h>

#include <iosfwd>

class MMatrix;
class MPoint;

class MVector {
public:
    constexpr MVector() = default;
    constexpr MVector(double x_, double y_, double z_ = 0) : x(x_), y(y_), z(z_) {}
    explicit MVector(const MPoint& point);
    constexpr explicit MVector(const double (&numbers)[3])
        : x(numbers[0]), y(numbers[1]), z(numbers[2])
    {
    }

    MStatus get(double numbers[3]) const;
    /// x, y, z by number 0 to 2.
    double operator[](unsigned int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](unsigned int index) { return index == 0 ? x : index == 1 ? y : z; }

    MVector operator+(const MVector& other) const
    {
        return {x + other.x, y + other.y, z + other.z};
    }
    MVector operator-(const MVector& other) const
    {
        return {x - other.x, y - other.y, z - other.z};
    }
    MVector operator-() const { return {-x, -y, -z}; }
    MVector operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    MVector operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    /// The dot product.
    double operator*(const MVector& other) const { return x * other.x + y * other.y + z * other.z; }
    /// The cross product.
    MVector operator^(const MVector& other) const;
    /// The row vector times the matrix, without its translation.
    MVector operator*(const MMatrix& matrix) const;

    double length() const;
    /// The vector over its length; a zero vector stays.
    MVector normal() const;
    MStatus normalize();

    /// Exact; `isEquivalent` has the tolerance.
    bool operator==(const MVector& other) const
    {
        return x == other.x && y == other.y && z == other.z;
    }
    bool isEquivalent(const MVector& other, double tolerance = 1e-10) const;

    static const MVector zero;
    static const MVector one;
    static const MVector xAxis;
    static const MVector yAxis;
    static const MVector zAxis;
    static const MVector xNegAxis;
    static const MVector yNegAxis;
    static const MVector zNegAxis;

    double x = 0;
    double y = 0;
    double z = 0;
};

MVector operator*(double factor, const MVector& vector);
std::ostream& operator<<(std::ostream& stream, const MVector& vector);
