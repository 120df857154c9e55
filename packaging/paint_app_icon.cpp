// Paints the installer's icon, a 512 x 512 PNG: the Kelvo mark (a white "K" of rounded strokes
// over a downward arrow, for "install") on a rounded square in Kelvo blue.
//   paint_app_icon OUTPUT.png
#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <cstdio>

namespace {

constexpr int kSide = 512;
constexpr double kInset = 24;          // room for the shadow-free margin macOS icons keep
constexpr double kCornerRadius = 100;
constexpr double kStroke = 56;
const QColor kTopColor(0x3A, 0x8D, 0xFF);
const QColor kBottomColor(0x1E, 0x4F, 0xD8);
const QColor kMarkColor(Qt::white);
const QColor kArrowColor(255, 255, 255, 150);

void paintBackground(QPainter& painter) {
    QRectF square(kInset, kInset, kSide - 2 * kInset, kSide - 2 * kInset);
    QLinearGradient gradient(square.topLeft(), square.bottomLeft());
    gradient.setColorAt(0, kTopColor);
    gradient.setColorAt(1, kBottomColor);
    QPainterPath path;
    path.addRoundedRect(square, kCornerRadius, kCornerRadius);
    painter.fillPath(path, gradient);
}

void paintMark(QPainter& painter) {
    QPen pen(kMarkColor, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.drawLine(QPointF(176, 128), QPointF(176, 336));  // the K's stem
    painter.drawLine(QPointF(336, 128), QPointF(200, 240));  // upper arm
    painter.drawLine(QPointF(232, 224), QPointF(336, 336));  // lower leg

    QPen arrow(kArrowColor, kStroke * 0.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(arrow);
    painter.drawLine(QPointF(256, 372), QPointF(256, 424));
    painter.drawPolyline(QPolygonF({QPointF(224, 396), QPointF(256, 428), QPointF(288, 396)}));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: paint_app_icon OUTPUT.png\n");
        return 2;
    }
    QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter);
    paintMark(painter);
    painter.end();
    if (!image.save(argv[1], "PNG")) {
        std::fprintf(stderr, "paint_app_icon: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
