#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

const double kMove[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {2, 3, 4, 1}};
const double kScale[4][4] = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}};

TEST(MVector, KnowsItsConstants)
{
    EXPECT_EQ(MVector::zero, MVector(0, 0, 0));
    EXPECT_EQ(MVector::one, MVector(1, 1, 1));
    EXPECT_EQ(MVector::xAxis, MVector(1, 0, 0));
    EXPECT_EQ(MVector::yAxis, MVector(0, 1, 0));
    EXPECT_EQ(MVector::zAxis, MVector(0, 0, 1));
    EXPECT_EQ(MVector::xNegAxis, MVector(-1, 0, 0));
    EXPECT_EQ(MVector::yNegAxis, MVector(0, -1, 0));
    EXPECT_EQ(MVector::zNegAxis, MVector(0, 0, -1));
}

TEST(MVector, ComparesExactlyUnlessAToleranceIsAskedFor)
{
    const MVector near(1 + 1e-12, 0, 0);
    EXPECT_FALSE(near == MVector::xAxis);
    EXPECT_TRUE(near.isEquivalent(MVector::xAxis));
    EXPECT_FALSE(near.isEquivalent(MVector(1.1, 0, 0)));
}

TEST(MVector, Calculates)
{
    EXPECT_EQ(MVector(1, 2, 3) + MVector(1, 1, 1), MVector(2, 3, 4));
    EXPECT_EQ(MVector(1, 2, 3) - MVector(1, 1, 1), MVector(0, 1, 2));
    EXPECT_EQ(-MVector(1, 2, 3) * 2, MVector(-2, -4, -6));
    EXPECT_EQ(2.0 * MVector(1, 2, 3) / 2, MVector(1, 2, 3));
    EXPECT_EQ(MVector(1, 2, 3) * MVector(4, 5, 6), 32);
    EXPECT_EQ(MVector::xAxis ^ MVector::yAxis, MVector::zAxis);
    EXPECT_EQ(MVector(3, 4, 0).length(), 5);
    EXPECT_TRUE(MVector(3, 4, 0).normal().isEquivalent(MVector(0.6, 0.8, 0)));
    EXPECT_EQ(MVector::zero.normal(), MVector::zero);
}

TEST(MVector, IsNotMovedByAMatrixAndAPointIs)
{
    EXPECT_EQ(MVector(1, 0, 0) * MMatrix(kMove), MVector(1, 0, 0));
    EXPECT_EQ(MPoint(1, 0, 0) * MMatrix(kMove), MPoint(3, 3, 4, 1));
}

TEST(MPoint, HasAWeightOfOneByDefault)
{
    EXPECT_EQ(MPoint(), MPoint(0, 0, 0, 1));
    EXPECT_EQ(MPoint(1, 2, 3).w, 1);
    EXPECT_FALSE(MPoint(1, 2, 3) == MPoint(1, 2, 3, 2));
    EXPECT_EQ(MPoint(3, 0, 0) - MPoint(1, 0, 0), MVector(2, 0, 0));
    EXPECT_EQ(MPoint(1, 2, 3) + MVector(1, 1, 1), MPoint(2, 3, 4));
    EXPECT_EQ(MPoint(0, 3, 0).distanceTo(MPoint(4, 0, 0)), 5);
}

TEST(MMatrix, KeepsRowsWithTheTranslationLast)
{
    const MMatrix matrix(kMove);
    EXPECT_EQ(matrix[3][0], 2);
    EXPECT_EQ(matrix(3, 2), 4);
    EXPECT_EQ(matrix.matrix[3][1], 3);
}

TEST(MMatrix, MultipliesForRowVectors)
{
    // First the left one acts: moving, then scaling doubles the translation.
    EXPECT_EQ((MMatrix(kMove) * MMatrix(kScale))[3][0], 4);
    EXPECT_EQ((MMatrix(kScale) * MMatrix(kMove))[3][0], 2);
    EXPECT_EQ(MMatrix(kMove) * MMatrix(kMove).inverse(), MMatrix::identity);
    MMatrix matrix(kMove);
    matrix *= MMatrix(kScale);
    EXPECT_EQ(matrix[3][2], 8);
    EXPECT_EQ(matrix.setToIdentity(), MMatrix());
}

TEST(MMatrix, ComparesExactlyUnlessAToleranceIsAskedFor)
{
    MMatrix near;
    near(1, 2) = 1e-12;
    EXPECT_FALSE(near == MMatrix::identity);
    EXPECT_TRUE(near.isEquivalent(MMatrix::identity));
}

TEST(MMatrix, StreamsItsRowsInBrackets)
{
    std::ostringstream stream;
    stream << MMatrix(kMove);
    EXPECT_EQ(stream.str(), "[[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [2, 3, 4, 1]]");
}

TEST(MTransformationMatrix, GivesTheMatrixItWasMadeOf)
{
    MStatus status(MStatus::kFailure);
    EXPECT_EQ(MTransformationMatrix(MMatrix(kMove)).asMatrix(&status), MMatrix(kMove));
    EXPECT_TRUE(status);
    EXPECT_EQ(MTransformationMatrix().asMatrix(), MMatrix::identity);
    EXPECT_EQ(MTransformationMatrix::kZYX, 6);
}

} // namespace
