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

// The add field holding `text`, or the pattern field when `pattern`.
Model withField(const QString& text, bool pattern = false) {
    Model m = readyModel();
    m.screen = Screen::manage;
    m.repos = {repo(1, "acme/web")};
    if (pattern) m.editingRepo = 1;
    m.addOpen = !pattern;
    (pattern ? m.editText : m.addText) = text.toStdString();
    return m;
}

class capped_field : public ::testing::Test {
protected:
    QQuickItem* open(const QString& text, bool pattern = false) {
        // Closed first, so the popover and its field are built afresh.
        Model closed = readyModel();
        closed.screen = Screen::manage;
        h.show(closed);
        h.setModel(withField(text, pattern));
        EXPECT_TRUE(h.settle());
        h.takeSent();
        field = h.item(pattern ? "Preview URL pattern" : "Repository slug");
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

// The field judges nothing but length and the characters no slug or address
// holds (tabs, line breaks): the core decides what a slug is. An edit over the
// cap is refused whole, however it comes.
TEST_F(capped_field, an_edit_over_the_byte_cap_is_refused_whole_however_it_comes) {
    enum How { typed, pasted, committed };
    struct Row {
        QString before;
        How how;
        QString edit;
        bool taken;
        bool pattern = false;
        QString kept = {};  // what the field holds after, when not before and edit
    };
    const QString full(255, 'a');
    const Row table[] = {
        // 255 bytes held: one more byte fits, a longer character does not.
        {full, typed, "\u00e9", false},
        {full, typed, "\U0001F600", false},
        {full, typed, "\u65e5", false},
        {full, typed, "b", true},
        {QString(256, 'a'), typed, "c", false},
        {"", typed, " acme/ web ", true},
        {"", typed, "x;$(rm -rf ~)|`y`&", true},
        {"", typed, "\u0645\u0631\u062d\u0628\u0627/\u0639\u0627\u0644\u0645", true},
        {"acme", typed, "\t", false},
        {"", pasted, QString(10 * 1024, 'x'), false},
        {"", pasted, QString(256, 'a'), true},
        {"acme/", pasted, QString(251, 'w'), true},
        {"acme/", pasted, QString(252, 'w'), false},
        {"acme/", pasted, QString(125, QChar(0x00e9)) + "ab", false},  // 5 + 250 + 2 bytes
        {"", pasted, "acme/web\nacme/api\n", true, false, "acme/webacme/api"},
        {"", pasted, "acme/web\tfeat/*", true, false, "acme/webfeat/*"},
        {"a", pasted, "\r\n\u2028\u2029\u0085\v\f", false},
        {QString(254, 'a'), committed, "\u65e5", false},                // three bytes: 257
        {QString(254, 'a'), committed, "\u00e9", true},                 // two bytes: 256
        {QString(2047, 'p'), typed, "\u00e9", false, true},             // the pattern's cap is 2048
        {QString(2047, 'p'), typed, "q", true, true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.edit.left(20).toStdString() + " after " + std::to_string(row.before.size()));
        ASSERT_NE(open(row.before, row.pattern), nullptr) << h.names().join('|').toStdString();
        ASSERT_TRUE(field->hasActiveFocus());
        if (row.how == typed) type(row.edit);
        if (row.how == pasted) paste(row.edit);
        if (row.how == committed) {
            compose("\u306b");
            compose("", row.edit);
            EXPECT_EQ(field->property("preeditText").toString(), "");
        }
        const QString expected = !row.taken ? row.before : row.kept.isNull() ? row.before + row.edit : row.kept;
        EXPECT_EQ(text(), expected);
        // Whatever reaches the core is what the field holds.
        const Sent sent = h.takeSent();
        EXPECT_EQ(sent.empty(), !row.taken);
        for (const std::string& message : sent) {
            if (!row.pattern) EXPECT_EQ(message, added(expected));
        }
    }
}

TEST_F(capped_field, a_stored_value_over_the_cap_shows_whole_and_can_only_shrink) {
    ASSERT_NE(open(QString(3000, 's'), true), nullptr);
    EXPECT_EQ(text().size(), 3000);
    QTest::keyClick(&h.view(), Qt::Key_Backspace);
    EXPECT_EQ(text().size(), 2999);
    type("x");
    EXPECT_EQ(text().size(), 2999) << "an edit may not lengthen it again";
    paste("yy");
    EXPECT_EQ(text().size(), 2999);
}

TEST_F(capped_field, the_models_echo_leaves_a_composition_alone) {
    ASSERT_NE(open("acme/"), nullptr);
    compose("w");
    EXPECT_EQ(field->property("preeditText").toString(), "w");
    // An echo, and a change from elsewhere, while the input method composes.
    h.setModel(withField("acme/x"));
    EXPECT_TRUE(h.drawn());
    EXPECT_EQ(field->property("preeditText").toString(), "w");
    EXPECT_EQ(text(), "acme/");
    compose("", "web");
    EXPECT_EQ(text(), "acme/web");
    EXPECT_EQ(h.takeSent(), Sent{added("acme/web")});
    // With no composition, the model's text wins and the caret goes to its end.
    h.setModel(withField("acme/api"));
    EXPECT_TRUE(h.drawn());
    EXPECT_EQ(text(), "acme/api");
    EXPECT_EQ(field->property("cursorPosition").toInt(), 8);
    EXPECT_EQ(h.takeSent(), Sent{}) << "following the model is no edit";
}

}  // namespace
}  // namespace velmar::testing
