#include "library/LibraryShape.h"

namespace library {

using namespace Qt::StringLiterals;

database::FileShape libraryShape()
{
    database::FileShape shape;
    shape.tables = {u"信息表"_s, u"成绩表"_s, u"考试名称表"_s, u"设置表"_s};
    // The names are those of the template, so that a file has each index once.
    shape.indexes = {
        u"create index if not exists [成绩表_考试] on [成绩表]([考试名称], [科类], [班级])"_s,
        u"create index if not exists [成绩表_学生] on [成绩表]([id])"_s,
        u"create index if not exists [成绩表_班级学号] on [成绩表]([班级], [学号])"_s,
        u"create index if not exists [信息表_班级学号] on [信息表]([班级], [学号])"_s,
        u"create index if not exists [信息表_科类班级] on [信息表]([科类], [班级])"_s,
        u"create index if not exists [教师表_考试] on [教师表]([考试名称], [班级])"_s,
    };
    return shape;
}

} // namespace library
