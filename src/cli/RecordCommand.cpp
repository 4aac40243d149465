#include "cli/ChosenStudent.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "maintenance/StudentRecord.h"
#include "maintenance/paint/PictureFiles.h"

namespace cli {

using namespace Qt::StringLiterals;
using maintenance::RecordSave;
using maintenance::StudentRecord;

namespace {

struct Assignment
{
    int row;
    QString value;
};

/// One of --set. Throws UsageError for what is no field of the record.
Assignment assignment(const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 0)
        throw UsageError(u"选项 --set 的值应为 字段=值：%1"_s.arg(text));
    const QString field = text.left(equals);
    const qsizetype row = StudentRecord::fields().indexOf(field);
    if (row < 0)
        throw UsageError(
            u"学生信息里没有“%1”，可以是：%2。"_s.arg(field, StudentRecord::fields().join(u'、')));
    if (row == StudentRecord::PhotoRow)
        throw UsageError(u"照片请用 --photo 给出。"_s);
    return {int(row), text.mid(equals + 1)};
}

std::vector<Assignment> assignments(const Arguments& arguments)
{
    std::vector<Assignment> all;
    for (const QString& text : arguments.values(u"set"_s))
        all.push_back(assignment(text));
    return all;
}

/// A photo that is no picture is refused; the fields are saved all the same.
Exit save(const Session& session, StudentRecord& record, const std::vector<Assignment>& fields)
{
    for (const auto& [row, value] : fields)
        record.MSFlexGrid1.setTextMatrix(row, StudentRecord::ValueCol, value);
    const bool hasPhoto = session.arguments.has(u"photo"_s);
    const bool isPicture = !hasPhoto || record.choosePhoto(session.arguments.value(u"photo"_s));
    const RecordSave saved = record.Command1_Click();
    const bool isPhotoMissing = hasPhoto && (!isPicture || saved != RecordSave::Saved);
    return saved == RecordSave::Failed || isPhotoMissing ? Exit::Error : Exit::Done;
}

} // namespace

Exit runRecord(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    const std::vector<Assignment> fields = assignments(arguments);
    checkStudent(arguments);
    if (!session.openLibrary())
        return Exit::Error;
    const maintenance::PictureFiles photos;
    StudentRecord record(session.scores, photos);
    if (!record.ShowGeRenXX(chosenStudent(session)))
        return Exit::Error;
    if (!fields.empty() || arguments.has(u"photo"_s))
        return save(session, record, fields);
    printGrid(session, record.MSFlexGrid1, {}, format);
    return session.result();
}

} // namespace cli
