#pragma once

#include <functional>
#include <vector>

#include <QDir>
#include <QFile>

#include "SheetFixture.h"
#include "import/ErrorList.h"
#include "import/ExamImport.h"

/// Answers with one full mark for all subjects, and every bad score with one text.
class EnteredAnswers : public importing::ImportQuestions
{
public:
    float fullMark = 150;
    /// Empty leaves the list by its close box.
    QString correctTo;
    QStringList labels;
    QStringList countTexts;
    int errorLists = 0;
    /// What happens while the list of bad scores stands open.
    std::function<void()> meanwhile = [] {};

    void fullMarks(importing::ImportState& state, const QString& label) override
    {
        labels.append(label);
        for (importing::ImportSubject& subject : state.KMImport)
            subject.KMFull = fullMark;
    }

    void errorList(importing::ImportState& state) override
    {
        ++errorLists;
        meanwhile();
        importing::ErrorList list(state);
        countTexts.append(list.countText());
        for (int row = 1; row <= int(state.ErrorCount) && !correctTo.isEmpty(); ++row)
            list.answer(row, correctTo);
    }
};

/// A library with 王芳 and 陈静 in class 1 (文) and 李强 in class 2 (理), and an import of "期中"
/// that adds unknown students unasked.
class ExamImportFixture : public SheetFixture
{
protected:
    ExamImportFixture() : SheetFixture(importing::examSheet)
    {
        library.addStudent(1, 1, u"王芳"_s, u"文"_s);
        library.addStudent(1, 2, u"陈静"_s, u"文"_s);
        library.addStudent(2, 1, u"李强"_s, u"理"_s);
        library.execute(u"delete * from 总分公式"_s);
        library.execute(u"insert into 总分公式(总分,公式) values('总分','语文+数学')"_s);
        library.reload();
        QFile file(library.file(u"成绩.xlsx"_s));
        file.open(QIODevice::WriteOnly);
        request.workbookPath = file.fileName();
        request.sheetName = sheetName;
        request.examName = u"期中"_s;
        request.newStudents = importing::NewStudents::Add;
        request.backup = importing::Backup::SwitchedOff;
        QObject::connect(&library.scores, &library::ScoreLibrary::changed,
                         [this] { ++changedSignals; });
    }

    static std::vector<runtime::Value> heads(const QStringList& subjects)
    {
        std::vector<runtime::Value> row{u"班级"_s, u"学号"_s, u"姓名"_s};
        for (const QString& subject : subjects)
            row.emplace_back(subject);
        return row;
    }

    /// From now on "期中" is picked from the list, and replacing it is agreed to.
    void pick()
    {
        request.examChoice = importing::ExamChoice::PickedFromList;
        dialogs.expect(u"确实要将数据到入 期中 吗"_s, runtime::Answer::Ok);
    }

    importing::ImportResult run()
    {
        return importing::ExamImport(library.scores, intake, state, questions, progress)
            .run(request);
    }

    importing::ExamImportRequest request;
    importing::ImportState state;
    EnteredAnswers questions;
    int changedSignals = 0;
};
