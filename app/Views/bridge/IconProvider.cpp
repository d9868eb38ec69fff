// Symbol rendering: the SVG is drawn as a mask, then filled with the colour,
// so one file serves every colour and opacity.
#include "IconProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace velmar::ui {

IconProvider::IconProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage IconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const qsizetype slash = id.lastIndexOf(QLatin1Char('/'));
    const QString name = slash < 0 ? id : id.left(slash);
    const QColor colour = slash < 0 ? QColor(Qt::black) : QColor::fromString(id.mid(slash + 1));

    const QSize out(requestedSize.width() > 0 ? requestedSize.width() : 16,
                    requestedSize.height() > 0 ? requestedSize.height() : 16);
    if (size) *size = out;

    QImage image(out, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(QStringLiteral(":/qt/qml/Velmar/Views/icons/%1.svg").arg(name));
    if (!renderer.isValid()) return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(0, 0), out));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour.isValid() ? colour : QColor(Qt::black));
    return image;
}

}  // namespace velmar::ui
