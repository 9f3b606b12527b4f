#include <maya/MGeometryRequirements.h>
#include <maya/MHWGeometry.h>

#include <array>

namespace MHWRender {

MVertexBufferDescriptor::MVertexBufferDescriptor(const MString& name, MGeometry::Semantic semantic,
                                                 MGeometry::DataType dataType, int dimension)
    : m_name(name)
    , m_semantic(semantic)
    , m_dataType(dataType)
    , m_dimension(dimension)
    , m_stride(dimension)
{
}

unsigned int MVertexBufferDescriptor::dataTypeSize() const
{
    constexpr std::array<unsigned int, 9> kBytes{0, 4, 8, 1, 1,
                                                 2, 2, 4, 4}; // by number of the type
    const auto number = static_cast<std::size_t>(m_dataType);
    return number < kBytes.size() ? kBytes[number] : 0;
}

MIndexBufferDescriptor::MIndexBufferDescriptor(IndexType indexType, const MString& name,
                                               MGeometry::Primitive primitive,
                                               unsigned int primitiveStride, MObject component,
                                               MGeometry::DataType dataType)
    : m_indexType(indexType)
    , m_name(name)
    , m_primitive(primitive)
    , m_primitiveStride(primitiveStride)
    , m_component(component)
    , m_dataType(dataType)
{
}

void MGeometryRequirements::addVertexRequirement(const MVertexBufferDescriptor& descriptor)
{
    m_vertexRequirements.push_back(descriptor);
}

void MGeometryRequirements::addIndexingRequirement(const MIndexBufferDescriptor& descriptor)
{
    m_indexRequirements.push_back(descriptor);
}

} // namespace MHWRender
