#include "maintenance/StudentRecord.h"

#include <QFileInfo>

#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

const Trap showTrap{" - Sub ShowGeRenXX/FormXGXX"};
const Trap recordTrap{" - Private Sub Command1_Click/FormXGXX"};

constexpr int rowOfRemark = 14;
constexpr int heightOfRemark = 630;

QString nobodyText()
{
    return u"成绩库里已经没有这名学生了。"_s;
}

StudentFields fieldsOf(database::Recordset& rows)
{
    return {.classNumber = rows.Fields(u"班级"_s).Value(),
            .number = rows.Fields(u"学号"_s).Value(),
            .name = rows.Fields(u"姓名"_s).Value(),
            .stream = rows.Fields(u"科类"_s).Value(),
            .category = rows.Fields(u"类别代码"_s).Value()};
}

/// The field of that name. Throws Error for ID, which is refused, and for one that is not there.
database::Field writableField(database::Recordset& rows, const QString& name)
{
    if (name.compare("ID"_L1, Qt::CaseInsensitive) == 0)
        throw runtime::Error(u"“%1”是成绩库给学生编的号，不能修改。"_s.arg(name));
    return rows.Fields(name);
}

} // namespace

StudentRecord::StudentRecord(library::ScoreLibrary& scoreLibrary, const PhotoFiles& photos)
    : m_library(scoreLibrary), m_photos(photos)
{
    MSFlexGrid1.FixedRows = 0;
    MSFlexGrid1.FixedCols = 0;
    MSFlexGrid1.setRows(int(fields().size()));
    MSFlexGrid1.setCols(2);
    for (int row = 0; row < MSFlexGrid1.Rows(); ++row)
        MSFlexGrid1.setTextMatrix(row, LabelCol, fields()[row]);
    MSFlexGrid1.setColAlignment(-1, 1);
    MSFlexGrid1.setRowHeight(rowOfRemark, heightOfRemark);
}

const QStringList& StudentRecord::fields()
{
    static const QStringList names{u"班级"_s,     u"学号"_s,   u"姓名"_s,       u"类别"_s,
                                   u"科类"_s,     u"性别"_s,   u"照片名"_s,     u"出生时间"_s,
                                   u"入学时间"_s, u"学籍号"_s, u"原毕业学校"_s, u"身份证"_s,
                                   u"民族"_s,     u"籍贯"_s,   u"备注"_s};
    return names;
}

bool StudentRecord::isTyped(int row) const
{
    return row == PhotoRow ? m_photo.has_value() : value(row) != m_shown[size_t(row)].value;
}

bool StudentRecord::isUntouched(int row) const
{
    return !isTyped(row) && label(row) == m_shown[size_t(row)].label;
}

bool StudentRecord::isChanged() const
{
    for (int row = 0; StuID != 0 && row < MSFlexGrid1.Rows(); ++row) {
        if (isTyped(row) && (row == PhotoRow || !value(row).isEmpty()))
            return true;
    }
    return false;
}

bool StudentRecord::ShowGeRenXX(qint64 id)
{
    if (id == 0)
        return false;
    StuID = id;
    const std::optional<bool> isThere = read({});
    if (!isThere)
        clear();
    return isThere.value_or(false);
}

bool StudentRecord::refresh()
{
    if (StuID == 0)
        return false;
    Rows typed;
    for (int row = 0; row < MSFlexGrid1.Rows(); ++row) {
        if (isTyped(row))
            typed.insert(row);
    }
    return read(typed).value_or(false);
}

void StudentRecord::clear()
{
    StuID = 0;
    m_photo.reset();
    for (int row = 0; row < MSFlexGrid1.Rows(); ++row) {
        m_shown[size_t(row)] = {label(row), {}};
        MSFlexGrid1.setTextMatrix(row, ValueCol, {});
    }
}

void StudentRecord::open(database::Recordset& rows)
{
    rows.Open(u"select *  from 信息表 where id=?"_s, {StuID}, m_library.Conn);
}

/// Whether the student is there. Nothing, and nothing changes, if the library could not be read.
std::optional<bool> StudentRecord::read(const Rows& kept)
{
    database::Recordset rows;
    std::optional<bool> isThere;
    showTrap([&] {
        const database::ReadBatch reading(m_library.Conn);
        open(rows);
        isThere = !rows.Eof();
        for (int row = 0; *isThere && row < MSFlexGrid1.Rows(); ++row)
            readRow(rows, row, kept);
    });
    if (isThere == false) {
        runtime::warn(nobodyText());
        clear();
    } else if (isThere && !kept.contains(PhotoRow)) {
        m_photo.reset();
    }
    return isThere;
}

/// A row that stands for no field is empty: what it held may be another student's.
void StudentRecord::readRow(database::Recordset& rows, int row, const Rows& kept)
{
    QString stored;
    showTrap([&] { stored = rows.Fields(label(row)).Value().text(); });
    m_shown[size_t(row)] = {label(row), stored};
    if (!kept.contains(row))
        MSFlexGrid1.setTextMatrix(row, ValueCol, stored);
}

bool StudentRecord::choosePhoto(const QString& path)
{
    std::optional<PhotoBytes> bytes = PhotoBytes::Own;
    if (QFileInfo(path).isFile())
        bytes = chosenBytes(m_photos, path);
    if (!bytes)
        return false;
    m_photo = bytes;
    MSFlexGrid1.setTextMatrix(PhotoRow, ValueCol, path);
    return true;
}

RecordSave StudentRecord::Command1_Click()
{
    if (StuID == 0) {
        runtime::warn(u"请先选择一名学生。"_s);
        return RecordSave::GivenUp;
    }
    std::optional<RecordChange> change;
    std::optional<NameScope> scope;
    const bool isAsked = recordTrap([&] {
        change = foresee();
        if (change)
            scope = askAboutChange(m_library.Conn, *change);
        else
            runtime::warn(nobodyText());
    });
    if (!isAsked)
        return RecordSave::Failed;
    if (!scope)
        return RecordSave::GivenUp;
    const RecordSave result = write(*scope);
    if (result != RecordSave::Failed)
        tellOthers(*change);
    return result;
}

/// What the save will make of the fields that others depend on; nothing if the student is gone.
/// What is refused is told by the save.
std::optional<RecordChange> StudentRecord::foresee()
{
    const database::ReadBatch reading(m_library.Conn);
    database::Recordset rows;
    open(rows);
    if (rows.Eof())
        return {};
    const StudentFields before = fieldsOf(rows);
    std::set<int> assigned;
    for (int row = 0; row < MSFlexGrid1.Rows(); ++row) {
        if (row != PhotoRow)
            Trap::silent()([&] { assignField(rows, row, assigned); });
    }
    return RecordChange{StuID, before, fieldsOf(rows)};
}

RecordSave StudentRecord::write(NameScope scope)
{
    std::optional<Rows> refused;
    recordTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        database::Recordset rows;
        open(rows);
        if (rows.Eof())
            throw runtime::Error(nobodyText());
        const Rows left = assign(rows);
        const Value name = rows.Fields(u"姓名"_s).Value();
        rows.Update();
        if (scope == NameScope::EarlierScores)
            renameScores(m_library.Conn, StuID, name);
        batch.commit();
        refused = left;
    });
    if (!refused)
        return RecordSave::Failed;
    const bool hasPhoto = !refused->contains(PhotoRow);
    read(*refused);
    return hasPhoto ? RecordSave::Saved : RecordSave::WithoutPhoto;
}

/// The rows that were refused.
StudentRecord::Rows StudentRecord::assign(database::Recordset& rows)
{
    Rows refused;
    std::set<int> assigned;
    for (int row = 0; row < MSFlexGrid1.Rows(); ++row) {
        bool isTaken = false;
        recordTrap([&] {
            if (row == PhotoRow) {
                isTaken = assignPhoto(rows);
                return;
            }
            assignField(rows, row, assigned);
            isTaken = true;
        });
        if (!isTaken)
            refused.insert(row);
    }
    return refused;
}

/// An empty cell keeps the old value. One that the user did not touch is written only over what a
/// row above it wrote, so that what others stored meanwhile stays.
void StudentRecord::assignField(database::Recordset& rows, int row, std::set<int>& assigned)
{
    if (value(row).isEmpty())
        return;
    const int place = rows.position(label(row));
    if (isUntouched(row) && !assigned.contains(place))
        return;
    writableField(rows, label(row)).setValue(value(row));
    assigned.insert(place);
}

/// The file may have come, or become another one, since it was chosen.
bool StudentRecord::assignPhoto(database::Recordset& rows)
{
    if (!m_photo)
        return true;
    const QString& path = value(PhotoRow);
    if (!QFileInfo(path).isFile()) {
        runtime::warn(u"照片文件不存在：\n"_s + path);
        return false;
    }
    m_photos.check(path);
    return setPhoto(m_library, rows, path, m_photos, *m_photo);
}

void StudentRecord::tellOthers(const RecordChange& change)
{
    if (change.after == change.before)
        return;
    recordTrap([&] { m_library.readCatalogue(); });
    m_library.notifyChanged();
}

} // namespace maintenance
