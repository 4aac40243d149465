#pragma once

#include "maintenance/ScoreCorrection.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace maintenance {

/// "修改成绩": one score after the other, typed by class, number and subject. Enter leads on.
class FormXiuGaiChengJi : public widgets::Screen
{
    Q_OBJECT

public:
    FormXiuGaiChengJi(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                      QWidget* parent);

    /// A score that was typed for a student and not confirmed by Enter is asked about.
    bool mayLeave() override;

protected:
    /// Enter, when it is let go over the field that it was pressed in.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeWidgets();
    void layOut();
    void connectWidgets();
    void Form_Load();
    void ShowCJ();
    static void SelTxt(QLineEdit* box);
    void KeyUp(const QObject* field);
    void TextCJ_KeyUp();
    void Command1_Click();
    ScoreCorrection::Result save();

    ScoreCorrection::Place place() const;

    library::ScoreLibrary& m_library;
    ScoreCorrection m_correction;
    widgets::ScreenDialogs& m_dialogs;
    /// The field that Enter was pressed in and not let go yet.
    const QObject* m_pressed = nullptr;
    QComboBox* ComboKS = nullptr;
    QLineEdit* TextBJ = nullptr;
    QLineEdit* TextXH = nullptr;
    QLineEdit* TextXM = nullptr;
    QComboBox* ComboKM = nullptr;
    QLineEdit* TextCJ = nullptr;
};

} // namespace maintenance
