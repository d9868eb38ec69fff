// Browser icon lookup and its cache.
#include "BrowserIcons.h"

#include <QUrl>
#include <array>
#include <vector>


namespace velmar::ui {

BrowserIcons::BrowserIcons(Lookup lookup) : lookup_(std::move(lookup)) {}

bool BrowserIcons::has(const std::string& app) {
    if (app.empty()) return false;
    {
        std::lock_guard lock(mutex_);
        if (auto it = cache_.find(app); it != cache_.end()) return it->second.has_value();
    }
    std::optional<QImage> found = lookup_ ? lookup_(app) : std::nullopt;
    if (found && found->isNull()) found.reset();
    std::lock_guard lock(mutex_);
    return cache_.emplace(app, std::move(found)).first->second.has_value();
}

QImage BrowserIcons::image(const std::string& app) const {
    std::lock_guard lock(mutex_);
    auto it = cache_.find(app);
    return it != cache_.end() && it->second ? *it->second : QImage();
}

BrowserIconProvider::BrowserIconProvider(const BrowserIcons& icons)
    : QQuickImageProvider(QQuickImageProvider::Image), icons_(icons) {}

QImage BrowserIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    // The id is the percent-encoded name, so names with blanks or slashes survive the URL.
    QImage image = icons_.image(QUrl::fromPercentEncoding(id.toUtf8()).toStdString());
    if (!image.isNull() && requestedSize.isValid() && !requestedSize.isEmpty())
        image = image.scaled(requestedSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (size) *size = image.size();
    return image;
}

}  // namespace velmar::ui
