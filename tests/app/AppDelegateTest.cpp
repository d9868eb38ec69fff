// The windowed application in-process, offscreen: the menu's items and keys,
// and that the keys reach the core from the window whatever has focus.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QQuickView>
#include <QTemporaryDir>
#include <QTest>

#include "AppDelegate.h"

using namespace velmar;

namespace {

QAction* findItem(const AppDelegate& delegate, const QString& title) {
    for (const MenuSection& section : delegate.mainMenu())
        for (QAction* action : section.items)
            if (action->text() == title) return action;
    return nullptr;
}

class AppDelegateTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        qputenv("VELMAR_HOME", home.path().toUtf8());
        // An onboarded user: the onboarding screen would take the header away.
        ASSERT_TRUE(QDir(home.path()).mkpath(".config/velmar"));
        QFile settings(home.filePath(".config/velmar/settings.tsv"));
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write("auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n");
        settings.close();
        delegate = std::make_unique<AppDelegate>();
        delegate->start();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(delegate->window()));
    }
    void TearDown() override { delegate.reset(); }

    QTemporaryDir home;
    std::unique_ptr<AppDelegate> delegate;
};

}  // namespace

TEST_F(AppDelegateTest, main_menu_has_four_submenus_with_their_keys) {
    std::vector<QString> titles;
    for (const MenuSection& section : delegate->mainMenu()) titles.push_back(section.title);
    EXPECT_EQ(titles, (std::vector<QString>{"Velmar", "Edit", "View", "Window"}));

    struct Row {
        const char* title;
        const char* key;
        bool enabled;
    };
    const std::vector<Row> rows = {
        {"Check for Updates\u2026", "", false},
        {"Quit Velmar", "Ctrl+Q", true},
        {"Refresh", "Ctrl+R", true},
        {"Settings\u2026", "Ctrl+,", true},
        {"Minimize", "Ctrl+M", true},
        {"Close", "Ctrl+W", true},
    };
    for (const Row& row : rows) {
        QAction* item = findItem(*delegate, QString::fromUtf8(row.title));
        ASSERT_NE(item, nullptr) << row.title;
        EXPECT_EQ(item->shortcut(), QKeySequence(QString::fromUtf8(row.key))) << row.title;
        EXPECT_EQ(item->isEnabled(), row.enabled) << row.title;
    }
}

TEST_F(AppDelegateTest, settings_key_and_escape_move_between_the_screens) {
    QQuickView* window = delegate->window();
    EXPECT_EQ(delegate->store().model().screen, Screen::list);
    QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(delegate->store().model().screen, Screen::manage);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(delegate->store().model().screen, Screen::list);
    // On the list Escape has nothing to leave.
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(delegate->store().model().screen, Screen::list);
}

TEST_F(AppDelegateTest, window_starts_at_the_default_size_and_keeps_its_minimum) {
    QQuickView* window = delegate->window();
    EXPECT_EQ(window->size(), QSize(620, 760));
    EXPECT_EQ(window->minimumSize(), QSize(200, 320));
    EXPECT_EQ(window->title(), "Velmar");
}

TEST_F(AppDelegateTest, moves_are_reported_only_after_start_up) {
    QQuickView* window = delegate->window();
    // The start-up placements (centring here, with no saved frame) are not moves.
    QTest::qWait(100);
    EXPECT_EQ(delegate->store().model().lastFrame, std::nullopt);

    window->setFramePosition(QPoint(50, 60));  // the stored corner is the outer one
    ASSERT_TRUE(QTest::qWaitFor([&] { return delegate->store().model().lastFrame.has_value(); }, 2000));
    EXPECT_EQ(*delegate->store().model().lastFrame, (WindowFrame{50, 60, 620, 760}));

    window->resize(300, 400);
    ASSERT_TRUE(QTest::qWaitFor([&] { return delegate->store().model().lastFrame->width == 300; }, 2000));
    EXPECT_EQ(*delegate->store().model().lastFrame, (WindowFrame{50, 60, 300, 400}));
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
