#include "qt/ToolIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygon>

namespace fw::qt {

namespace {

constexpr int kSize = 24;

const QColor kInk(40, 40, 40);
const QColor kGreen(70, 140, 60);
const QColor kGrey(150, 150, 150);
const QColor kBlue(60, 100, 190);
const QColor kRed(190, 50, 50);

void Outline(QPainter& p, const QPolygon& poly, const QColor& fill)
{
    p.setPen(QPen(kInk, 1));
    p.setBrush(fill);
    p.drawPolygon(poly);
}

void DrawPoly(QPainter& p) { Outline(p, QPolygon({{3, 18}, {8, 4}, {20, 6}, {17, 20}}), kGrey); }

void DrawTexPoly(QPainter& p)
{
    Outline(p, QPolygon({{3, 19}, {6, 4}, {21, 5}, {19, 20}}), QColor(200, 170, 110));
    p.setPen(QPen(QColor(120, 90, 40), 1));
    for (int x = 7; x < 20; x += 4)
        p.drawLine(x, 6, x - 2, 19);
}

void DrawWideLine(QPainter& p)
{
    p.setPen(QPen(kGrey, 5, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(3, 20, 20, 4);
    p.setPen(QPen(Qt::white, 1, Qt::DashLine));
    p.drawLine(3, 20, 20, 4);
}

void DrawDotLine(QPainter& p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(kInk);
    for (int i = 0; i < 5; ++i)
        p.drawEllipse(QPoint(4 + i * 4, 19 - i * 3), 1, 1);
}

void Tree(QPainter& p, int x, int y, int r)
{
    p.setPen(QPen(kInk, 1));
    p.setBrush(kGreen);
    p.drawEllipse(QPoint(x, y), r, r);
}

void DrawTreeLine(QPainter& p)
{
    for (int i = 0; i < 4; ++i)
        Tree(p, 5 + i * 5, 18 - i * 4, 3);
}

void DrawForest(QPainter& p)
{
    Outline(p, QPolygon({{2, 12}, {8, 3}, {21, 5}, {21, 19}, {6, 21}}), QColor(160, 200, 140));
    Tree(p, 9, 10, 3);
    Tree(p, 15, 14, 3);
    Tree(p, 10, 17, 2);
}

void DrawApi(QPainter& p)
{
    // A box in oblique view.
    p.setPen(QPen(kInk, 1));
    p.setBrush(QColor(220, 220, 220));
    p.drawPolygon(QPolygon({{4, 9}, {14, 9}, {14, 20}, {4, 20}}));
    p.setBrush(QColor(180, 180, 180));
    p.drawPolygon(QPolygon({{14, 9}, {20, 4}, {20, 15}, {14, 20}}));
    p.setBrush(QColor(240, 240, 240));
    p.drawPolygon(QPolygon({{4, 9}, {10, 4}, {20, 4}, {14, 9}}));
}

void DrawSign(QPainter& p)
{
    p.setPen(QPen(kInk, 1));
    p.setBrush(QColor(230, 200, 40));
    p.drawRect(3, 6, 18, 10);
    p.setPen(QPen(kInk, 2));
    p.drawLine(7, 16, 7, 21);
    p.drawLine(17, 16, 17, 21);
    p.drawLine(7, 11, 13, 11);
    p.drawLine(11, 9, 13, 11);
    p.drawLine(11, 13, 13, 11);
}

void DrawRunway(QPainter& p)
{
    p.setPen(QPen(kInk, 1));
    p.setBrush(QColor(90, 90, 90));
    p.drawPolygon(QPolygon({{2, 16}, {16, 2}, {22, 8}, {8, 22}}));
    p.setPen(QPen(Qt::white, 1, Qt::DashLine));
    p.drawLine(6, 18, 18, 6);
}

void DrawVor(QPainter& p)
{
    p.setPen(QPen(kBlue, 1));
    p.setBrush(Qt::NoBrush);
    QPolygon hex;
    for (int i = 0; i < 6; ++i) {
        static const int dx[6] = {8, 4, -4, -8, -4, 4};
        static const int dy[6] = {0, -7, -7, 0, 7, 7};
        hex << QPoint(12 + dx[i], 12 + dy[i]);
    }
    p.drawPolygon(hex);
    p.setBrush(kBlue);
    p.drawEllipse(QPoint(12, 12), 2, 2);
}

void DrawNdb(QPainter& p)
{
    p.setPen(QPen(kRed, 1, Qt::DotLine));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPoint(12, 12), 9, 9);
    p.drawEllipse(QPoint(12, 12), 5, 5);
    p.setPen(QPen(kRed, 1));
    p.setBrush(kRed);
    p.drawEllipse(QPoint(12, 12), 2, 2);
}

void DrawLocation(QPainter& p)
{
    // An aeroplane seen from above.
    p.setPen(QPen(kBlue, 2));
    p.drawLine(12, 3, 12, 21);
    p.drawLine(4, 11, 20, 11);
    p.drawLine(8, 19, 16, 19);
}

void DrawFlatten(QPainter& p)
{
    Outline(p, QPolygon({{3, 15}, {9, 5}, {20, 7}, {18, 19}, {7, 20}}), QColor(210, 190, 150));
    p.setPen(QPen(kInk, 1));
    p.drawLine(7, 12, 17, 12);
    p.drawLine(8, 15, 16, 15);
}

void DrawExclude(QPainter& p)
{
    p.setPen(QPen(kRed, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(3, 3, 17, 17);
    p.drawLine(3, 3, 20, 20);
    p.drawLine(20, 3, 3, 20);
}

void DrawZoom(QPainter& p, bool in)
{
    p.setPen(QPen(kInk, 2));
    p.setBrush(QColor(230, 240, 255));
    p.drawEllipse(QPoint(10, 10), 6, 6);
    p.setPen(QPen(kInk, 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(15, 15, 20, 20);
    p.setPen(QPen(kInk, 2));
    p.drawLine(7, 10, 13, 10);
    if (in)
        p.drawLine(10, 7, 10, 13);
}

void DrawEdit(QPainter& p)
{
    // The arrow pointer.
    Outline(p, QPolygon({{6, 3}, {6, 19}, {10, 15}, {13, 21}, {15, 20}, {12, 14}, {18, 14}}), Qt::white);
}

void DrawLayer(QPainter& p)
{
    p.setPen(QPen(kInk, 1));
    p.setBrush(QColor(120, 160, 220));
    p.drawRect(8, 3, 12, 10);
    p.setBrush(QColor(230, 170, 90));
    p.drawRect(3, 10, 12, 10);
}

void DrawPreview(QPainter& p)
{
    // An eye.
    QPainterPath eye;
    eye.moveTo(2, 12);
    eye.quadTo(12, 2, 22, 12);
    eye.quadTo(12, 22, 2, 12);
    p.setPen(QPen(kInk, 1));
    p.setBrush(Qt::white);
    p.drawPath(eye);
    p.setBrush(kBlue);
    p.drawEllipse(QPoint(12, 12), 4, 4);
    p.setBrush(kInk);
    p.drawEllipse(QPoint(12, 12), 1, 1);
}

void DrawRotate(QPainter& p)
{
    p.setPen(QPen(kInk, 2));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRect(4, 4, 16, 16), 90 * 16, 270 * 16);
    p.setBrush(kInk);
    p.drawPolygon(QPolygon({{12, 0}, {17, 4}, {12, 8}}));
}

} // namespace

QCursor ToolCursor(int resource)
{
    static const char* const keys[] = {"", "api", "runway", "vor", "ndb", "location", "exclude", ""};
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    // The cross, white under black so it shows on any ground.
    for (const auto& [colour, width] : {std::pair{QColor(Qt::white), 3}, std::pair{QColor(Qt::black), 1}}) {
        p.setPen(QPen(colour, width, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(0, 7, 14, 7);
        p.drawLine(7, 0, 7, 14);
    }
    p.setRenderHint(QPainter::Antialiasing, true);
    p.translate(14, 14);
    p.scale(16.0 / kSize, 16.0 / kSize);
    if (resource == 108)
        DrawRotate(p);
    else if (resource >= 102 && resource <= 107)
        ToolIcon(keys[resource - 101]).paint(&p, QRect(0, 0, kSize, kSize));
    p.end();
    return QCursor(pixmap, 7, 7);
}

QIcon ToolIcon(const QString& key)
{
    QPixmap pixmap(kSize, kSize);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing, true);
    if (key == "poly") DrawPoly(p);
    else if (key == "texpoly") DrawTexPoly(p);
    else if (key == "wideline") DrawWideLine(p);
    else if (key == "dotline") DrawDotLine(p);
    else if (key == "treeline") DrawTreeLine(p);
    else if (key == "forest") DrawForest(p);
    else if (key == "api") DrawApi(p);
    else if (key == "sign") DrawSign(p);
    else if (key == "runway") DrawRunway(p);
    else if (key == "vor") DrawVor(p);
    else if (key == "ndb") DrawNdb(p);
    else if (key == "location") DrawLocation(p);
    else if (key == "flatten") DrawFlatten(p);
    else if (key == "exclude") DrawExclude(p);
    else if (key == "zoomIn") DrawZoom(p, true);
    else if (key == "zoomOut") DrawZoom(p, false);
    else if (key == "mEdit") DrawEdit(p);
    else if (key == "mLayer") DrawLayer(p);
    else if (key == "mPreview") DrawPreview(p);
    p.end();
    return QIcon(pixmap);
}

} // namespace fw::qt
