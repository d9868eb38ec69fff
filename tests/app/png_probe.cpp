// Test helper: describes a PNG as "width height colours luminance" (colours:
// distinct RGBA values, up to 1000; luminance: mean, 0 to 255), and with a
// second file also the count of pixels that differ between the two.
#include <QGuiApplication>
#include <QImage>
#include <QSet>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: png_probe a.png [b.png]\n");
        return 2;
    }
    const QImage a = QImage(QString::fromLocal8Bit(argv[1])).convertToFormat(QImage::Format_ARGB32);
    if (a.isNull()) {
        std::fprintf(stderr, "png_probe: cannot read %s\n", argv[1]);
        return 1;
    }
    QSet<QRgb> colours;
    double luminance = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            if (colours.size() < 1000) colours.insert(p);
            luminance += qGray(p);
        }
    luminance /= double(a.width()) * a.height();
    std::printf("%d %d %lld %.0f", a.width(), a.height(), (long long)colours.size(), luminance);
    if (argc > 2) {
        const QImage b = QImage(QString::fromLocal8Bit(argv[2])).convertToFormat(QImage::Format_ARGB32);
        long long differ = 0;
        if (b.size() != a.size()) differ = -1;
        else
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x) differ += a.pixel(x, y) != b.pixel(x, y);
        std::printf(" %lld", differ);
    }
    std::printf("\n");
    return 0;
}
