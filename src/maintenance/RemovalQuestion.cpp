#include "maintenance/RemovalQuestion.h"

#include <algorithm>

#include "platform/runtime/Dialogs.h"

namespace maintenance {

using namespace Qt::StringLiterals;

bool isRemovalConfirmed(const QString& question, const QStringList& names)
{
    QString lines;
    std::for_each(names.rbegin(), names.rend(),
                  [&](const QString& name) { lines += name + u'\n'; });
    return runtime::MsgBox(question + u"\n\n"_s + lines, u"提示"_s, runtime::Buttons::OkCancel,
                           runtime::Icon::Question)
           == runtime::Answer::Ok;
}

} // namespace maintenance
