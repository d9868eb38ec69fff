// Test helper: describes a PNG as "width height colours luminance" (colours:
// distinct RGBA values, up to 1000; luminance: mean, 0 to 255), and with a
// second file also the count of pixels that differ between the two (-1 if the
// sizes differ).
#include <QImage>
#include <QSet>
#include <cstdio>

int main(int argc, char** argv) {
    const auto read = [](const char* path) {
        return QImage(QString::fromLocal8Bit(path)).convertToFormat(QImage::Format_ARGB32);
    };
    const QImage a = read(argc > 1 ? argv[1] : "");
    if (a.isNull()) return std::fprintf(stderr, "usage: png_probe a.png [b.png]\n"), 1;
    const QImage b = argc > 2 ? read(argv[2]) : QImage();
    QSet<QRgb> colours;
    double luminance = 0;
    long long differ = b.size() == a.size() ? 0 : -1;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            if (colours.size() < 1000) colours.insert(a.pixel(x, y));
            luminance += qGray(a.pixel(x, y));
            if (differ >= 0) differ += a.pixel(x, y) != b.pixel(x, y);
        }
    std::printf("%d %d %lld %.0f", a.width(), a.height(), (long long)colours.size(),
                luminance / (double(a.width()) * a.height()));
    if (argc > 2) std::printf(" %lld", differ);
    std::printf("\n");
}
