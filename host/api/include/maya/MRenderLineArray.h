// Lines of a Paint Effects shape.
#pragma once

#include <maya/MRenderLine.h>
#include <maya/MStatus.h>

/// Copies share the lines. They stay until `deleteArray`.
class MRenderLineArray {
public:
    MRenderLineArray() = default;

    int length() const;
    /// Fails for an index outside; the line is then empty.
    MRenderLine renderLine(int index, MStatus* ReturnStatus = nullptr) const;
    /// Gives the lines back, for all copies.
    void deleteArray();

private:
    friend struct host::api::Inside;
    struct Content;
    std::shared_ptr<Content> m_content;
};
