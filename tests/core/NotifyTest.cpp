// Notifications and the tray icon: what the announcer finds between two
// answers, how the model turns it into notifications (baseline, summary,
// replacement, actions), the switches and their file, and the tray's words.
#include <gtest/gtest.h>

#include "Announce.h"
#include "CoreTest.h"

namespace velmar {
namespace {

using namespace test;
using Announce::Event;
using Announce::Kind;
using Events = std::vector<Event>;

SeenPr seen(std::string repo, std::int64_t number, std::string author = "bo",
            std::optional<ChecksState> checks = std::nullopt) {
    return {std::move(repo), number, std::move(author), checks};
}

TEST(announcer, compares_two_answers) {
    const auto running = ChecksState::running, passing = ChecksState::passing, failing = ChecksState::failing;
    const Seen base{{"o/a", "o/b"}, {}, {seen("o/a", 1), seen("o/a", 2, "ana", running), seen("o/b", 5)},
                    std::vector<SeenPr>{seen("x/y", 9)}};
    struct Row {
        const char* name;
        Seen before, answer;
        Events expected;
        Announce::Switches switches = {};
    };
    const auto with = [&](auto change) {
        Seen s = base;
        change(s);
        return s;
    };
    const auto opened6 = [](Seen& s) { s.prs.push_back(seen("o/b", 6)); };
    const Seen everyKind = with([&](Seen& s) { opened6(s); s.prs[1].checks = failing; s.review->push_back(seen("o/a", 1)); });
    const Row rows[] = {
        {"nothing changed", base, base, {}},
        {"a new pull request", base, with(opened6), {{Kind::opened, "o/b", 6}}},
        {"the viewer's own new pull request is no news", base, with([](Seen& s) { s.prs.push_back(seen("o/b", 6, "ana")); }), {}},
        {"one gone is no news", base, with([](Seen& s) { s.prs.pop_back(); }), {}},
        {"my checks fail", base, with([&](Seen& s) { s.prs[1].checks = failing; }), {{Kind::checksFailed, "o/a", 2}}},
        {"my checks pass", base, with([&](Seen& s) { s.prs[1].checks = passing; }), {{Kind::checksPassed, "o/a", 2}}},
        {"checks that were not running", with([&](Seen& s) { s.prs[1].checks = passing; }),
         with([&](Seen& s) { s.prs[1].checks = failing; }), {}},
        {"checks start again", base, with([&](Seen& s) { s.prs[1].checks = running; }), {}},
        {"someone else's checks", with([&](Seen& s) { s.prs[0].checks = running; }),
         with([&](Seen& s) { s.prs[0].checks = failing; }), {}},
        {"a review request", base, with([](Seen& s) { s.review->push_back(seen("o/a", 1)); }),
         {{Kind::reviewRequested, "o/a", 1}}},
        {"review list unknown before", with([](Seen& s) { s.review.reset(); }), base, {}},
        {"review list unknown now", base, with([](Seen& s) { s.review.reset(); }), {}},
        {"new and asking for review: one event, the review", base,
         with([&](Seen& s) { opened6(s); s.review->push_back(seen("o/b", 6)); }), {{Kind::reviewRequested, "o/b", 6}}},
        {"failed now", base, with([&](Seen& s) {
             s.repos = {"o/a"}; s.failed = {"o/b"}; opened6(s); s.review->push_back(seen("o/b", 7));
         }), {}},
        {"failed before", with([](Seen& s) { s.repos = {"o/a"}; s.failed = {"o/b"}; s.prs.pop_back(); }),
         with([](Seen& s) { s.review->push_back(seen("o/b", 7)); }), {}},
        {"a repository seen for the first time", with([](Seen& s) { s.repos = {"o/a"}; s.prs.pop_back(); }), base, {}},
        {"kinds switched off", base, everyKind, {}, {false, false, false}},
        {"only checks on", base, everyKind, {{Kind::checksFailed, "o/a", 2}}, {false, true, false}},
        {"in order: review requests, then the rows", base,
         with([&](Seen& s) { opened6(s); s.prs[1].checks = passing; s.review->push_back(seen("z/z", 3)); }),
         {{Kind::reviewRequested, "z/z", 3}, {Kind::checksPassed, "o/a", 2}, {Kind::opened, "o/b", 6}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Announce::compare(row.before, row.answer, "ana", row.switches), row.expected) << row.name;
}

TEST(announcer, an_answer_replaces_only_what_it_asked_for) {
    const Seen before{{"o/a", "o/b"}, {"o/c"}, {seen("o/a", 1), seen("o/b", 2)}, std::nullopt};
    const Seen answer{{"o/c"}, {"o/b"}, {seen("o/c", 3)}, std::vector<SeenPr>{}};
    EXPECT_EQ(Announce::merge(before, answer),
              (Seen{{"o/a", "o/c"}, {"o/b"}, {seen("o/a", 1), seen("o/c", 3)}, std::vector<SeenPr>{}}));
}

// ---- The model ----

Json pr(int number, const char* author, const char* checks) {
    return prNode(number, {{"title", "Fix <b> & more " + std::to_string(number)},
                           {"author", {{"login", author}}},
                           {"statusCheckRollup", {{"state", checks}}}});
}

/// One watched repository with notifications on, the baseline not yet taken.
Model notifying() {
    Model m = watching({"acme/web"});
    m.repos[0].pattern = "https://web-{number}.example.com";
    m.apply(msg::SetNotify{true});
    return m;
}

/// Refreshes and answers with these rows (null: the repository failed), with
/// `meanwhile` done while the answer is on its way; the Notify effects of the
/// answer.
std::vector<effect::Notify> announced(Model& m, const Json& rows, void (*meanwhile)(Model&) = nullptr) {
    m.apply(msg::Refresh{});
    if (meanwhile) meanwhile(m);
    const Json data{{"viewer", {{"login", "ana"}}}, {"r0", rows.is_null() ? rows : repoNode(rows)}};
    const Json errors = rows.is_null() ? Json::array({{{"path", {"r0"}}}}) : Json();
    const Effects effects = m.apply(msg::BatchFetched{{"acme/web"}, answer(data, errors), true});
    if (m.fetchInFlight) m.apply(msg::CommentsFetched{"{}", true});
    std::vector<effect::Notify> notes;
    for (const auto& e : effects)
        if (auto* n = std::get_if<effect::Notify>(&e)) notes.push_back(*n);
    return notes;
}

TEST(notifications, baseline_first_then_what_changed) {
    Model m = notifying();
    using Notes = std::vector<effect::Notify>;
    const Json first = Json::array({pr(1, "bo", "SUCCESS"), pr(2, "ana", "PENDING")});
    EXPECT_EQ(announced(m, first), Notes{}) << "the first answer is the baseline";
    EXPECT_EQ(announced(m, first), Notes{});

    Json second = first;
    second.push_back(pr(3, "bo", "SUCCESS"));
    second[1] = pr(2, "ana", "FAILURE");
    EXPECT_EQ(announced(m, second),
              (Notes{{"acme/web#2", "acme/web #2 \u00b7 checks failed", "Fix <b> & more 2",
                      "https://github.com/acme/web/pull/2", "https://web-2.example.com"},
                     {"acme/web#3", "acme/web #3 \u00b7 new pull request", "Fix <b> & more 3",
                      "https://github.com/acme/web/pull/3", "https://web-3.example.com"}}));

    // A failed answer says nothing, and neither does the one after it.
    EXPECT_EQ(announced(m, nullptr), Notes{});
    Json third = second;
    third.push_back(pr(4, "bo", "SUCCESS"));
    EXPECT_EQ(announced(m, third), Notes{});

    // Four at once: one summary instead.
    Json many = third;
    for (int n = 5; n <= 8; ++n) many.push_back(pr(n, "bo", "SUCCESS"));
    EXPECT_EQ(announced(m, many), (Notes{{"summary", "4 pull requests need you",
                                          "acme/web #5 \u00b7 new pull request\nacme/web #6 \u00b7 new pull request\n"
                                          "acme/web #7 \u00b7 new pull request\nacme/web #8 \u00b7 new pull request",
                                          "", ""}}));
}

TEST(notifications, one_live_notification_per_pull_request_and_its_actions) {
    Model m = notifying();
    m.selectedBrowser = 1;
    m.browsers = {Browser{1, "Firefox", "firefox", "Fi", true, true}};
    announced(m, Json::array({pr(2, "ana", "PENDING")}));
    announced(m, Json::array({pr(2, "ana", "FAILURE")}));
    announced(m, Json::array({pr(2, "ana", "PENDING")}));
    ASSERT_EQ(announced(m, Json::array({pr(2, "ana", "SUCCESS")})).size(), 1u);
    EXPECT_EQ(m.notices, (std::vector<Notice>{
                             {"acme/web#2", "https://github.com/acme/web/pull/2", "https://web-2.example.com"}}));

    const std::tuple<const char*, const char*, Effects> rows[] = {
        {"acme/web#2", "default", {effect::OpenURL{"https://github.com/acme/web/pull/2", "firefox"}}},
        {"acme/web#2", "preview", {effect::OpenURL{"https://web-2.example.com", "firefox"}}},
        {"acme/web#2", "other", {}},
        {"acme/web#3", "default", {}},
    };
    for (const auto& [key, action, expected] : rows)
        EXPECT_EQ(m.apply(msg::NotificationAction{key, action}), expected) << key << action;

    m.apply(msg::NotificationClosed{"acme/web#2"});
    EXPECT_FALSE(m.notices);
    EXPECT_TRUE(m.apply(msg::NotificationAction{"acme/web#2", "default"}).empty());
}

TEST(notifications, switches_and_their_file) {
    Model m = notifying();
    const auto file = [](const char* text) { return Effects{written(ConfigFile::extras, text)}; };
    using Switch = std::optional<bool>;
    EXPECT_EQ(std::tie(m.notify, m.notifyNew, m.notifyChecks, m.notifyReview),
              std::tuple(Switch(true), Switch(true), Switch(true), Switch(true)));
    EXPECT_EQ(m.apply(msg::SetNotifyKind{NotifyKind::review, false}),
              file("checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t0\n"));
    EXPECT_EQ(m.apply(msg::SetNotify{false}),
              file("checks\t1\nnotify\t0\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t0\n"));
    EXPECT_TRUE(m.apply(msg::SetNotifyKind{NotifyKind::newPrs, false}).empty()) << "only while on";
    // On again: the kinds stay as the user left them.
    m.apply(msg::SetNotify{true});
    EXPECT_EQ(m.notifyReview, false);
    EXPECT_EQ(m.apply(msg::SetTray{true}),
              file("checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t0\ntray\t1\n"));

    // Read back, the file gives the same switches.
    Model read;
    read.fileRead(ConfigFile::extras, "checks\t1\nnotify\t1\nnotify_new\t1\nnotify_checks\t1\nnotify_review\t0\ntray\t1\n");
    EXPECT_EQ(std::tie(read.checks, read.notify, read.notifyNew, read.notifyChecks, read.notifyReview, read.tray),
              std::tie(m.checks, m.notify, m.notifyNew, m.notifyChecks, m.notifyReview, m.tray));

    // Without checks neither can be turned on, and both are inert.
    Model plain = watching({}, false);
    EXPECT_TRUE(plain.apply(msg::SetNotify{true}).empty());
    EXPECT_TRUE(plain.apply(msg::SetTray{true}).empty());
    m.apply(msg::SetChecks{false});
    EXPECT_FALSE(m.notifyOn());
    EXPECT_FALSE(m.trayOn());
    EXPECT_FALSE(m.seen);
}

TEST(notifications, switched_off_nothing_is_announced_or_kept) {
    Model m = notifying();
    m.apply(msg::SetNotify{false});
    announced(m, Json::array({pr(1, "bo", "SUCCESS")}));
    EXPECT_TRUE(announced(m, Json::array({pr(1, "bo", "SUCCESS"), pr(2, "bo", "SUCCESS")})).empty());
    const Json json = toJson(m);
    EXPECT_FALSE(json.contains("seen"));
    EXPECT_FALSE(json.contains("notices"));

    // Turned on after answers came: the next answer is a baseline again.
    m.apply(msg::SetNotify{true});
    EXPECT_TRUE(announced(m, Json::array({pr(1, "bo", "SUCCESS"), pr(3, "bo", "SUCCESS")})).empty());
}

TEST(notifications, clicked_a_dozen_times_the_switch_takes_a_new_baseline) {
    // Back on after quick clicks, between two answers or while one is on its
    // way: what came in meanwhile is no news, and what comes after is.
    const auto clicks = [](Model& m) {
        for (int i = 0; i < 12; ++i) m.apply(msg::SetNotify{i % 2 == 1});
    };
    for (const bool duringAnswer : {false, true}) {
        Model m = notifying();
        announced(m, Json::array({pr(1, "bo", "SUCCESS")}));
        if (!duringAnswer) clicks(m);
        EXPECT_EQ(announced(m, Json::array({pr(1, "bo", "SUCCESS"), pr(2, "bo", "SUCCESS")}),
                            duringAnswer ? +clicks : nullptr),
                  std::vector<effect::Notify>{})
            << duringAnswer;
        EXPECT_EQ(announced(m, Json::array({pr(1, "bo", "SUCCESS"), pr(2, "bo", "SUCCESS"), pr(3, "bo", "SUCCESS")})),
                  (std::vector<effect::Notify>{{"acme/web#3", "acme/web #3 \u00b7 new pull request",
                                                "Fix <b> & more 3", "https://github.com/acme/web/pull/3",
                                                "https://web-3.example.com"}}))
            << duringAnswer;
    }
}

TEST(tray, counts_and_tooltip) {
    Model m = watching({}, true);
    m.viewer = "ana";
    const auto pr = [](std::int64_t n, std::string author, std::optional<ChecksState> checks,
                       std::optional<ReviewState> review = {}, std::optional<bool> conflicts = {}) {
        return PR{.id = n, .repoId = 1, .repo = "o/r", .number = n, .author = std::move(author), .checks = checks,
                  .review = review, .conflicts = conflicts};
    };
    const std::tuple<std::size_t, std::vector<PR>, const char*> rows[] = {
        {0, {}, "Nothing waits for you"},
        {1, {pr(1, "bo", ChecksState::failing)}, "1 pull request waits for your review"},
        {3, {pr(1, "ana", ChecksState::failing), pr(2, "ana", ChecksState::passing)},
         "3 pull requests wait for your review\nChecks failed on 1 of your pull requests"},
        {0, {pr(1, "ana", ChecksState::failing), pr(2, "ana", ChecksState::failing)},
         "Checks failed on 2 of your pull requests"},
    };
    for (const auto& [waiting, prs, tooltip] : rows) {
        m.reviewPrs = std::vector<PR>(waiting, pr(9, "bo", std::nullopt));
        m.prs = prs;
        EXPECT_EQ(std::pair(m.reviewWaiting(), m.trayTooltip()), std::pair(std::int64_t(waiting), std::string(tooltip)));
    }

    // With the group "Yours" shown, the red mark counts its blocked pull
    // requests, whatever blocks them, and not those of others.
    m.reviewPrs.reset();
    m.prs = {pr(1, "bo", ChecksState::failing)};
    m.yourPrs = std::vector<PR>{pr(2, "ana", ChecksState::passing, ReviewState::changesRequested),
                                pr(3, "ana", std::nullopt, std::nullopt, true), pr(4, "ana", ChecksState::running)};
    EXPECT_EQ(m.myAttentionCount(), 2);
    EXPECT_EQ(m.trayTooltip(), "2 of your pull requests are blocked");
    m.yourPrs = std::vector<PR>{pr(4, "ana", ChecksState::running)};
    EXPECT_EQ(m.trayTooltip(), "Nothing waits for you");
}

}  // namespace
}  // namespace velmar
