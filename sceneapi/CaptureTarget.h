// The text of one anonymous shader. Its blob is the shader's handle: it stays at its address and
// always names the text so far.
#pragma once

#include "sceneapi/TextTarget.h"
#include "sceneapi/orvSceneValues.h"

#include <memory>

namespace orv {

class CaptureTarget : public TextTarget {
public:
    CaptureTarget();

    /// The text so far, zero-terminated. Bytes with a zero among them make it a binary blob.
    const Blob* blob() const { return &m_blob; }
    /// Brings the blob up to date after writing.
    void refreshBlob();
    /// Raw data comes: the text is binary from now on.
    void markBinary() { m_blob.binary = 1; }
    /// Empties the text and keeps the storage.
    void clear();

private:
    void makeRoom(std::size_t size) override;
    void appendLarge(std::string_view text) override;

    std::unique_ptr<char[]> m_storage;
    Blob m_blob;
};

} // namespace orv
