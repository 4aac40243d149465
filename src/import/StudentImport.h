#pragma once

#include <optional>
#include <vector>

#include <QHash>

#include "import/StudentSheet.h"
#include "import/WorkbookIntake.h"
#include "library/ScoreLibrary.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/Progress.h"

namespace importing {

/// Fills 信息表 from a sheet. It only ever adds; students whose class and number are taken are
/// asked about first.
class StudentImport
{
public:
    StudentImport(library::ScoreLibrary& scoreLibrary, WorkbookIntake& intake,
                  runtime::Progress& progress);

    /// The whole import; a heading that is no column costs a message on every row, and one that
    /// names the key is passed over with one message. Once finished, streams and classes are loaded
    /// anew and the library tells of the change. When it stops, nothing was written.
    ImportResult run(const QString& sheetName, Backup backup);

private:
    struct Heading
    {
        database::FieldByName field;
        CellRule rule = CellRule::AsItStands;
        /// What was told of the first cell that was refused, for each reason.
        QHash<QString, QString> refusals = {};

        /// The words in which a refusal is told.
        QString toldAs(const QString& refusal);
    };

    /// What is done with a student whose class and number are taken.
    enum class Taken { Skip, Add };

    /// Counts and asks. False if the import is not to go on.
    bool askAboutTaken();
    void readHeadings();
    bool writeRows();
    void writeStudent(int row);
    void storeCell(Heading& heading, const runtime::Value& cell);
    void store(const Heading& heading, const runtime::Value& cell);
    void storePhoto(const Heading& heading, const runtime::Value& cell);

    library::ScoreLibrary& m_library;
    WorkbookIntake& m_intake;
    runtime::Progress& m_progress;
    excel::Worksheet* m_sheet = nullptr;
    std::optional<StudentSheet> m_list;
    Taken m_taken = Taken::Add;
    std::vector<Heading> m_headings;
    database::Recordset m_rows;
};

} // namespace importing
