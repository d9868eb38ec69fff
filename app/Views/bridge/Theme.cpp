// Colour tables and rules of the panel's theme.
#include "Theme.h"

#include <QFont>
#include <QGuiApplication>

#include <array>
#include <cstring>
#include <utility>

namespace velmar::ui {

namespace {
QColor rgb(int r, int g, int b, double alpha = 1.0) {
    QColor c(r, g, b);
    c.setAlphaF(alpha);
    return c;
}
QColor byScheme(Scheme scheme, QColor light, QColor dark) {
    return scheme == Scheme::dark ? dark : light;
}
}  // namespace

QColor accent(Scheme scheme) {
    return byScheme(scheme, QColor::fromRgbF(0.03529411764705882, 0.4117647058823529,
                                             0.8549019607843137),
                    QColor::fromRgbF(0.26666666666666666, 0.5764705882352941,
                                     0.9725490196078431));
}
QColor accentFill(Scheme scheme) { return byScheme(scheme, accent(scheme), rgb(31, 111, 235)); }
QColor linkText(Scheme scheme) { return byScheme(scheme, rgb(5, 80, 174), accent(scheme)); }
QColor warningEmphasis() {
    return rgb(125, 80, 0);
}
// The desktop has no system palette of named signal colours, so these are
// shades of red, orange, blue and green chosen for legibility: as the text of
// an unfilled pill (over the same colour at 0.16) they reach 4.5:1, and as a
// mark on the panel's backdrop more. Light scheme needs them darker than the
// usual signal shades, dark scheme lighter. Orange is the exception in light
// scheme, where its marks and text take `warningEmphasis`.
QColor destructive(Scheme s) { return byScheme(s, rgb(170, 9, 0), rgb(255, 134, 127)); }
QColor warning(Scheme s) { return byScheme(s, rgb(255, 149, 0), rgb(255, 159, 10)); }
QColor info(Scheme s) { return byScheme(s, rgb(0, 84, 176), rgb(97, 176, 255)); }
QColor success(Scheme s) { return byScheme(s, rgb(24, 101, 42), rgb(48, 209, 88)); }

// Black or white at falling opacity. Secondary and tertiary carry
// information (authors, captions, the footer, "No preview URL"), so both reach
// 4.5:1 on the backdrop and in popovers; under increased contrast every level
// is stronger, secondary and tertiary past 7:1.
QColor foreground(Level level, Scheme scheme, bool increasedContrast) {
    static constexpr std::array<double, 5> light{0.85, 0.64, 0.57, 0.10, 0.05};
    static constexpr std::array<double, 5> dark{0.85, 0.62, 0.53, 0.10, 0.05};
    static constexpr std::array<double, 5> lightContrast{1.0, 0.80, 0.72, 0.30, 0.15};
    static constexpr std::array<double, 5> darkContrast{1.0, 0.80, 0.70, 0.30, 0.15};
    const auto i = static_cast<std::size_t>(level);
    if (scheme == Scheme::dark) return rgb(255, 255, 255, increasedContrast ? darkContrast[i] : dark[i]);
    return rgb(0, 0, 0, increasedContrast ? lightContrast[i] : light[i]);
}

QColor fill(Level level, Scheme scheme) {
    static constexpr std::array<double, 5> light{0.20, 0.16, 0.12, 0.06, 0.03};
    static constexpr std::array<double, 5> dark{0.36, 0.32, 0.24, 0.12, 0.06};
    const auto i = static_cast<std::size_t>(level);
    return scheme == Scheme::dark ? rgb(255, 255, 255, dark[i]) : rgb(0, 0, 0, light[i]);
}

std::optional<PillRole> pillRole(std::string_view name) {
    if (name == "accent") return PillRole::accent;
    if (name == "destructive") return PillRole::destructive;
    if (name == "warning") return PillRole::warning;
    if (name == "info") return PillRole::info;
    return std::nullopt;
}

namespace {
QColor roleColor(PillRole role, Scheme scheme) {
    switch (role) {
        case PillRole::accent: return accent(scheme);
        case PillRole::destructive: return destructive(scheme);
        case PillRole::warning: return warning(scheme);
        case PillRole::info: return info(scheme);
    }
    return accent(scheme);
}
QColor withOpacity(QColor c, double opacity) {
    c.setAlphaF(c.alphaF() * opacity);
    return c;
}
}  // namespace

PillColors pillColors(PillRole role, bool filled, Scheme scheme, bool increasedContrast) {
    const QColor primary = foreground(Level::primary, scheme, increasedContrast);
    if (increasedContrast) return {primary, QColor(Qt::transparent), primary};
    if (role == PillRole::warning && scheme == Scheme::light && !filled)
        return {warningEmphasis(), withOpacity(warning(scheme), 0.3), std::nullopt};
    const QColor colour = roleColor(role, scheme);
    if (filled) return {QColor(Qt::white), role == PillRole::accent ? accentFill(scheme) : colour, std::nullopt};
    return {colour, withOpacity(colour, 0.16), std::nullopt};
}

std::optional<Material> parseMaterial(const char* value) {
    if (value == nullptr) return std::nullopt;
    static constexpr std::pair<const char*, Material> names[] = {
        {"hud", Material::hud},       {"popover", Material::popover},
        {"sidebar", Material::sidebar}, {"menu", Material::menu},
        {"under", Material::under},   {"window", Material::window},
        {"header", Material::header}, {"sheet", Material::sheet},
        {"content", Material::content},
    };
    for (const auto& [text, material] : names)
        if (std::strcmp(value, text) == 0) return material;
    return std::nullopt;
}

namespace {
// Flat stand-ins for the translucent materials: the colour each one shows
// over an average desktop, per scheme.
QColor materialColour(Material material, Scheme scheme) {
    switch (material) {
        case Material::hud: return rgb(31, 31, 33);  // always dark, as a HUD is
        case Material::popover: return byScheme(scheme, rgb(242, 242, 244), rgb(47, 47, 49));
        case Material::sidebar: return byScheme(scheme, rgb(233, 232, 236), rgb(42, 42, 45));
        case Material::menu: return byScheme(scheme, rgb(230, 230, 232), rgb(49, 49, 51));
        case Material::under: return byScheme(scheme, rgb(217, 217, 219), rgb(28, 28, 30));
        case Material::window: return byScheme(scheme, rgb(236, 236, 236), rgb(50, 50, 50));
        case Material::header: return byScheme(scheme, rgb(245, 245, 245), rgb(43, 43, 43));
        case Material::sheet: return byScheme(scheme, rgb(240, 240, 240), rgb(44, 44, 46));
        case Material::content: return byScheme(scheme, rgb(255, 255, 255), rgb(30, 30, 30));
    }
    return rgb(128, 128, 128);
}
}  // namespace

Backdrop backdrop(Scheme scheme, const std::optional<Material>& forced) {
    if (forced) return {materialColour(*forced, scheme), std::nullopt};
    if (scheme == Scheme::dark) return {materialColour(Material::sidebar, scheme), std::nullopt};
    return {materialColour(Material::menu, scheme),
            withOpacity(materialColour(Material::window, scheme), 0.4)};
}

PanelWidth widthClass(double width) {
    if (width >= regularMinimum) return PanelWidth::regular;
    if (width >= compactMinimum) return PanelWidth::compact;
    return PanelWidth::minimal;
}

std::string_view name(PanelWidth width) {
    switch (width) {
        case PanelWidth::minimal: return "minimal";
        case PanelWidth::compact: return "compact";
        case PanelWidth::regular: return "regular";
    }
    return "regular";
}

// ---- Theme ----

QString Theme::textFamily() { return QGuiApplication::font().family(); }

Theme::Theme(std::optional<Material> forcedMaterial, QObject* parent)
    : QObject(parent), material_(forcedMaterial) {}

void Theme::setDark(bool dark) {
    const Scheme scheme = dark ? Scheme::dark : Scheme::light;
    if (scheme == scheme_) return;
    scheme_ = scheme;
    emit changed();
}

void Theme::setIncreasedContrast(bool on) {
    if (on == contrast_) return;
    contrast_ = on;
    emit changed();
}

QColor Theme::windowBackground() const { return materialColour(Material::window, scheme_); }

QColor Theme::tint() const { return contrast_ ? info(scheme_) : accent(scheme_); }
QColor Theme::tintFill() const { return contrast_ ? info(Scheme::light) : accentFill(scheme_); }
QColor Theme::link() const { return contrast_ ? foreground(Level::primary, scheme_, true) : linkText(scheme_); }

QColor Theme::backdropOverlay() const {
    return backdrop(scheme_, material_).overlay.value_or(QColor(Qt::transparent));
}

QVariantMap Theme::pill(const QString& role, bool filled, bool dark,
                        bool increasedContrast) const {
    const PillColors c =
        pillColors(pillRole(role.toStdString()).value_or(PillRole::accent), filled,
                   dark ? Scheme::dark : Scheme::light, increasedContrast);
    return {{QStringLiteral("foreground"), c.foreground},
            {QStringLiteral("background"), c.background},
            {QStringLiteral("border"), c.border.value_or(QColor(Qt::transparent))}};
}

QString Theme::widthClass(double width) const {
    const std::string_view n = name(ui::widthClass(width));
    return QString::fromLatin1(n.data(), static_cast<int>(n.size()));
}

}  // namespace velmar::ui
