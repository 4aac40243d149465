#pragma once

#include <QString>

namespace library {

/// Fields of 考试名称表 ahead of the columns of the subjects.
inline constexpr int FixedExamFields = 5;

/// The rows of one exam and stream, as they were entered.
inline QString examRowSql(const QString& exam, const QString& stream)
{
    return QStringLiteral("select * from 考试名称表 WHERE  考试名称='") + exam
           + QStringLiteral("' and 科类='") + stream + QStringLiteral("'");
}

/// The rows of one exam and stream by 考试编号.
inline QString orderedExamRowSql(const QString& exam, const QString& stream)
{
    return examRowSql(exam, stream) + QStringLiteral(" order by 考试编号");
}

/// The stream that lends its columns: 理 to 文, and 文 to any other.
inline QString otherStream(const QString& stream)
{
    return stream == QStringLiteral("文") ? QStringLiteral("理") : QStringLiteral("文");
}

} // namespace library
