#include "import/ExamSheet.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstSubject = 4;

std::vector<ImportSubject> subjectsOf(const excel::Worksheet& sheet,
                                      const library::Catalogue& catalogue)
{
    std::vector<ImportSubject> subjects;
    for (int column = firstSubject; column <= LastColumn; ++column) {
        const QString heading = sheet.Cells(1, column).text();
        if (catalogue.isKeMu(heading))
            subjects.push_back({heading, 0, short(column)});
    }
    return subjects;
}

} // namespace

std::optional<ExamSheet> openExamSheet(const WorkbookIntake& intake,
                                       const library::Catalogue& catalogue,
                                       const QString& sheetName)
{
    const runtime::Trap trap(examSheet.tag);
    ExamSheet found;
    found.sheet = intake.openSheet(sheetName);
    if (found.sheet == nullptr
        || !trap([&] { found.subjects = subjectsOf(*found.sheet, catalogue); }))
        return std::nullopt;
    if (found.subjects.empty())
        runtime::MsgBox(u"没有找到科目，程序退出！"_s, u"错误"_s, runtime::Buttons::Ok,
                        runtime::Icon::Critical);
    return found;
}

bool isExamSheet(const WorkbookIntake& intake, const library::Catalogue& catalogue,
                 const QString& sheetName)
{
    if (!intake.hasHeadings(sheetName))
        return false;
    bool hasSubjects = false;
    runtime::Trap::silent()([&] {
        const excel::Worksheet& sheet = intake.workbook()->Worksheets().Item(sheetName);
        hasSubjects = !subjectsOf(sheet, catalogue).empty();
    });
    return hasSubjects;
}

} // namespace importing
