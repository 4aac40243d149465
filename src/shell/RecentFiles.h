#pragma once

#include <QStringList>

namespace shell {

/// The libraries opened last, as lines of a text file and as entries of the menu.
class RecentFiles
{
public:
    /// What the first entry of the menu says while it stands for no file.
    static const QString Placeholder;

    /// Reads the list; puts `path` at its head if it is not among the first `count` yet, and
    /// rewrites the file then. The list is in order of first opening: an entry that is there keeps
    /// its place. A path with a line break, of which the file would make two, is left out. With an
    /// empty `path` the first entry is given back if its file exists, "" otherwise.
    QString MKRecent(const QString& file, const QString& path, int count);

    /// Takes `path` out of the list and rewrites the file.
    void remove(const QString& file, const QString& path);

    /// The files that stand in the menu.
    QStringList files() const;

    /// Captions of the menu entries: the files, or the placeholder alone.
    const QStringList& mfREC() const { return m_captions; }

private:
    void add(const QString& file, const QString& path, int count);

    QStringList m_list;
    QStringList m_captions{Placeholder};
};

} // namespace shell
