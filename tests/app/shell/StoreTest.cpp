// The Store against the core's own step, and the panel's change notifications.
#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QSignalSpy>
#include <set>

#include "Store.h"
#include "PanelModel.h"

using namespace velmar;

namespace {

using Change = std::function<void(Model&)>;

std::string answerFor(const std::string& slug, const std::string& title) {
    return slug + "\n1\t" + title + "\tana\tfix\tfalse\thttps://github.com/" + slug + "/pull/1\t\n";
}

}  // namespace

// The store changes its model in place and keeps the model before for the
// comparison: whatever the messages, it must hold exactly what the core's
// `update` folds them into, tell observers exactly when that differs, and
// then perform the effects in order.
TEST(store_send, follows_the_core_and_reports_exactly_the_real_changes) {
    const std::vector<std::vector<Msg>> scripts = {
        // Start-up, a refresh whose second round answers the same, idle ticks.
        {msg::HomeResolved{"/h"}, msg::FileRead{ConfigFile::repos, "acme/web\t\nacme/api\t\n"},
         msg::PathResolved{"/usr/bin"}, msg::PrsFetched{answerFor("acme/web", "Fix"), true},
         msg::PrsFetched{answerFor("acme/api", "Add"), true}, msg::AutoTick{}, msg::Refresh{},
         msg::PrsFetched{answerFor("acme/web", "Fix"), true},
         msg::PrsFetched{answerFor("acme/api", "Add"), true}, msg::DetectTick{}, msg::OnboardingTick{}},
        // Changes and their no-op repeats in turn.
        {msg::HoverPr{7}, msg::HoverPr{7}, msg::UnhoverPr{8}, msg::UnhoverPr{7}, msg::OpenAdd{},
         msg::AddText{"a"}, msg::AddText{"a"}, msg::AddText{"ab"}, msg::CloseAdd{}, msg::CloseAdd{},
         msg::GhChecked{0}, msg::GhChecked{0}, msg::GhChecked{1}},
        // An answer that matches nothing, then one that does, then a title changed.
        {msg::HomeResolved{"/h"}, msg::FileRead{ConfigFile::repos, "acme/web\t\n"},
         msg::PrsFetched{answerFor("acme/gone", "Old"), true}, msg::PathResolved{"/usr/bin"},
         msg::PrsFetched{answerFor("acme/web", "One"), true}, msg::Refresh{},
         msg::PrsFetched{answerFor("acme/web", "Two"), true}, msg::Refresh{},
         msg::PrsFetched{answerFor("acme/web", "Two"), false}},
    };
    for (const auto& script : scripts) {
        Store store(nullptr);
        Model reference;
        int changes = 0;
        QObject::connect(&store, &Store::changed, [&] { ++changes; });
        for (std::size_t i = 0; i < script.size(); ++i) {
            auto [next, effects] = update(reference, script[i]);
            const int expected = changes + (next == reference ? 0 : 1);
            reference = std::move(next);
            Effects performed;
            store.setPerform([&](const Effect& e) {
                EXPECT_EQ(changes, expected) << "observers see the new model before any effect";
                performed.push_back(e);
            });

            store.send(script[i]);

            EXPECT_EQ(changes, expected) << "message " << i;
            EXPECT_TRUE(store.model() == reference) << "message " << i;
            EXPECT_EQ(performed, effects) << "message " << i;
        }
    }
    // With nothing to perform them, effects are dropped.
    Store unperformed(nullptr);
    unperformed.send(msg::Boot{});
    EXPECT_TRUE(unperformed.model() == update(Model{}, msg::Boot{}).first);
}

TEST(panel_model, notifies_only_the_properties_whose_value_changed) {
    const std::vector<std::pair<Change, std::set<std::string>>> rows = {
        {[](Model& m) { m.screen = Screen::manage; }, {"onSettingsChanged", "windowTitleChanged"}},
        {[](Model& m) { m.autoRefresh = true; }, {"autoRefreshChanged", "autoFooterChanged"}},
        {[](Model& m) { m.repos.push_back(Repo{.id = 1, .name = "a/b"}); }, {"hasReposChanged"}},
        {[](Model& m) { m.gh = GhStatus::missing; },
         {"ghCheckingChanged", "ghMissingChanged", "showsGhBannerChanged", "ghInstalledStatusChanged",
          "ghSignedInStatusChanged", "ghFooterChanged"}},
        {[](Model& m) { m.gh = GhStatus::ok; },
         {"ghCheckingChanged", "ghSignedInChanged", "ghInstalledChanged", "ghInstalledStatusChanged",
          "ghSignedInStatusChanged"}},
        {[](Model& m) { m.browsers.push_back(Browser{.id = 1, .name = "Firefox", .app = "Firefox", .running = true}); },
         {"previewMenuChanged"}},
        {[](Model& m) { m.addText = "x"; }, {"addTextChanged"}},
        {[](Model& m) { m.addText = "a/b"; }, {"addTextChanged", "canSubmitAddChanged"}},
        {[](Model& m) { m.browserMode = BrowserMode::manual; }, {"browserModeChanged", "browserFooterChanged"}},
        {[](Model& m) { m.nextRepoId = 9; }, {}},
    };
    for (auto [change, expected] : rows) {
        const Model before;
        ui::BrowserIcons icons([](const std::string&) { return std::nullopt; });
        ui::PanelModel panel(before, [](const Msg&) {}, icons);
        std::vector<std::unique_ptr<QSignalSpy>> spies;
        const QMetaObject* meta = panel.metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                spies.push_back(std::make_unique<QSignalSpy>(&panel, meta->method(i)));
        // The footer's wording is the core's; it only has to be told when it changes.
        Model after = before;
        change(after);
        if (ui::PanelModel::derive(before).footerText != ui::PanelModel::derive(after).footerText)
            expected.insert("footerTextChanged");

        panel.show(after);

        std::set<std::string> notified;
        for (const auto& spy : spies)
            if (spy->count() > 0)
                notified.insert(spy->signal().chopped(2).toStdString() + (spy->count() > 1 ? " twice" : ""));
        EXPECT_EQ(notified, expected);
    }
}

TEST(panel_model, window_title_names_settings_only_off_onboarding) {
    const std::vector<std::tuple<Screen, bool, bool, const char*>> rows = {
        {Screen::list, true, true, "Velmar"},      {Screen::manage, true, true, "Settings"},
        {Screen::manage, false, false, "Settings"}, {Screen::manage, true, false, "Velmar"},
    };
    for (auto [screen, settingsLoaded, onboarded, title] : rows) {
        Model m;
        m.screen = screen;
        m.settingsLoaded = settingsLoaded;
        m.onboarded = onboarded;
        EXPECT_EQ(ui::PanelModel::derive(m).windowTitle, QString::fromUtf8(title));
    }
}
