// A 4x4 matrix for row vectors: the translation is in the fourth row.
#pragma once

#include <maya/MStatus.h>

#include <iosfwd>

class MMatrix {
public:
    /// The identity.
    constexpr MMatrix() = default;
    explicit MMatrix(const double (&rows)[4][4]);
    explicit MMatrix(const float (&rows)[4][4]);

    double* operator[](unsigned int row) { return matrix[row]; }
    const double* operator[](unsigned int row) const { return matrix[row]; }
    double& operator()(unsigned int row, unsigned int column) { return matrix[row][column]; }
    double operator()(unsigned int row, unsigned int column) const { return matrix[row][column]; }
    MStatus get(double rows[4][4]) const;

    MMatrix operator*(const MMatrix& other) const;
    MMatrix& operator*=(const MMatrix& other);
    /// The identity where there is no inverse.
    MMatrix inverse() const;
    MMatrix& setToIdentity();

    /// Exact; `isEquivalent` has the tolerance.
    bool operator==(const MMatrix& other) const;
    bool isEquivalent(const MMatrix& other, double tolerance = 1e-10) const;

    static const MMatrix identity;

    double matrix[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

/// "[[a, b, c, d], [...], [...], [...]]".
std::ostream& operator<<(std::ostream& stream, const MMatrix& matrix);
