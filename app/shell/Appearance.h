// Light or dark: which appearance the panel wants, and which colour scheme
// that means on this desktop.
#pragma once

#include <optional>
#include <string_view>

#include "Model.h"
#include "PortalSettings.h"
#include "Records.h"

namespace velmar::PanelAppearance {

/// The appearance forced by VELMAR_APPEARANCE: "dark", "light" or "system"
/// in any letter case; anything else (or no variable) forces nothing.
std::optional<Appearance> parseForced(const char* value);

/// The forced value if any; else the model's once its settings file is in;
/// else the appearance read from that file at start-up.
Appearance effective(const std::optional<Appearance>& forced, const Model& model,
                     Appearance bootAppearance);

/// Whether `appearance` draws dark, given what the desktop prefers.
bool isDark(Appearance appearance, bool desktopPrefersDark);

/// The desktop's colour-scheme preference: the portal's when it states one,
/// else as far as Qt can read it (the platform theme's palette); false,
/// meaning light, where nothing says dark.
bool desktopPrefersDark(PortalScheme portal);

}  // namespace velmar::PanelAppearance
