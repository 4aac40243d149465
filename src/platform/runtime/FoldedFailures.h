#pragma once

#include <map>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

namespace runtime {

/// The failures of one command, so that the same one is shown once and its repeats are counted.
/// Of failures that differ in a value only, the first few of a tag are shown.
class FoldedFailures
{
public:
    /// So many different texts of one tag are shown.
    static constexpr int MostTexts = 20;

    /// Notes a failure, a description with the tag behind it. True if it has to be shown; otherwise
    /// it is counted.
    bool isNew(const QString& text);

    /// What was counted, a sentence for each kind of failure; begins anew.
    QStringList takeCounts();

private:
    struct Shown
    {
        QString text;
        qint64 repeats = 0;
    };

    struct Tag
    {
        int shown = 0;
        qint64 passedOver = 0;
    };

    std::vector<Shown> m_shown;
    QHash<QString, size_t> m_places;
    std::map<QString, Tag> m_tags;
};

/// A number as it is told to users, with separators: "107,966".
QString countText(qint64 count);

} // namespace runtime
