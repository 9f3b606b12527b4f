#include <maya/MMatrix.h>

#include "host/api/src/matrices.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace host::api {

Matrix4 toMatrix4(const MMatrix& matrix)
{
    Matrix4 made;
    for (unsigned int row = 0; row < 4; ++row) {
        std::copy_n(matrix[row], 4, made.m[row].begin());
    }
    return made;
}

MMatrix toMatrix(const Matrix4& matrix)
{
    MMatrix made;
    for (unsigned int row = 0; row < 4; ++row) {
        std::copy_n(matrix.m[row].begin(), 4, made[row]);
    }
    return made;
}

} // namespace host::api

using host::api::toMatrix;
using host::api::toMatrix4;

constinit const MMatrix MMatrix::identity;

MMatrix::MMatrix(const double (&rows)[4][4])
{
    std::copy_n(&rows[0][0], 16, &matrix[0][0]);
}

MMatrix::MMatrix(const float (&rows)[4][4])
{
    std::copy_n(&rows[0][0], 16, &matrix[0][0]);
}

MStatus MMatrix::get(double rows[4][4]) const
{
    std::copy_n(&matrix[0][0], 16, &rows[0][0]);
    return MStatus();
}

MMatrix MMatrix::operator*(const MMatrix& other) const
{
    return toMatrix(toMatrix4(*this) * toMatrix4(other));
}

MMatrix& MMatrix::operator*=(const MMatrix& other)
{
    return *this = *this * other;
}

MMatrix MMatrix::inverse() const
{
    return toMatrix(host::inverse(toMatrix4(*this)));
}

MMatrix& MMatrix::setToIdentity()
{
    return *this = identity;
}

bool MMatrix::operator==(const MMatrix& other) const
{
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0]);
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0],
                      [&](double a, double b) { return std::abs(a - b) <= tolerance; });
}

std::ostream& operator<<(std::ostream& stream, const MMatrix& matrix)
{
    for (unsigned int row = 0; row < 4; ++row) {
        stream << (row == 0 ? "[[" : ", [");
        for (unsigned int column = 0; column < 4; ++column) {
            stream << (column == 0 ? "" : ", ") << matrix[row][column];
        }
        stream << ']';
    }
    return stream << ']';
}
