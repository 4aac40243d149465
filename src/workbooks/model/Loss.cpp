#include "workbooks/model/Loss.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

QString nameOf(Loss loss)
{
    switch (loss) {
    case Loss::Formulas:
        return u"公式（保留其结果）"_s;
    case Loss::Looks:
        return u"字体、边框、底色和对齐方式"_s;
    case Loss::Shapes:
        return u"图片、图表和图形"_s;
    case Loss::OtherSheets:
        return u"图表工作表和宏工作表"_s;
    case Loss::Macros:
        return u"宏"_s;
    case Loss::Comments:
        return u"批注"_s;
    case Loss::ConditionalFormats:
        return u"条件格式"_s;
    case Loss::Validations:
        return u"数据有效性"_s;
    case Loss::Links:
        return u"超链接"_s;
    case Loss::Panes:
        return u"冻结的窗格"_s;
    case Loss::Printing:
        break;
    }
    return u"页面设置和分页"_s;
}

} // namespace

QStringList lossNames(const Losses& losses)
{
    QStringList names;
    for (const Loss loss : losses)
        names.append(nameOf(loss));
    return names;
}

} // namespace excel
