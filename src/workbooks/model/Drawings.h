#pragma once

#include <deque>
#include <variant>

#include "workbooks/model/Chart.h"
#include "workbooks/model/DrawnLine.h"
#include "workbooks/model/Picture.h"
#include "workbooks/model/TextLabel.h"

namespace excel {

/// Something that lies over the cells of a sheet.
using Drawing = std::variant<Picture, Chart, DrawnLine, TextLabel>;

/// The drawings of a sheet; a later one lies over an earlier one. Who made one may hold a reference
/// to it.
using Drawings = std::deque<Drawing>;

inline Shape& shapeOf(Drawing& drawing)
{
    return std::visit([](Shape& shape) -> Shape& { return shape; }, drawing);
}

inline const Shape& shapeOf(const Drawing& drawing)
{
    return std::visit([](const Shape& shape) -> const Shape& { return shape; }, drawing);
}

} // namespace excel
