#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QByteArray>
#include <QString>

#include "oldlibraries/OldRows.h"

namespace oldlibraries {

/// A value of an old library as a library of ours holds it.
struct LibraryValue
{
    enum class Sort { Null, Whole, Real, Text, Bytes };

    Sort sort = Sort::Null;
    qint64 whole = 0;
    double real = 0;
    QString text;
    QByteArray bytes;
    /// What a user has to know of it, as a sentence; "" for an ordinary value.
    QStringView oddity;

    /// Takes the value of a column of the row on which `rows` stands: a Boolean as 1 or 0, an
    /// amount as the nearest number, a date and the number of an object as text. What it does not
    /// use of the former value stays. Throws OldFileError.
    void read(OldRows& rows, const OldColumn& column, int place);

private:
    void takeReal(double number);
    void takeAmount(const QString& digits);
    void takeStoredText(std::string_view stored, int place);
    void takeText(QString value);
    void takeDate(double days);

    /// The text that a column had last: most texts are those of the row before.
    struct KnownText
    {
        std::string stored;
        QString text;
        QStringView oddity;
    };

    std::vector<KnownText> m_knownTexts; // by place
};

/// The value that has an oddity as the old library has it, for a report.
QString oldText(OldRows& rows, const OldColumn& column, int place);

} // namespace oldlibraries
