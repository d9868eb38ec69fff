// The appearance rules, kept apart from the window so they can be tested.
#include "Appearance.h"

#include <QGuiApplication>
#include <QPalette>
#include <QString>

namespace velmar::PanelAppearance {

std::optional<Appearance> parseForced(const char* value) {
    if (value == nullptr) return std::nullopt;
    const QString word = QString::fromUtf8(value).toLower();
    if (word == QLatin1String("dark")) return Appearance::dark;
    if (word == QLatin1String("light")) return Appearance::light;
    if (word == QLatin1String("system")) return Appearance::system;
    return std::nullopt;
}

Appearance effective(const std::optional<Appearance>& forced, const Model& model,
                     Appearance bootAppearance) {
    if (forced) return *forced;
    return model.settingsLoaded ? model.appearance : bootAppearance;
}

bool isDark(Appearance appearance, bool desktopPrefersDark) {
    switch (appearance) {
        case Appearance::dark: return true;
        case Appearance::light: return false;
        case Appearance::system: return desktopPrefersDark;
    }
    return false;
}

bool desktopPrefersDark(PortalScheme portal) {
    if (portal != PortalScheme::noPreference) return portal == PortalScheme::dark;
    // Qt 6.4 has no public colour-scheme query; a platform theme that follows
    // a dark desktop hands out a palette with a dark window colour, and the
    // plain palette of a desktop without one is light.
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    const QColor text = QGuiApplication::palette().color(QPalette::WindowText);
    return window.lightnessF() < text.lightnessF();
}

}  // namespace velmar::PanelAppearance
