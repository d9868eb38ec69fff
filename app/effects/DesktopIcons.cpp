// Browser icons from the desktop's entries and icon theme.
#include "DesktopIcons.h"

#include <QFileInfo>
#include <QIcon>

#include "BrowserTable.h"
#include "DesktopEntry.h"

namespace velmar {

namespace {
constexpr int iconPixels = 64;  // tiles are 22 points; this stays sharp at scale 2 and beyond
}

std::optional<QImage> browserIcon(const std::string& app) {
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

}  // namespace velmar
