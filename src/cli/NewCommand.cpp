#include "cli/Command.h"
#include "library/NewLibrary.h"

namespace cli {

using namespace Qt::StringLiterals;

Exit runNew(Session& session)
{
    if (!session.arguments.has(u"subjects"_s))
        throw missingOption(u"subjects"_s);
    const QStringList subjects = session.arguments.list(u"subjects"_s);
    if (session.arguments.has(u"force"_s))
        session.dialogs.answer(u"是否覆盖原文件"_s, runtime::Answer::Ok);
    if (session.arguments.has(u"trim-formulas"_s))
        session.dialogs.answer(u"总分公式"_s, u"改为现有科目"_s);
    const bool made =
        library::NewLibrary(session.scores).createAsked(subjects, session.libraryPath());
    return made ? session.result() : Exit::Error;
}

} // namespace cli
