#include "platform/grid/ui/FlexGridModel.h"

namespace grid {

using namespace Qt::StringLiterals;

namespace {

/// The control's code 9: numbers right, texts left.
Qt::Alignment generalAlignment(const QString& text)
{
    bool number = false;
    text.toDouble(&number);
    return Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft);
}

/// The other codes count left, centre, right by three: top, centre, bottom. 0 is the plain left.
Qt::Alignment alignment(int code, const QString& text)
{
    constexpr Qt::AlignmentFlag across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    constexpr Qt::AlignmentFlag down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    if (code == 0)
        return Qt::AlignVCenter | Qt::AlignLeft;
    if (code < 0 || code > 8)
        return generalAlignment(text);
    return across[code / 3] | down[code % 3];
}

/// A tip shows its text as it stands, also if it looks like markup.
QString tip(const QString& text)
{
    return text.contains(u'<') ? u"<span>"_s + text.toHtmlEscaped() + u"</span>"_s : text;
}

} // namespace

FlexGridModel::FlexGridModel(const FlexGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_rows(grid.Rows()), m_cols(grid.Cols())
{
}

int FlexGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int FlexGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_grid.Rows() || index.column() >= m_grid.Cols())
        return {};
    const QString& text = m_grid.TextMatrix(index.row(), index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::ToolTipRole:
        return tip(text);
    case Qt::TextAlignmentRole:
        return int(alignment(m_grid.ColAlignment(index.column()), text));
    default:
        return {};
    }
}

void FlexGridModel::reload()
{
    beginResetModel();
    m_rows = m_grid.Rows();
    m_cols = m_grid.Cols();
    endResetModel();
}

void FlexGridModel::reloadCell(int row, int col)
{
    if (row < m_rows && col < m_cols)
        Q_EMIT dataChanged(index(row, col), index(row, col));
}

} // namespace grid
