#include "platform/database/OldFormat.h"

namespace database {

bool isOldFormat(const QByteArray& firstBytes)
{
    static constexpr char signature[] = "\0\1\0\0Standard Jet DB"; // with its end mark
    return firstBytes.startsWith(QByteArray::fromRawData(signature, sizeof signature));
}

} // namespace database
