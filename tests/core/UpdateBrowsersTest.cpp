#include <gtest/gtest.h>

#include <string>

#include "Formats.h"
#include "Json.h"
#include "Model.h"

using namespace velmar;

namespace {

using Shown = std::optional<std::vector<std::string>>;

/// The list as text, one "key:id" per browser, "*" when running, "+" when shown.
std::string describe(const Model& m) {
    std::string out;
    for (const auto& b : m.browsers)
        out += (out.empty() ? "" : " ") + b.key() + ":" + std::to_string(b.id) +
               (b.running ? "*" : "") + (b.shown ? "+" : "");
    return out;
}

Model withHome() {
    Model m;
    m.home = "/home/u";
    return m;
}

Model detectedWith(Model m, std::vector<DetectedBrowser> list) {
    m.browsersDetectedFrom(list);
    return m;
}

/// What the browsers file write must be for the model as it stands.
Effects browsersWrite(const Model& m, const Shown& shown) {
    return m.write(ConfigFile::browsers,
                   Formats::serializeBrowsers(m.browserMode, m.browserPref, shown));
}

}  // namespace

TEST(browser_model, detection_rebuilds_the_list_and_keeps_ids_of_browsers_that_stay) {
    struct Step {
        std::vector<DetectedBrowser> detected;
        std::string expected;
    };
    const Step steps[] = {
        {{{"Safari", true}, {"Arc", false}, {"Safari", false}, {"", true}},
         "@default:1+ Safari:2*+ Arc:3+"},
        {{{"Arc", true}}, "@default:1+ Arc:3*+"},
        {{{"Safari", false}, {"Arc", false}}, "@default:1+ Safari:4+ Arc:3+"},
        {{}, "@default:1+"},
    };
    Model m;
    for (const auto& s : steps) {
        m.browsersDetectedFrom(s.detected);
        EXPECT_EQ(describe(m), s.expected);
        EXPECT_TRUE(m.browsersDetected);
        EXPECT_EQ(m.browsers[0], (Browser{1, "System default", "", "SD", false, true}));
        for (std::size_t i = 1; i < m.browsers.size(); ++i) {
            EXPECT_EQ(m.browsers[i].name, m.browsers[i].app);
            EXPECT_EQ(m.browsers[i].initials, Formats::initials(m.browsers[i].app));
        }
    }
    EXPECT_EQ(m.selectedBrowser, 1);

    // Once the user chose the shown set, a newcomer shows only if it was stored.
    Model manual;
    manual.manualConfigured = true;
    manual.storedShown = {"Arc"};
    manual.browsersDetectedFrom({{"Safari", true}, {"Arc", false}});
    EXPECT_EQ(describe(manual), "@default:1 Safari:2* Arc:3+");
}

TEST(browser_model, selection_prefers_the_stored_wish_then_keeps_then_falls_back) {
    struct Row {
        const char* what;
        BrowserMode mode;
        std::optional<std::string> pref;
        std::optional<std::int64_t> before;
        bool safariOn, arcOn, defaultShown;  // running in open mode, shown in manual
        std::optional<std::int64_t> after;
    };
    const auto open = BrowserMode::open;
    const auto manual = BrowserMode::manual;
    const Row rows[] = {
        {"nothing running selects the default entry", open, std::nullopt, std::nullopt, false,
         false, true, 1},
        {"the preferred browser wins over the current one", open, "Arc", 2, true, true, true, 3},
        {"a quit preferred browser leaves the current one", open, "Arc", 2, true, false, true, 2},
        {"the current one gone: first visible", open, "Arc", 3, true, false, true, 2},
        {"default preferred and shown in manual", manual, "@default", 2, true, true, true, 1},
        {"default preferred never runs in open", open, "@default", std::nullopt, false, true,
         true, 3},
        {"nothing shown in manual: default entry", manual, "Safari", 2, false, false, false, 1},
        {"empty preference matches nothing", manual, "", 9, false, true, true, 1},
    };
    for (const auto& r : rows) {
        Model m;
        m.browserMode = r.mode;
        m.browserPref = r.pref;
        m.selectedBrowser = r.before;
        const bool isOpen = r.mode == open;
        m.browsers = {Browser{1, "System default", "", "SD", false, r.defaultShown},
                      Browser{2, "Safari", "Safari", "SA", isOpen && r.safariOn, !isOpen && r.safariOn},
                      Browser{3, "Arc", "Arc", "AR", isOpen && r.arcOn, !isOpen && r.arcOn}};
        m.resolveSelection();
        EXPECT_EQ(m.selectedBrowser, r.after) << r.what;
        EXPECT_EQ(m.browserPref, r.pref) << r.what;
    }
    Model empty;
    empty.selectedBrowser = 4;
    empty.resolveSelection();
    EXPECT_EQ(empty.selectedBrowser, std::nullopt);
}

TEST(browser_model, first_switch_to_manual_seeds_the_shown_set_from_what_runs) {
    struct Row {
        const char* what;
        std::vector<DetectedBrowser> detected;  // empty: no detection answered yet
        std::string shown;
        bool configured;
    };
    const Row rows[] = {
        {"Safari running hides the others", {{"Safari", true}, {"Arc", false}},
         "@default:1+ Safari:2*+ Arc:3", true},
        {"nothing running shows everything", {{"Safari", false}, {"Arc", false}},
         "@default:1+ Safari:2+ Arc:3+", true},
        {"before detection nothing is seeded", {}, "", false},
    };
    for (const auto& r : rows) {
        Model m = withHome();
        if (!r.detected.empty()) m.browsersDetectedFrom(r.detected);
        m.setBrowserMode(BrowserMode::manual);
        EXPECT_EQ(describe(m), r.shown) << r.what;
        EXPECT_EQ(m.manualConfigured, r.configured) << r.what;
        EXPECT_EQ(m.storedShown, m.shownKeys()) << r.what;
    }

    // What the user ticked survives a round trip through open mode.
    Model m = detectedWith(withHome(), {{"Safari", true}, {"Arc", false}});
    m.setBrowserMode(BrowserMode::manual);
    m.toggleBrowserShown(3);
    m.setBrowserMode(BrowserMode::open);
    m.browsersDetectedFrom({{"Safari", false}, {"Arc", false}});
    m.setBrowserMode(BrowserMode::manual);
    EXPECT_EQ(describe(m), "@default:1+ Safari:2+ Arc:3+");
}

TEST(browser_model, user_changes_give_their_effects_in_order) {
    const Model base = detectedWith(withHome(), {{"Safari", true}, {"Arc", false}});

    Model same = base;
    EXPECT_TRUE(same.setBrowserMode(BrowserMode::open).empty());
    EXPECT_EQ(same, base);

    Model toManual = base;
    const auto manualEffects = toManual.setBrowserMode(BrowserMode::manual);
    EXPECT_EQ(manualEffects, browsersWrite(toManual, toManual.shownKeys()));

    Model backToOpen = toManual;
    const auto openEffects = backToOpen.setBrowserMode(BrowserMode::open);
    Effects expected{effect::DetectBrowsers{}};
    for (const auto& e : browsersWrite(backToOpen, backToOpen.shownKeys())) expected.push_back(e);
    EXPECT_EQ(openEffects, expected);

    Model unknown = base;
    EXPECT_TRUE(unknown.toggleBrowserShown(42).empty());
    EXPECT_EQ(unknown, base);

    // Hiding every entry falls back to the default entry and stores an empty set.
    Model hideAll = toManual;
    hideAll.toggleBrowserShown(1);
    const auto hideEffects = hideAll.toggleBrowserShown(2);
    EXPECT_EQ(hideAll.selectedBrowser, 1);
    EXPECT_EQ(hideAll.storedShown, std::vector<std::string>{});
    EXPECT_EQ(hideEffects, browsersWrite(hideAll, std::vector<std::string>{}));

    struct Select {
        std::int64_t id;
        std::string pref;
    };
    for (const auto& [id, pref] : {Select{3, "Arc"}, Select{1, "@default"}, Select{42, ""}}) {
        Model m = base;
        const auto effects = m.selectBrowser(id);
        EXPECT_EQ(m.selectedBrowser, id);
        EXPECT_EQ(m.browserPref, pref);
        EXPECT_EQ(effects, browsersWrite(m, std::nullopt));
    }
}

TEST(browser_model, the_file_keeps_the_stored_set_until_detection_answers) {
    struct Row {
        bool configured, detected;
        Shown shown;
    };
    const Row rows[] = {
        {false, false, std::nullopt},
        {false, true, std::nullopt},
        {true, false, std::vector<std::string>{"Arc", "Zen"}},
        {true, true, std::vector<std::string>{"@default"}},
    };
    for (const auto& r : rows) {
        Model m = withHome();
        m.browsers = {Browser{1, "System default", "", "SD", false, true},
                      Browser{2, "Arc", "Arc", "AR", false, false}};
        m.manualConfigured = r.configured;
        m.browsersDetected = r.detected;
        m.storedShown = {"Arc", "Zen"};
        EXPECT_EQ(m.writeBrowsers(), browsersWrite(m, r.shown));
    }
}
