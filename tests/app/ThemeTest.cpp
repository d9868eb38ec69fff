// The theme's rules: pill colours, width classes, the backdrop per material,
// and which appearance applies when.
#include <gtest/gtest.h>

#include "Appearance.h"
#include "Views/Theme.h"

using namespace velmar;
using namespace velmar::ui;

namespace {
QColor alpha(QColor c, double a) {
    c.setAlphaF(a);
    return c;
}
}  // namespace

TEST(theme, brand_colours_have_their_exact_values) {
    EXPECT_EQ(accent(Scheme::light), QColor::fromRgbF(0.03529411764705882, 0.4117647058823529, 0.8549019607843137));
    EXPECT_EQ(accent(Scheme::light).rgb(), qRgb(9, 105, 218));
    EXPECT_EQ(accent(Scheme::dark).rgb(), qRgb(68, 147, 248));
    EXPECT_EQ(warningEmphasis().rgb(), qRgb(138, 90, 0));
}

TEST(pill, first_rule_that_holds_decides_each_colour) {
    struct Row {
        const char* name;
        PillRole role;
        bool filled;
        Scheme scheme;
        bool contrast;
        PillColors expected;
    };
    const Scheme L = Scheme::light, D = Scheme::dark;
    const QColor clear(Qt::transparent), white(Qt::white);
    const std::vector<Row> rows = {
        {"contrast beats filled", PillRole::accent, true, L, true,
         {foreground(Level::primary, L), clear, foreground(Level::primary, L)}},
        {"contrast beats warning in light", PillRole::warning, false, L, true,
         {foreground(Level::primary, L), clear, foreground(Level::primary, L)}},
        {"unfilled warning in light", PillRole::warning, false, L, false,
         {warningEmphasis(), alpha(warning(L), 0.3), std::nullopt}},
        {"unfilled warning in dark", PillRole::warning, false, D, false,
         {warning(D), alpha(warning(D), 0.16), std::nullopt}},
        {"filled warning in light", PillRole::warning, true, L, false,
         {white, warning(L), std::nullopt}},
        {"filled accent", PillRole::accent, true, D, false, {white, accent(D), std::nullopt}},
        {"unfilled destructive", PillRole::destructive, false, L, false,
         {destructive(L), alpha(destructive(L), 0.16), std::nullopt}},
        {"unfilled info", PillRole::info, false, D, false,
         {info(D), alpha(info(D), 0.16), std::nullopt}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PillColors got = pillColors(row.role, row.filled, row.scheme, row.contrast);
        EXPECT_EQ(got.foreground, row.expected.foreground);
        EXPECT_EQ(got.background, row.expected.background);
        EXPECT_EQ(got.border, row.expected.border);
    }
}

TEST(panel_width, thresholds_at_300_and_420_belong_to_the_wider_class) {
    const std::vector<std::pair<double, PanelWidth>> rows = {
        {0, PanelWidth::minimal},        {200, PanelWidth::minimal},
        {299.5, PanelWidth::minimal},    {299.9, PanelWidth::minimal},
        {300, PanelWidth::compact},      {419.99, PanelWidth::compact},
        {420, PanelWidth::regular},      {620, PanelWidth::regular},
    };
    for (auto [width, expected] : rows) EXPECT_EQ(widthClass(width), expected) << width;
}

TEST(backdrop, material_is_forced_only_by_exact_names) {
    const std::vector<std::pair<const char*, std::optional<Material>>> rows = {
        {nullptr, std::nullopt},       {"", std::nullopt},
        {"HUD", std::nullopt},         {"hud", Material::hud},
        {"popover", Material::popover}, {"sidebar", Material::sidebar},
        {"menu", Material::menu},      {"under", Material::under},
        {"window", Material::window},  {"header", Material::header},
        {"sheet", Material::sheet},    {"content", Material::content},
        {"menu ", std::nullopt},
    };
    for (auto [text, expected] : rows) EXPECT_EQ(parseMaterial(text), expected) << (text ? text : "(unset)");
}

TEST(backdrop, light_scheme_lays_the_window_colour_over_the_menu_only_when_nothing_is_forced) {
    EXPECT_TRUE(backdrop(Scheme::light, std::nullopt).overlay.has_value());
    EXPECT_NEAR(backdrop(Scheme::light, std::nullopt).overlay->alphaF(), 0.4, 1e-6);
    EXPECT_EQ(backdrop(Scheme::light, std::nullopt).base, backdrop(Scheme::light, Material::menu).base);
    EXPECT_FALSE(backdrop(Scheme::light, Material::menu).overlay.has_value());
    EXPECT_EQ(backdrop(Scheme::dark, std::nullopt), backdrop(Scheme::dark, Material::sidebar));
    EXPECT_NE(backdrop(Scheme::dark, std::nullopt).base, backdrop(Scheme::light, std::nullopt).base);
}

TEST(appearance, forced_value_is_read_in_any_case_and_only_for_three_words) {
    const std::vector<std::pair<const char*, std::optional<Appearance>>> rows = {
        {nullptr, std::nullopt},          {"", std::nullopt},
        {"dark", Appearance::dark},       {"DARK", Appearance::dark},
        {"Light", Appearance::light},     {"system", Appearance::system},
        {"darkish", std::nullopt},        {" dark", std::nullopt},
    };
    for (auto [text, expected] : rows)
        EXPECT_EQ(PanelAppearance::parseForced(text), expected) << (text ? text : "(unset)");
}

TEST(appearance, forced_then_loaded_settings_then_the_value_read_at_start) {
    struct Row {
        const char* name;
        std::optional<Appearance> forced;
        bool settingsLoaded;
        Appearance model;
        Appearance boot;
        Appearance expected;
    };
    const auto dark = Appearance::dark, light = Appearance::light, system = Appearance::system;
    const std::vector<Row> rows = {
        {"forced system beats a saved dark", system, true, dark, dark, system},
        {"forced beats the boot value", light, false, dark, dark, light},
        {"before settings load, the boot value", std::nullopt, false, dark, light, light},
        {"after settings load, the model", std::nullopt, true, system, light, system},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Model m;
        m.settingsLoaded = row.settingsLoaded;
        m.appearance = row.model;
        EXPECT_EQ(PanelAppearance::effective(row.forced, m, row.boot), row.expected);
    }
    EXPECT_TRUE(PanelAppearance::isDark(dark, false));
    EXPECT_FALSE(PanelAppearance::isDark(light, true));
    EXPECT_TRUE(PanelAppearance::isDark(system, true));
    EXPECT_FALSE(PanelAppearance::isDark(system, false));
}
