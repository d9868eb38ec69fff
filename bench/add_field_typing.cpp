// Times typing in the add field with 500 suggestions: the real panel, the
// real core and its filter, offscreen. For every key press (a letter typed or
// erased) it measures
//   handled   the key event through the field, `send`, `update`, the
//             derived lists and the bindings, until the event returns;
//   rendered  the same, then the scene polished and drawn (a grab of the
//             window forces the frame at once, so no frame pacing is in it);
// and prints the median and the worst of each.
// Usage: add_field_bench [rounds]
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "Model.h"
#include "Store.h"
#include "BrowserIcons.h"
#include "PanelModel.h"
#include "PanelView.h"
#include "Theme.h"

using namespace velmar;
using Clock = std::chrono::steady_clock;

namespace {

// On the settings screen with the add popover open, 250 owned and 250
// shared suggestions and a few watched repositories.
Model seed() {
    Model m;
    m.home = "/home/bench";
    m.settingsLoaded = m.reposLoaded = m.browsersLoaded = m.onboarded = true;
    m.gh = GhStatus::ok;
    m.flash.reset();
    m.screen = Screen::manage;
    m.addOpen = true;
    for (int i = 0; i < 5; ++i) {
        Repo r;
        r.id = i + 1;
        r.name = "acme/watched-" + std::to_string(i);
        r.state = RepoState::ok;
        m.repos.push_back(r);
    }
    m.nextRepoId = 6;
    for (int i = 0; i < 500; ++i)
        m.suggestions.push_back({(i < 250 ? "ana" : "team-" + std::to_string(i % 17)) + "/service-" +
                                     std::to_string(i),
                                 i < 250});
    return m;
}

double ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

void report(const char* what, std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    std::printf("%-9s median %6.2f ms   worst %6.2f ms   (%zu key presses)\n", what,
                samples[samples.size() / 2], samples.back(), samples.size());
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;

    // Boot puts the seeded model in place; everything else is the core's.
    Store store(
        [](Model& model, const Msg& msg) -> Effects {
            if (std::holds_alternative<msg::Boot>(msg)) {
                model = seed();
                return {};
            }
            return model.apply(msg);
        },
        nullptr);
    store.send(msg::Boot{});
    ui::Theme theme(std::nullopt);
    ui::BrowserIcons icons([](const std::string&) { return std::optional<QImage>(); });
    ui::PanelModel panel(store.model(), [&](const Msg& msg) { store.send(msg); }, icons);
    QObject::connect(&store, &Store::changed, [&] { panel.show(store.model()); });
    QQuickView view;
    for (const QString& error : ui::loadPanel(view, panel, theme, icons)) std::fprintf(stderr, "%s\n", qPrintable(error));
    view.resize(360, 620);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) return 1;
    QTest::qWait(700);
    QQuickItem* field = view.activeFocusItem();
    if (field == nullptr || !field->inherits("QQuickTextInput")) {
        std::fprintf(stderr, "the add field has no focus\n");
        return 1;
    }

    // Type a filter that narrows the list step by step, then erase it.
    const std::string filter = "service-12";
    std::vector<double> handled;
    std::vector<double> rendered;
    const auto press = [&](auto&& key) {
        const auto start = Clock::now();
        key();
        handled.push_back(ms(Clock::now() - start));
        (void)view.grabWindow();
        rendered.push_back(ms(Clock::now() - start));
    };
    for (int round = 0; round < rounds; ++round) {
        for (char c : filter) press([&] { QTest::keyClick(&view, c); });
        // "service-12" and "service-120" to "-129" are left.
        if (panel.suggestions()->count() != 11) {
            std::fprintf(stderr, "the filter left %d suggestions\n", panel.suggestions()->count());
            return 1;
        }
        for (std::size_t i = 0; i < filter.size(); ++i) press([&] { QTest::keyClick(&view, Qt::Key_Backspace); });
    }
    if (store.model().addText != "") {
        std::fprintf(stderr, "the field did not reach the core: \"%s\"\n", store.model().addText.c_str());
        return 1;
    }
    report("handled", handled);
    report("rendered", rendered);
    return 0;
}
