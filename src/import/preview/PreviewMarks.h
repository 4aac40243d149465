#pragma once

#include "import/preview/ExamPreview.h"

namespace importing {

/// The full marks that a preview judges by, since they are entered only after the start of the
/// import: those that were given, else the exam's own, else the defaults that will be offered.
class PreviewMarks
{
public:
    /// `stream` is the sheet's. Throws Error.
    PreviewMarks(library::ScoreLibrary& scoreLibrary, const ExamPreviewRequest& request,
                 const QString& stream, std::vector<ImportSubject> subjects);

    /// The subjects with their full marks; without a known one nothing is above it.
    const std::vector<ImportSubject>& subjects() const { return m_subjects; }

    /// "默认的满分 150".
    QString told(const ImportSubject& subject) const;
    /// All marks with their sources, and the subjects without one.
    QString note() const;

private:
    void take(const QHash<QString, float>& marks, const QString& source);

    std::vector<ImportSubject> m_subjects;
    /// Of the subjects whose marks are known.
    QHash<QString, QString> m_sources;
};

} // namespace importing
