#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "gui/Gallery.h"
#include "gui/ModalBoxes.h"
#include "platform/widgets/DialogScreen.h"
#include "support/PrintQString.h"

namespace {

using namespace Qt::StringLiterals;

/// How a widget is called in a failure.
QString called(const QWidget* widget)
{
    return widget ? QString::fromLatin1(widget->metaObject()->className()) + u' '
                        + widget->objectName()
                  : u"nothing"_s;
}

/// What a screen reader says.
QString spokenName(QWidget* widget)
{
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
    return reader ? reader->text(QAccessible::Name) : QString();
}

/// The stops from the one that has the focus, or comes first, until one comes again.
QList<QWidget*> tabStops(QWidget& window)
{
    constexpr int tooMany = 200;
    if (!window.focusWidget() || window.focusWidget()->window() != &window)
        QTest::keyClick(&window, Qt::Key_Tab);
    QList<QWidget*> stops;
    for (QWidget* stop = window.focusWidget(); stop && !stops.contains(stop);
         stop = window.focusWidget()) {
        stops.append(stop);
        if (stops.size() > tooMany)
            break;
        QTest::keyClick(stop, Qt::Key_Tab);
    }
    return stops;
}

/// Whether Tab should come to this widget of the window.
bool isStop(const QWidget* widget, const QWidget& window)
{
    return widget->window() == &window && widget->isVisible() && widget->isEnabled()
           && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy();
}

void checkTabChain(QWidget& window)
{
    const QList<QWidget*> stops = tabStops(window);
    ASSERT_FALSE(stops.isEmpty());
    EXPECT_EQ(called(window.focusWidget()), called(stops.first())) << "the chain comes round";
    for (QWidget* stop : stops)
        EXPECT_FALSE(spokenName(stop).isEmpty()) << called(stop).toStdString();
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (isStop(widget, window)) {
            EXPECT_TRUE(stops.contains(widget))
                << called(widget).toStdString() << " is never reached";
        }
    }
    QTest::keyClick(stops.first(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(called(window.focusWidget()), called(stops.last())) << "and goes back";
}

/// A text with an access key, and where it stands.
struct Keyed
{
    QString text;
    QString place;
};

/// What of a window answers to Alt with a letter. A floating panel answers to its parent's keys
/// too, so that both count as one window.
QList<Keyed> accessTexts(const QWidget& window)
{
    QList<Keyed> texts;
    const auto add = [&](const QString& text, const QWidget* widget) {
        texts.append({text, called(widget)});
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QWidget* top = widget->window();
        if (top != &window && top->windowType() != Qt::Tool)
            continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            add(button->text(), widget);
        else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            add(group->title(), widget);
        else if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
            for (const QAction* action : bar->actions())
                add(action->text(), widget);
        else if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy())
            add(label->text(), widget);
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs->tabText(i), widget);
    }
    return texts;
}

/// Fails for each access key that two of the texts share.
void checkDistinct(const QList<Keyed>& texts)
{
    QMap<QString, Keyed> taken;
    for (const Keyed& one : texts) {
        const QString key = QKeySequence::mnemonic(one.text).toString();
        if (key.isEmpty())
            continue;
        if (taken.contains(key)) {
            ADD_FAILURE() << key.toStdString() << " is both " << taken[key].text.toStdString()
                          << " (" << taken[key].place.toStdString() << ") and "
                          << one.text.toStdString() << " (" << one.place.toStdString() << ')';
        }
        taken.insert(key, one);
    }
}

/// True for the parts that a combo box is made of.
bool isPartOfCombo(const QWidget* widget)
{
    for (const QWidget* above = widget->parentWidget(); above; above = above->parentWidget()) {
        if (qobject_cast<const QComboBox*>(above))
            return true;
    }
    return false;
}

bool needsName(const QWidget* widget)
{
    return (qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractItemView*>(widget)
            || qobject_cast<const QLineEdit*>(widget)
            || qobject_cast<const QPlainTextEdit*>(widget))
           && !widget->inherits("QHeaderView") && !isPartOfCombo(widget);
}

bool hasBuddy(const QWidget* widget)
{
    const QList<QLabel*> labels = widget->window()->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* label) { return label->buddy() == widget; });
}

class EveryWindow : public support::Gallery
{
protected:
    template <class Check> void forEach(const QStringList& names, const Check& check)
    {
        for (const QString& name : names) {
            SCOPED_TRACE(name.toStdString());
            check(open(name));
        }
        EXPECT_EQ(library.dialogs.shown, QStringList());
    }
};

TEST_F(EveryWindow, TabComesToEverythingThatCanBeUsedAndComesRound)
{
    forEach(names(), checkTabChain);
}

TEST_F(EveryWindow, NoTwoAccessKeysAreEqual)
{
    forEach(names(), [](QWidget& window) { checkDistinct(accessTexts(window)); });
}

TEST_F(EveryWindow, NoTwoAccessKeysOfAMenuAreEqual)
{
    forEach(names(), [](QWidget& window) {
        for (const QMenu* menu : window.findChildren<QMenu*>()) {
            QList<Keyed> texts;
            for (const QAction* action : menu->actions())
                texts.append({action->text(), called(menu)});
            checkDistinct(texts);
        }
    });
}

TEST_F(EveryWindow, FieldsAndListsAreCalledSomething)
{
    forEach(names(), [](QWidget& window) {
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (needsName(widget)) {
                EXPECT_TRUE(!widget->accessibleName().isEmpty() || hasBuddy(widget))
                    << called(widget).toStdString();
            }
        }
    });
}

/// The buttons that go off when the key is sent to each stop in turn.
QStringList buttonsPressedBy(QWidget& window, Qt::Key key)
{
    QStringList pressed;
    QObject watched;
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        QObject::connect(button, &QAbstractButton::clicked, &watched,
                         [&pressed, button] { pressed.append(called(button)); });
    }
    for (QWidget* stop : tabStops(window)) {
        stop->setFocus();
        QTest::keyClick(stop, key);
        // An editor that a grid opened over a cell is left by Esc.
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    }
    return pressed;
}

TEST_F(EveryWindow, EscClosesNoScreenAndEnterPressesNoButton)
{
    forEach(screenNames(), [](QWidget& window) {
        if (qobject_cast<widgets::DialogScreen*>(&window))
            return;
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
            EXPECT_EQ(buttonsPressedBy(window, key), QStringList());
            EXPECT_TRUE(window.isVisible());
        }
    });
}

TEST_F(EveryWindow, EscLeavesTheMainWindowAndWorkbooksOpen)
{
    forEach({u"AFormMain"_s, u"Panel"_s, u"WorkbookWindow"_s}, [](QWidget& window) {
        for (QWidget* stop : tabStops(window)) {
            stop->setFocus();
            QTest::keyClick(stop, Qt::Key_Escape);
        }
        EXPECT_TRUE(window.isVisible());
    });
}

/// The message boxes as they come up, with the check of their chain and keys.
class MessageBoxes : public testing::Test
{
protected:
    void expectBox()
    {
        boxes.expect([](QDialog& window) {
            window.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
            checkTabChain(window);
            checkDistinct(accessTexts(window));
            window.reject();
        });
    }

    support::ModalBoxes boxes;
    widgets::ScreenDialogs dialogs;
};

TEST_F(MessageBoxes, TabComesToEveryButton)
{
    using runtime::Buttons;
    for (const Buttons buttons :
         {Buttons::Ok, Buttons::OkCancel, Buttons::YesNo, Buttons::YesNoCancel}) {
        SCOPED_TRACE(int(buttons));
        expectBox();
        // A box without 取消 is not left by Esc.
        dialogs.message(u"确实要保存修改吗？"_s, u"提示"_s, buttons, runtime::Icon::Question);
    }
}

TEST_F(MessageBoxes, TheQuestionForAPasswordIsReachedByTab)
{
    expectBox();
    dialogs.askPassword(u"请输入密码："_s);
}

TEST_F(MessageBoxes, AFailureHasItsTickInTheChain)
{
    const widgets::CommandScope command(dialogs);
    boxes.expect([](QDialog& window) {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_EQ(tabStops(window).size(), 2);
        checkTabChain(window);
        checkDistinct(accessTexts(window));
        window.reject();
    });
    dialogs.failure(u"没有名为“物理”的列。 - Sub PaiMC/Mdl_MDB"_s);
}

} // namespace
