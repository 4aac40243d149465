#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <QTranslator>

using namespace Qt::StringLiterals;

int main(int count, char* arguments[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&count, arguments);
    QApplication application(count, arguments);
    // The tests run side by side in programs of their own, and each changes the settings.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    QLocale::setDefault(chinese);
    QTranslator buttons;
    if (buttons.load(chinese, u"qtbase"_s, u"_"_s,
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&buttons);
    QFont font;
    font.setFamilies({u"Microsoft YaHei"_s, u"Noto Sans CJK SC"_s, u"WenQuanYi Micro Hei"_s,
                      u"Droid Sans Fallback"_s});
    font.setPointSize(9);
    QApplication::setFont(font);
    return RUN_ALL_TESTS();
}
