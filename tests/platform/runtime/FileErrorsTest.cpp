#include "platform/runtime/FileErrors.h"

#include <gtest/gtest.h>

#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::fileErrorText;

TEST(FileErrors, EachKindIsSaidInChinese)
{
    const std::pair<QFileDevice::FileError, QString> texts[] = {
        {QFileDevice::ReadError, u"读取时出错"_s},
        {QFileDevice::WriteError, u"不能写入：磁盘已满、文件只读，或它是文件夹"_s},
        {QFileDevice::ResourceError, u"磁盘已满，或打开的文件太多"_s},
        {QFileDevice::OpenError, u"不能打开：没有权限，或文件、文件夹不存在"_s},
        {QFileDevice::AbortError, u"操作已中止"_s},
        {QFileDevice::TimeOutError, u"等待超时"_s},
        {QFileDevice::RemoveError, u"不能删除"_s},
        {QFileDevice::RenameError, u"不能改名：没有权限，或同名文件已经存在"_s},
        {QFileDevice::PositionError, u"不能定位"_s},
        {QFileDevice::ResizeError, u"不能改变大小"_s},
        {QFileDevice::PermissionsError, u"没有权限"_s},
        {QFileDevice::CopyError, u"不能复制：没有权限，或磁盘已满"_s},
        {QFileDevice::NoError, u"原因不明"_s},
        {QFileDevice::FatalError, u"原因不明"_s},
        {QFileDevice::UnspecifiedError, u"原因不明"_s}};
    for (const auto& [error, text] : texts)
        EXPECT_EQ(fileErrorText(error), text) << int(error);
}

} // namespace
