#include "platform/database/Error.h"

namespace database {

namespace {

QString withEngineWords(const QString& description, const QString& engineWords)
{
    return engineWords.isEmpty() ? description
                                 : description + QStringLiteral("（%1）").arg(engineWords);
}

} // namespace

Error::Error(Failure failure, const QString& description, const QString& engineWords)
    : runtime::Error(withEngineWords(description, engineWords)), m_failure(failure)
{
}

} // namespace database
