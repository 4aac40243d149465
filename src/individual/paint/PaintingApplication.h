#pragma once

#include <QGuiApplication>

namespace individual {

/// The application of a program that paints without a window and needs no display: it has the
/// fonts. Made instead of a QCoreApplication.
class PaintingApplication
{
public:
    /// `program` is the name that the program was started by; it must outlive the application.
    explicit PaintingApplication(char* program);

    /// False if the texts of the pictures would be rows of boxes.
    static bool hasChineseGlyphs();

private:
    int m_count = 1;
    char* m_arguments[2];
    QGuiApplication m_application;
};

} // namespace individual
