#pragma once

#include <QDialog>

class QLineEdit;

namespace widgets {

/// A box that asks for a password: what is typed is hidden unless the user wants to see it. Esc
/// cancels, Enter confirms.
class PasswordBox : public QDialog
{
    Q_OBJECT

public:
    PasswordBox(const QString& title, const QString& question, QWidget* parent);

    QString password() const;

private:
    QLineEdit* m_text;
};

} // namespace widgets
