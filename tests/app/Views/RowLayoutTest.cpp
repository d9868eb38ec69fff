// How a pull request row shares its width: a long author name gives way
// before the title does.
#include <gtest/gtest.h>

#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

TEST(row_layout, a_long_author_is_cut_before_the_title) {
    struct Row {
        std::string author;
        int width;
        bool authorCut;
    };
    const Row table[] = {
        {"ana", 520, false},
        {"a-very-long-account-name-of-some-automation-bot[bot]", 520, true},
        {"a-very-long-account-name-of-some-automation-bot[bot]", 700, true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.author + " at " + std::to_string(row.width));
        Model m = readyModel();
        m.repos = {repo(1, "acme/web", RepoState::ok, 1)};
        m.prs = {pr(1, 7, "Fix the login form for accounts with two factors")};
        m.prs[0].author = row.author;
        ScreenHarness h;
        h.show(m, row.width);
        QAccessibleInterface* title = h.find("Fix the login form for accounts with two factors");
        QAccessibleInterface* author = h.find(QString::fromStdString(row.author));
        ASSERT_NE(title, nullptr);
        ASSERT_NE(author, nullptr);
        // The title keeps at least half of the row; the author at most a quarter.
        EXPECT_GE(title->rect().width(), std::min(row.width / 2, 250));
        EXPECT_LE(author->rect().width(), row.width / 4);
        EXPECT_EQ(qobject_cast<QObject*>(author->object())->property("truncated").toBool(), row.authorCut);
    }
}

}  // namespace
}  // namespace velmar::testing
