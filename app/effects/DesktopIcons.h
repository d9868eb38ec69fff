// The icon of a known browser as the desktop draws it: its desktop entry's
// Icon= through the icon theme, or as a file when it is a path. Reads files,
// so the shell hands it to the screens' icon cache rather than the screens
// reaching for it.
#pragma once

#include <QImage>
#include <optional>
#include <string>

namespace velmar {

/// The icon of the browser stored as `app`; absent when it has none.
std::optional<QImage> browserIcon(const std::string& app);

}  // namespace velmar
