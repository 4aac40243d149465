#pragma once

#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "import/tidy/SheetView.h"
#include "import/tidy/Tidy.h"

namespace tidy {

/// Which of the scores of a subject a column holds.
enum class ScoreKind {
    None,
    Bare,     ///< 语文
    Raw,      ///< 语文分数, 原始分
    Assigned, ///< 语文赋分
    Whole,    ///< 语文总分
    Former,   ///< 上次语文
    OfSheet,  ///< 分数, of a sheet of one subject
    Beside    ///< ranks, T scores, parts: no score
};

/// What a heading says by itself.
struct HeadingMeaning
{
    ColumnUse use = {};
    ScoreKind score = ScoreKind::None;
    /// The heading is one that is known, whether it is taken or not.
    bool isKnown = false;
    /// It is the very name of the field, subject or column.
    bool isExact = false;
    /// Subjects that it can mean, if there are several.
    QStringList choices = {};
    /// A subject that the roster does not have.
    QString missingSubject = {};
};

/// Reads headings by the aliases and the subjects of a roster.
class HeadingWords
{
public:
    HeadingWords(Goal goal, const Sources& sources);

    HeadingMeaning meaning(const HeadingCell& heading) const;
    /// The one subject that a name of a sheet, a title or a file names; empty if none or several.
    QString subjectIn(const QString& text) const;
    /// True for a use that columns can have here.
    bool offers(const ColumnUse& use) const;

private:
    HeadingMeaning read(const QString& heading) const;
    HeadingMeaning readAsKey(const QString& heading) const;
    HeadingMeaning readAsSubject(const QString& heading) const;
    HeadingMeaning subjectOf(const QString& word, ScoreKind score) const;
    ColumnUse useOf(const QString& name) const;
    void addSubject(const QString& subject);
    void addWord(const QString& word, const QString& subject);

    Goal m_goal;
    const Sources m_sources;
    std::vector<ColumnUse> m_uses;
    /// What a folded word can mean: subjects of the roster; none for one that it lacks.
    QHash<QString, QStringList> m_subjectsOf;
    /// Those words, the longest first.
    QStringList m_words;
};

} // namespace tidy
