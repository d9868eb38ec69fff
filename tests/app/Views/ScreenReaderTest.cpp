// A field filled through the accessibility interface, as dictation and voice
// control do, and the placeholder it draws while empty.
#include <gtest/gtest.h>

#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"

namespace velmar::testing {
namespace {

Model adding(const std::string& text) {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.addOpen = true;
    m.addText = text;
    m.suggestions = {{"ana/notes", true}, {"ana/dotfiles", true}, {"team/tools", false}};
    return m;
}

// The placeholder the field draws, if any is shown.
QString drawnPlaceholder(QQuickItem* field) {
    for (QQuickItem* child : field->childItems())
        if (child->isVisible() && child->property("text").toString() == field->property("placeholderText").toString() &&
            child != field)
            return child->property("text").toString();
    return {};
}

TEST(screen_reader, text_set_through_the_accessibility_interface_reaches_the_model) {
    struct Row {
        const char* text;
    };
    const Row table[] = {
        {"dot"},
        {"team/to"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.text);
        ScreenHarness h;
        h.runCore(true);
        h.show(adding(""));
        QAccessibleInterface* field = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] { return (field = h.find("Repository slug")) != nullptr; }, 2000));
        EXPECT_EQ(drawnPlaceholder(qobject_cast<QQuickItem*>(field->object())), "owner/repo");
        field->setText(QAccessible::Value, row.text);
        EXPECT_EQ(h.model().addText, row.text);
        const std::vector<std::string> sent = h.takeSent();
        ASSERT_FALSE(sent.empty());
        EXPECT_EQ(sent.back(), R"({"msg":"add_text","text":")" + std::string(row.text) + R"("})");
        EXPECT_EQ(drawnPlaceholder(qobject_cast<QQuickItem*>(field->object())), "") << "drawn over the text";
    }
}

}  // namespace
}  // namespace velmar::testing
