// First run and the gh warning as they follow the gh status: step marks,
// the checking note, the guidance offered, what each button sends.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;
const QString stepOne = "The GitHub CLI (gh) is installed";
const QString stepTwo = "You're signed in to GitHub";

Model firstRun(GhStatus gh, std::optional<bool> brew = std::nullopt) {
    Model m = readyModel();
    m.onboarded = false;
    m.gh = gh;
    m.brewInstalled = brew;
    return m;
}

TEST(onboarding, follows_the_gh_status) {
    struct Row {
        GhStatus gh;
        std::optional<bool> brew;
        bool installed, signedIn;  // the steps marked done; Continue waits for both
        QStringList shown;         // of what the steps may offer
    };
    const Row table[] = {
        {GhStatus::unknown, std::nullopt, false, false, {"Checking..."}},
        {GhStatus::missing, std::nullopt, false, false, {"Re-checking every few seconds.", "Install instructions"}},
        {GhStatus::missing, true, false, false,
         {"Re-checking every few seconds.", "Copy command brew install gh", "Other ways to install"}},
        {GhStatus::loggedOut, true, true, false, {"Re-checking every few seconds.", "Copy command gh auth login"}},
        {GhStatus::ok, std::nullopt, true, true, {}},
    };
    const QStringList offered = {"Checking...", "Re-checking every few seconds.", "Install instructions",
                                 "Copy command brew install gh", "Other ways to install", "Copy command gh auth login"};
    const auto mark = [](bool done) { return QString(done ? "Done" : "Not done"); };
    ScreenHarness h;
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(jsonText(row.gh)) + (row.brew ? " with brew" : ""));
        h.show(firstRun(row.gh, row.brew), 420);
        ASSERT_NE(h.find(stepOne), nullptr) << h.names().join(" | ").toStdString();
        EXPECT_EQ(h.find(stepOne)->text(QAccessible::Description), mark(row.installed));
        EXPECT_EQ(h.find(stepTwo)->text(QAccessible::Description), mark(row.signedIn));
        // Qt Quick 6.4 reports no disabled state to assistive tools; the item says it.
        ASSERT_NE(h.item("Continue"), nullptr);
        EXPECT_EQ(h.item("Continue")->isEnabled(), row.installed && row.signedIn);
        for (const QString& name : offered) EXPECT_EQ(h.find(name) != nullptr, row.shown.contains(name)) << name.toStdString();
        // The header holds nothing but the drag area.
        for (const char* name : {"Refresh", "Settings", "Auto", "Velmar"}) EXPECT_EQ(h.find(name), nullptr) << name;
    }
}

TEST(onboarding, buttons_send_their_messages) {
    ScreenHarness h;
    h.show(firstRun(GhStatus::missing, true), 420);
    h.takeSent();
    const std::pair<const char*, const char*> table[] = {
        {"Skip for now", R"({"msg":"onboarding_skip"})"},
        {"Copy command brew install gh", R"({"command":"brew install gh","msg":"copy_command"})"},
        {"Other ways to install", R"({"msg":"open_install_page"})"},
    };
    for (auto [control, sent] : table) {
        EXPECT_TRUE(h.press(control)) << control;
        EXPECT_EQ(h.takeSent(), Sent{sent}) << control;
    }
    // Disabled until signed in; then the default action on Return too.
    EXPECT_TRUE(h.press("Continue"));
    EXPECT_EQ(h.takeSent(), Sent{});
    h.setModel(firstRun(GhStatus::ok));
    QTRY_VERIFY(h.item("Continue")->isEnabled());
    EXPECT_TRUE(h.press("Continue"));
    QTest::keyClick(&h.view(), Qt::Key_Return);
    EXPECT_EQ(h.takeSent(), (Sent{R"({"msg":"onboarding_continue"})", R"({"msg":"onboarding_continue"})"}));

    // Return on a focused button is that button's, not the default action.
    QAccessibleInterface* skip = h.find("Skip for now");
    for (int i = 0; i < 10 && !skip->state().focused; ++i) QTest::keyClick(&h.view(), Qt::Key_Tab);
    ASSERT_TRUE(skip->state().focused);
    QTest::keyClick(&h.view(), Qt::Key_Return);
    EXPECT_EQ(h.takeSent(), Sent{R"({"msg":"onboarding_skip"})"});
}

TEST(onboarding, install_button_shortens_its_title_when_narrow) {
    ScreenHarness h;
    h.show(firstRun(GhStatus::missing), 200);
    EXPECT_NE(h.find("Install guide"), nullptr) << h.names().join(" | ").toStdString();
}

TEST(gh_banner, says_what_is_wrong_and_offers_the_step_that_helps) {
    struct Row {
        GhStatus gh;
        const char* title;
        const char* action;
        const char* sent;
    };
    const Row table[] = {
        {GhStatus::missing, "The GitHub CLI isn't installed", "Install instructions", R"({"msg":"open_install_page"})"},
        {GhStatus::loggedOut, "You're signed out of the GitHub CLI", "Copy command",
         R"({"command":"gh auth login","msg":"copy_command"})"},
    };
    ScreenHarness h;
    for (const Row& row : table)
        for (int width : {260, 520}) {
            SCOPED_TRACE(std::string(row.title) + " at " + std::to_string(width));
            Model m = readyModel();
            m.gh = row.gh;
            m.repos = {repo(1, "acme/web")};
            h.show(m, width);
            QAccessibleInterface* banner = h.find(row.title);
            ASSERT_NE(banner, nullptr);
            EXPECT_EQ(banner->role(), QAccessible::AlertMessage);
            h.takeSent();
            EXPECT_TRUE(h.press(row.action));
            EXPECT_EQ(h.takeSent(), Sent{row.sent});
            // The list goes on below it.
            EXPECT_NE(h.find("acme/web"), nullptr);
        }
    Model fine = readyModel();
    h.show(fine);
    EXPECT_EQ(h.find("You're signed out of the GitHub CLI"), nullptr);
}

}  // namespace
}  // namespace velmar::testing
