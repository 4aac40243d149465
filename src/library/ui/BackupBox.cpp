#include "library/ui/BackupBox.h"

#include "platform/widgets/Screen.h"

namespace library {

using namespace Qt::StringLiterals;

BackupBox::BackupBox(const QString& caption, QWidget* parent) : QCheckBox(caption, parent)
{
    widgets::named(this, u"CheckBackup"_s, widgets::withoutAccessKey(caption));
    setToolTip(u"在成绩库旁边留一份副本，“文件”菜单的“恢复备份”可以找回来。"_s);
    setChecked(true);
}

} // namespace library
