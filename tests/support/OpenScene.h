// A session with a scene that a test writes down as text.
#pragma once

#include "host/session/Session.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace test {

/// Statements of one mesh: a square of 2 x 2 unit faces in the xz plane, points row by row.
inline std::string squareMesh()
{
    return R"(
        setAttr -s 9 ".vt[0:8]"  0 0 0  1 0 0  2 0 0  0 0 1  1 0 1  2 0 1  0 0 2  1 0 2  2 0 2;
        setAttr -s 12 ".ed[0:11]"  0 1 1  1 2 1  3 4 1  4 5 1  6 7 1  7 8 1
            0 3 1  1 4 1  2 5 1  3 6 1  4 7 1  5 8 1;
        setAttr -s 4 -ch 16 ".fc[0:3]" -type "polyFaces"
            f 4 6 2 -8 -1
            f 4 7 3 -9 -2
            f 4 9 4 -11 -3
            f 4 10 5 -12 -4 ;
    )";
}

class OpenScene : public ::testing::Test {
protected:
    host::session::Session session;
    TestFolder folder;

    /// Opens statements as the scene of a file; the test fails when that fails.
    void open(const std::string& statements)
    {
        folder.write("scene.ma", "//Maya ASCII 2018 scene\n" + statements);
        const auto opened = session.open(folder.utf8("scene.ma"));
        ASSERT_TRUE(opened) << opened.error().message;
    }

    host::session::NodeId node(std::string_view nameOrPath) const
    {
        const auto found = session.graph().findNode(nameOrPath);
        if (found == host::session::kNoNode) {
            throw std::logic_error("no node " + std::string(nameOrPath));
        }
        return found;
    }
    bool has(std::string_view nameOrPath) const
    {
        return session.graph().findNode(nameOrPath) != host::session::kNoNode;
    }
    host::session::DagPath path(std::string_view name) const
    {
        host::session::DagPath result;
        session.graph().findPath(name, result.nodes);
        return result;
    }
    /// The plug of a written path such as "node.attr[2].child".
    host::session::Plug plug(std::string_view nodeName, std::string_view attribute)
    {
        const auto found = session.findPlug(node(nodeName), attribute);
        if (!found) {
            throw std::logic_error("no attribute " + std::string(attribute));
        }
        return found;
    }
    double number(std::string_view nodeName, std::string_view attribute)
    {
        return session.number(plug(nodeName, attribute), -999);
    }
    std::string typeName(std::string_view name) const
    {
        const host::graph::Node& found = session.graph().node(node(name));
        return found.unknownType.empty() ? std::string(found.type.name()) : found.unknownType;
    }
    std::string hostType(std::string_view name) const
    {
        return std::string(session.graph().node(node(name)).type.name());
    }

    std::size_t timesNoted(host::DiagnosticKind kind, std::string_view subject)
    {
        for (const host::Diagnostic& entry : session.diagnostics().entries()) {
            if (entry.kind == kind && entry.subject == subject) {
                return entry.count;
            }
        }
        return 0;
    }
};

} // namespace test
