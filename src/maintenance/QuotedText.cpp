#include "maintenance/QuotedText.h"

#include "platform/database/Error.h"

namespace maintenance {

using namespace Qt::StringLiterals;

QString quoted(const QString& text)
{
    constexpr int charactersSaidAgain = 60;
    return text.left(charactersSaidAgain);
}

QString shownName(const QString& name)
{
    const QString shown = name.simplified();
    const QString head = quoted(shown);
    return head.size() < shown.size() ? head + u'…' : head;
}

QString shownExams(const QStringList& exams)
{
    constexpr qsizetype mostShown = 8;
    QStringList shown;
    for (const QString& exam : exams.mid(0, mostShown))
        shown.append(shownName(exam));
    const QString text = shown.join(u'、');
    return exams.size() > mostShown ? text + u" 等 %1 次"_s.arg(exams.size()) : text;
}

double numberIn(const QString& text, const QString& complaint)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber)
        throw database::Error(database::Failure::Sql, complaint.arg(quoted(text)));
    return number;
}

} // namespace maintenance
