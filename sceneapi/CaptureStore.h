// The captured shader texts of a writer, and which of them captureBuffer names. Released texts keep
// their storage for later shaders, so that a handle kept too long still points to memory.
#pragma once

#include "sceneapi/CaptureTarget.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv {

class CaptureStore {
public:
    /// A new, empty text; it becomes the current one.
    CaptureTarget* begin();
    void select(CaptureTarget* capture) { m_current = capture; }
    /// Null when there is none.
    CaptureTarget* current() const { return m_current; }

    void push();
    /// False, and nothing changes, when nothing is kept aside.
    bool pop();

    /// How many texts are alive; they are numbered in the order in which they were begun.
    std::size_t size() const { return m_size; }
    /// Releases all texts but the first `kept`.
    void release(std::size_t kept);

private:
    std::vector<std::unique_ptr<CaptureTarget>> m_captures; // the first m_size are alive
    std::size_t m_size = 0;
    CaptureTarget* m_current = nullptr;
    std::vector<CaptureTarget*> m_aside;
};

} // namespace orv
