#pragma once

#include "platform/runtime/AppPaths.h"
#include "platform/widgets/Screen.h"

class QListWidget;
class QPlainTextEdit;
class QVBoxLayout;

namespace library {

/// "修改科目": the list of subjects that a new library is offered, one a line.
class FormXiuGaiKeMu : public widgets::Screen
{
    Q_OBJECT

public:
    FormXiuGaiKeMu(const runtime::AppPaths& paths, QWidget* parent);

private:
    void makeLists(QVBoxLayout* layout);
    void Form_Load();
    void Command1_Click();

    const runtime::AppPaths& m_paths;
    QListWidget* List1 = nullptr;
    QPlainTextEdit* Text2 = nullptr;
};

} // namespace library
