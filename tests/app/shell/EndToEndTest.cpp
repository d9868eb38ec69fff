// The whole application in-process: the delegate, the effect runner, the real
// gh against the fake GitHub server and the real screens. A user who is
// signed in sees the pull requests of the watched repository, with previews
// from a deploy comment and from the pattern learned of it, and can copy a
// link from a row's menu.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickView>
#include <QTest>

#include "AppDelegate.h"
#include "EffectsTestSupport.h"
#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

const char* fixture = R"JSON({
  "token": "good-token", "login": "ana", "owned": [], "shared": [],
  "repos": {
    "acme/web": [
      {"number": 12, "title": "Add login", "author": "alice", "branch": "feat/login",
       "comments": [{"author": "railway-app", "body": "[Web](https://web-pr-12.up.railway.app)"}]},
      {"number": 9, "title": "WIP", "author": "carol", "branch": "wip", "draft": true}]
  }
})JSON";

TEST(end_to_end, the_list_shows_what_gh_answers_and_a_menu_copies_a_link) {
    FakeGitHub server;
    std::string why;
    if (!server.start(fixture, why)) GTEST_SKIP() << why;
    ScratchHome home("acme/web\t\n", {{"VELMAR_SNAPSHOT", std::nullopt}, {"VELMAR_DEBUG_SEND", std::nullopt},
                                       {"XDG_DATA_DIRS", "/nonexistent"}, {"XDG_DATA_HOME", "/nonexistent"}});
    writeFile(home.config("settings.tsv"), "auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n");
    server.exportEnvironment("good-token");

    AppDelegate delegate;
    delegate.start();
    QQuickView& window = *delegate.window();
    ASSERT_TRUE(waitUntil([&] { return findAccessible(window, "Open pull request #12") != nullptr; }, 60))
        << "footer: " << delegate.store().model().footerText();
    EXPECT_NE(findAccessible(window, "Open preview for #12"), nullptr);
    EXPECT_NE(findAccessible(window, "Open pull request #9"), nullptr);
    // #9 has no deploy comment: its preview comes from the pattern learned from #12.
    ASSERT_NE(findAccessible(window, "Open preview for #9"), nullptr);
    EXPECT_EQ(findAccessible(window, "Open preview for #9")->text(QAccessible::Description),
              "Open preview (detected pattern)");
    EXPECT_NE(findAccessible(window, "2 open"), nullptr);

    const QPoint link = window.mapFromGlobal(findAccessible(window, "Open pull request #12")->rect().center());
    QTest::mouseClick(&window, Qt::RightButton, {}, link);
    ASSERT_TRUE(waitUntil([&] { return findAccessible(window, "Copy link") != nullptr; }, 5));
    ASSERT_TRUE(pressAccessible(window, "Copy link"));
    ASSERT_TRUE(waitUntil([&] { return QGuiApplication::clipboard()->text().endsWith("/pull/12"); }, 5))
        << QGuiApplication::clipboard()->text().toStdString();
    EXPECT_TRUE(waitUntil([&] {
        return delegate.store().model().footerText().ends_with("| Copied link to clipboard");
    }, 5)) << delegate.store().model().footerText();
}

}  // namespace
}  // namespace velmar::testing
