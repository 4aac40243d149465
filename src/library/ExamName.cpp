#include "library/ExamName.h"

#include <algorithm>

#include "library/TextLength.h"

namespace library {

using namespace Qt::StringLiterals;

bool isControlLetter(QChar letter)
{
    const QChar::Category category = letter.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
           || category == QChar::Separator_Paragraph;
}

QString examNameFault(const QString& exam, const QStringList& known)
{
    if (exam.size() > LongestText)
        return u"考试名称最多 %1 个字，现在有 %2 个字。"_s.arg(LongestText).arg(exam.size());
    if (std::any_of(exam.begin(), exam.end(), isControlLetter))
        return u"考试名称里不能有换行、制表符等控制字符。"_s;
    // The name of an exam that is there was given already.
    if (known.contains(exam))
        return {};
    for (const QString& other : known) {
        if (other.compare(exam, Qt::CaseInsensitive) == 0)
            return u"已有考试“%1”，与“%2”只有字母的大小写不同，请换一个名称。"_s.arg(other, exam);
    }
    return {};
}

} // namespace library
