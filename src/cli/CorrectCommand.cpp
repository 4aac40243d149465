#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "maintenance/ScoreCorrection.h"
#include "scoring/Scoring.h"

namespace cli {

using namespace Qt::StringLiterals;
using maintenance::ScoreCorrection;

namespace {

QString wanted(const Arguments& arguments, const QString& name)
{
    if (!arguments.has(name))
        throw missingOption(name);
    return arguments.value(name);
}

QString wantedNumber(const Arguments& arguments, const QString& name)
{
    QString text = wanted(arguments, name);
    (void)chosenNumber(arguments, name);
    return text;
}

void sayNotFound(const ScoreCorrection::Place& place)
{
    printError(u"%1 班 %2 号没有考试“%3”的成绩，什么也没有修改。"_s.arg(place.classNumber,
                                                                        place.number, place.exam));
}

} // namespace

Exit runCorrect(Session& session)
{
    const Arguments& arguments = session.arguments;
    const ScoreCorrection::Place place{
        wanted(arguments, u"exam"_s), wantedNumber(arguments, u"class"_s),
        wantedNumber(arguments, u"number"_s), wanted(arguments, u"subject"_s)};
    const QString score = wanted(arguments, u"score"_s);
    if (!session.openLibrary())
        return Exit::Error;
    session.requireExams({place.exam});
    if (!session.scores.catalogue.SubjectColumns.contains(place.subject))
        throw UsageError(u"成绩库里没有科目“%1”。"_s.arg(place.subject));
    ScoreCorrection correction(session.scores);
    const ScoreCorrection::Result result = correction.save(place, score);
    if (result == ScoreCorrection::Result::NotFound)
        sayNotFound(place);
    if (result != ScoreCorrection::Result::Stored)
        return Exit::Error;
    CliProgress progress;
    if (arguments.has(u"rescore"_s)
        && !scoring::Scoring(session.scores).score(place.exam, progress))
        return Exit::Error;
    return session.result();
}

} // namespace cli
