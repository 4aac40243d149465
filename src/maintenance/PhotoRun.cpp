#include "maintenance/PhotoRun.h"

#include <algorithm>

#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using database::Recordset;

namespace {

const runtime::Trap photoTrap{" - Private Sub Command1_Click/FormSheZhiZhaoPian"};

QString textOf(Recordset& student, const QString& column)
{
    return student.Fields(column).Value().text();
}

qint64 idOf(Recordset& student)
{
    return qint64(student.Fields(u"ID"_s).Value().toDouble());
}

bool hasPhoto(Recordset& student)
{
    return !runtime::Trim(textOf(student, u"照片名"_s)).isEmpty();
}

/// Calls `action` for each student of the library; false if the user stopped that.
template <class Action>
bool eachStudent(database::Connection& connection, runtime::Progress& progress, const QString& text,
                 const Action& action)
{
    Recordset rows;
    rows.Open(u"select * from 信息表 order by 班级,学号"_s, connection);
    const int total = int(rows.RecordCount());
    for (int done = 0; !rows.Eof(); rows.MoveNext()) {
        progress.report(text, done++, total);
        if (progress.cancelled())
            return false;
        action(rows);
    }
    return true;
}

} // namespace

PhotoRun::PhotoRun(library::ScoreLibrary& scoreLibrary, const PhotoFiles& photos,
                   runtime::Progress& progress)
    : m_library(scoreLibrary), m_photos(photos), m_progress(progress)
{
}

bool PhotoRun::run(const QString& folder, library::Backup backup)
{
    PhotoFolder photoFolder(folder);
    if (!photoFolder.exists()) {
        runtime::warn(folder.isEmpty() ? u"请先选择学生照片所在的文件夹。"_s
                                       : u"文件夹不存在：\n"_s + folder);
        return false;
    }
    const bool isLookedAt = look(photoFolder);
    m_progress.finish();
    const bool isDone = isLookedAt && ask(backup) && write(backup);
    m_progress.finish();
    if (isDone)
        tell();
    return isDone;
}

bool PhotoRun::look(PhotoFolder& folder)
{
    bool isComplete = false;
    photoTrap([&] {
        const database::ReadBatch reading(m_library.Conn);
        isComplete = eachStudent(m_library.Conn, m_progress, u"查找照片..."_s,
                                 [&](Recordset& student) { lookFor(student, folder); });
    });
    return isComplete;
}

void PhotoRun::lookFor(Recordset& student, PhotoFolder& folder)
{
    const QString classNumber = textOf(student, u"班级"_s);
    QString file = folder.find(classNumber, textOf(student, u"学号"_s));
    if (file.isEmpty())
        file = folder.find(classNumber, textOf(student, u"姓名"_s));
    if (file.isEmpty()) {
        ++m_counts.withoutFile;
        return;
    }
    const bool isPicture = photoTrap([&] {
        m_found.insert(idOf(student), {file, m_photos.check(file), hasPhoto(student)});
    });
    if (!isPicture)
        ++m_counts.failed;
}

bool PhotoRun::ask(library::Backup backup)
{
    return m_found.isEmpty()
           || (library::hasRoomForBackup(m_library, backup) && askExisting() && askLarge());
}

bool PhotoRun::askExisting()
{
    const auto existing = std::count_if(m_found.cbegin(), m_found.cend(),
                                        [](const Find& find) { return find.hasPhoto; });
    if (existing == 0)
        return true;
    const QStringList buttons{u"替换"_s, u"只补没有照片的"_s, u"取消"_s};
    enum Button { Replace, OnlyMissing, Cancel };
    const int pressed =
        runtime::choose({u"找到 %1 名学生的照片，其中 %2 名已经有照片。\n"
                         "替换他们原来的照片，还是只补没有照片的 %3 名？"_s.arg(m_found.size())
                             .arg(existing)
                             .arg(m_found.size() - existing),
                         buttons, OnlyMissing, u"提示"_s});
    m_existing = pressed == Replace ? Existing::Replace : Existing::Keep;
    return pressed != Cancel;
}

bool PhotoRun::askLarge()
{
    const auto large = std::count_if(m_found.cbegin(), m_found.cend(), [this](const Find& find) {
        return find.size == PhotoSize::Large && (m_existing == Existing::Replace || !find.hasPhoto);
    });
    if (large == 0)
        return true;
    const QStringList buttons{u"改存较小的图片"_s, u"原样存入"_s, u"取消"_s};
    enum Button { Smaller, Own, Cancel };
    const int pressed =
        runtime::choose({u"%1 张照片很大（超过 5 MB 或 2000 像素），成绩库会因此变大。\n"
                         "可以都改存高 600 像素的较小的图片，文件本身不变。"_s.arg(large),
                         buttons, Own, u"提示"_s});
    m_large = pressed == Smaller ? PhotoBytes::Smaller : PhotoBytes::Own;
    return pressed != Cancel;
}

bool PhotoRun::write(library::Backup backup)
{
    if (m_found.isEmpty())
        return true;
    const library::BackupBeforeWrite backUp(m_library, m_progress, backup, {u"设置图片"_s});
    bool isComplete = false;
    photoTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        const bool isToTheEnd = eachStudent(m_library.Conn, m_progress, u"设置照片..."_s,
                                            [&](Recordset& student) { writeOne(student); });
        if (!isToTheEnd)
            return;
        batch.commit();
        isComplete = true;
    });
    return isComplete;
}

void PhotoRun::writeOne(Recordset& student)
{
    const auto found = m_found.constFind(idOf(student));
    if (found == m_found.cend())
        return;
    if (m_existing == Existing::Keep && hasPhoto(student)) {
        ++m_counts.kept;
        return;
    }
    const bool isLarge = found->size == PhotoSize::Large;
    bool isSet = false;
    photoTrap([&] {
        const bool isReady = setPhoto(m_library, student, found->file, m_photos,
                                      isLarge ? m_large : PhotoBytes::Own);
        student.Update();
        isSet = isReady;
    });
    ++(isSet ? m_counts.set : m_counts.failed);
    if (isSet)
        ++m_uses[found->file];
}

/// Students who have the photo of another, since they share his class and his name or number.
int PhotoRun::sharing() const
{
    int students = 0;
    for (const int uses : m_uses)
        students += uses > 1 ? uses : 0;
    return students;
}

void PhotoRun::tell() const
{
    QStringList lines{u"设置了 %1 名学生的照片。"_s.arg(m_counts.set)};
    for (const auto& [text, count] :
         {std::pair(u"已有照片，没有替换：%1 名"_s, m_counts.kept),
          {u"没有照片文件：%1 名"_s, m_counts.withoutFile},
          {u"照片文件不能用：%1 名"_s, m_counts.failed},
          {u"与同班同名或同号的学生用了同一张照片，请检查：%1 名"_s, sharing()}}) {
        if (count > 0)
            lines.append(text.arg(count));
    }
    runtime::MsgBox(lines.join(u'\n'));
    runtime::MsgBox(u"设置完毕！"_s);
}

} // namespace maintenance
