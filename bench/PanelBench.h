// The panel as the frame benchmarks need it: the real core and screens,
// offscreen, after a start as the shell makes it (files read, gh signed in,
// the given repositories watched and the first one loading).
#pragma once

#include <QQuickView>
#include <QTest>
#include <cstdio>
#include <string>

#include "SettledCleanup.h"
#include "Store.h"
#include "BrowserIcons.h"
#include "PanelModel.h"
#include "PanelView.h"
#include "Theme.h"

namespace velmar::bench {

struct PanelBench {
    Store store;
    ui::Theme theme{std::nullopt};
    ui::BrowserIcons icons{[](const std::string&) { return std::nullopt; }};
    ui::PanelModel panel{store.model(), [this](const Msg& msg) { store.send(msg); }, icons};
    QQuickView view;
    // As in the application: a quiet moment after the last change collects.
    SettledCleanup cleanup{*view.engine(), std::chrono::seconds(2)};

    /// `repos` is the repos file's text.
    explicit PanelBench(const std::string& repos) {
        QObject::connect(&store, &Store::changed, [this] { panel.show(store.model()); });
        QObject::connect(&store, &Store::changed, &cleanup, &SettledCleanup::changed);
        store.send(msg::HomeResolved{"/nonexistent"});
        store.send(msg::FileRead{ConfigFile::settings, "auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n"});
        store.send(msg::FileRead{ConfigFile::browsers, std::nullopt});
        store.send(msg::FileRead{ConfigFile::repos, repos});
        store.send(msg::PathResolved{"/usr/bin"});
        store.send(msg::GhChecked{0});
    }

    /// Shows the panel 420 by 700 and lets it settle for `settleMs`.
    void show(int settleMs) {
        for (const QString& error : ui::loadPanel(view, panel, theme, icons))
            std::fprintf(stderr, "%s\n", error.toUtf8().constData());
        view.resize(420, 700);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view)) std::fprintf(stderr, "the panel was never exposed\n");
        QTest::qWait(settleMs);
    }
};

}  // namespace velmar::bench
