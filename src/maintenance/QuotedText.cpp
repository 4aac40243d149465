#include "maintenance/QuotedText.h"

#include "platform/database/Error.h"

namespace maintenance {

QString quoted(const QString& text)
{
    constexpr int charactersSaidAgain = 60;
    return text.left(charactersSaidAgain);
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
