// SPDX-License-Identifier: MIT
#include "display/plot/markers.h"

#include "core/checked_arithmetic.h"

#include <cstdint>

namespace calvorn {

MarkerSet::MarkerSet()
{
    MarkerSet &set = *this;
    for (const GraphItem item : {GraphItem::M1, GraphItem::M2, GraphItem::CursorV})
        set[item].position = 1.0;
    for (const GraphItem item : {GraphItem::CursorV, GraphItem::CursorH})
        set[item].isVisible = false;
}

int MarkerSet::row(GraphItem item) const
{
    return roundToInteger<std::int32_t>((*this)[item].position);
}

void Markers::move(GraphItem item, double position)
{
    m_set[item].position = position;
    emit moved(item);
}

void Markers::setVisible(GraphItem item, bool visible)
{
    m_set[item].isVisible = visible;
    emit moved(item);
}

} // namespace calvorn
