// The capped field of the add and pattern popovers: the UTF-8 byte cap on
// typing, pasting and an input method's commit, and the composition that the
// model's echo must leave alone.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QQuickItem>
#include <QTest>

#include "ScreenHarness.h"
#include "ByteCapValidator.h"

namespace velmar::testing {
namespace {

using Sent = std::vector<std::string>;

TEST(byte_cap, counts_utf8_bytes_and_lets_a_longer_held_text_only_shrink) {
    struct Row { qsizetype bytes; qsizetype held; bool allowed; };
    const Row table[] = {
        {256, 0, true},    {257, 0, false},   {257, 256, false},
        {2999, 3000, true}, {3000, 3000, true}, {3001, 3000, false},
    };
    for (Row row : table) EXPECT_EQ(ui::ByteCapValidator::allows(row.bytes, 256, row.held), row.allowed) << row.bytes;
    EXPECT_EQ(ui::ByteCapValidator::utf8Length(QString::fromUtf8("a\u00e9\u65e5\U0001F600")), 1 + 2 + 3 + 4);
}

Model withAddField(const std::string& text) {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.addOpen = true;
    m.addText = text;
    return m;
}

Model withPatternField(const std::string& text) {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.repos = {repo(1, "acme/web")};
    m.editingRepo = 1;
    m.editText = text;
    return m;
}

class capped_field : public ::testing::Test {
protected:
    QQuickItem* open(const Model& m, const QString& label) {
        // Closed first, so the popover and its field are built afresh.
        Model closed = readyModel();
        closed.screen = Screen::manage;
        h.show(closed);
        h.setModel(m);
        QTest::qWait(600);
        h.takeSent();
        QAccessibleInterface* node = h.find(label);
        field = node == nullptr ? nullptr : qobject_cast<QQuickItem*>(node->object());
        return field;
    }
    QString text() const { return field->property("text").toString(); }
    // One key press carrying `text`, as a keyboard layout produces it.
    void type(const QString& text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&h.view(), &press);
        QCoreApplication::sendEvent(&h.view(), &release);
    }
    void paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&h.view(), Qt::Key_V, Qt::ControlModifier);
    }
    void compose(const QString& preedit, const QString& commit = {}) {
        QInputMethodEvent event(preedit, {});
        if (!commit.isNull()) event.setCommitString(commit);
        QCoreApplication::sendEvent(field, &event);
    }
    static std::string added(const QString& text) {
        return R"({"msg":"add_text","text":")" + text.toStdString() + R"("})";
    }

    ScreenHarness h;
    QQuickItem* field = nullptr;
};

TEST_F(capped_field, typing_stops_at_the_byte_cap_whatever_the_character_size) {
    const QString full(255, 'a');
    struct Row {
        QString typed;
        bool taken;
    };
    // 255 bytes held: one more byte fits, a two-byte character does not.
    const Row table[] = {{"\u00e9", false}, {"\U0001F600", false}, {"\u65e5", false}, {"b", true}, {"c", false}};
    ASSERT_NE(open(withAddField(full.toStdString()), "Repository slug"), nullptr) << h.names().join('|').toStdString();
    QString expected = full;
    for (const Row& row : table) {
        SCOPED_TRACE(row.typed.toStdString());
        type(row.typed);
        if (row.taken) expected += row.typed;
        EXPECT_EQ(text(), expected);
        EXPECT_EQ(h.takeSent(), row.taken ? Sent{added(expected)} : Sent{});
    }
}

TEST_F(capped_field, odd_slugs_go_to_the_core_as_typed) {
    // The field judges nothing but length: the core decides what a slug is.
    const QString table[] = {" acme/ web ", "owner/", "/repo", "a/b/c", "x;$(rm -rf ~)|`y`&", "\u0645\u0631\u062d\u0628\u0627/\u0639\u0627\u0644\u0645"};
    for (const QString& slug : table) {
        SCOPED_TRACE(slug.toStdString());
        ASSERT_NE(open(withAddField(""), "Repository slug"), nullptr);
        type(slug);
        EXPECT_EQ(text(), slug);
        EXPECT_EQ(h.takeSent(), Sent{added(slug)});
    }
}

TEST_F(capped_field, a_paste_over_the_cap_is_refused_whole) {
    struct Row {
        QString before;
        QString pasted;
        bool taken;
    };
    const Row table[] = {
        {"", QString(10 * 1024, 'x'), false},                // a 10 KB slug
        {"", QString(256, 'a'), true},                       // exactly the cap
        {"acme/", QString(251, 'w'), true},
        {"acme/", QString(252, 'w'), false},
        {"acme/", QString(125, QChar(0x00e9)) + "ab", false},  // 5 + 250 + 2 bytes
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.pasted.size());
        ASSERT_NE(open(withAddField(row.before.toStdString()), "Repository slug"), nullptr);
        ASSERT_TRUE(field->hasActiveFocus());
        paste(row.pasted);
        const QString expected = row.taken ? row.before + row.pasted : row.before;
        EXPECT_EQ(text(), expected);
        EXPECT_EQ(h.takeSent(), row.taken ? Sent{added(expected)} : Sent{});
    }
}

TEST_F(capped_field, a_paste_loses_its_tabs_and_line_breaks) {
    struct Row {
        QString label;
        QString pasted;
        QString kept;
    };
    const Row table[] = {
        {"Repository slug", "acme/web\nacme/api\n", "acme/webacme/api"},
        {"Repository slug", "acme/web\tfeat/*", "acme/webfeat/*"},
        {"Repository slug", "\r\n\u2028\u2029\u0085\v\f", ""},
        {"Repository slug", "  acme/web  ", "  acme/web  "},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.pasted.toStdString());
        ASSERT_NE(open(withAddField(""), row.label), nullptr);
        ASSERT_TRUE(field->hasActiveFocus());
        paste(row.pasted);
        EXPECT_EQ(text(), row.kept);
        // Whatever reaches the core is the text without them.
        const Sent sent = h.takeSent();
        if (!row.kept.isEmpty()) EXPECT_FALSE(sent.empty());
        for (const std::string& message : sent) EXPECT_EQ(message, added(row.kept));
        // Typed, a tab is refused too.
        type("\t");
        EXPECT_EQ(text(), row.kept);
    }
}

TEST_F(capped_field, the_pattern_cap_is_2048_bytes) {
    ASSERT_NE(open(withPatternField(std::string(2047, 'p')), "Preview URL pattern"), nullptr);
    type("\u00e9");
    EXPECT_EQ(text().size(), 2047) << "a two-byte character would make 2049";
    type("q");
    EXPECT_EQ(text().size(), 2048);
    EXPECT_EQ(h.takeSent().size(), 1u);
}

TEST_F(capped_field, a_stored_value_over_the_cap_shows_whole_and_can_only_shrink) {
    const std::string stored(3000, 's');
    ASSERT_NE(open(withPatternField(stored), "Preview URL pattern"), nullptr);
    EXPECT_EQ(text().size(), 3000);
    QTest::keyClick(&h.view(), Qt::Key_Backspace);
    EXPECT_EQ(text().size(), 2999);
    type("x");
    EXPECT_EQ(text().size(), 2999) << "an edit may not lengthen it again";
    paste("yy");
    EXPECT_EQ(text().size(), 2999);
}

TEST_F(capped_field, the_models_echo_leaves_a_composition_alone) {
    ASSERT_NE(open(withAddField("acme/"), "Repository slug"), nullptr);
    compose("w");
    EXPECT_EQ(field->property("preeditText").toString(), "w");
    // An echo, and a change from elsewhere, while the input method composes.
    h.setModel(withAddField("acme/x"));
    QTest::qWait(20);
    EXPECT_EQ(field->property("preeditText").toString(), "w");
    EXPECT_EQ(text(), "acme/");
    compose("", "web");
    EXPECT_EQ(text(), "acme/web");
    EXPECT_EQ(h.takeSent(), Sent{added("acme/web")});
    // With no composition, the model's text wins and the caret goes to its end.
    h.setModel(withAddField("acme/api"));
    QTest::qWait(20);
    EXPECT_EQ(text(), "acme/api");
    EXPECT_EQ(field->property("cursorPosition").toInt(), 8);
    EXPECT_EQ(h.takeSent(), Sent{}) << "following the model is no edit";
}

TEST_F(capped_field, a_committed_composition_over_the_cap_is_refused_whole) {
    const QString held(254, 'a');
    ASSERT_NE(open(withAddField(held.toStdString()), "Repository slug"), nullptr);
    compose("\u306b");
    compose("", "\u65e5");  // three bytes: 257
    EXPECT_EQ(text(), held);
    EXPECT_EQ(field->property("preeditText").toString(), "");
    EXPECT_EQ(h.takeSent(), Sent{});
    compose("", "\u00e9");  // two bytes: 256
    EXPECT_EQ(text(), held + "\u00e9");
    EXPECT_EQ(h.takeSent(), Sent{added(held + "\u00e9")});
}

}  // namespace
}  // namespace velmar::testing
