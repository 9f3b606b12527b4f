#include <maya/MRenderLineArray.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <cstddef>
#include <utility>

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;

int MRenderLineArray::length() const
{
    const bool isEmpty = m_content == nullptr || m_content->batch == nullptr;
    return isEmpty ? 0 : static_cast<int>(m_content->batch->lines.size());
}

MRenderLine MRenderLineArray::renderLine(int index, MStatus* ReturnStatus) const
{
    if (index < 0 || index >= length()) {
        return answer(ReturnStatus, toStatus(ErrorCode::InvalidParameter), MRenderLine());
    }
    return answer(ReturnStatus, MStatus(),
                  Inside::line(m_content->batch, static_cast<std::size_t>(index)));
}

void MRenderLineArray::deleteArray()
{
    if (m_content != nullptr) {
        m_content->batch = nullptr;
    }
}

MRenderLine Inside::line(const std::shared_ptr<const LineBatch>& batch, std::size_t index)
{
    MRenderLine line;
    line.m_content = std::shared_ptr<const MRenderLine::Content>(batch, &batch->lines[index]);
    return line;
}

void Inside::setLines(MRenderLineArray& array, std::shared_ptr<const LineBatch> batch)
{
    array.m_content =
        std::make_shared<MRenderLineArray::Content>(MRenderLineArray::Content{std::move(batch)});
}
