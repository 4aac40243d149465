#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

#include "gui/DroppedFile.h"
#include "gui/MainWindowFixture.h"
#include "gui/ModalBoxes.h"
#include "gui/ProgressCanceller.h"
#include "platform/runtime/TextFile.h"
#include "support/OldFileWriter.h"
#include "support/OldSamples.h"

namespace {

using namespace Qt::StringLiterals;

/// The main window, not started, a library, and an old one; boxes are answered by clicks.
class OldLibrary : public support::MainWindowFixture
{
protected:
    OldLibrary() { support::write(old, bytes); }
    ~OldLibrary() override { EXPECT_EQ(support::read(old), bytes) << "the old file was written"; }

    void setBytes(const QByteArray& content)
    {
        bytes = content;
        support::write(old, bytes);
    }

    /// An old library that takes a while.
    void writeManyRows()
    {
        constexpr int rows = 1'000'000;
        support::OldFileWriter file(old);
        file.addTable(u"成绩表"_s, {{u"班级"_s, oldlibraries::OldType::Long}});
        for (int row = 0; row < rows; ++row)
            file.addRow({row});
        file.save();
        bytes = support::read(old);
    }

    /// The next box begins with this text; the button of this caption is clicked.
    void expectBox(const QString& begin, const QString& caption)
    {
        boxes.expect([begin, caption](QDialog& shown) {
            auto& box = dynamic_cast<QMessageBox&>(shown);
            EXPECT_TRUE(box.text().startsWith(begin)) << box.text().toStdString();
            for (QAbstractButton* button : box.buttons()) {
                if (button->text() == caption)
                    return QTest::mouseClick(button, Qt::LeftButton);
            }
            ADD_FAILURE() << "no such button: " << caption.toStdString();
            box.reject();
        });
    }
    void expectConversion()
    {
        expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
        expectBox(u"转换完成："_s, u"关闭"_s);
    }
    void expectRefusal() { expectBox(u"这是旧格式的成绩库"_s, u"取消"_s); }
    /// The next window is the file dialog, which gets this path.
    void expectFile(const QString& file)
    {
        boxes.expect([file](QDialog& shown) {
            auto& dialog = dynamic_cast<QFileDialog&>(shown);
            dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(file);
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    void expectPassword(const QString& typed, Qt::Key key)
    {
        boxes.expect([typed, key](QDialog& shown) {
            EXPECT_EQ(shown.objectName(), u"PasswordBox"_s);
            auto* field = shown.findChild<QLineEdit*>();
            QTest::keyClicks(field, typed);
            QTest::keyClick(field, key);
        });
    }
    QStringList recent() const
    {
        QStringList lines;
        runtime::readLines(test.paths.dataFile(u"recent.dat"_s), lines);
        return lines;
    }
    /// The new library is open, in the title, in the recent list, and shows its exams.
    void checkOpened(const QStringList& before = {})
    {
        EXPECT_EQ(test.scores.Conn.path(), converted);
        EXPECT_EQ(test.scores.LibPath, converted);
        EXPECT_EQ(window->windowTitle(), u"云杉学业册 - "_s + converted);
        EXPECT_EQ(recent(), QStringList{converted} + before);
        EXPECT_EQ(item(u"mfREC0"_s)->text(), converted);
        EXPECT_EQ(window->findChild<QListWidget*>(u"ListKSMC"_s)->count(), 4);
        EXPECT_TRUE(menuEnabled(u"Medit"_s));
    }

    QByteArray bytes = support::oldSample(u"one-stream"_s);
    const QString old = test.file(u"2008级.CJK"_s);
    const QString converted = test.file(u"2008级（转换）.CJK"_s);
    support::ModalBoxes boxes;
    // Over the scripted ones of the fixture.
    runtime::InstalledDialogs real{screenDialogs};
};

TEST_F(OldLibrary, OfTheCommandLineIsConvertedAndOpened)
{
    expectConversion();
    window->start(u'"' + old + u'"');
    checkOpened();
    EXPECT_EQ(boxes.count, 2);
}

TEST_F(OldLibrary, OfTheMenuIsConvertedAndOpened)
{
    window->start(path);
    expectFile(old);
    expectConversion();
    item(u"mfOpen"_s)->trigger();
    checkOpened({path});
}

TEST_F(OldLibrary, ThatIsDroppedIsConvertedAndOpened)
{
    window->start(path);
    expectConversion();
    ASSERT_TRUE(support::dropOn(*window, old));
    checkOpened({path});
}

TEST_F(OldLibrary, OfTheRecentListIsConvertedAndOpened)
{
    runtime::writeTextFile(test.paths.dataFile(u"recent.dat"_s), old + u'\n');
    window->start({});
    expectConversion();
    item(u"mfREC0"_s)->trigger();
    checkOpened({old});
}

TEST_F(OldLibrary, ThatIsNotConvertedChangesNothing)
{
    window->start(path);
    runtime::writeTextFile(test.paths.dataFile(u"recent.dat"_s), path + u'\n' + old + u'\n');
    window->start(path);
    const QString title = window->windowTitle();
    expectFile(old);
    expectRefusal();
    item(u"mfOpen"_s)->trigger();
    expectRefusal();
    support::dropOn(*window, old);
    expectRefusal();
    item(u"mfREC1"_s)->trigger();
    EXPECT_EQ(boxes.count, 4);
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_EQ(test.scores.LibPath, path);
    EXPECT_EQ(window->windowTitle(), title);
    EXPECT_EQ(recent(), (QStringList{path, old}));
    EXPECT_FALSE(QFile::exists(converted));
}

TEST_F(OldLibrary, OfTheCommandLineThatIsNotConvertedLeavesTheWindowEmpty)
{
    expectRefusal();
    window->start(old);
    EXPECT_FALSE(test.scores.Conn.isOpen());
    EXPECT_EQ(test.scores.LibPath, QString());
    EXPECT_EQ(window->windowTitle(), u"云杉学业册"_s);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(recent(), QStringList());
}

TEST_F(OldLibrary, WithAPasswordIsOpenedByIt)
{
    setBytes(support::oldSampleWithPassword(u"one-stream"_s, u"1234"_s));
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    expectPassword(u"4321"_s, Qt::Key_Return);
    expectPassword(u"1234"_s, Qt::Key_Return);
    expectBox(u"转换完成："_s, u"关闭"_s);
    window->start(old);
    checkOpened();
}

TEST_F(OldLibrary, WithAPasswordThatNobodyKnowsStays)
{
    setBytes(support::oldSampleWithPassword(u"one-stream"_s, u"1234"_s));
    window->start(path);
    expectFile(old);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    expectPassword(u"123"_s, Qt::Key_Return);
    expectPassword(u"12345"_s, Qt::Key_Escape);
    item(u"mfOpen"_s)->trigger();
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_FALSE(QFile::exists(converted));
}

TEST_F(OldLibrary, GoesUnderAnotherNameWhereItsOwnIsTaken)
{
    support::write(converted, "the user's own");
    const QString other = test.file(u"高三.CJK"_s);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    boxes.expect([this](QDialog& shown) {
        auto& dialog = dynamic_cast<QFileDialog&>(shown);
        EXPECT_EQ(dialog.directory().path(), test.folder.path()) << "beside the old one";
        // The ending is put behind it.
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(u"高三"_s);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    expectBox(u"转换完成："_s, u"关闭"_s);
    window->start(old);
    EXPECT_EQ(test.scores.Conn.path(), other);
    EXPECT_EQ(support::read(converted), "the user's own");
}

TEST_F(OldLibrary, ThatIsDamagedIsToldInOneBox)
{
    setBytes(bytes.left(bytes.size() / 2 / 4096 * 4096));
    window->start(path);
    expectFile(old);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    boxes.expect([this](QDialog& shown) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(shown).text().contains(old));
        shown.accept();
    });
    item(u"mfOpen"_s)->trigger();
    EXPECT_EQ(boxes.count, 3);
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_FALSE(QFile::exists(converted));
}

TEST_F(OldLibrary, WhoseConversionIsCancelledLeavesNothing)
{
    writeManyRows();
    window->start(path);
    const QStringList before = QDir(test.folder.path()).entryList(QDir::Files | QDir::Hidden);
    expectFile(old);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    const support::ProgressCanceller canceller;
    item(u"mfOpen"_s)->trigger();
    EXPECT_TRUE(canceller.text.contains(u" 成绩表："_s)) << canceller.text.toStdString();
    EXPECT_EQ(boxes.count, 2);
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_EQ(recent(), QStringList{path});
    EXPECT_EQ(QDir(test.folder.path()).entryList(QDir::Files | QDir::Hidden), before);
}

TEST_F(OldLibrary, IsLeftAloneIfTheUserStaysWithWhatIsNotSaved)
{
    window->start(path);
    item(u"meJCTP"_s)->trigger();
    auto* screen = window->findChild<QDialog*>(u"FormXGXX"_s);
    auto* list = screen->findChild<QListWidget*>(u"List1"_s);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    auto* view = screen->findChild<grid::FlexGridView*>(u"MSFlexGrid1"_s);
    view->select(5, 1, 5, 1);
    QTest::keyClicks(view, u"x"_s);
    expectFile(old);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    boxes.expect([](QDialog& shown) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(shown).text().contains(u"还没有保存"_s));
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    item(u"mfOpen"_s)->trigger();
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(test.scores.Conn.path(), path);
    EXPECT_FALSE(QFile::exists(converted));
    expectFile(old);
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    boxes.expect([](QDialog& shown) {
        for (QAbstractButton* button : dynamic_cast<QMessageBox&>(shown).buttons()) {
            if (button->text().startsWith(u"不保存"_s))
                return QTest::mouseClick(button, Qt::LeftButton);
        }
    });
    expectBox(u"转换完成："_s, u"关闭"_s);
    item(u"mfOpen"_s)->trigger();
    checkOpened({path});
}

TEST_F(OldLibrary, HasAReportToRead)
{
    expectBox(u"这是旧格式的成绩库"_s, u"转换"_s);
    expectBox(u"转换完成："_s, u"查看报告"_s);
    boxes.expect([this](QDialog& shown) {
        EXPECT_EQ(shown.objectName(), u"ReportScreen"_s);
        EXPECT_EQ(test.scores.Conn.path(), converted) << "the new library is open behind it";
        const auto* view = shown.findChild<grid::FlexGridView*>(u"ReportGrid"_s);
        EXPECT_EQ(view->grid().TextMatrix(1, 3), old);
        EXPECT_EQ(view->grid().TextMatrix(2, 3), converted);
        QTest::mouseClick(shown.findChild<QPushButton*>(u"ReportClose"_s), Qt::LeftButton);
    });
    window->start(old);
    EXPECT_EQ(boxes.count, 3);
}

TEST_F(OldLibrary, AtTheStartGoesWhatAKilledConversionLeft)
{
    const QString folder = test.paths.dataFile(u"转换"_s);
    ASSERT_TRUE(QDir().mkdir(folder));
    const QString name = u".yunshan-00000000-999999999-12345678.tmp"_s;
    const QTemporaryDir elsewhere;
    const QStringList files{folder + u'/' + name, elsewhere.filePath(name)};
    support::write(files[0], elsewhere.filePath(u"新.CJK"_s).toUtf8());
    support::write(files[1], "half");
    for (const QString& left : files) {
        QFile file(left);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-2),
                                     QFileDevice::FileModificationTime));
    }
    window->start(path);
    for (const QString& left : files)
        EXPECT_FALSE(QFile::exists(left)) << left.toStdString();
}

} // namespace
