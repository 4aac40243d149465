#pragma once

#include "platform/widgets/Screen.h"

namespace shell {

/// "关于软件": the program's picture, title, version and what it is for.
class frmAbout : public widgets::Screen
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
