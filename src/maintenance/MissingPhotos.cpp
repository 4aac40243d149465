#include "maintenance/MissingPhotos.h"

#include "platform/database/ReadBatch.h"
#include "platform/database/Recordset.h"

namespace maintenance {

using namespace Qt::StringLiterals;

std::vector<StudentWithoutPhoto> studentsWithoutPhoto(database::Connection& connection)
{
    const database::ReadBatch reading(connection);
    database::Recordset rows;
    rows.Open(u"select * from 信息表 where 照片名 is null or 照片名=''"_s, connection);
    std::vector<StudentWithoutPhoto> students;
    for (; !rows.Eof(); rows.MoveNext()) {
        const auto value = [&](const QString& column) { return rows.Fields(column).Value(); };
        students.push_back({qint64(value(u"ID"_s).toDouble()), value(u"班级"_s), value(u"学号"_s),
                            value(u"姓名"_s).text()});
    }
    return students;
}

} // namespace maintenance
