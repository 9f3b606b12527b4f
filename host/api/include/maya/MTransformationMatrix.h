// The local transformation of a transform node.
#pragma once

#include <maya/MMatrix.h>

class MTransformationMatrix {
public:
    enum RotationOrder {
        kInvalid = 0,
        kXYZ = 1,
        kYZX = 2,
        kZXY = 3,
        kXZY = 4,
        kYXZ = 5,
        kZYX = 6,
        kLast = 7
    };

    MTransformationMatrix() = default;
    explicit MTransformationMatrix(const MMatrix& matrix) : m_matrix(matrix) {}

    /// Everything that the transformation holds, pivots and shear included.
    MMatrix asMatrix(MStatus* ReturnStatus = nullptr) const;

    static const MTransformationMatrix identity;

private:
    MMatrix m_matrix;
};
