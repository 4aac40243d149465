#include "shell/FileLook.h"

#include <atomic>
#include <future>
#include <map>
#include <memory>
#include <thread>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using shell::FileLook;
using shell::FileState;

/// A look at files with its event loop.
class LookAtFiles : public testing::Test
{
protected:
    /// What is seen until so many files are.
    std::map<QString, FileState> seen(FileLook& look, const QStringList& paths, size_t count)
    {
        std::map<QString, FileState> states;
        QObject::connect(
            &look, &FileLook::seen, &look,
            [&](const QString& path, const FileState& state) { states[path] = state; });
        look.start(paths);
        EXPECT_TRUE(states.empty()) << "nothing is waited for";
        QElapsedTimer time;
        for (time.start(); states.size() < count && time.elapsed() < 10'000;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        look.disconnect();
        return states;
    }

    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    QCoreApplication m_application{m_count, m_arguments};
    QTemporaryDir folder;
};

TEST_F(LookAtFiles, TellsWhichFilesAreThereAndWhenTheyChanged)
{
    const QString path = folder.filePath(u"高三'.CJK"_s);
    const QDateTime time(QDate(2024, 9, 1), QTime(8, 30));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();
    const QString missing = folder.filePath(u"没有.CJK"_s);
    FileLook look;
    auto states = seen(look, {path, missing, folder.path()}, 3);
    EXPECT_TRUE(states[path].exists);
    EXPECT_EQ(states[path].lastChanged, time);
    EXPECT_FALSE(states[missing].exists);
    EXPECT_FALSE(states[folder.path()].exists) << "a folder is no library";
}

/// As a folder of a network does that is gone.
TEST_F(LookAtFiles, AFileThatDoesNotAnswerHoldsUpNeitherTheOthersNorTheEnd)
{
    std::promise<void> answer;
    const std::shared_future<void> answered(answer.get_future());
    // Threads outlive the test.
    const auto asked = std::make_shared<std::atomic<int>>(0);
    {
        FileLook look(nullptr, [asked, answered](const QString& path) {
            if (path == u"/网络"_s) {
                ++*asked;
                answered.wait();
            }
            return FileState{true, {}};
        });
        EXPECT_EQ(seen(look, {u"/网络"_s, u"/本机"_s}, 1).count(u"/本机"_s), 1U);
        EXPECT_EQ(seen(look, {u"/网络"_s, u"/本机"_s}, 1).count(u"/本机"_s), 1U);
        QElapsedTimer time;
        for (time.start(); *asked == 0 && time.elapsed() < 10'000;)
            std::this_thread::yield();
    }
    EXPECT_EQ(*asked, 1) << "who does not answer is asked once";
    answer.set_value();
}

} // namespace
