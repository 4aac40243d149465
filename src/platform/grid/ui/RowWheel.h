#pragma once

namespace grid {

class FlexGridView;

/// Scrolls a grid by the mouse wheel, one row a notch; parts of a notch add up.
class RowWheel
{
public:
    explicit RowWheel(FlexGridView& view) : m_view(view) {}

    /// `angle` is in eighths of a degree, positive upward.
    void turn(int angle);

private:
    void scroll(int rows);

    FlexGridView& m_view;
    int m_rest = 0;
};

} // namespace grid
