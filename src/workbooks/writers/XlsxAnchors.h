#pragma once

#include <string>

#include "workbooks/model/Drawings.h"
#include "workbooks/model/SheetGeometry.h"

namespace excel {

/// The drawings of one sheet as they stand in the part of its drawings, from the lowest to the
/// uppermost. Each is held by the cells under its corners, so that a frame of cells ends at these
/// cells in every program, however wide its font makes them.
class XlsxAnchors
{
public:
    explicit XlsxAnchors(const SheetGeometry& geometry) : m_geometry(geometry) {}

    // `relation` is the id of the part that holds the picture or chart.

    void add(const Picture& picture, const std::string& relation);
    void add(const Chart& chart, const std::string& relation);
    void add(const DrawnLine& line);
    void add(const TextLabel& label);

    /// The whole part; nothing can be added any more.
    std::string take();

private:
    void begin(const QRectF& place, const char* behaviour);
    void end();
    void addProperties(const char* element, const char* name, const char* rest);

    const SheetGeometry& m_geometry;
    std::string m_text;
    int m_count = 0;
};

} // namespace excel
