#include <maya/MPoint.h>

#include <maya/MMatrix.h>

#include <cmath>
#include <ostream>

constinit const MPoint MPoint::origin;

MStatus MPoint::get(double numbers[4]) const
{
    numbers[0] = x;
    numbers[1] = y;
    numbers[2] = z;
    numbers[3] = w;
    return MStatus();
}

MPoint MPoint::operator*(const MMatrix& matrix) const
{
    MPoint result;
    for (unsigned int column = 0; column < 4; ++column) {
        result[column] = x * matrix[0][column] + y * matrix[1][column] + z * matrix[2][column] +
                         w * matrix[3][column];
    }
    return result;
}

double MPoint::distanceTo(const MPoint& other) const
{
    return (*this - other).length();
}

bool MPoint::isEquivalent(const MPoint& other, double tolerance) const
{
    return MVector(*this).isEquivalent(MVector(other), tolerance) &&
           std::abs(w - other.w) <= tolerance;
}

std::ostream& operator<<(std::ostream& stream, const MPoint& point)
{
    return stream << '[' << point.x << ", " << point.y << ", " << point.z << ", " << point.w << ']';
}
