#pragma once

#include <QSet>
#include <QStringList>

namespace oldlibraries {

/// Gives the new library's names of one kind (its tables, or the columns of one of them), each to
/// one only.
class TargetNames
{
public:
    /// `oldNames` are those of the old library, `reserved` others that are not to be had.
    explicit TargetNames(const QStringList& oldNames, const QStringList& reserved = {});

    /// The old name itself if statements can hold it and nothing else has it, otherwise a free one
    /// like it.
    QString nameFor(const QString& oldName);

private:
    QSet<QString> m_taken;
    QSet<QString> m_reserved;
};

} // namespace oldlibraries
