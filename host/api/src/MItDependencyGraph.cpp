#include <maya/MItDependencyGraph.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <algorithm>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::Session;

MItDependencyGraph::MItDependencyGraph(MPlug& rootPlug, MFn::Type filter, Direction direction,
                                       Traversal traversal, Level level, MStatus* ReturnStatus)
{
    const host::graph::Plug root = Inside::plugOf(rootPlug);
    if (!root) {
        answer(ReturnStatus, ErrorCode::NotFound);
        return;
    }
    if (direction != kUpstream || traversal != kBreadthFirst || level != kNodeLevel) {
        answer(ReturnStatus, ErrorCode::InvalidParameter);
        return;
    }
    const Session& session = *currentSession();
    m_generation = session.generation();
    m_nodes = session.upstreamNodes(root);
    if (filter != MFn::kInvalid) {
        std::erase_if(m_nodes, [&](host::session::NodeId node) {
            return !host::api::hasFunctionSet(session.graph().node(node), filter);
        });
    }
    answer(ReturnStatus, m_nodes.empty() ? toStatus(ErrorCode::Failure) : MStatus());
}

MStatus MItDependencyGraph::disablePruningOnFilter()
{
    return MStatus();
}

bool MItDependencyGraph::isDone(MStatus* ReturnStatus) const
{
    const Session* session = currentSession();
    const bool isThere =
        session != nullptr && session->generation() == m_generation && m_current < m_nodes.size();
    return answer(ReturnStatus, MStatus(), !isThere);
}

MStatus MItDependencyGraph::next()
{
    if (isDone()) {
        return toStatus(ErrorCode::NotFound);
    }
    ++m_current;
    return MStatus();
}

MObject MItDependencyGraph::currentItem(MStatus* ReturnStatus) const
{
    if (isDone()) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MObject());
    }
    return answer(ReturnStatus, MStatus(), Inside::node(m_nodes[m_current]));
}

MObject MItDependencyGraph::thisNode(MStatus* ReturnStatus) const
{
    return currentItem(ReturnStatus);
}
