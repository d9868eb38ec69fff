#include <gtest/gtest.h>

#include <string>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

using namespace velmar;

namespace {

using Keys = std::vector<std::string>;

/// The list as "key:id" per browser, "*" when running, "+" when shown.
std::string describe(const Model& m) {
    std::string out;
    for (const auto& b : m.browsers)
        out += (out.empty() ? "" : " ") + b.key() + ":" + std::to_string(b.id) + (b.running ? "*" : "") +
               (b.shown ? "+" : "");
    return out;
}

Model detected(std::vector<DetectedBrowser> list) {
    Model m;
    m.home = "/home/u";
    m.browsersDetectedFrom(list);
    return m;
}

Effects browsersWrite(const Model& m, const std::optional<Keys>& shown) {
    return m.write(ConfigFile::browsers, Formats::serializeBrowsers(m.browserMode, m.browserPref, shown));
}

}  // namespace

TEST(browser_model, detection_skips_duplicates_and_blanks_and_keeps_the_default_entry) {
    Model m;
    m.browsersDetectedFrom({{"Safari", true}, {"Arc", false}, {"Safari", false}, {"", true}});
    EXPECT_EQ(describe(m), "@default:1+ Safari:2*+ Arc:3+");
    m.browsersDetectedFrom({});
    EXPECT_EQ(describe(m), "@default:1+");
    EXPECT_EQ(m.browsers[0], (Browser{1, "System default", "", "SD", false, true}));
    EXPECT_EQ(m.selectedBrowser, 1);
}

TEST(browser_model, selection_prefers_the_stored_wish_then_keeps_then_falls_back) {
    // The mode, the stored wish, the selection before, whether Safari, Arc and
    // the default entry are offered (running in open mode, shown in manual),
    // and the selection after.
    using Row = std::tuple<BrowserMode, std::optional<std::string>, std::optional<std::int64_t>, bool, bool, bool,
                           std::optional<std::int64_t>>;
    const auto open = BrowserMode::open, manual = BrowserMode::manual;
    const Row rows[] = {
        {open, std::nullopt, std::nullopt, false, false, true, 1}, {open, "Arc", 3, true, false, true, 2},
        {manual, "@default", 2, true, true, true, 1},             {open, "@default", std::nullopt, false, true, true, 3},
        {manual, "Safari", 2, false, false, false, 1},            {manual, "", 9, false, true, false, 3},
    };
    for (const auto& [mode, pref, before, safari, arc, systemDefault, after] : rows) {
        Model m;
        m.browserMode = mode;
        m.browserPref = pref;
        m.selectedBrowser = before;
        const bool o = mode == open;
        m.browsers = {Browser{1, "System default", "", "SD", false, systemDefault},
                      Browser{2, "Safari", "Safari", "SA", o && safari, !o && safari},
                      Browser{3, "Arc", "Arc", "AR", o && arc, !o && arc}};
        m.resolveSelection();
        EXPECT_EQ(m.selectedBrowser, after) << jsonText(mode) << " " << pref.value_or("-");
    }
}

TEST(browser_model, first_switch_to_manual_seeds_the_shown_set_from_what_runs) {
    Model none = detected({{"Safari", false}, {"Arc", false}});  // nothing runs: all shown
    const Effects effects = none.setBrowserMode(BrowserMode::manual);
    EXPECT_EQ(effects, browsersWrite(none, none.shownKeys()));
    EXPECT_EQ(describe(none), "@default:1+ Safari:2+ Arc:3+");
    EXPECT_EQ(std::pair(none.manualConfigured, none.storedShown), std::pair(true, none.shownKeys()));
    Model early;
    early.setBrowserMode(BrowserMode::manual);
    EXPECT_FALSE(early.manualConfigured);

    // What the user ticked survives a round trip through open mode; a second
    // seeding (nothing runs then) would show everything instead.
    Model m = detected({{"Safari", true}, {"Arc", false}});
    m.setBrowserMode(BrowserMode::manual);
    m.toggleBrowserShown(2);
    const auto toOpen = m.setBrowserMode(BrowserMode::open);
    EXPECT_EQ(toOpen, (Effects{effect::DetectBrowsers{}, browsersWrite(m, m.shownKeys()).at(0)}));
    m.browsersDetectedFrom({{"Safari", false}, {"Arc", false}});
    m.setBrowserMode(BrowserMode::manual);
    EXPECT_EQ(describe(m), "@default:1+ Safari:2 Arc:3");
}

TEST(browser_model, user_changes_and_the_shown_set_written) {
    const Model base = detected({{"Safari", true}, {"Arc", false}});
    Model same = base;
    EXPECT_TRUE(same.setBrowserMode(BrowserMode::open).empty());
    EXPECT_TRUE(same.toggleBrowserShown(42).empty());
    EXPECT_EQ(same, base);

    // Hiding every entry falls back to the default entry and stores an empty set.
    Model hideAll = base;
    hideAll.setBrowserMode(BrowserMode::manual);
    hideAll.toggleBrowserShown(1);
    const auto hidden = hideAll.toggleBrowserShown(2);
    EXPECT_EQ(hidden, browsersWrite(hideAll, Keys{}));
    EXPECT_EQ(hideAll.selectedBrowser, 1);

    for (const auto& [id, pref] : {std::pair<std::int64_t, std::string>{3, "Arc"}, {1, "@default"}, {42, ""}}) {
        Model m = base;
        const Effects effects = m.selectBrowser(id);
        EXPECT_EQ(effects, browsersWrite(m, std::nullopt));
        EXPECT_EQ(std::pair(m.selectedBrowser, m.browserPref), std::pair(std::optional(id), std::optional(pref)));
    }

    const std::tuple<bool, bool, std::optional<Keys>> files[] = {
        {false, true, std::nullopt}, {true, false, Keys{"Arc", "Zen"}}, {true, true, Keys{"@default", "Safari", "Arc"}}};
    for (const auto& [configured, wasDetected, shown] : files) {
        Model m = base;
        m.manualConfigured = configured;
        m.browsersDetected = wasDetected;
        m.storedShown = {"Arc", "Zen"};
        EXPECT_EQ(m.writeBrowsers(), browsersWrite(m, shown));
    }
}
