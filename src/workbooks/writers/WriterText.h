#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace excel {

/// Names for the sheets of a file, one for each of these and as like as can be: letters that no
/// name can have become "_", long names are cut to 31 characters, equal names get a number.
QStringList legalSheetNames(const QStringList& names);

/// A cell's text as a file holds it, in UTF-8: at most 32,767 characters, and what XML cannot hold
/// as "_x0001_".
QByteArray fileText(const QString& text);

/// A text of a drawing: in one line, without what XML cannot hold.
QString drawnText(const QString& text);

} // namespace excel
