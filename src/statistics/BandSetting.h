#pragma once

#include "platform/runtime/Trap.h"
#include "statistics/Condition.h"
#include "statistics/ReportContext.h"

namespace statistics {

/// The condition of each subject for one band setting: by share of the full marks, or by subject.
class BandSetting
{
public:
    /// Reads the setting for the subjects of a stream, which outlive it, as `trap` does; a share
    /// makes the conditions of all subjects anew.
    BandSetting(ReportContext& context, const QString& name, const QString& stream,
                const library::ColumnMarks& subjects, const runtime::Trap& trap);

    /// The condition of a subject, counted from 0. Where the bands stayed those
    /// of fewer subjects, that is shown, and the subject before lends its own.
    const Condition& of(int subject);

private:
    ReportContext& m_context;
    QString m_name;
    QString m_stream;
    const library::ColumnMarks& m_subjects;
    const runtime::Trap& m_trap;
    bool m_bySubject;
    Condition m_condition{QString()};
};

} // namespace statistics
