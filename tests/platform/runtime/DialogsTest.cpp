#include "platform/runtime/Dialogs.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/runtime/Error.h"
#include "support/PrintQString.h"
#include "support/ScriptedDialogs.h"

namespace {

using namespace Qt::StringLiterals;
using namespace runtime;

const QString filter = u"成绩库|*.CJK"_s;

class FileDialog : public testing::Test
{
protected:
    QString existingFile()
    {
        const QString path = folder.filePath(u"旧.CJK"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return path;
    }

    QTemporaryDir folder;
    support::ScriptedDialogs dialogs;
};

TEST_F(FileDialog, CancellingGivesAnEmptyName)
{
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Open), u""_s);
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Save), u""_s);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(FileDialog, OpeningAnExistingFileAsksNothing)
{
    dialogs.file = existingFile();
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Open), *dialogs.file);
    EXPECT_EQ(dialogs.fileTitle, u"打开文件"_s);
    EXPECT_EQ(dialogs.fileFilter, filter);
    EXPECT_TRUE(dialogs.shown.isEmpty());
}

TEST_F(FileDialog, SavingUnderANewNameAsksNothing)
{
    dialogs.file = folder.filePath(u"新.CJK"_s);
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Save), *dialogs.file);
    EXPECT_EQ(dialogs.fileTitle, u"保存文件"_s);
}

TEST_F(FileDialog, RefusingToOverwriteGivesAnEmptyName)
{
    dialogs.file = existingFile();
    dialogs.expect(u"同名文件已存在"_s, Answer::Cancel);
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Save), u""_s);
    EXPECT_EQ(dialogs.shown, QStringList{u"是否覆盖: 同名文件已存在，是否覆盖原文件？"_s});
    EXPECT_EQ(dialogs.look(u"同名文件已存在"_s),
              (support::BoxLook{u"是否覆盖"_s, Buttons::OkCancel, Icon::Question}));
}

TEST_F(FileDialog, AgreeingToOverwriteGivesTheName)
{
    dialogs.file = existingFile();
    dialogs.expect(u"同名文件已存在"_s, Answer::Ok);
    EXPECT_EQ(ShowFileDialog(filter, FileMode::Save), *dialogs.file);
}

/// Dialogs whose file dialog cannot be opened.
class BrokenFileDialog : public support::ScriptedDialogs
{
public:
    std::optional<QString> chooseFile(const QString& title, const QString&, FileMode) override
    {
        throw Error(title);
    }
};

TEST(BrokenFileDialog, GivesAnEmptyNameWithoutAMessage)
{
    BrokenFileDialog dialogs;
    for (const FileMode mode : {FileMode::Open, FileMode::Save})
        EXPECT_EQ(ShowFileDialog(filter, mode), u""_s);
    EXPECT_EQ(dialogs.shown, QStringList());
    EXPECT_EQ(dialogs.failures, QStringList());
}

TEST(FolderDialog, GivesTheFolderOrNothing)
{
    support::ScriptedDialogs dialogs;
    EXPECT_EQ(OpenDirectoryTV(u"选择文件夹"_s), u""_s);
    dialogs.folder = u"/图"_s;
    EXPECT_EQ(OpenDirectoryTV(u"选择文件夹"_s), u"/图"_s);
    EXPECT_EQ(dialogs.fileTitle, u"选择文件夹"_s);
}

TEST(Unsaved, IsSavedLostOrStayedWithAsTheUserSays)
{
    support::ScriptedDialogs dialogs;
    for (const auto& [caption, answer] :
         {std::pair{u"保存"_s, Unsaved::Save}, std::pair{u"不保存"_s, Unsaved::Discard},
          std::pair{u"取消"_s, Unsaved::Stay}}) {
        dialogs.expect(u"改动"_s, caption);
        EXPECT_EQ(askAboutUnsaved(u"改动还没有保存。"_s), answer) << caption.toStdString();
    }
    EXPECT_EQ(dialogs.safeOf(u"改动"_s), u"取消"_s);
    EXPECT_EQ(dialogs.shown.first(), u"提示: 改动还没有保存。"_s);
}

TEST(ColorDialog, GivesTheColorAsANumberOrErr)
{
    support::ScriptedDialogs dialogs;
    EXPECT_EQ(GetColor(0), u"err"_s);
    dialogs.color = 0x00ff80;
    EXPECT_EQ(GetColor(0), u"65408"_s);
}

/// Dialogs whose colour dialog cannot be opened.
class BrokenColorDialog : public support::ScriptedDialogs
{
public:
    std::optional<int> chooseColor(const QString& title, int start) override
    {
        throw Error(title + QString::number(start));
    }
};

TEST(ColorDialog, IsTitledAndStartsWithTheGivenColorAndAFailureIsShown)
{
    BrokenColorDialog dialogs;
    EXPECT_EQ(GetColor(7), u"err"_s);
    EXPECT_EQ(dialogs.failures, QStringList{u"选择颜色7 - Function GetColor/MDLCommonDialog"_s});
}

} // namespace
