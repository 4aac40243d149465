#include "platform/widgets/ScreenDialogs.h"

#include <utility>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

#include "platform/widgets/PasswordBox.h"

namespace widgets {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::FileMode;
using runtime::Icon;

namespace {

QMessageBox::StandardButtons standardButtons(Buttons buttons)
{
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon picture(Icon icon)
{
    switch (icon) {
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

Answer answerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        return Answer::Ok;
    }
}

const QWidget* root(const QWidget* widget)
{
    while (widget->parentWidget() != nullptr)
        widget = widget->parentWidget();
    return widget;
}

/// The window that a box belongs to: the modal one on top, unless the active one has nothing to do
/// with it, as a workbook's has; else the active one.
QWidget* owner()
{
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* active = QApplication::activeWindow();
    if (modal == nullptr)
        return active;
    const bool isFree = active != nullptr && modal->windowModality() == Qt::WindowModal
                        && root(active) != root(modal);
    return isFree ? active : modal;
}

/// Shows a box and gives its result: that of a message box is the button pressed, that of other
/// dialogs whether they were accepted. Behind it a window manager may give the keyboard to another
/// window of the program: it goes back to the one that the box belongs to.
int run(QDialog& box)
{
    const QPointer<QWidget> window = box.parentWidget();
    const int result = box.exec();
    if (window != nullptr && window->isVisible())
        window->activateWindow();
    return result;
}

QString shownTitle(const QString& title)
{
    return title.isEmpty() ? ProductTitle : title;
}

/// Long words, such as a name that fills a cell, with … for their middle.
QString shortWords(QString text)
{
    constexpr qsizetype most = 200;
    static const QRegularExpression longWord(u"[^\\s、，。；：！？]{%1,}"_s.arg(most + 1));
    for (QRegularExpressionMatch word = longWord.match(text); word.hasMatch();
         word = longWord.match(text, word.capturedStart() + most))
        text.replace(word.capturedStart() + most / 2, word.capturedLength() - most + 1, u"…"_s);
    return text;
}

/// The text as far as a box on a small screen has room for it and its buttons: … stands for the
/// middle, as both ends tell what it is about.
QString shownText(const QString& text)
{
    constexpr qsizetype mostRows = 30;
    constexpr qsizetype rowLength = 25;
    QString shown = shortWords(text);
    QStringList rows;
    for (const QString& line : shown.split(u'\n')) {
        for (qsizetype start = 0; start == 0 || start < line.size(); start += rowLength)
            rows.append(line.mid(start, rowLength));
        rows.last().append(u'\n');
    }
    if (rows.size() <= mostRows)
        return shown;
    constexpr qsizetype half = mostRows / 2;
    return rows.first(half).join(QString()) + u"\n…\n"_s
           + rows.last(half).join(QString()).chopped(1);
}

/// "成绩库|*.CJK" in the file dialog's words; the extension counts in either case, and "*.*" means
/// all files.
QString nameFilter(const QString& filter)
{
    QStringList patterns;
    for (const QString& pattern : filter.section(u'|', 1, 1).split(u';', Qt::SkipEmptyParts)) {
        patterns.append(pattern == u"*.*" ? u"*"_s : pattern);
        if (pattern != pattern.toLower())
            patterns.append(pattern.toLower());
    }
    return filter.section(u'|', 0, 0) + u" ("_s + patterns.join(u' ') + u')';
}

} // namespace

const QString ProductTitle = u"云杉学业册"_s;

Answer ScreenDialogs::message(const QString& text, const QString& title, Buttons buttons, Icon icon)
{
    return ask(text, title, buttons, icon, nullptr).answer;
}

runtime::StandingAnswer ScreenDialogs::messageOfMany(const QString& text, const QString& title,
                                                     Buttons buttons, Icon icon)
{
    auto* forRest = new QCheckBox(u"对其余都如此(&A)"_s);
    forRest->setObjectName(u"CheckForRest"_s);
    return ask(text, title, buttons, icon, forRest);
}

runtime::StandingAnswer ScreenDialogs::ask(const QString& text, const QString& title,
                                           Buttons buttons, Icon icon, QCheckBox* forRest)
{
    QMessageBox box(picture(icon), shownTitle(title), shownText(text), standardButtons(buttons),
                    owner());
    // Names typed by a user may look like markup; they are shown as they stand.
    box.setTextFormat(Qt::PlainText);
    if (forRest != nullptr)
        box.setCheckBox(forRest);
    if (buttons == Buttons::YesNo)
        box.setDefaultButton(QMessageBox::No);
    else if (buttons != Buttons::Ok)
        box.setDefaultButton(QMessageBox::Cancel);
    const Answer answer = answerOf(run(box));
    return {answer, forRest != nullptr && forRest->isChecked()};
}

int ScreenDialogs::choose(const runtime::Choice& choice)
{
    QMessageBox box(QMessageBox::Question, shownTitle(choice.title), shownText(choice.text),
                    QMessageBox::NoButton, owner());
    box.setTextFormat(Qt::PlainText);
    QList<QAbstractButton*> buttons;
    // Buttons of one role stand in the order in which they were added.
    for (const QString& caption : choice.buttons)
        buttons.append(box.addButton(caption, QMessageBox::AcceptRole));
    box.setDefaultButton(static_cast<QPushButton*>(buttons.value(choice.safe)));
    box.setEscapeButton(buttons.value(choice.safe));
    run(box);
    const int pressed = int(buttons.indexOf(box.clickedButton()));
    return pressed < 0 ? choice.safe : pressed;
}

std::optional<QString> ScreenDialogs::askPassword(const QString& question)
{
    PasswordBox box(shownTitle({}), question, owner());
    return run(box) == QDialog::Accepted ? std::optional(box.password()) : std::nullopt;
}

bool ScreenDialogs::fold(const QString& failure)
{
    if (m_quiet)
        ++m_passedOver;
    return m_quiet || (m_commandDepth > 0 && !m_folded.isNew(failure));
}

void ScreenDialogs::failure(const QString& text)
{
    // Kept back before the user wanted no more of them.
    if (m_quiet) {
        ++m_passedOver;
        return;
    }
    QMessageBox box(QMessageBox::Warning, shownTitle({}), shownText(text), QMessageBox::Ok,
                    owner());
    box.setTextFormat(Qt::PlainText);
    if (m_commandDepth > 0) {
        auto* quiet = new QCheckBox(u"本次操作不再显示这类消息(&N)"_s);
        quiet->setObjectName(u"CheckQuiet"_s);
        box.setCheckBox(quiet);
    }
    run(box);
    m_quiet = box.checkBox() && box.checkBox()->isChecked();
}

void ScreenDialogs::phaseFailed(const QString& text)
{
    message(text, {}, Buttons::Ok, Icon::Warning);
}

std::optional<QString> ScreenDialogs::chooseFile(const QString& title, const QString& filter,
                                                 FileMode mode)
{
    QFileDialog dialog(owner(), title, std::exchange(m_startFolder, {}));
    dialog.setNameFilter(nameFilter(filter));
    const bool saving = mode == FileMode::Save;
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The caller asks, in the program's own words.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QString suffix = filter.section(u'|', 1, 1).section(u';', 0, 0).section(u'.', -1);
    if (saving && suffix != u"*")
        dialog.setDefaultSuffix(suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> ScreenDialogs::chooseFolder(const QString& title)
{
    const QString folder =
        QFileDialog::getExistingDirectory(owner(), title, std::exchange(m_startFolder, {}));
    return folder.isEmpty() ? std::nullopt : std::optional(folder);
}

std::optional<int> ScreenDialogs::chooseColor(const QString& title, int start)
{
    const QColor before(start & 0xff, (start >> 8) & 0xff, (start >> 16) & 0xff);
    const QColor chosen = QColorDialog::getColor(before, owner(), title);
    if (!chosen.isValid())
        return std::nullopt;
    return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
}

void ScreenDialogs::beginCommand()
{
    ++m_commandDepth;
}

void ScreenDialogs::endCommand()
{
    if (--m_commandDepth > 0)
        return;
    m_quiet = false;
    QStringList counts = m_folded.takeCounts();
    if (const qint64 passedOver = std::exchange(m_passedOver, 0))
        counts.append(u"另有 %1 条消息没有显示。"_s.arg(runtime::countText(passedOver)));
    if (!counts.isEmpty())
        message(counts.join(u'\n'), {}, Buttons::Ok, Icon::Warning);
}

} // namespace widgets
