#pragma once

#include <QtGlobal>

namespace excel {

/// The changes of a workbook. Everything that it holds notes its own ones here.
class Changes
{
public:
    /// Something is no longer as it was saved.
    void note()
    {
        m_saved = false;
        noteSight();
    }
    /// Something is seen that was not, such as another sheet; nothing has to be saved for that.
    void noteSight() { ++m_revision; }

    bool saved() const { return m_saved; }
    void setSaved(bool saved) { m_saved = saved; }

    /// Grows with everything that was noted.
    quint64 revision() const { return m_revision; }

private:
    bool m_saved = true;
    quint64 m_revision = 0;
};

} // namespace excel
