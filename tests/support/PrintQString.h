#pragma once

#include <ostream>

#include <QString>
#include <QStringList>

using namespace Qt::StringLiterals;

// Readable texts in the failure messages of GoogleTest.

QT_BEGIN_NAMESPACE

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '{' << list.join(u" | "_s).toStdString() << '}';
}

QT_END_NAMESPACE
