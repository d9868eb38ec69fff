// The theme's rules: pill colours, width classes, the backdrop per material,
// and which appearance applies when.
#include <gtest/gtest.h>

#include "Appearance.h"
#include "Theme.h"

using namespace velmar;
using namespace velmar::ui;

TEST(pill, first_rule_that_holds_decides_each_colour) {
    const auto alpha = [](QColor c, double a) { c.setAlphaF(a); return c; };
    const Scheme L = Scheme::light, D = Scheme::dark;
    const QColor clear(Qt::transparent), white(Qt::white), primary = foreground(Level::primary, L, true);
    const std::nullopt_t none = std::nullopt;
    const std::vector<std::tuple<PillRole, bool, Scheme, bool, PillColors>> rows = {
        {PillRole::accent, true, L, true, {primary, clear, primary}},
        {PillRole::warning, false, L, true, {primary, clear, primary}},
        {PillRole::warning, false, L, false, {warningEmphasis(), alpha(warning(L), 0.3), none}},
        {PillRole::warning, false, D, false, {warning(D), alpha(warning(D), 0.16), none}},
        {PillRole::warning, true, L, false, {white, warning(L), none}},
        {PillRole::accent, true, D, false, {white, accentFill(D), none}},
        {PillRole::destructive, false, L, false, {destructive(L), alpha(destructive(L), 0.16), none}},
    };
    for (const auto& [role, filled, scheme, contrast, expected] : rows) {
        const PillColors got = pillColors(role, filled, scheme, contrast);
        SCOPED_TRACE(::testing::Message() << int(role) << filled << int(scheme) << contrast);
        EXPECT_EQ(got.foreground, expected.foreground);
        EXPECT_EQ(got.background, expected.background);
        EXPECT_EQ(got.border, expected.border);
    }
}

TEST(panel_width, thresholds_at_300_and_420_belong_to_the_wider_class) {
    using enum PanelWidth;
    const std::vector<std::pair<double, PanelWidth>> rows = {
        {299.9, minimal}, {300, compact}, {419.99, compact}, {420, regular}};
    for (auto [width, expected] : rows) EXPECT_EQ(widthClass(width), expected) << width;
}

TEST(backdrop, material_is_forced_only_by_exact_names_and_the_light_default_has_an_overlay) {
    const std::vector<std::pair<const char*, std::optional<Material>>> rows = {
        {nullptr, std::nullopt}, {"HUD", std::nullopt}, {"menu ", std::nullopt},
        {"hud", Material::hud}, {"content", Material::content}};
    for (auto [text, expected] : rows) EXPECT_EQ(parseMaterial(text), expected) << (text ? text : "(unset)");

    const Backdrop light = backdrop(Scheme::light, std::nullopt);
    ASSERT_TRUE(light.overlay.has_value());
    EXPECT_NEAR(light.overlay->alphaF(), 0.4, 1e-6);
    EXPECT_EQ(light.base, backdrop(Scheme::light, Material::menu).base);
    EXPECT_FALSE(backdrop(Scheme::light, Material::menu).overlay.has_value());
    EXPECT_EQ(backdrop(Scheme::dark, std::nullopt), backdrop(Scheme::dark, Material::sidebar));
    EXPECT_NE(backdrop(Scheme::dark, std::nullopt).base, light.base);
}

TEST(appearance, forced_in_any_case_then_loaded_settings_then_the_value_read_at_start) {
    const std::vector<std::pair<const char*, std::optional<Appearance>>> words = {
        {nullptr, std::nullopt}, {"DARK", Appearance::dark}, {"Light", Appearance::light},
        {"system", Appearance::system}, {"darkish", std::nullopt}, {" dark", std::nullopt}};
    for (auto [text, expected] : words)
        EXPECT_EQ(PanelAppearance::parseForced(text), expected) << (text ? text : "(unset)");

    const auto dark = Appearance::dark, light = Appearance::light, system = Appearance::system;
    const std::vector<std::tuple<std::optional<Appearance>, bool, Appearance, Appearance, Appearance>> rows = {
        {system, true, dark, dark, system}, {light, false, dark, dark, light},
        {std::nullopt, false, dark, light, light}, {std::nullopt, true, system, light, system}};
    for (const auto& [forced, settingsLoaded, saved, boot, expected] : rows) {
        Model m;
        m.settingsLoaded = settingsLoaded;
        m.appearance = saved;
        EXPECT_EQ(PanelAppearance::effective(forced, m, boot), expected);
    }
    EXPECT_TRUE(PanelAppearance::isDark(dark, false) && PanelAppearance::isDark(system, true));
    EXPECT_FALSE(PanelAppearance::isDark(light, true) || PanelAppearance::isDark(system, false));
}
