#include "oldlibraries/StudentFaults.h"

#include <utility>

#include <QStringList>

#include "oldlibraries/FaultKind.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using runtime::Value;

namespace {

const QString studentTable = u"信息表"_s;

/// One pass over the students.
class StudentPass
{
public:
    explicit StudentPass(database::Connection& library)
        : m_rows(library, u"select ID, 班级, 学号, 姓名, 科类 from 信息表 order by rowid"_s)
    {
    }

    void run()
    {
        while (m_rows.step()) {
            ++m_row;
            if (!m_rows.isNull(0))
                ids.insert(m_rows.integer(0));
            lookAtNumbers();
            lookAtStream();
        }
    }

    void tell(std::vector<Finding>& findings) const
    {
        for (const FaultKind* kind : {&m_same, &m_without, &m_text, &m_noStream})
            kind->tell(findings);
        constexpr qsizetype mostStreams = 2;
        if (m_streams.size() > mostStreams)
            findings.push_back({studentTable, 0, u"科类"_s, shownValue(m_streams.join(u'、')),
                                u"科类多于两种，程序读不出科类；请在转换后改为“文”和“理”。"_s});
    }

    QSet<qint64> ids;

private:
    QString student() const { return studentText(m_rows, 1); }

    void lookAtNumbers()
    {
        if (m_rows.isNull(1) || m_rows.isNull(2))
            return m_without.add(m_row, u"班级"_s, student());
        for (const auto& [column, name] : {std::pair{1, u"班级"_s}, std::pair{2, u"学号"_s}}) {
            if (!m_rows.value(column).isNumber())
                m_text.add(m_row, name, m_rows.text(column));
        }
        const std::pair place{m_rows.value(1).text(), m_rows.value(2).text()};
        if (m_places.contains(place))
            m_same.add(m_row, u"学号"_s, student());
        m_places.insert(place);
    }

    void lookAtStream()
    {
        QString stream = m_rows.text(4);
        if (stream.isEmpty()) {
            m_noStream.add(m_row, u"科类"_s, student());
            // The program counts each of them as a stream.
            stream = m_rows.isNull(4) ? u"（没有值）"_s : u"（空）"_s;
        }
        if (!m_streams.contains(stream, Qt::CaseInsensitive))
            m_streams.append(stream);
    }

    database::Statement m_rows;
    qint64 m_row = 0;
    QSet<std::pair<QString, QString>> m_places;
    QStringList m_streams;
    FaultKind m_same{studentTable, u"班级和学号与前面的学生相同，原样转入；请改正其中一个。"_s};
    FaultKind m_without{studentTable, u"没有班级或学号，原样转入；请补上。"_s};
    FaultKind m_text{studentTable, u"不是数值，原样转入；程序按数值找班级和学号。"_s};
    FaultKind m_noStream{studentTable, u"没有科类，原样转入；不分文理的学校请填“理”。"_s};
};

} // namespace

QString studentText(const database::Statement& rows, int first)
{
    return u"%1 班 %2 号 %3"_s.arg(rows.value(first).text(), rows.value(first + 1).text(),
                                   rows.value(first + 2).text());
}

QSet<qint64> findStudentFaults(database::Connection& library, std::vector<Finding>& findings)
{
    StudentPass pass(library);
    pass.run();
    pass.tell(findings);
    return pass.ids;
}

} // namespace oldlibraries
