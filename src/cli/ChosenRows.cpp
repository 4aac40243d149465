#include "cli/ChosenRows.h"

#include "workbench/Offers.h"

namespace cli {

using namespace Qt::StringLiterals;

QStringList chosen(const QStringList& offered, const QStringList& wanted, const QString& kind)
{
    QSet<qsizetype> places;
    for (const QString& text : wanted) {
        const qsizetype place = offered.indexOf(text);
        if (place < 0)
            throw UsageError(u"成绩库里没有%1“%2”。"_s.arg(kind, text));
        places.insert(place);
    }
    QStringList found;
    for (qsizetype place = 0; place < offered.size(); ++place) {
        if (places.contains(place))
            found.append(offered[place]);
    }
    return found;
}

QStringList chosenExams(const Session& session)
{
    const QStringList& exams = session.scores.catalogue.ExamList;
    if (!session.arguments.has(u"exam"_s))
        return exams.mid(0, 1);
    const QStringList wanted = session.arguments.list(u"exam"_s);
    session.requireExams(wanted);
    return chosen(exams, wanted, u"考试"_s);
}

QStringList chosenCategories(const Session& session)
{
    QStringList offered = workbench::categories(session.scores);
    if (!session.arguments.has(u"categories"_s))
        return offered;
    return chosen(offered, session.arguments.list(u"categories"_s), u"类别代码"_s);
}

} // namespace cli
