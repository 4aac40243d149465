#pragma once

#include <QString>

namespace individual {

/// The ranks that a chart shows.
enum class RankKind {
    Grade, ///< 年名: among the students of the stream
    Class  ///< 班名: among those of the class
};

/// The column of 成绩表 that holds these ranks of a subject or total.
QString rankColumn(const QString& column, RankKind kind);

/// "年级名次" or "班级名次".
QString rankCaption(RankKind kind);

} // namespace individual
