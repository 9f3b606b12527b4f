#include <maya/MGeometryExtractor.h>
#include <maya/MHWGeometry.h>

#include <gtest/gtest.h>

namespace {

using namespace MHWRender;

TEST(MVertexBufferDescriptor, StridesByItsDimension)
{
    const MVertexBufferDescriptor uv("map1", MGeometry::kTexture, MGeometry::kFloat, 2);
    EXPECT_EQ(uv.name(), "map1");
    EXPECT_EQ(uv.semantic(), MGeometry::kTexture);
    EXPECT_EQ(uv.dataType(), MGeometry::kFloat);
    EXPECT_EQ(uv.dimension(), 2);
    EXPECT_EQ(uv.stride(), 2);
    EXPECT_EQ(uv.offset(), 0);
    EXPECT_EQ(uv.dataTypeSize(), 4u);
}

TEST(MVertexBufferDescriptor, KnowsTheBytesOfEveryType)
{
    constexpr unsigned int kBytes[] = {0, 4, 8, 1, 1, 2, 2, 4, 4};
    for (int type = MGeometry::kInvalidType; type <= MGeometry::kUnsignedInt32; ++type) {
        MVertexBufferDescriptor descriptor;
        descriptor.setDataType(static_cast<MGeometry::DataType>(type));
        EXPECT_EQ(descriptor.dataTypeSize(), kBytes[type]) << type;
    }
}

TEST(MIndexBufferDescriptor, IsOfTheWholeShapeAndOf32BitsByDefault)
{
    const MIndexBufferDescriptor indices(MIndexBufferDescriptor::kTriangle, "",
                                         MGeometry::kTriangles, 3);
    EXPECT_EQ(indices.indexType(), MIndexBufferDescriptor::kTriangle);
    EXPECT_EQ(indices.primitive(), MGeometry::kTriangles);
    EXPECT_EQ(indices.primitiveStride(), 3u);
    EXPECT_TRUE(indices.component().isNull());
    EXPECT_EQ(indices.dataType(), MGeometry::kUnsignedInt32);
}

TEST(MGeometry, NumbersItsEnumerators)
{
    EXPECT_EQ(MGeometry::kPosition, 1);
    EXPECT_EQ(MGeometry::kNormal, 2);
    EXPECT_EQ(MGeometry::kTexture, 3);
    EXPECT_EQ(MGeometry::kFloat, 1);
    EXPECT_EQ(MGeometry::kUnsignedInt32, 8);
    EXPECT_EQ(MGeometry::kTriangles, 4);
    EXPECT_EQ(MGeometry::kPatch, 10);
    EXPECT_EQ(MIndexBufferDescriptor::kTriangle, 3);
    EXPECT_EQ(MIndexBufferDescriptor::kCustom, 14);
    EXPECT_EQ(kPolyGeom_Normal, 0);
    EXPECT_EQ(kPolyGeom_NotSharing, 1);
    EXPECT_EQ(kPolyGeom_BaseMesh, 2);
}

TEST(MGeometryExtractor, CountsTheIndicesOfPrimitives)
{
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(5, MGeometry::kTriangles), 15u);
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(5, MGeometry::kTriangles, 3), 15u);
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(5, MGeometry::kLines), 10u);
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(5, MGeometry::kPoints), 5u);
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(5, MGeometry::kPatch, 16), 80u);
    EXPECT_EQ(MGeometryExtractor::minimumBufferSize(0, MGeometry::kTriangles), 0u);
}

} // namespace
