// The lines of Paint Effects shapes.
#include "host/session/SessionState.h"

namespace host::session {

std::shared_ptr<const geometry::RenderLines> Session::renderLines(NodeId shape)
{
    if (shape >= m_graph->nodeCount() || !m_graph->node(shape).type.isA("pfxGeometry")) {
        return nullptr;
    }
    return nullptr;
}

} // namespace host::session
