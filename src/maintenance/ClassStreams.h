#pragma once

#include <QStringList>

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// Sets the 科类 of whole classes in 成绩表: 理 for the chosen ones, 文 for all others. 信息表 and
/// 考试名称表 keep theirs.
class ClassStreams
{
public:
    explicit ClassStreams(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    /// The classes to choose from, those that have students, as they are now.
    const QStringList& load();

    /// Asks whether to go on, with the classes and score rows that become 理 and 文.
    /// False, and told, where the copy that it makes first does not fit.
    bool confirmed(const QStringList& science, library::Backup backup) const;

    /// Sets the streams of all classes in one batch, with a dated copy ahead. Students without a
    /// class make their group's statement fail; the other group is set all the same.
    void set(const QStringList& science, runtime::Progress& progress, library::Backup backup);

private:
    /// Classes that get one stream.
    struct Group
    {
        QString stream;
        QStringList classes;
    };

    Group chosen(const QStringList& science) const;
    Group others(const QStringList& science) const;
    QString question(const QStringList& science) const;
    void update(const Group& group);

    library::ScoreLibrary& m_library;
    QStringList m_classes;
};

} // namespace maintenance
