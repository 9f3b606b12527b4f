// The streams and index lists that a MGeometryExtractor is to deliver.
#pragma once

#include <maya/MHWGeometry.h>

#include <vector>

namespace MHWRender {

class MGeometryRequirements {
public:
    void addVertexRequirement(const MVertexBufferDescriptor& descriptor);
    void addIndexingRequirement(const MIndexBufferDescriptor& descriptor);

private:
    friend struct host::api::Inside;
    std::vector<MVertexBufferDescriptor> m_vertexRequirements;
    std::vector<MIndexBufferDescriptor> m_indexRequirements;
};

} // namespace MHWRender
