#include <cstdio>
#include <stdexcept>

#include <QFile>
#include <QGuiApplication>

#include "Drawing.h"
#include "Files.h"
#include "Scenery.h"

using namespace Qt::StringLiterals;

namespace {

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void save(const QImage& picture, const QString& path, int quality = -1)
{
    if (!picture.save(path, nullptr, quality))
        throw std::runtime_error("cannot write " + path.toStdString());
}

void drawAll(const QString& project)
{
    const Drawing drawing = icon();
    const auto iconImage = [&](int side) { return drawing.image(QSize(side, side)); };
    write(project + "/packaging/yunshan.svg", drawing.svg(u"云杉学业册"_s));
    for (const int side : {48, 128, 256})
        save(iconImage(side), project + u"/packaging/icons/yunshan-%1.png"_s.arg(side));
    write(project + "/data/CJK.ico", ico({iconImage(16), iconImage(32), iconImage(48)}));
    save(landscape(QSize(1600, 900)), project + "/data/bj.jpg", 72);
    save(paper(QSize(1000, 800)), project + "/data/bj1.jpg", 76);
    write(project + "/data/nopic.gif", gif(noPhoto(QSize(240, 320))));
}

} // namespace

/// Draws all pictures into the project's folder, which is the argument.
int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("draw_pictures PROJECT_FOLDER\n", stderr);
        return 2;
    }
    try {
        drawAll(QString::fromLocal8Bit(argv[1]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
