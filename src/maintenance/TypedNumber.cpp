#include "maintenance/TypedNumber.h"

#include <string>
#include <string_view>

#include "platform/runtime/Numbers.h"
#include "platform/runtime/PlainNumber.h"

namespace maintenance {

QString plainDigits(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).trimmed();
}

std::optional<double> typedNumber(const QString& text)
{
    const std::u16string plain = plainDigits(text).toStdU16String();
    return runtime::plainNumber(std::u16string_view(plain));
}

std::optional<double> typedWholeNumber(const QString& text)
{
    const std::optional<double> number = typedNumber(text);
    return number && *number > 0 && *number == runtime::Int(*number) ? number : std::nullopt;
}

} // namespace maintenance
