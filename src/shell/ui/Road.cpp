#include "shell/ui/Road.h"

#include <QLabel>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"

namespace shell {

using namespace Qt::StringLiterals;

namespace {

struct RoadStep
{
    Step step;
    const char16_t* name;
    const char16_t* line;
};

constexpr RoadStep steps[] = {
    {Step::NewLibrary, u"新建成绩库", u"选好要用的科目和总分，给文件起个名字"},
    {Step::Students, u"导入学生名单", u"工作簿前三列是班级、学号、姓名，一人一行"},
    {Step::Exam, u"导入考试", u"工作簿前三列相同，后面一科一列"},
    {Step::Totals, u"统计", u"计算总分和名次，然后浏览成绩、执行统计"},
};

QString markOf(Step shown, Step next)
{
    return shown < next ? u"✓"_s : shown == next ? u"→"_s : u"·"_s;
}

QString spokenMark(Step shown, Step next)
{
    return shown < next ? u"已完成"_s : shown == next ? u"下一步"_s : u"以后"_s;
}

} // namespace

Road::Road(QWidget* parent) : QWidget(parent)
{
    setObjectName(u"Road"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (size_t i = 0; i < std::size(steps); ++i) {
        auto* line = widgets::namedText(new QLabel(this), u"LabelStep%1"_s.arg(i + 1));
        line->setWordWrap(true);
        m_steps.push_back(line);
        layout->addWidget(line);
    }
    showStep(Step::NewLibrary);
}

void Road::showStep(Step step)
{
    for (size_t i = 0; i < m_steps.size(); ++i) {
        const RoadStep& shown = steps[i];
        const QString text = u"%1. %2：%3。"_s.arg(i + 1).arg(QString::fromUtf16(shown.name),
                                                              QString::fromUtf16(shown.line));
        m_steps[i]->setText(markOf(shown.step, step) + u' ' + text);
        m_steps[i]->setAccessibleName(spokenMark(shown.step, step) + u"，"_s + text);
        QFont font = this->font();
        font.setBold(shown.step == step);
        m_steps[i]->setFont(font);
    }
}

QString Road::nameOf(Step step)
{
    for (const RoadStep& one : steps) {
        if (one.step == step)
            return QString::fromUtf16(one.name);
    }
    return {};
}

} // namespace shell
