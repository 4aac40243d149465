#include "statistics/ExplanationTexts.h"
#include "statistics/ReportExplanation.h"

namespace statistics {

using namespace Qt::StringLiterals;

namespace {

QString item(const QString& heading, const QString& text)
{
    return u"- **%1**：%2\n"_s.arg(heading, text);
}

QString settingLine(const ExplanationText& text)
{
    QStringList names;
    for (const SettingUse& use : text.settings)
        names.append(u"“%1”"_s.arg(use.name));
    return names.isEmpty() ? u"没有可以改的设置。"_s
                           : u"“分析设置”里的%1（见第 17 章）。"_s.arg(names.join(u'、'));
}

QString section(const ExplanationText& text)
{
    QString lines = u"\n## "_s + text.report + u"\n\n"_s;
    QString others;
    for (const QString& name : text.otherNames) {
        if (name.trimmed() != text.report)
            others += u"“%1”"_s.arg(name);
    }
    if (!others.isEmpty())
        lines += u"%1用的也是这里的口径。\n\n"_s.arg(others);
    return lines + item(u"统计什么"_s, text.counted)
           + item(u"统计哪些人"_s, text.over + text.severalExams + categoryRule(text.categories))
           + item(u"不算哪些人"_s, text.leftOut)
           + item(u"怎样计算"_s, text.formulas.join(QString()))
           + item(u"设置"_s, settingLine(text));
}

} // namespace

QString explanationChapter()
{
    QString chapter = u"# 20 各项统计的口径\n\n"
                      "菜单“数据处理”→“口径”，或者结果表格上面的“口径…”，会打开“口径”窗口：选中的统"
                      "计项目数的是什么、"
                      "数哪些人、不算哪些人、现在的设置是什么、怎样计算。设置后面的“修改”打开“分析"
                      "设置”，停在那一项上。\n\n"
                      "下面是同样的说明，不含某个成绩库现在的设置。\n"_s;
    for (const ExplanationText& text : explanationTexts())
        chapter += section(text);
    return chapter;
}

} // namespace statistics
