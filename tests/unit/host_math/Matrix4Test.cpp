#include "host/math/Matrix4.h"

#include <gtest/gtest.h>

#include <limits>

namespace host {
namespace {

TEST(Matrix4, ProductAppliesTheLeftFactorFirst)
{
    // (1 2 3) scaled by 2 and then moved by (10 0 0), and the other way round.
    const Matrix4 scaleThenMove = scaling({2, 2, 2}) * translation({10, 0, 0});
    EXPECT_EQ(transformPoint({1, 2, 3}, scaleThenMove), (Vec3d{12, 4, 6}));
    const Matrix4 moveThenScale = translation({10, 0, 0}) * scaling({2, 2, 2});
    EXPECT_EQ(transformPoint({1, 2, 3}, moveThenScale), (Vec3d{22, 4, 6}));
}

TEST(Matrix4, VectorsAreNotTranslated)
{
    EXPECT_EQ(transformVector({1, 2, 3}, translation({10, 20, 30})), (Vec3d{1, 2, 3}));
}

TEST(Matrix4, TranslationStandsInTheFourthRow)
{
    const Matrix4 matrix = translation({7, 8, 9});
    EXPECT_EQ(matrix.m[3], (std::array<double, 4>{7, 8, 9, 1}));
    EXPECT_EQ(matrix.m[0], (std::array<double, 4>{1, 0, 0, 0}));
}

TEST(Matrix4, ShearRowsAreXyThenXzYz)
{
    const Matrix4 matrix = shearing({2, 3, 5});
    EXPECT_EQ(transformPoint({0, 1, 0}, matrix), (Vec3d{2, 1, 0}));
    EXPECT_EQ(transformPoint({0, 0, 1}, matrix), (Vec3d{3, 5, 1}));
    EXPECT_EQ(transformPoint({1, 0, 0}, matrix), (Vec3d{1, 0, 0}));
}

TEST(Matrix4, InverseOfSimpleMatricesIsExact)
{
    EXPECT_EQ(inverse(Matrix4{}), Matrix4{});
    EXPECT_EQ(inverse(translation({1, -2, 3})), translation({-1, 2, -3}));
    EXPECT_EQ(inverse(scaling({2, 4, 0.5})), scaling({0.5, 0.25, 2}));
}

TEST(Matrix4, InverseTimesMatrixIsIdentityForAFullMatrix)
{
    Matrix4 matrix;
    matrix.m = {{{1, 2, 0, 1}, {3, -1, 4, 0}, {0, 5, 2, 2}, {1, 0, 3, 7}}};
    for (const Matrix4& product : {inverse(matrix) * matrix, matrix * inverse(matrix)}) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                EXPECT_NEAR(product.m[row][column], row == column ? 1 : 0, 1e-14);
            }
        }
    }
}

TEST(Matrix4, InverseHasNoNegativeZeros)
{
    const Matrix4 result = inverse(translation({1, 2, 3}) * scaling({-1, 1, 1}));
    for (const auto& row : result.m) {
        for (const double value : row) {
            EXPECT_FALSE(value == 0 && std::signbit(value));
        }
    }
}

TEST(Matrix4, InverseOfASingularMatrixIsIdentity)
{
    EXPECT_EQ(inverse(scaling({1, 0, 1})), Matrix4{});
    EXPECT_EQ(inverse(scaling({1, std::numeric_limits<double>::infinity(), 1})), Matrix4{});
    EXPECT_EQ(inverse(scaling({1, std::numeric_limits<double>::quiet_NaN(), 1})), Matrix4{});
}

} // namespace
} // namespace host
