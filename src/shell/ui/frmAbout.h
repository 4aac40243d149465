#pragma once

#include "platform/runtime/ui/Screen.h"

namespace shell {

/// "关于软件": the program's picture, title, version and what it is for.
class frmAbout : public runtime::Screen
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent);

private:
    QWidget* makePicture();
    QWidget* makeTitle();
    QWidget* makeDescription();
};

} // namespace shell
