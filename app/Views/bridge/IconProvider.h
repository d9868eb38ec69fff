// Renders the panel's symbols, by their symbol names ("arrow.clockwise"), in
// any colour: "image://icon/<name>/<#aarrggbb>".
#pragma once

#include <QQuickImageProvider>

namespace velmar::ui {

class IconProvider : public QQuickImageProvider {
public:
    IconProvider();

    /// `id` is "<symbol name>/<colour>"; a name without an icon gives an
    /// empty image. The default size is 16 by 16.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace velmar::ui
