// The projection of the model onto the screens' rows: grouping, the number
// column, their words and the preview menu's messages.
#include <gtest/gtest.h>

#include "ScreenHarness.h"
#include "PanelLists.h"

namespace velmar::testing {
namespace {

namespace PanelLists = ui::PanelLists;

TEST(panel_lists, pr_rows_walk_each_group_once) {
    // A pull request before any heading has no group; a group's widest number
    // sizes its number column ("#0" when it has none), and its "more" row
    // stands after its pull requests.
    const std::vector<ListRow> rows = {{pr(9, 1, "orphan")}, {repo(1, "a/one")},  {pr(1, 7, "x")},
                                       {pr(1, 12, "y")},     {MoreRow{1, 3}},     {repo(2, "a/two")},
                                       {repo(3, "a/three")}, {pr(3, 123456, "z")}};
    ui::DiffListModel model(ui::roleNames<PanelLists::PrRoles>());
    model.update(PanelLists::prRows(readyModel(), rows));
    QStringList got;
    for (int row = 0; row < model.count(); ++row) {
        const auto at = [&](const char* role) { return model.get(row, role).toString(); };
        got << at("key") + " " + at("groupIndex") + " " + at("groupRows") + at("rowInGroup") + " " +
                   at("numberTemplate") + at("moreText");
    }
    EXPECT_EQ(got, QStringList({"repo-1 0 2 ", "pr-100007 0 0 #00", "pr-100012 0 1 #00", "more-1 0 2 3 more on GitHub",
                                "repo-2 1 0 ", "repo-3 2 1 ", "pr-423456 2 0 #000000"}));
}

TEST(panel_lists, pr_rows_carry_what_each_delegate_shows_and_says) {
    Model m = readyModel();
    m.repos = {repo(1, "acme/web", RepoState::queued, 3), repo(2, "acme/api", RepoState::ok, 0)};
    m.prs = {pr(1, 7, " \t Fix\u00a0login \n", "https://p.example", PreviewSource::detected), pr(1, 12, "Two")};
    m.prs[0].author = "<b>bob</b>";
    m.hoveredPr = m.prs[1].id;
    const auto rows = PanelLists::prRows(m, m.listRows());
    ASSERT_EQ(rows.size(), 4u);
    ui::DiffListModel model(ui::roleNames<PanelLists::PrRoles>());
    model.update(rows);
    auto at = [&](int row, const char* role) { return model.get(row, role); };

    EXPECT_EQ(at(0, "key").toString(), "repo-1");
    EXPECT_EQ(at(0, "kind").toString(), "header");
    EXPECT_TRUE(at(0, "spinning").toBool()) << "queued spins as loading does";
    EXPECT_EQ(at(0, "countLabel").toString(), "3 open");
    EXPECT_EQ(at(0, "loadingLabel").toString(), "Loading acme/web");
    EXPECT_EQ(at(1, "key").toString(), "pr-100007");
    EXPECT_EQ(at(1, "title").toString(), "Fix\u00a0login");
    // Outside text is isolated, so its direction marks end with it.
    EXPECT_EQ(at(1, "numberTemplate").toString(), "#00");
    EXPECT_EQ(at(1, "authorTooltip").toString(), "by \u2068<b>bob</b>\u2069");
    EXPECT_EQ(at(1, "previewTooltip").toString(), "Open preview (detected pattern)");
    EXPECT_EQ(at(1, "openLabel").toString(), "Open pull request #7");
    EXPECT_EQ(at(1, "previewLabel").toString(), "Open preview for #7");
    EXPECT_TRUE(at(1, "hasPreview").toBool());
    EXPECT_FALSE(at(1, "hovered").toBool());
    EXPECT_TRUE(at(2, "hovered").toBool());
    EXPECT_FALSE(at(2, "hasPreview").toBool());
    EXPECT_EQ(at(3, "groupIndex").toInt(), 1);
    EXPECT_FALSE(at(3, "spinning").toBool());
}

TEST(panel_lists, extras_markers_say_their_state_and_capped_groups_end_with_more) {
    Model m = readyModel();
    m.checks = true;
    m.repos = {repo(1, "acme/web", RepoState::ok, 45)};
    for (int n = 1; n <= 45; ++n) m.prs.push_back(pr(1, n, "t"));
    m.prs[0].checks = ChecksState::passing;
    m.prs[0].review = ReviewState::changesRequested;
    m.prs[0].deploy = DeployState::building;
    m.prs[0].deployOlder = true;
    m.prs[1].checks = ChecksState::failing;
    m.prs[1].review = ReviewState::approved;
    m.prs[1].conflicts = true;
    m.prs[1].deploy = DeployState::ready;
    m.prs[2].checks = ChecksState::running;
    m.prs[2].review = ReviewState::reviewRequired;
    ui::DiffListModel model(ui::roleNames<PanelLists::PrRoles>());
    model.update(PanelLists::prRows(m, m.listRows()));
    ASSERT_EQ(model.rowCount(), 1 + 40 + 1);
    auto at = [&](int row, const char* role) { return model.get(row, role).toString(); };
    const struct {
        int row;
        const char* checks;
        const char* review;
        const char* conflicts;
        const char* deploy;
    } table[] = {
        {1, "Checks passing", "Changes requested", "false", "Deployment building, older commit"},
        {2, "Checks failing", "Approved", "true", "Deployment ready"},
        {3, "Checks running", "Review required", "false", ""},
        {4, "", "", "false", ""},
    };
    for (const auto& r : table) {
        EXPECT_EQ(at(r.row, "checksLabel"), r.checks) << r.row;
        EXPECT_EQ(at(r.row, "reviewLabel"), r.review) << r.row;
        EXPECT_EQ(at(r.row, "conflicts"), r.conflicts) << r.row;
        EXPECT_EQ(at(r.row, "deployLabel"), r.deploy) << r.row;
    }
    EXPECT_EQ(at(41, "kind"), "more");
    EXPECT_EQ(at(41, "key"), "more-1");
    EXPECT_EQ(at(41, "moreText"), "5 more on GitHub");
    EXPECT_EQ(model.get(41, "repoId").toLongLong(), 1);
}

TEST(panel_lists, yours_heading_counts_the_blocked_and_its_rows_name_their_repository) {
    Model m = readyModel();
    m.checks = true;
    m.repos = {repo(1, "acme/web", RepoState::ok, 1)};
    m.prs = {pr(1, 7, "watched")};
    m.yourPrs.emplace();
    for (int n = 1; n <= 5; ++n) {
        PR mine = pr(yoursGroupId, n, "mine");
        mine.id = -n;
        mine.repo = "other/lib";
        mine.checks = n <= 2 ? ChecksState::failing : ChecksState::passing;
        m.yourPrs->push_back(mine);
    }
    ui::DiffListModel model(ui::roleNames<PanelLists::PrRoles>());
    model.update(PanelLists::prRows(m, m.listRows()));
    ASSERT_EQ(model.rowCount(), 1 + 5 + 1 + 1);
    auto at = [&](int row, const char* role) { return model.get(row, role).toString(); };
    EXPECT_EQ(at(0, "name"), "Yours");
    EXPECT_EQ(at(0, "blockedLabel"), "2 blocked");
    EXPECT_EQ(at(0, "headingLabel"), "Yours, 5 open, 2 blocked");
    EXPECT_EQ(at(1, "repoLabel"), "other/lib");
    // A watched repository's group names itself, and its rows do not.
    EXPECT_EQ(at(6, "headingLabel"), "acme/web");
    EXPECT_EQ(at(6, "blockedLabel"), "");
    EXPECT_EQ(at(7, "repoLabel"), "");

    // None blocked: the heading says only how many are open.
    for (auto& p : *m.yourPrs) p.checks = ChecksState::running;
    model.update(PanelLists::prRows(m, m.listRows()));
    EXPECT_EQ(at(0, "blockedLabel"), "");
    EXPECT_EQ(at(0, "headingLabel"), "Yours, 5 open");
}

TEST(panel_lists, browser_rows_mark_the_selection_and_look_each_icon_up_once) {
    Model m = readyModel();
    m.browserMode = BrowserMode::manual;
    m.browsers = {{1, "System default", "", "SD", false, true}, {2, "Google Chrome", "Google Chrome", "GC", true, true},
                  {3, "Opera", "Opera", "OP", false, false}};
    m.selectedBrowser = 2;
    int lookups = 0;
    ui::BrowserIcons icons([&](const std::string& app) -> std::optional<QImage> {
        ++lookups;
        if (app != "Google Chrome") return std::nullopt;
        QImage image(4, 4, QImage::Format_ARGB32);
        image.fill(Qt::blue);
        return image;
    });
    ui::DiffListModel model(ui::roleNames<PanelLists::BrowserRoles>());
    model.update(PanelLists::browserRows(m, icons));
    model.update(PanelLists::browserRows(m, icons));
    ASSERT_EQ(model.count(), 2);
    EXPECT_TRUE(model.get(0, "isDefault").toBool());
    EXPECT_EQ(model.get(0, "iconSource").toString(), "");
    EXPECT_FALSE(model.get(0, "selected").toBool());
    EXPECT_EQ(model.get(1, "iconSource").toString(), "image://browser/Google%20Chrome");
    EXPECT_TRUE(model.get(1, "selected").toBool());
    EXPECT_EQ(lookups, 1) << "the system default needs no lookup, Chrome one";
    EXPECT_FALSE(ui::BrowserIconProvider(icons).requestImage("Google%20Chrome", nullptr, {}).isNull());
}

TEST(panel_lists, preview_menu_items_hold_their_messages) {
    Model m = readyModel();
    m.browsers = {{1, "System default", "", "SD", false, true}, {2, "Firefox", "Firefox", "FI", true, true}};
    m.selectedBrowser = 2;
    const QVariantList menu = PanelLists::previewMenu(m);
    QStringList got;
    for (const QVariant& item : menu) {
        const QVariantMap map = item.toMap();
        const QVariantMap message = map.value("message").toMap();
        got << map.value("kind").toString() + ":" + map.value("title").toString() + ":" +
                   message.value("msg").toString() + ":" + message.value("browser").toString();
    }
    EXPECT_EQ(got, QStringList({"open:Open in Firefox:open_preview:", "separator:::", "open:Open in Firefox:open_preview:2",
                                "separator:::", "copy:Copy preview URL:copy_preview:"}));
}

}  // namespace
}  // namespace velmar::testing
