#include "export/ExportFigures.h"

#include "platform/runtime/Numbers.h"
#include "scoring/StandardScores.h"

namespace exporting {

using namespace Qt::StringLiterals;

/// False for what the engine refuses.
bool ExportFigures::canBeAsked(const Question& question)
{
    const auto& [exam, column, stream, classNumber] = question;
    return !exam.contains(u'\'') && !stream.contains(u'\'')
           && (column.isEmpty() || m_library.Conn.columns(u"成绩表"_s).find(column) >= 0);
}

template <class Ask> double ExportFigures::answer(const Question& question, const Ask& ask)
{
    const auto known = m_answers.find(question);
    if (known != m_answers.end())
        return known->second;
    const double answered = ask();
    if (canBeAsked(question))
        m_answers[question] = answered;
    return answered;
}

double ExportFigures::classAverage(const QString& exam, const QString& column,
                                   const QString& stream, const runtime::Value& classNumber)
{
    return answer({exam, column, stream, classNumber.text()}, [&] {
        return scoring::GetBJPJF(m_library, exam, column, stream, runtime::Val(classNumber));
    });
}

double ExportFigures::gradeAverage(const QString& exam, const QString& column,
                                   const QString& stream)
{
    return answer({exam, column, stream, u"年级"_s},
                  [&] { return scoring::GetPJF(m_library, exam, column, stream); });
}

qint64 ExportFigures::headCount(const QString& stream)
{
    return qint64(answer({QString(), QString(), stream, u"年级"_s},
                         [&] { return double(m_library.students.GetZRS(stream, 0)); }));
}

} // namespace exporting
