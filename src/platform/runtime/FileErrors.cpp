#include "platform/runtime/FileErrors.h"

#include <cerrno>

namespace runtime {

using namespace Qt::StringLiterals;

QString fileErrorText(QFileDevice::FileError error)
{
    switch (error) {
    case QFileDevice::ReadError:
        return u"读取时出错"_s;
    case QFileDevice::WriteError:
        return u"不能写入：磁盘已满、文件只读，或它是文件夹"_s;
    case QFileDevice::ResourceError:
        return u"磁盘已满，或打开的文件太多"_s;
    case QFileDevice::OpenError:
        return u"不能打开：没有权限，或文件、文件夹不存在"_s;
    case QFileDevice::AbortError:
        return u"操作已中止"_s;
    case QFileDevice::TimeOutError:
        return u"等待超时"_s;
    case QFileDevice::RemoveError:
        return u"不能删除"_s;
    case QFileDevice::RenameError:
        return u"不能改名：没有权限，或同名文件已经存在"_s;
    case QFileDevice::PositionError:
        return u"不能定位"_s;
    case QFileDevice::ResizeError:
        return u"不能改变大小"_s;
    case QFileDevice::PermissionsError:
        return u"没有权限"_s;
    case QFileDevice::CopyError:
        return u"不能复制：没有权限，或磁盘已满"_s;
    case QFileDevice::NoError:
    case QFileDevice::FatalError:
    case QFileDevice::UnspecifiedError:
        break;
    }
    return u"原因不明"_s;
}

QString systemErrorText(int number)
{
    switch (number) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return u"磁盘已满，或文件的大小受到限制"_s;
    case EACCES:
    case EPERM:
        return u"没有权限"_s;
    case EROFS:
        return u"磁盘是只读的"_s;
    case EIO:
        return u"读写磁盘时出错"_s;
    case ENAMETOOLONG:
        return u"文件名太长"_s;
    case ENOENT:
    case ENOTDIR:
        return u"文件夹不存在"_s;
    case EISDIR:
    case ENOTEMPTY:
        return u"它是文件夹"_s;
    case EMFILE:
    case ENFILE:
        return u"打开的文件太多"_s;
    default:
        return u"原因不明"_s;
    }
}

} // namespace runtime
