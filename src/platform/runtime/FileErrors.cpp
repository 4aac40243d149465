#include "platform/runtime/FileErrors.h"

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

} // namespace runtime
