#include "platform/runtime/Error.h"

namespace runtime {

const char* Error::what() const noexcept
{
    m_utf8 = m_description.toUtf8();
    return m_utf8.constData();
}

} // namespace runtime
