#pragma once

#include <QCheckBox>

#include "library/LibraryBackup.h"

namespace library {

/// `CheckBackup`: whether the library is copied before the screen's command writes. On at first.
class BackupBox : public QCheckBox
{
    Q_OBJECT

public:
    /// `caption` can carry an access key as in "导入前备份成绩库(&K)".
    BackupBox(const QString& caption, QWidget* parent);

    Backup backup() const { return isChecked() ? Backup::Make : Backup::SwitchedOff; }
};

} // namespace library
