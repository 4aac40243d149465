#pragma once

#include <QString>

#include "workbooks/model/Shape.h"

namespace excel {

/// A text over the cells, without a frame. It stands in one line from its place's upper left corner
/// on, also where it is wider than that.
class TextLabel : public Shape
{
public:
    static constexpr double fontSize = 10; ///< in points

    using Shape::Shape;

    const QString& text() const { return m_text; }
    void setText(const QString& text)
    {
        m_text = text;
        noteChange();
    }

private:
    QString m_text;
};

} // namespace excel
