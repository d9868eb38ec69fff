// The Store's three steps and the panel's change notifications, driven by a
// scripted step function so they do not depend on what `update` decides.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <deque>

#include "Store.h"
#include "Views/PanelModel.h"

using namespace velmar;

namespace {

// A step that replays a queue of (model change, effects) answers.
struct ScriptedStep {
    struct Answer {
        std::function<void(Model&)> change;
        Effects effects;
    };
    std::shared_ptr<std::deque<Answer>> answers = std::make_shared<std::deque<Answer>>();

    std::pair<Model, Effects> operator()(const Model& model, const Msg&) const {
        Model next = model;
        if (answers->empty()) return {next, {}};
        Answer a = answers->front();
        answers->pop_front();
        if (a.change) a.change(next);
        return {next, a.effects};
    }
};

const Effect readRepos = effect::ReadFile{ConfigFile::repos, "/h/.config/velmar/repos.tsv"};
const Effect probe = effect::BrewProbe{std::string("/usr/bin")};
const Effect home = effect::ResolveHome{};

}  // namespace

TEST(store_send, stores_only_real_changes_and_always_performs_effects_in_order) {
    struct Row {
        const char* name;
        std::function<void(Model&)> change;
        Effects effects;
        int expectedSignals;
    };
    const std::vector<Row> rows = {
        {"no change, no effects", nullptr, {}, 0},
        {"no change still performs", nullptr, {readRepos, probe}, 0},
        {"a change is stored", [](Model& m) { m.screen = Screen::manage; }, {}, 1},
        {"a change with effects", [](Model& m) { m.autoRefresh = true; }, {home, readRepos, probe}, 1},
        {"a change to an equal value is none", [](Model& m) { m.screen = Screen::list; }, {probe}, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedStep step;
        step.answers->push_back({row.change, row.effects});
        Store store(step, nullptr);
        Effects performed;
        std::vector<bool> changedBeforeEffect;
        bool changedSeen = false;
        QObject::connect(&store, &Store::changed, [&] { changedSeen = true; });
        store.setPerform([&](const Effect& e) {
            performed.push_back(e);
            changedBeforeEffect.push_back(changedSeen);
        });
        QSignalSpy spy(&store, &Store::changed);
        Model expected = store.model();
        if (row.change) row.change(expected);

        store.send(msg::Refresh{});

        EXPECT_EQ(spy.count(), row.expectedSignals);
        EXPECT_EQ(performed, row.effects);
        EXPECT_TRUE(store.model() == expected);
        // Observers have seen the new model before any effect starts.
        for (bool seen : changedBeforeEffect) EXPECT_EQ(seen, row.expectedSignals == 1);
    }
}

TEST(store_send, effects_without_a_perform_go_nowhere) {
    ScriptedStep step;
    step.answers->push_back({[](Model& m) { m.onboarded = true; }, {home}});
    Store store(step, nullptr);
    store.send(msg::Boot{});
    EXPECT_TRUE(store.model().onboarded);
}

TEST(panel_model, notifies_only_the_properties_whose_value_changed) {
    struct Row {
        const char* name;
        std::function<void(Model&)> change;
        std::vector<const char*> notified;
    };
    const std::vector<Row> rows = {
        {"screen to manage", [](Model& m) { m.screen = Screen::manage; },
         {"screenChanged", "windowTitleChanged"}},
        {"auto on", [](Model& m) { m.autoRefresh = true; }, {"autoRefreshChanged"}},
        {"settings loaded, onboarding needed",
         [](Model& m) { m.settingsLoaded = true; },
         {"settingsLoadedChanged", "showsOnboardingChanged"}},
        {"repos loaded", [](Model& m) { m.reposLoaded = true; }, {"reposLoadedChanged"}},
        {"a repo appears", [](Model& m) { m.repos.push_back(Repo{.id = 1, .name = "a/b"}); },
         {"hasReposChanged"}},
        {"a field nobody shows", [](Model& m) { m.addText = "x"; }, {}},
    };
    const std::vector<const char*> all = {
        "screenChanged",      "showsOnboardingChanged", "settingsLoadedChanged",
        "autoRefreshChanged", "reposLoadedChanged",     "hasReposChanged",
        "footerTextChanged",  "windowTitleChanged"};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedStep step;
        step.answers->push_back({row.change, {}});
        Store store(step, nullptr);
        ui::PanelModel panel(store);
        std::map<std::string, std::unique_ptr<QSignalSpy>> spies;
        for (const char* signal : all)
            spies[signal] = std::make_unique<QSignalSpy>(
                &panel, (std::string("2") + signal + "()").c_str());

        Model after = store.model();
        row.change(after);
        // The footer's wording is the core's; it only has to be told when it changes.
        const bool footerChanges = ui::PanelModel::derive(store.model()).footerText !=
                                   ui::PanelModel::derive(after).footerText;

        store.send(msg::Refresh{});

        EXPECT_EQ(spies["footerTextChanged"]->count(), footerChanges ? 1 : 0);
        for (const char* signal : all) {
            if (std::string(signal) == "footerTextChanged") continue;
            const bool expected = std::find_if(row.notified.begin(), row.notified.end(),
                                               [&](const char* s) { return std::string(s) == signal; }) !=
                                  row.notified.end();
            EXPECT_EQ(spies[signal]->count(), expected ? 1 : 0) << signal;
        }
    }
}

TEST(panel_model, window_title_names_settings_only_off_onboarding) {
    struct Row {
        Screen screen;
        bool settingsLoaded;
        bool onboarded;
        const char* title;
    };
    // Onboarding shows once the settings are in and the user is not onboarded.
    const std::vector<Row> rows = {
        {Screen::list, true, true, "Velmar"},
        {Screen::manage, true, true, "Settings"},
        {Screen::manage, false, false, "Settings"},
        {Screen::manage, true, false, "Velmar"},
    };
    for (const Row& row : rows) {
        Model m;
        m.screen = row.screen;
        m.settingsLoaded = row.settingsLoaded;
        m.onboarded = row.onboarded;
        EXPECT_EQ(ui::PanelModel::derive(m).windowTitle, QString::fromUtf8(row.title));
    }
}
