#include "library/LibraryShape.h"

#include "library/template/Indexes.h"

namespace library {

using namespace Qt::StringLiterals;

database::FileShape libraryShape()
{
    database::FileShape shape;
    shape.tables = {u"信息表"_s, u"成绩表"_s, u"考试名称表"_s, u"设置表"_s};
    for (const char* index : indexes)
        shape.indexes.append(QString::fromUtf8(index));
    return shape;
}

} // namespace library
