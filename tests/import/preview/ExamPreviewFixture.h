#pragma once

#include "../ExamImportFixture.h"
#include "import/preview/ExamPreview.h"
#include "support/FileBytes.h"

/// "5: 1|1|王芳|语文|90 → 缺考", the row only where there is one.
inline QString told(const importing::PreviewEntry& entry)
{
    QString text = entry.row > 0 ? QString::number(entry.row) + u": "_s : QString();
    text += QStringList{entry.classNumber, entry.number, entry.name}.join(u'|');
    if (!entry.subject.isEmpty())
        text += u'|' + entry.subject;
    if (!entry.before.isEmpty() || !entry.after.isEmpty())
        text += u' ' + entry.before + u" → "_s + entry.after;
    return text;
}

inline QStringList told(const importing::Preview& preview, importing::PreviewKind kind)
{
    QStringList texts;
    for (const importing::PreviewEntry& entry : preview.entries(kind))
        texts.append(told(entry));
    return texts;
}

/// The preview of an import of 期中 into the library of the fixture.
class ExamPreviewTest : public ExamImportFixture
{
protected:
    /// The preview; the library and its folder are as before, and nothing was shown.
    importing::Preview preview()
    {
        const QByteArray bytes = support::read(library.scores.LibPath);
        const QStringList files = QDir(library.folder.path()).entryList(QDir::Files);
        importing::ExamPreviewRequest asked{request, overwritten, {}, names};
        for (const QString& subject : {u"语文"_s, u"数学"_s})
            asked.fullMarks.insert(subject, fullMark);
        const std::optional<importing::Preview> found = previewExam(library.scores, intake, asked);
        EXPECT_EQ(support::read(library.scores.LibPath), bytes);
        EXPECT_EQ(QDir(library.folder.path()).entryList(QDir::Files), files);
        EXPECT_EQ(dialogs.shown, QStringList());
        EXPECT_TRUE(found);
        return found.value_or(importing::Preview());
    }

    /// 期中 with scores of 王芳 (90, 80) and 陈静 (70, none).
    void addExam()
    {
        library.addExam(u"期中"_s, u"文"_s, 1, {{u"语文"_s, 150}, {u"数学"_s, 150}});
        library.addScores(u"期中"_s, 1, 1, {{u"考试编号"_s, 1}, {u"语文"_s, 90}, {u"数学"_s, 80}});
        library.addScores(u"期中"_s, 1, 2, {{u"考试编号"_s, 1}, {u"语文"_s, 70}});
        library.reload();
    }

    void pickList() { request.examChoice = importing::ExamChoice::PickedFromList; }

    std::optional<importing::ScoreTarget> overwritten;
    importing::NameAnswer names = importing::NameAnswer::Ask;
    float fullMark = 150;
};
