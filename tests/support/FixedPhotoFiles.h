#pragma once

#include <functional>

#include <QFileInfo>
#include <QStringList>

#include "maintenance/PhotoFiles.h"
#include "platform/runtime/Error.h"

namespace support {

/// Photo files that are what the test says; the others are pictures of ordinary size.
class FixedPhotoFiles : public maintenance::PhotoFiles
{
public:
    /// Paths of files that are no pictures, and of large ones.
    QStringList refused;
    QStringList large;
    /// Called for each file that is looked at.
    std::function<void(const QString& path)> whenChecked;

    maintenance::PhotoSize check(const QString& path) const override
    {
        using namespace Qt::StringLiterals;
        if (whenChecked)
            whenChecked(path);
        if (refused.contains(path))
            throw runtime::Error(u"照片文件“%1”不是图片，或已损坏。"_s.arg(path));
        return large.contains(path) ? maintenance::PhotoSize::Large
                                    : maintenance::PhotoSize::Ordinary;
    }

    QByteArray smaller(const QString& path) const override
    {
        return "smaller " + QFileInfo(path).fileName().toUtf8();
    }
};

} // namespace support
