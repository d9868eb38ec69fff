// The list bridge tells views every change as removals, moves, insertions and
// changes, never a reset, and ends equal to what it was given; rows that stay
// keep their persistent indexes.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "DiffListModel.h"

using velmar::ui::DiffListModel;

namespace {

// "a1 b c2": keys a, b, c with values 1, none, 2.
std::vector<DiffListModel::Row> rows(const QString& spec) {
    std::vector<DiffListModel::Row> out;
    for (const QString& word : spec.split(' ', Qt::SkipEmptyParts))
        out.push_back({word.left(1), {word.mid(1)}});
    return out;
}

QString keys(const DiffListModel& model) {
    QStringList out;
    for (const auto& row : model.rows()) out << row.key + row.values.value(0).toString();
    return out.join(' ');
}

}  // namespace

TEST(diff_list_model, reaches_the_new_list_without_a_reset) {
    struct Row {
        const char* before;
        const char* after;
        int inserted, removed, moved, changed;
    };
    const Row table[] = {
        {"", "a b c", 1, 0, 0, 0},               // a first fill is one insertion
        {"a b c", "", 0, 1, 0, 0},               // and emptying one removal
        {"a b c", "a b c", 0, 0, 0, 0},          // nothing changed, nothing told
        {"a b c", "a b2 c", 0, 0, 0, 1},         // one value: one change
        {"a b c", "c a b", 0, 0, 1, 0},          // last to first: one move
        {"a b c d", "d c b a", 0, 0, 3, 0},      // reversed
        {"a b c", "a x y c", 1, 1, 0, 0},        // b replaced by a run of two
        {"a b c d e", "b d", 0, 3, 0, 0},        // three separate removals
        {"a b c d e", "a e", 0, 1, 0, 0},        // one run of three
        {"a b c", "c1 x a", 1, 1, 1, 1},         // everything at once
        {"a b", "a b b2", 0, 0, 0, 0},           // a repeated key keeps its first row
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.before) + " -> " + row.after);
        DiffListModel model({"value"});
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        model.update(rows(row.before));
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

        model.update(rows(row.after));

        QString want;
        for (const auto& r : rows(row.after))
            if (!want.contains(r.key)) want += (want.isEmpty() ? "" : " ") + r.key + r.values[0].toString();
        EXPECT_EQ(keys(model), want);
        EXPECT_EQ(reset.count(), 0);
        EXPECT_EQ(inserted.count(), row.inserted);
        EXPECT_EQ(removed.count(), row.removed);
        EXPECT_EQ(moved.count(), row.moved);
        EXPECT_EQ(changed.count(), row.changed);
    }
}

TEST(diff_list_model, surviving_rows_keep_their_persistent_index_and_only_changed_roles_are_told) {
    DiffListModel model({"title", "count"});
    model.update({{"x", {"X", 1}}, {"y", {"Y", 2}}, {"z", {"Z", 3}}});
    const QPersistentModelIndex y(model.index(1));
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

    model.update({{"w", {"W", 0}}, {"z", {"Z", 3}}, {"y", {"Y", 5}}});

    ASSERT_TRUE(y.isValid());
    EXPECT_EQ(y.row(), 2);
    EXPECT_EQ(y.data(model.role("count")).toInt(), 5);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][2].value<QList<int>>(), QList<int>{model.role("count")});
    EXPECT_EQ(model.get(2, "key").toString(), "y");
    EXPECT_FALSE(model.get(3, "title").isValid());
    EXPECT_FALSE(model.get(0, "nope").isValid());
}
