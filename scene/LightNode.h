// The base of every node of the renderer's scene. A leaf: the object layer includes this header to
// write nodes, so it includes nothing of the project in return.
#pragma once

namespace orv {

class orvSceneapi_oo;

/// A node that writes itself through the object layer. Nodes are held by std::shared_ptr and never
/// know their parent. The order of the virtual operations, the destructor fourth, is part of the
/// contract: add new ones at the end.
class LightNode {
public:
    /// Writes the node in place, inside whatever block `oo` has open.
    virtual void write(orvSceneapi_oo& oo) = 0;
    /// Writes the node once as a named definition; does nothing in nodes that have no such form.
    virtual void define(orvSceneapi_oo& oo) = 0;
    /// True once `define` has written the node; false for ever in nodes without a definition form.
    virtual bool isDefined() const = 0;
    virtual ~LightNode() = default;

protected:
    LightNode() = default;
    LightNode(const LightNode&) = default;
    LightNode& operator=(const LightNode&) = default;
};

} // namespace orv
