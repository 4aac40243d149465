// Draws the photos of the demonstration library: make_demo_photos FOLDER < STUDENTS
//
// STUDENTS has a line "班级|学号|性别" for each photo, which becomes FOLDER/班级/学号.jpg: a drawn
// face that is always the same for the same student.

#include <cstdio>
#include <random>

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTextStream>

namespace {

using namespace Qt::StringLiterals;

constexpr int width = 180;
constexpr int height = 240;

enum class Hair { Short, Long };

/// One of the colours.
QColor choose(std::mt19937& random, std::initializer_list<QRgb> colours)
{
    return QColor(colours.begin()[random() % colours.size()]);
}

/// A number from -most to most.
int around(std::mt19937& random, unsigned most)
{
    return int(random() % (2 * most + 1)) - int(most);
}

void drawBody(QPainter& painter, const QColor& skin, const QColor& shirt)
{
    painter.setBrush(shirt);
    painter.drawEllipse(QPoint(90, 250), 78, 62);
    painter.setBrush(skin.darker(108));
    painter.drawRect(76, 160, 28, 42);
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygon({{66, 190}, {90, 216}, {114, 190}, {122, 204}, {90, 236}, {58, 204}}));
}

void drawHair(QPainter& painter, const QColor& hair, Hair length, const QPoint& middle, int round)
{
    painter.setBrush(hair);
    painter.drawEllipse(middle - QPoint(0, 14), round + 8, 62);
    if (length == Hair::Long)
        painter.drawRoundedRect(middle.x() - round - 8, middle.y() - 14, 2 * round + 16, 86, 20,
                                20);
}

void drawFace(QPainter& painter, std::mt19937& random, const QPoint& middle)
{
    const int apart = 18 + around(random, 2);
    const int smile = 8 + around(random, 5);
    painter.setBrush(QColor(0x2B2320));
    for (const int side : {-1, 1}) {
        painter.drawEllipse(middle + QPoint(side * apart, -4), 4, 5);
        painter.drawRoundedRect(middle.x() + side * apart - 9, middle.y() - 18, 18, 3, 1, 1);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0xA8604F), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(middle.x() - 16, middle.y() + 26 - smile, 32, 2 * smile, 200 * 16, 140 * 16);
    painter.drawLine(middle + QPoint(0, 4), middle + QPoint(-3, 16));
    if (random() % 4 == 0) {
        painter.setPen(QPen(QColor(0x333333), 2));
        for (const int side : {-1, 1})
            painter.drawEllipse(middle + QPoint(side * apart, -4), 13, 11);
        painter.drawLine(middle + QPoint(13 - apart, -4), middle + QPoint(apart - 13, -4));
    }
}

QImage photo(unsigned seed, Hair length)
{
    std::mt19937 random(seed);
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(choose(random, {0x6FA8DC, 0x76A5AF, 0x8FB9E0, 0xB6D7EA}));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QColor skin = choose(random, {0xF3D2B3, 0xEBC3A0, 0xF7DCC2, 0xE3B48C});
    const QColor hair = choose(random, {0x1C1714, 0x2B211B, 0x3A2A20});
    const QPoint middle(90 + around(random, 3), 114 + around(random, 3));
    const int round = 46 + around(random, 5);
    drawHair(painter, hair, length, middle, round);
    drawBody(painter, skin, choose(random, {0x274E75, 0x1F3A5F, 0x3D6B4F, 0x7A2E3A}));
    painter.setBrush(skin);
    painter.drawEllipse(middle, round, 58);
    painter.setBrush(hair);
    painter.drawChord(middle.x() - round, middle.y() - 62, 2 * round, 84 + around(random, 8),
                      12 * 16, 156 * 16);
    drawFace(painter, random, middle);
    return image;
}

bool makePhoto(const QDir& folder, const QString& student)
{
    const QStringList parts = student.split(u'|');
    if (parts.size() != 3)
        return false;
    const unsigned seed = unsigned(parts[0].toDouble() * 1000 + parts[1].toDouble());
    const Hair length = parts[2] == u"女"_s ? Hair::Long : Hair::Short;
    return folder.mkpath(parts[0])
           && photo(seed, length)
                  .save(folder.filePath(parts[0] + u'/' + parts[1] + u".jpg"_s), "JPEG", 80);
}

} // namespace

int main(int count, char* arguments[])
{
    const QCoreApplication application(count, arguments);
    if (count != 2) {
        std::fprintf(stderr, "usage: make_demo_photos FOLDER < STUDENTS\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    QTextStream students(stdin);
    while (!students.atEnd()) {
        const QString student = students.readLine();
        if (!makePhoto(folder, student)) {
            std::fprintf(stderr, "no photo: %s\n", qPrintable(student));
            return 1;
        }
    }
    return 0;
}
