#include <csignal>

#include <QApplication>
#include <QFontMetrics>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QTranslator>

#include "platform/runtime/ChineseFonts.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/QuietLibraries.h"
#include "platform/widgets/ProgramStyle.h"
#include "shell/ui/AFormMain.h"

namespace {

using namespace Qt::StringLiterals;

/// Chinese boxes, dates and file dialogs, whatever the desktop's language is.
void speakChinese(QTranslator& translator)
{
    const QLocale locale(QLocale::Chinese, QLocale::China);
    QLocale::setDefault(locale);
    if (translator.load(locale, u"qtbase"_s, u"_"_s,
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

QFont chineseFont()
{
    QFont font;
    font.setFamilies(runtime::chineseFontFamilies());
    font.setPointSize(10);
    return font;
}

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {48, 128, 256})
        icon.addFile(u":/icons/yunshan-%1.png"_s.arg(size));
    return icon;
}

/// A desktop's dark colours often come without one for prompts in empty fields.
void makePromptsReadable()
{
    QPalette palette = QApplication::palette();
    QColor prompt = palette.color(QPalette::Text);
    prompt.setAlphaF(0.6F);
    palette.setColor(QPalette::PlaceholderText, prompt);
    QApplication::setPalette(palette);
}

/// Without one every Chinese text would be a row of boxes, so this one is in English.
void checkGlyphs()
{
    if (!QFontMetrics(QApplication::font()).inFont(u'班'))
        runtime::warn(u"No Chinese font is installed. Please install fonts-noto-cjk."_s);
}

int runDesktop(widgets::ScreenDialogs& dialogs)
{
    library::ScoreLibrary scores(runtime::AppPaths::locate(QApplication::applicationDirPath()));
    shell::AFormMain window(scores, dialogs);
    window.show();
    window.start(QApplication::arguments().mid(1).join(u' '));
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    // A limit on the size of files is an error of the write, as a full disk is.
    std::signal(SIGXFSZ, SIG_IGN);
    runtime::quietQt();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(u"yunshan"_s);
    QApplication::setOrganizationName(u"yunshan"_s);
    QApplication::setApplicationVersion(QStringLiteral(YUNSHAN_VERSION));
    QTranslator translator;
    speakChinese(translator);
    QApplication::setStyle(new widgets::ProgramStyle);
    QApplication::setFont(chineseFont());
    QApplication::setWindowIcon(programIcon());
    makePromptsReadable();

    widgets::ScreenDialogs dialogs;
    checkGlyphs();
    try {
        return runDesktop(dialogs);
    } catch (const runtime::Error& error) {
        // Without a folder for its data files the program cannot begin.
        runtime::MsgBox(error.description(), u"错误"_s, runtime::Buttons::Ok,
                        runtime::Icon::Critical);
        return 1;
    }
}
