// One line of a Paint Effects shape.
#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MVectorArray.h>

#include <memory>

/// Copies share the line. Arrays that were not asked for are empty.
class MRenderLine {
public:
    MRenderLine() = default;

    MVectorArray getLine() const;
    MVectorArray getColor() const;
    MDoubleArray getWidth() const;

private:
    friend struct host::api::Inside;
    struct Content;
    std::shared_ptr<const Content> m_content;
};
