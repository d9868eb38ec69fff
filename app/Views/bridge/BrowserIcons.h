// The icons of the browser tiles: each browser's desktop entry names its
// icon (Icon=), which the icon theme draws. A name is looked up once per run,
// found or not, so the tiles never touch the file system again; a browser
// without an icon shows its initials instead.
#pragma once

#include <QImage>
#include <QQuickImageProvider>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace velmar::ui {

class BrowserIcons {
public:
    /// Finds the icon of the browser stored as `app`; absent when it has none.
    using Lookup = std::function<std::optional<QImage>(const std::string& app)>;

    /// The shell hands in the lookup that reads the desktop's files, so the
    /// screens themselves never touch the file system.
    explicit BrowserIcons(Lookup lookup);

    /// Whether `app` has an icon; the first call for a name looks it up.
    /// An empty name (the system default) never has one. Main thread only.
    bool has(const std::string& app);
    /// The cached icon of `app`, or a null image; safe from any thread.
    QImage image(const std::string& app) const;

private:
    Lookup lookup_;
    mutable std::mutex mutex_;  // the image loader reads from its own thread
    std::map<std::string, std::optional<QImage>> cache_;
};

/// "image://browser/<app>": the cached icon, scaled to the requested size.
class BrowserIconProvider : public QQuickImageProvider {
public:
    explicit BrowserIconProvider(const BrowserIcons& icons);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    const BrowserIcons& icons_;
};

}  // namespace velmar::ui
