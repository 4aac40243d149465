#pragma once

#include <array>

#include <QString>

#include "platform/runtime/Value.h"

namespace importing {

/// A score of a sheet as an import takes it.
struct ScoreCell
{
    /// As it stands on the sheet; what is stored is read from it.
    QString text;
    /// The cell's number, 0 for a text that is none.
    double score = 0;
    /// Why it is bad; empty for a good one.
    QString fault;
};

/// Reads the scores of a sheet.
class ScoreCells
{
public:
    ScoreCell read(const runtime::Value& cell, float fullMark);
    /// A number as text.
    QString textOf(double number);

private:
    /// The texts of 0, 0.5, 1 and so on, null until they are met: few marks make up a whole sheet.
    std::array<QString, 1000> m_halfTexts;
};

/// What is stored for the text of a score: -1 for 缺考, otherwise its number.
double storedScore(const QString& text);

} // namespace importing
