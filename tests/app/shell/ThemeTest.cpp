// The theme's rules: width classes, the material by name, and which
// appearance applies when. The colours themselves are judged by contrast.
#include <gtest/gtest.h>

#include "Appearance.h"
#include "Theme.h"

using namespace velmar;
using namespace velmar::ui;

TEST(panel_width, thresholds_at_300_and_420_belong_to_the_wider_class) {
    using enum PanelWidth;
    const std::vector<std::pair<double, PanelWidth>> rows = {
        {299.9, minimal}, {300, compact}, {419.99, compact}, {420, regular}};
    for (auto [width, expected] : rows) EXPECT_EQ(widthClass(width), expected) << width;
}

TEST(backdrop, material_is_forced_only_by_exact_names) {
    const std::vector<std::pair<const char*, std::optional<Material>>> rows = {
        {nullptr, std::nullopt}, {"HUD", std::nullopt}, {"menu ", std::nullopt},
        {"hud", Material::hud}, {"content", Material::content}};
    for (auto [text, expected] : rows) EXPECT_EQ(parseMaterial(text), expected) << (text ? text : "(unset)");

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
