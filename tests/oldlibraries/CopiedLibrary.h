#pragma once

#include <vector>

#include "oldlibraries/ConversionReport.h"
#include "platform/database/ColumnDeclaration.h"
#include "support/TestLibrary.h"

/// The findings, a line each, their members joined by "|".
QString findingTexts(const std::vector<oldlibraries::Finding>& findings);

/// A library as the copying of an old one leaves it, with these subjects and totals, of which tests
/// take away what an older one lacks.
class CopiedLibrary
{
public:
    explicit CopiedLibrary(const QStringList& subjects = {QStringLiteral("语文"),
                                                          QStringLiteral("总分")});

    database::Connection conn;

    void execute(const QString& sql);
    /// As support::rowTexts.
    QString rows(const QString& sql);
    /// The names of the columns of a table, joined by a blank.
    QString columns(const QString& table);

    /// Makes a table anew with these columns, in this order.
    void remake(const QString& table, const std::vector<database::ColumnDeclaration>& columns);
    void removeColumn(const QString& table, const QString& column);

    /// What they find, as findingTexts.
    QString complete();
    QString faults();
    const QString& path() const { return m_made.scores.LibPath; }

private:
    support::TestLibrary m_made;
};
