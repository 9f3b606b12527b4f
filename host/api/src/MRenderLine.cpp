#include <maya/MRenderLine.h>

#include "host/api/src/Inside.h"
#include "host/api/src/matrices.h"

using host::Vec3d;
using host::api::toVector;

MVectorArray MRenderLine::getLine() const
{
    if (m_content == nullptr || !m_content->hasPoints) {
        return MVectorArray();
    }
    const std::vector<Vec3d>& points = m_content->line->points;
    MVectorArray vectors(static_cast<unsigned int>(points.size()));
    unsigned int position = 0;
    for (const Vec3d& point : points) {
        vectors[position++] = toVector(
            m_content->world == nullptr ? point : host::transformPoint(point, *m_content->world));
    }
    return vectors;
}

MVectorArray MRenderLine::getColor() const
{
    if (m_content == nullptr || !m_content->hasColors) {
        return MVectorArray();
    }
    const std::vector<Vec3d>& colors = m_content->line->colors;
    MVectorArray vectors(static_cast<unsigned int>(colors.size()));
    unsigned int position = 0;
    for (const Vec3d& color : colors) {
        vectors[position++] = toVector(color);
    }
    return vectors;
}

MDoubleArray MRenderLine::getWidth() const
{
    if (m_content == nullptr || !m_content->hasWidths) {
        return MDoubleArray();
    }
    const std::vector<double>& widths = m_content->line->widths;
    MDoubleArray numbers(static_cast<unsigned int>(widths.size()));
    unsigned int position = 0;
    for (const double width : widths) {
        numbers[position++] = width;
    }
    return numbers;
}
