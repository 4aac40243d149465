#include "library/ui/BackupBox.h"

#include "platform/widgets/Screen.h"

namespace library {

using namespace Qt::StringLiterals;

BackupBox::BackupBox(const QString& caption, QWidget* parent) : QCheckBox(caption, parent)
{
    widgets::named(this, u"CheckBackup"_s, widgets::withoutAccessKey(caption));
    setToolTip(u"在成绩库旁边留一份副本，只保留最近的5份。"_s);
    setChecked(true);
}

} // namespace library
