#include "oldlibraries/Losses.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

QString whatBecomesOf(OldObject::Kind kind)
{
    switch (kind) {
    case OldObject::Kind::LinkedTable:
        return u"这个表在别的文件里，没有转换。"_s;
    case OldObject::Kind::Query:
        return u"这是查询，没有转换。"_s;
    case OldObject::Kind::Form:
        return u"这是窗体，没有转换。"_s;
    case OldObject::Kind::Report:
        return u"这是报表，没有转换。"_s;
    case OldObject::Kind::Macro:
        return u"这是宏，没有转换。"_s;
    case OldObject::Kind::Module:
        break;
    }
    return u"这是程序模块，没有转换。"_s;
}

} // namespace

void findLosses(OldDatabase& database, const std::vector<OldTable>& tables,
                std::vector<Finding>& findings)
{
    for (const OldObject& object : database.readOtherObjects())
        findings.push_back({object.name, 0, {}, {}, whatBecomesOf(object.kind)});
    for (const OldTable& table : tables) {
        for (const OldColumn& column : table.columns) {
            if (!column.isKnownType)
                findings.push_back({table.name,
                                    0,
                                    column.name,
                                    {},
                                    u"这一列的类型无法识别，内容原样转入，程序不能显示。"_s});
        }
    }
}

} // namespace oldlibraries
