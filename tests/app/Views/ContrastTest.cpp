// The theme's colours against what they are drawn on, by the WCAG contrast
// ratio: text that carries information at 4.5:1, controls, marks and icons at
// 3:1, in both schemes; under increased contrast text at 7:1.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

#include "Theme.h"

using namespace velmar::ui;

namespace {

// `top` laid over the opaque `under`, as the renderer blends it.
QColor over(const QColor& top, const QColor& under) {
    const double a = top.alphaF();
    return QColor::fromRgbF(float(top.redF() * a + under.redF() * (1 - a)),
                            float(top.greenF() * a + under.greenF() * (1 - a)),
                            float(top.blueF() * a + under.blueF() * (1 - a)));
}

double luminance(const QColor& c) {
    const auto channel = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// The panel's own backdrop, as drawn: the base and any overlay.
QColor panelBackdrop(Scheme scheme) {
    const Backdrop b = backdrop(scheme, std::nullopt);
    return b.overlay ? over(*b.overlay, b.base) : b.base;
}

// The theme as the panel sets it up for `scheme`.
std::unique_ptr<Theme> themed(Scheme scheme, bool increasedContrast = false) {
    auto theme = std::make_unique<Theme>(std::nullopt);
    theme->setDark(scheme == Scheme::dark);
    theme->setIncreasedContrast(increasedContrast);
    return theme;
}

QColor window(Scheme scheme) { return themed(scheme)->windowBackground(); }

// The text of a pill over its own background over `under`.
std::pair<QColor, QColor> pillOn(PillRole role, Scheme scheme, bool contrast, const QColor& under) {
    const PillColors c = pillColors(role, false, scheme, contrast);
    const QColor background = over(c.background, under);
    return {over(c.foreground, background), background};
}

struct Pair {
    const char* what;
    double minimum;
    // Foreground and background, both opaque, for a scheme and contrast setting.
    std::function<std::pair<QColor, QColor>(Scheme, bool)> colours;
};

std::function<std::pair<QColor, QColor>(Scheme, bool)> level(Level l, bool onWindow = false) {
    return [=](Scheme s, bool hc) {
        const QColor under = onWindow ? window(s) : panelBackdrop(s);
        return std::pair{over(foreground(l, s, hc), under), under};
    };
}

std::function<std::pair<QColor, QColor>(Scheme, bool)> pill(PillRole role) {
    return [=](Scheme s, bool hc) { return pillOn(role, s, hc, panelBackdrop(s)); };
}

std::function<std::pair<QColor, QColor>(Scheme, bool)> mark(std::function<QColor(Scheme)> colour) {
    return [=](Scheme s, bool) { return std::pair{colour(s), panelBackdrop(s)}; };
}

const Pair text[] = {
    {"titles and names (primary)", 4.5, level(Level::primary)},
    {"authors, captions, footer (secondary)", 4.5, level(Level::secondary)},
    {"\"No preview URL\", \"Detected\", placeholders (tertiary)", 4.5, level(Level::tertiary)},
    {"secondary in a popover or menu", 4.5, level(Level::secondary, true)},
    {"tertiary in a popover or menu", 4.5, level(Level::tertiary, true)},
    {"the \"failed\" pill", 4.5, pill(PillRole::destructive)},
    {"the \"draft\" pill", 4.5, pill(PillRole::warning)},
    {"an info pill", 4.5, pill(PillRole::info)},
    {"links: pull request numbers, \"more on GitHub\"", 4.5,
     [](Scheme s, bool hc) { return std::pair{themed(s, hc)->link(), panelBackdrop(s)}; }},
    {"white on a filled pill (the group's count)", 4.5, [](Scheme s, bool hc) {
         const PillColors c = pillColors(PillRole::accent, true, s, hc);
         const QColor background = over(c.background, panelBackdrop(s));
         return std::pair{over(c.foreground, background), background};
     }},
    {"white on the default button", 4.5,
     [](Scheme s, bool hc) { return std::pair{QColor(Qt::white), themed(s, hc)->tintFill()}; }},
};

const Pair controls[] = {
    {"a switch's track when off (tertiary)", 3, level(Level::tertiary)},
    {"a switch's track when on, links, the focus ring (accent)", 3, mark(accent)},
    {"the focus ring against its inner line", 3, [](Scheme s, bool) { return std::pair{accent(s), window(s)}; }},
    {"failing checks and failed deployments", 3, mark(destructive)},
    {"passing checks", 3, mark(success)},
    {"warning marks", 3, mark([](Scheme s) { return s == Scheme::dark ? warning(s) : warningEmphasis(); })},
    {"info marks", 3, mark(info)},
    {"header and list icons (secondary)", 3, level(Level::secondary)},
};

TEST(contrast, every_pair_of_the_theme_reaches_its_minimum_in_both_schemes) {
    for (Scheme scheme : {Scheme::light, Scheme::dark}) {
        for (bool increased : {false, true}) {
            for (const auto& [table, upTo] : {std::pair{std::begin(text), std::end(text)},
                                              std::pair{std::begin(controls), std::end(controls)}}) {
                for (const Pair* p = table; p != upTo; ++p) {
                    const auto [fg, bg] = p->colours(scheme, increased);
                    // Under increased contrast text goes from 4.5:1 to 7:1.
                    const double minimum = increased && p->minimum == 4.5 && table == std::begin(text) ? 7 : p->minimum;
                    EXPECT_GE(contrast(fg, bg), minimum)
                        << p->what << (scheme == Scheme::dark ? ", dark" : ", light")
                        << (increased ? ", increased contrast" : "") << ": " << fg.name().toStdString() << " on "
                        << bg.name().toStdString();
                }
            }
        }
    }
}

TEST(contrast, increased_contrast_only_ever_strengthens_the_levels) {
    for (Scheme scheme : {Scheme::light, Scheme::dark})
        for (Level l : {Level::primary, Level::secondary, Level::tertiary, Level::quaternary}) {
            const QColor under = panelBackdrop(scheme);
            EXPECT_GT(contrast(over(foreground(l, scheme, true), under), under),
                      contrast(over(foreground(l, scheme, false), under), under))
                << int(l) << (scheme == Scheme::dark ? " dark" : " light");
        }
}

}  // namespace
