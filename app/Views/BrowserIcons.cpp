// Browser icon lookup and its cache.
#include "BrowserIcons.h"

#include <QFileInfo>
#include <QIcon>
#include <QUrl>
#include <array>
#include <vector>

#include "BrowserTable.h"
#include "DesktopEntry.h"

namespace velmar::ui {

namespace {
constexpr int iconPixels = 64;  // tiles are 22 points; this stays sharp at scale 2 and beyond
}

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

std::optional<QImage> BrowserIcons::fromDesktopEntry(const std::string& app) {
    const LinuxBrowser* row = findLinuxBrowser(app);
    if (row == nullptr) return std::nullopt;
    const auto dirs = DesktopEntry::applicationDirs();
    const auto entry = DesktopEntry::find(dirs, row->desktopIds);
    if (!entry || entry->icon.empty()) return std::nullopt;

    const QString name = QString::fromStdString(entry->icon);
    QIcon icon;
    if (QFileInfo(name).isAbsolute()) {
        icon = QIcon(name);
    } else {
        // Without a desktop theme (a bare session, offscreen) the shared
        // hicolor theme still holds most applications' icons.
        if (QIcon::themeName().isEmpty()) QIcon::setThemeName(QStringLiteral("hicolor"));
        icon = QIcon::fromTheme(name);
        if (icon.isNull()) {
            for (const char* suffix : {".svg", ".png", ".xpm"}) {
                const QString file = QStringLiteral("/usr/share/pixmaps/") + name + QLatin1String(suffix);
                if (QFileInfo::exists(file)) {
                    icon = QIcon(file);
                    break;
                }
            }
        }
    }
    if (icon.isNull()) return std::nullopt;
    QImage image = icon.pixmap(iconPixels, iconPixels).toImage();
    if (image.isNull()) return std::nullopt;
    return image;
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
