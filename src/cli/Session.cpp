#include "cli/Command.h"

namespace cli {

using namespace Qt::StringLiterals;

bool Session::openLibrary()
{
    scores.LibPath = arguments.path(0);
    scores.OpenDB();
    return scores.Conn.isOpen();
}

void Session::requireExams(const QStringList& exams) const
{
    for (const QString& exam : exams) {
        if (!scores.catalogue.ExamList.contains(exam))
            throw UsageError(u"成绩库里没有考试“%1”。"_s.arg(exam));
    }
}

Exit Session::result() const
{
    return dialogs.errorShown() ? Exit::Error : Exit::Done;
}

} // namespace cli
