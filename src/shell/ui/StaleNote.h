#pragma once

#include <QLabel>

namespace shell {

/// Says above a result that the library has changed since it was made. Hidden while there is
/// nothing to say.
class StaleNote : public QLabel
{
    Q_OBJECT

public:
    explicit StaleNote(QWidget* parent);

    void tell(const QString& text);
};

} // namespace shell
