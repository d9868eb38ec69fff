// Build-time helper: draws the application icon's SVG into a square PNG of
// the given size, so the fixed-size icons never drift from the scalable one.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 4) return std::fprintf(stderr, "usage: render_icon in.svg out.png size\n"), 2;
    const int size = std::atoi(argv[3]);
    QSvgRenderer renderer(QString::fromLocal8Bit(argv[1]));
    if (!renderer.isValid() || size <= 0)
        return std::fprintf(stderr, "render_icon: cannot render %s at %s\n", argv[1], argv[3]), 1;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        renderer.render(&painter, QRectF(0, 0, size, size));
    }
    if (!image.save(QString::fromLocal8Bit(argv[2]), "png"))
        return std::fprintf(stderr, "render_icon: cannot write %s\n", argv[2]), 1;
    return 0;
}
