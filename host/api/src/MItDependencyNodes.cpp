#include <maya/MItDependencyNodes.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::session::currentSession;
using host::session::Session;

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* ReturnStatus)
{
    answer(ReturnStatus, reset(filter));
}

MStatus MItDependencyNodes::reset(MFn::Type filter)
{
    const Session* session = currentSession();
    if (session == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    m_filter = filter;
    m_generation = session->generation();
    findFrom(0);
    return MStatus();
}

void MItDependencyNodes::findFrom(std::uint32_t node)
{
    const host::graph::Graph& graph = currentSession()->graph();
    const auto isWanted = [&](const host::graph::Node& candidate) {
        return candidate.isAlive &&
               (m_filter == MFn::kInvalid || host::api::hasFunctionSet(candidate, m_filter));
    };
    for (m_node = node; m_node < graph.nodeCount() && !isWanted(graph.node(m_node)); ++m_node) {
    }
}

MObject MItDependencyNodes::thisNode(MStatus* ReturnStatus) const
{
    if (isDone()) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MObject());
    }
    return answer(ReturnStatus, MStatus(), Inside::node(m_node));
}

MStatus MItDependencyNodes::next()
{
    if (isDone()) {
        return toStatus(ErrorCode::NotFound);
    }
    findFrom(m_node + 1);
    return MStatus();
}

bool MItDependencyNodes::isDone(MStatus* ReturnStatus) const
{
    const Session* session = currentSession();
    const bool isThere = session != nullptr && session->generation() == m_generation &&
                         m_node < session->graph().nodeCount();
    return answer(ReturnStatus, MStatus(), !isThere);
}
