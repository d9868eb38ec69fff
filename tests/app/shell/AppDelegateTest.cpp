// The windowed application in-process, offscreen, as an onboarded user (the
// onboarding screen would take the header away): the menu's items and keys,
// the keys reaching the core, and which placements count as moves.
#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include "AppDelegate.h"
#include "EffectsTestSupport.h"

using namespace velmar;
using namespace velmar::testing;

class AppDelegateTest : public ::testing::Test {
protected:
    void SetUp() override {
        writeFile(home.config("settings.tsv"), "auto\t0\nview\tlist\nonboarded\t1\nappearance\tdark\n");
        // A frame, but not UTF-8 as a whole: read as no window file at all.
        writeFile(home.config("window.tsv"), "x\t40\ny\t30\nwidth\t360\nheight\t480\n\xff\n");
        // The login shell hands out a search path whose gh answers nothing
        // at once, so no test here reaches for the network.
        home.scratch.stub("gh", "exit 0");
        const std::string shell = home.scratch.stub("shell", "printf '__VELMAR_PATH__%s__VELMAR_END__' " + bin());
        qputenv("SHELL", QByteArray::fromStdString(shell + "/shell"));
        delegate.start();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(delegate.window()));
    }
    const Model& model() { return delegate.store().model(); }
    std::string bin() const { return home.scratch.path("bin"); }

    ScratchHome home{""};
    AppDelegate delegate;
};

TEST_F(AppDelegateTest, moves_and_resizes_are_reported_only_after_start_up) {
    QQuickView* window = delegate.window();
    // A frame drawn: the placements of start-up have been handled.
    QSignalSpy drawn(window, &QQuickWindow::frameSwapped);
    window->requestUpdate();
    ASSERT_TRUE(drawn.wait(5000));
    EXPECT_EQ(model().lastFrame, std::nullopt) << "no saved frame, and the start-up centring is no move";

    window->setFramePosition(QPoint(50, 60));
    ASSERT_TRUE(QTest::qWaitFor([&] { return model().lastFrame.has_value(); }, 2000));
    EXPECT_EQ(*model().lastFrame, (WindowFrame{50, 60, 620, 760}));

    window->resize(300, 400);
    ASSERT_TRUE(QTest::qWaitFor([&] { return model().lastFrame->width == 300; }, 2000));
    EXPECT_EQ(*model().lastFrame, (WindowFrame{50, 60, 300, 400}));
}

// The saved frame above is not UTF-8: the first move writes over it, and the
// user's file is kept beside first, with a word in the footer.
TEST_F(AppDelegateTest, a_file_that_could_not_be_read_is_kept_before_the_first_save) {
    const QString kept = QString::fromStdString(home.config("window.tsv.unreadable"));
    QObject* panel = delegate.window()->rootObject()->property("panel").value<QObject*>();
    ASSERT_NE(panel, nullptr);
    EXPECT_FALSE(QFile::exists(kept)) << "kept before any save";
    delegate.window()->setFramePosition(QPoint(70, 80));
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(kept); }, 5000));
    QFile file(kept);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().endsWith("\xff\n"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return panel->property("footerText").toString() == "Could not read window.tsv; kept it as window.tsv.unreadable";
    }, 2000)) << panel->property("footerText").toString().toStdString();
}

// The window-wide keys are shortcuts of the whole application: Ctrl+Comma
// opens the settings and Escape leaves them, but a focused text field still
// gets its editing keys, and Escape in the add field closes only the popover.
TEST_F(AppDelegateTest, window_keys_move_between_the_screens_and_a_focused_field_keeps_its_editing_keys) {
    QQuickView* window = delegate.window();
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(model().screen, Screen::list);
    QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_EQ(model().screen, Screen::manage);
    delegate.store().send(msg::OpenAdd{});
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->activeFocusItem() != nullptr &&
                                             window->activeFocusItem()->inherits("QQuickTextInput"); }, 2000));
    const auto type = [&](const char* text) {
        for (const char* c = text; *c != 0; ++c) QTest::keyClick(window, *c);
    };
    struct Step {
        Qt::Key key;  // 0: type `text` instead
        Qt::KeyboardModifiers modifiers;
        const char* text;
        const char* after;
    };
    const Step steps[] = {
        {Qt::Key(0), {}, "acme/web", "acme/web"},
        {Qt::Key_Home, {}, "", "acme/web"},
        {Qt::Key(0), {}, "x", "xacme/web"},
        {Qt::Key_End, {}, "", "xacme/web"},
        {Qt::Key_Left, {}, "", "xacme/web"},
        {Qt::Key(0), {}, "y", "xacme/weyb"},
        {Qt::Key_A, Qt::ControlModifier, "", "xacme/weyb"},
        {Qt::Key_C, Qt::ControlModifier, "", "xacme/weyb"},
        {Qt::Key_Right, {}, "", "xacme/weyb"},
        {Qt::Key_V, Qt::ControlModifier, "", "xacme/weybxacme/weyb"},
        {Qt::Key_Z, Qt::ControlModifier, "", "xacme/weyb"},
        {Qt::Key_A, Qt::ControlModifier, "", "xacme/weyb"},
        {Qt::Key_X, Qt::ControlModifier, "", ""},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(std::string(step.text) + " / key " + std::to_string(step.key));
        if (step.key == 0) type(step.text);
        else QTest::keyClick(window, step.key, step.modifiers);
        EXPECT_EQ(model().addText, step.after);
    }
    EXPECT_EQ(model().screen, Screen::manage);
    EXPECT_TRUE(model().addOpen);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(model().addOpen);
    EXPECT_EQ(model().screen, Screen::manage) << "Escape went past the popover";
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(model().screen, Screen::list);
}

// From the settings screen alone: a repository added by typing, given a
// pattern in its editor, and both in the stored file.
TEST_F(AppDelegateTest, a_repository_added_and_given_a_pattern_is_stored) {
    QQuickView* window = delegate.window();
    QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
    const auto typeInto = [&](const char* text) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->activeFocusItem() != nullptr &&
                                                 window->activeFocusItem()->inherits("QQuickTextInput"); }, 2000));
        for (const char* c = text; *c != 0; ++c) QTest::keyClick(window, *c);
        QTest::keyClick(window, Qt::Key_Return);
    };
    const auto stored = [&] { return readFile(home.config("repos.tsv")); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return model().pathResolved; }, 3000));
    ASSERT_EQ(model().path, bin()) << "a real gh would be run";
    delegate.store().send(msg::OpenAdd{});
    typeInto("acme/web");
    EXPECT_FALSE(model().addOpen);
    ASSERT_TRUE(QTest::qWaitFor([&] { return stored() == "acme/web\t\n"; }, 3000)) << stored();

    delegate.store().send(msg::EditPattern{model().repos.at(0).id});
    typeInto("https://web-{number}.example.com");
    EXPECT_FALSE(model().editingRepo.has_value());
    ASSERT_TRUE(QTest::qWaitFor([&] { return stored() == "acme/web\thttps://web-{number}.example.com\n"; }, 3000))
        << stored();
}
