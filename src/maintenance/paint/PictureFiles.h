#pragma once

#include "maintenance/PhotoFiles.h"

namespace maintenance {

/// Photo files judged by their content, whatever their names. No file takes more memory than a
/// picture of 32 million pixels does.
class PictureFiles : public PhotoFiles
{
public:
    PhotoSize check(const QString& path) const override;
    QByteArray smaller(const QString& path) const override;
};

} // namespace maintenance
