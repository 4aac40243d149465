#include "maintenance/ScoreCorrection.h"

#include <QRegularExpression>

#include "maintenance/QuotedText.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trap.h"
#include "scoring/Scoring.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap correctionTrap{" - Private Sub TextCJ_KeyUp/FormXiuGaiChengJi"};
constexpr double absent = -1;

double classOrNumber(const QString& text)
{
    return numberIn(text, u"“%1”不是班级或学号，只能是数字。"_s);
}

bool isComplete(const ScoreCorrection::Place& place)
{
    return !place.classNumber.isEmpty() && !place.number.isEmpty();
}

void openScores(database::Recordset& rows, const ScoreCorrection::Place& place,
                database::Connection& connection)
{
    rows.Open(u"select * from 成绩表 where 班级=? and 学号=?  and 考试名称=?"_s,
              {classOrNumber(place.classNumber), classOrNumber(place.number), place.exam},
              connection);
}

/// True if `Val` finds a number at the head of the text.
bool beginsWithNumber(const QString& text)
{
    static const QRegularExpression number(u"^\\s*[+-]?\\s*\\.?\\s*[0-9]"_s);
    return number.match(text).hasMatch();
}

/// The score that a text without a number stands for, as the user says; nothing if he takes it
/// back.
std::optional<double> askedScore(const QString& text)
{
    const QString said =
        text.isEmpty() ? u"没有填写成绩。"_s : u"“%1”不是分数。"_s.arg(quoted(text));
    switch (runtime::choose({.text = said + u"要怎样保存？"_s,
                             .buttons = {u"存为缺考"_s, u"存为 0 分"_s, u"取消"_s},
                             .safe = 2,
                             .title = u"提示"_s})) {
    case 0:
        return absent;
    case 1:
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<ScoreCorrection::Shown> ScoreCorrection::ShowCJ(const Place& place) const
{
    const Trap trap{" - Sub ShowCJ/FormXiuGaiChengJi"};
    if (!isComplete(place))
        return std::nullopt;
    Shown shown;
    trap([&] {
        database::Recordset rows;
        openScores(rows, place, m_library.Conn);
        if (rows.RecordCount() == 0)
            return;
        trap([&] { shown.name = rows.Fields(u"姓名"_s).Value().text(); });
        trap([&] { shown.score = rows.Fields(place.subject).Value().text(); });
    });
    return shown;
}

ScoreCorrection::Result ScoreCorrection::save(const Place& place, const QString& score)
{
    bool isThere = false;
    const bool isRead = correctionTrap([&] {
        database::Recordset rows;
        if (isComplete(place))
            openScores(rows, place, m_library.Conn);
        isThere = rows.isOpen() && rows.RecordCount() > 0;
    });
    if (!isThere)
        return isRead ? Result::NotFound : Result::Failed;
    std::optional<double> wanted = runtime::Val(score);
    if (!beginsWithNumber(score))
        wanted = askedScore(score);
    else if (!isAllowed(place, *wanted))
        wanted.reset();
    return wanted ? store(place, *wanted) : Result::Refused;
}

bool ScoreCorrection::isAllowed(const Place& place, double score)
{
    const QString stream = m_library.students.GetBJKL(place.classNumber.toDouble()).text();
    const float full = m_library.catalogue.getKMMF(place.exam, stream, place.subject);
    const QString refusal = score < 0             ? u"成绩不能为负！"_s
                            : float(score) > full ? u"成绩不能超过"_s + place.subject + u"满分 "_s
                                                        + runtime::singleText(full) + u" ！"_s
                                                  : QString();
    if (!refusal.isEmpty())
        runtime::warn(refusal + u"\n\n输入的成绩不合适，请重新输入！"_s);
    return refusal.isEmpty();
}

ScoreCorrection::Result ScoreCorrection::store(const Place& place, double score)
{
    Result result = Result::Failed;
    correctionTrap([&] {
        database::WriteBatch batch(m_library.Conn);
        database::Recordset rows;
        openScores(rows, place, m_library.Conn);
        if (rows.Eof()) {
            result = Result::NotFound;
            return;
        }
        rows.Fields(place.subject).setValue(score);
        rows.Update();
        batch.commit();
        result = Result::Stored;
    });
    if (result != Result::Stored)
        return result;
    runtime::MsgBox(u"保存新成绩成功！"_s);
    return result;
}

bool ScoreCorrection::finish(const QString& exam, runtime::Progress& progress)
{
    const Trap trap{" - Private Sub Command1_Click/FormXiuGaiChengJi"};
    if (runtime::MsgBox(u"已修改成绩，是否重新计算总分？"_s, u"提示"_s, runtime::Buttons::OkCancel,
                        runtime::Icon::Question)
        == runtime::Answer::Cancel)
        return false;
    trap([&] { scoring::Scoring(m_library).score(exam, progress); });
    progress.finish();
    return !progress.cancelled();
}

} // namespace maintenance
