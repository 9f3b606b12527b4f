#include "sceneapi/TextTarget.h"

#include <algorithm>

namespace orv {

void TextTarget::appendBlanks(std::size_t count)
{
    while (count > 0) {
        const std::size_t part = std::min(count, kMaxReserve);
        std::memset(reserve(part), ' ', part);
        m_used += part;
        count -= part;
    }
}

} // namespace orv
