#pragma once

namespace library {

/// The indexes of a library. The empty one that new ones are copied from has them, and an older
/// file is given what it lacks of them when it is first written.
inline constexpr const char* indexes[] = {
    "create index if not exists [成绩表_考试] on [成绩表]([考试名称], [科类], [班级])",
    "create index if not exists [成绩表_学生] on [成绩表]([id])",
    "create index if not exists [成绩表_班级学号] on [成绩表]([班级], [学号])",
    "create index if not exists [信息表_班级学号] on [信息表]([班级], [学号])",
    // With the category, so that a list of these reads no rows, which have photos.
    "create index if not exists [信息表_科类班级类别] on [信息表]([科类], [班级], [类别代码])",
    "create index if not exists [教师表_考试] on [教师表]([考试名称], [班级])",
};

} // namespace library
