// What buffers of vertices and indices hold.
#pragma once

#include <maya/MObject.h>
#include <maya/MString.h>

namespace MHWRender {

class MGeometry {
public:
    enum Primitive {
        kInvalidPrimitive = 0,
        kPoints = 1,
        kLines = 2,
        kLineStrip = 3,
        kTriangles = 4,
        kTriangleStrip = 5,
        kAdjacentTriangles = 6,
        kAdjacentTriangleStrip = 7,
        kAdjacentLines = 8,
        kAdjacentLineStrip = 9,
        kPatch = 10
    };
    enum Semantic {
        kInvalidSemantic = 0,
        kPosition = 1,
        kNormal = 2,
        kTexture = 3,
        kColor = 4,
        kTangent = 5,
        kBitangent = 6,
        kTangentWithSign = 7
    };
    enum DataType {
        kInvalidType = 0,
        kFloat = 1,
        kDouble = 2,
        kChar = 3,
        kUnsignedChar = 4,
        kInt16 = 5,
        kUnsignedInt16 = 6,
        kInt32 = 7,
        kUnsignedInt32 = 8
    };
};

/// One stream of numbers per vertex.
class MVertexBufferDescriptor {
public:
    MVertexBufferDescriptor() = default;
    /// `name` is the uv set of a texture stream.
    MVertexBufferDescriptor(const MString& name, MGeometry::Semantic semantic,
                            MGeometry::DataType dataType, int dimension = 1);

    MString name() const { return m_name; }
    void setName(const MString& name) { m_name = name; }
    MGeometry::Semantic semantic() const { return m_semantic; }
    void setSemantic(MGeometry::Semantic semantic) { m_semantic = semantic; }
    MGeometry::DataType dataType() const { return m_dataType; }
    void setDataType(MGeometry::DataType dataType) { m_dataType = dataType; }
    /// Bytes of one number.
    unsigned int dataTypeSize() const;
    /// Numbers of one vertex.
    int dimension() const { return m_dimension; }
    void setDimension(int dimension) { m_dimension = dimension; }
    /// Numbers from one vertex to the next; the dimension of a fresh descriptor.
    int stride() const { return m_stride; }
    void setStride(int stride) { m_stride = stride; }
    /// Numbers before the first vertex.
    int offset() const { return m_offset; }
    void setOffset(int offset) { m_offset = offset; }

private:
    MString m_name;
    MGeometry::Semantic m_semantic = MGeometry::kInvalidSemantic;
    MGeometry::DataType m_dataType = MGeometry::kInvalidType;
    int m_dimension = 0;
    int m_stride = 0;
    int m_offset = 0;
};

/// A list of vertex numbers that make primitives, of a whole shape or of a component.
class MIndexBufferDescriptor {
public:
    enum IndexType {
        kVertexPoint = 0,
        kEdgeLine = 1,
        kTriangleEdge = 2,
        kTriangle = 3,
        kFaceCenter = 4,
        kEditPoint = 5,
        kControlVertex = 6,
        kHullEdgeLine = 7,
        kHullTriangle = 8,
        kHullUV = 9,
        kSubDivEdge = 10,
        kTangent = 11,
        kHullEdgeCenter = 12,
        kHullFaceCenter = 13,
        kCustom = 14
    };

    MIndexBufferDescriptor() = default;
    MIndexBufferDescriptor(IndexType indexType, const MString& name, MGeometry::Primitive primitive,
                           unsigned int primitiveStride = 0, MObject component = MObject::kNullObj,
                           MGeometry::DataType dataType = MGeometry::kUnsignedInt32);

    IndexType indexType() const { return m_indexType; }
    void setIndexType(IndexType indexType) { m_indexType = indexType; }
    MString name() const { return m_name; }
    void setName(const MString& name) { m_name = name; }
    MGeometry::Primitive primitive() const { return m_primitive; }
    void setPrimitive(MGeometry::Primitive primitive) { m_primitive = primitive; }
    unsigned int primitiveStride() const { return m_primitiveStride; }
    void setPrimitiveStride(unsigned int stride) { m_primitiveStride = stride; }
    /// Null: the whole shape.
    MObject component() const { return m_component; }
    void setComponent(const MObject& component) { m_component = component; }
    MGeometry::DataType dataType() const { return m_dataType; }
    void setDataType(MGeometry::DataType dataType) { m_dataType = dataType; }

private:
    IndexType m_indexType = kVertexPoint;
    MString m_name;
    MGeometry::Primitive m_primitive = MGeometry::kInvalidPrimitive;
    unsigned int m_primitiveStride = 0;
    MObject m_component;
    MGeometry::DataType m_dataType = MGeometry::kUnsignedInt32;
};

} // namespace MHWRender
