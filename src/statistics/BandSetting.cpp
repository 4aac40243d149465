#include "statistics/BandSetting.h"

#include "platform/runtime/Error.h"
#include "statistics/BandConditions.h"

namespace statistics {

using namespace Qt::StringLiterals;

BandSetting::BandSetting(ReportContext& context, const QString& name, const QString& stream,
                         const library::ColumnMarks& subjects, const runtime::Trap& trap)
    : m_context(context), m_name(name), m_stream(stream), m_subjects(subjects), m_trap(trap)
{
    const QString value = context.library.settings.GetSZ(name);
    m_bySubject = value == CustomData;
    if (m_bySubject)
        return;
    if (const std::optional<QStringList> conditions = MakeCXTJ(subjects, value))
        context.BandConditions = *conditions;
}

const Condition& BandSetting::of(int subject)
{
    m_trap([&] {
        if (m_bySubject) {
            const QString& name = m_subjects.names.at(subject);
            m_condition = Condition(m_context.library.settings.GetXXSZ(m_name, m_stream, name));
            return;
        }
        if (subject >= m_context.BandConditions.size())
            throw runtime::Error(u"没有第 %1 个科目的条件。"_s.arg(subject + 1));
        m_condition = Condition(m_context.BandConditions[subject]);
    });
    return m_condition;
}

} // namespace statistics
