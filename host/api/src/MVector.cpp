#include <maya/MVector.h>

#include "host/math/Matrix4.h"

#include "host/api/src/matrices.h"

#include <maya/MPoint.h>

#include <cmath>
#include <ostream>

using host::api::toVec;
using host::api::toVector;

constinit const MVector MVector::zero(0, 0, 0);
constinit const MVector MVector::one(1, 1, 1);
constinit const MVector MVector::xAxis(1, 0, 0);
constinit const MVector MVector::yAxis(0, 1, 0);
constinit const MVector MVector::zAxis(0, 0, 1);
constinit const MVector MVector::xNegAxis(-1, 0, 0);
constinit const MVector MVector::yNegAxis(0, -1, 0);
constinit const MVector MVector::zNegAxis(0, 0, -1);

MVector::MVector(const MPoint& point) : x(point.x), y(point.y), z(point.z) {}

MStatus MVector::get(double numbers[3]) const
{
    numbers[0] = x;
    numbers[1] = y;
    numbers[2] = z;
    return MStatus();
}

MVector MVector::operator^(const MVector& other) const
{
    return toVector(host::cross(toVec(*this), toVec(other)));
}

MVector MVector::operator*(const MMatrix& matrix) const
{
    return toVector(host::transformVector(toVec(*this), host::api::toMatrix4(matrix)));
}

double MVector::length() const
{
    return host::length(toVec(*this));
}

MVector MVector::normal() const
{
    return toVector(host::normalized(toVec(*this)));
}

MStatus MVector::normalize()
{
    *this = normal();
    return MStatus();
}

bool MVector::isEquivalent(const MVector& other, double tolerance) const
{
    return std::abs(x - other.x) <= tolerance && std::abs(y - other.y) <= tolerance &&
           std::abs(z - other.z) <= tolerance;
}

MVector operator*(double factor, const MVector& vector)
{
    return vector * factor;
}

std::ostream& operator<<(std::ostream& stream, const MVector& vector)
{
    return stream << '[' << vector.x << ", " << vector.y << ", " << vector.z << ']';
}
