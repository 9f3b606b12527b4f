// A listener that knows nodes by their types' tables: it answers what plugs take, as a scene does,
// and counts what was odd.
#pragma once

#include "host/file/Command.h"
#include "host/types/NodeType.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace test {

class NodeTableSink : public host::file::CommandSink {
public:
    std::map<std::string, std::size_t> unknownWords;
    std::vector<std::string> damages; ///< "line 3, column 4: setAttr: reason"
    std::size_t commands = 0;
    std::size_t unknownPlugs = 0;
    bool hasEnded = false;

    void at(const host::file::Place& place) override { m_place = place; }
    void requirePlugin(std::string_view, std::string_view,
                       std::span<const std::string_view>) override
    {
        ++commands;
    }
    void currentUnit(const host::file::Units&) override { ++commands; }
    void fileInfo(std::string_view, std::string_view) override { ++commands; }
    void reference(const host::file::Reference&) override { ++commands; }
    void createNode(const host::file::CreateNode& command) override
    {
        ++commands;
        m_current = &m_nodes[std::string(command.name)];
        *m_current = Node{host::NodeType::find(command.type), {}};
    }
    void renameNode(std::string_view) override { ++commands; }
    void uuid(std::string_view) override { ++commands; }
    void selectNode(std::string_view name) override
    {
        ++commands;
        m_current = &m_nodes[lastName(name)];
    }
    void parentNodes(const host::file::ParentNodes&) override { ++commands; }
    void lockNode(bool) override { ++commands; }
    void addAttribute(const host::file::AddAttribute& command) override
    {
        ++commands;
        if (m_current != nullptr) {
            m_current->dynamic.push_back(
                {std::string(command.longName), std::string(command.shortName),
                 std::string(command.parent), command.kind, command.isMulti});
        }
    }
    void setAttribute(const host::file::SetAttribute&) override { ++commands; }
    void connect(const host::file::Connection&) override { ++commands; }
    void disconnect(const host::file::Connection&) override { ++commands; }
    void unknown(std::string_view word) override { ++unknownWords[std::string(word)]; }
    void damaged(std::string_view word, std::string_view reason) override
    {
        damages.push_back(m_place.text() + ": " + std::string(word) + ": " + std::string(reason));
    }
    void endOfScene() override { hasEnded = true; }

    host::PlugShape shapeOf(const host::PlugPath& plug) override
    {
        const Node* node = m_current;
        if (!plug.node.empty()) {
            const auto found = m_nodes.find(lastName(plug.node));
            node = found == m_nodes.end() ? nullptr : &found->second;
        }
        host::PlugShape shape;
        if (node != nullptr) {
            shape = staticShape(*node, plug.last().name);
            shape = shape.isKnown ? shape : dynamicShape(*node, plug.last().name);
        }
        unknownPlugs += shape.isKnown ? 0 : 1;
        return shape;
    }

private:
    struct Dynamic {
        std::string longName;
        std::string shortName;
        std::string parent;
        host::AttributeKind kind;
        bool isMulti;
    };
    struct Node {
        host::NodeType type;
        std::vector<Dynamic> dynamic;
    };
    static constexpr int kDeepest = 8;

    static std::string lastName(std::string_view path)
    {
        const std::size_t bar = path.rfind('|');
        path = bar == std::string_view::npos ? path : path.substr(bar + 1);
        return std::string(path.starts_with(':') ? path.substr(1) : path);
    }

    static void settle(host::PlugShape& shape, const std::vector<host::AttributeKind>& leaves)
    {
        bool areNumbers = !leaves.empty() && leaves.size() <= host::PlugShape::kMaxWidth;
        for (const host::AttributeKind leaf : leaves) {
            areNumbers = areNumbers && host::isNumeric(leaf);
        }
        shape.isNumbers = areNumbers;
        if (!areNumbers) {
            return;
        }
        shape.width = leaves.size();
        shape.storage = host::storageOf(leaves[0]);
        for (std::size_t i = 0; i < leaves.size(); ++i) {
            shape.units[i] = host::unitOf(leaves[i]);
            if (host::storageOf(leaves[i]) != shape.storage) {
                shape.storage = host::NumberStorage::Double;
            }
        }
    }

    static void collect(host::NodeType type, host::AttributeIndex index, int depth,
                        std::vector<host::AttributeKind>& leaves)
    {
        const host::Attribute attribute = type.attribute(index);
        if (attribute.firstChild == host::kNoAttribute || depth == kDeepest) {
            leaves.push_back(attribute.kind);
            return;
        }
        for (host::AttributeIndex child = attribute.firstChild; child != host::kNoAttribute;
             child = type.attribute(child).nextSibling) {
            collect(type, child, depth + 1, leaves);
        }
    }

    static host::PlugShape staticShape(const Node& node, std::string_view name)
    {
        host::PlugShape shape;
        const host::AttributeIndex index =
            node.type ? node.type.findAttribute(name) : host::kNoAttribute;
        if (index == host::kNoAttribute) {
            return shape;
        }
        const host::Attribute attribute = node.type.attribute(index);
        shape.isKnown = true;
        shape.kind = attribute.kind;
        shape.isMulti = attribute.isMulti;
        std::vector<host::AttributeKind> leaves;
        collect(node.type, index, 0, leaves);
        settle(shape, leaves);
        return shape;
    }

    static void collect(const Node& node, const Dynamic& attribute, int depth,
                        std::vector<host::AttributeKind>& leaves)
    {
        if (attribute.kind != host::AttributeKind::Compound || depth == kDeepest) {
            leaves.push_back(attribute.kind);
            return;
        }
        for (const Dynamic& child : node.dynamic) {
            if (child.parent == attribute.longName) {
                collect(node, child, depth + 1, leaves);
            }
        }
    }

    static host::PlugShape dynamicShape(const Node& node, std::string_view name)
    {
        host::PlugShape shape;
        for (const Dynamic& attribute : node.dynamic) {
            if (attribute.longName != name && attribute.shortName != name) {
                continue;
            }
            shape.isKnown = true;
            shape.kind = attribute.kind;
            shape.isMulti = attribute.isMulti;
            std::vector<host::AttributeKind> leaves;
            collect(node, attribute, 0, leaves);
            settle(shape, leaves);
        }
        return shape;
    }

    host::file::Place m_place;
    std::map<std::string, Node> m_nodes;
    Node* m_current = nullptr;
};

} // namespace test
