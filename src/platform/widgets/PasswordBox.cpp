#include "platform/widgets/PasswordBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"

namespace widgets {

using namespace Qt::StringLiterals;

PasswordBox::PasswordBox(const QString& title, const QString& question, QWidget* parent)
    : QDialog(parent), m_text(named(new QLineEdit, u"PasswordText"_s, u"密码"_s))
{
    setObjectName(u"PasswordBox"_s);
    setWindowTitle(title);
    m_text->setEchoMode(QLineEdit::Password);
    // An input method works on a text that is shown, and on no other.
    QCheckBox* show = named(new QCheckBox(u"显示密码(&S)"_s), u"PasswordShown"_s, u"显示密码"_s);
    QPushButton* ok = button(u"PasswordOk"_s, u"确定(&O)"_s, this);
    ok->setAutoDefault(true);
    ok->setDefault(true);
    QPushButton* cancel = button(u"PasswordCancel"_s, u"取消(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(show, 1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label(u"PasswordQuestion"_s, question, m_text, this));
    layout->addWidget(m_text);
    layout->addLayout(buttons);
    connect(show, &QCheckBox::toggled, m_text, [this](bool isShown) {
        m_text->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_text->setFocus();
}

QString PasswordBox::password() const
{
    return m_text->text();
}

} // namespace widgets
