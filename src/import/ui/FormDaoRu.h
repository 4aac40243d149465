#pragma once

#include "import/ExamImport.h"
#include "import/ui/IntakeScreen.h"

namespace importing {

/// "导入考试成绩": the scores of an exam from a sheet.
class FormDaoRu : public IntakeScreen
{
    Q_OBJECT

public:
    FormDaoRu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
              Applications& applications, ImportState& state, QWidget* parent);

    void browse(const QString& path) override;
    void use(excel::Application& application, excel::Workbook& book, const QString& path) override;

private:
    void Form_Load();
    bool isSheetAsWanted() const override;
    void build();
    void layOut();
    void chainTabs();
    void connectExam();
    void offerExam(const QString& path);
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    ExamImportRequest request() const;

    ImportState& m_state;
    ExamChoice m_examChoice = ExamChoice::Typed;
    QLineEdit* Text2 = nullptr;
    QComboBox* Combo2 = nullptr;
    QCheckBox* CheckAdd = nullptr;
    QCheckBox* CheckBox1 = nullptr;
    QLabel* Label6 = nullptr;
};

} // namespace importing
