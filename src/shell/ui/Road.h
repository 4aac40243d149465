#pragma once

#include <vector>

#include <QWidget>

#include "shell/NextStep.h"

class QLabel;

namespace shell {

/// The road to the first statistics in four steps, a line each: which are done and which is next.
class Road : public QWidget
{
    Q_OBJECT

public:
    explicit Road(QWidget* parent);

    void showStep(Step step);

    /// What a step is called, such as "导入学生名单".
    static QString nameOf(Step step);

private:
    std::vector<QLabel*> m_steps;
};

} // namespace shell
