// The difference between two lists of keyed rows, told to the views as the
// smallest sequence of removals, moves, insertions and changes we can find
// cheaply: the lists here hold tens of rows, so plain scans are enough.
#include "DiffListModel.h"

#include <QSet>
#include <algorithm>

namespace velmar::ui {

DiffListModel::DiffListModel(QList<QByteArray> roles, QObject* parent)
    : QAbstractListModel(parent), roles_(std::move(roles)) {
    roles_.append(QByteArrayLiteral("key"));
}

int DiffListModel::role(const QByteArray& name) const {
    const qsizetype i = roles_.indexOf(name);
    return i < 0 ? -1 : Qt::UserRole + 1 + int(i);
}

int DiffListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant DiffListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() < 0 || index.row() >= count()) return {};
    const Row& row = rows_[std::size_t(index.row())];
    const int i = role - Qt::UserRole - 1;
    if (i == roles_.size() - 1) return row.key;
    if (i < 0 || i >= row.values.size()) return {};
    return row.values[i];
}

QHash<int, QByteArray> DiffListModel::roleNames() const {
    QHash<int, QByteArray> names;
    for (qsizetype i = 0; i < roles_.size(); ++i) names.insert(Qt::UserRole + 1 + int(i), roles_[i]);
    return names;
}

QVariant DiffListModel::get(int row, const QString& name) const {
    const int r = role(name.toUtf8());
    if (r < 0 || row < 0 || row >= count()) return {};
    return data(index(row), r);
}

void DiffListModel::update(std::vector<Row> next) {
    {
        QSet<QString> seen;
        std::erase_if(next, [&](const Row& row) {
            if (seen.contains(row.key)) return true;
            seen.insert(row.key);
            return false;
        });
    }
    const int before = count();
    QSet<QString> wanted;
    for (const Row& row : next) wanted.insert(row.key);

    // Removals first, from the back, a run at a time, so indices ahead stay valid.
    for (int last = count() - 1; last >= 0;) {
        if (wanted.contains(rows_[std::size_t(last)].key)) {
            --last;
            continue;
        }
        int first = last;
        while (first > 0 && !wanted.contains(rows_[std::size_t(first - 1)].key)) --first;
        beginRemoveRows({}, first, last);
        rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
        endRemoveRows();
        last = first - 1;
    }

    QSet<QString> present;
    for (const Row& row : rows_) present.insert(row.key);

    // Then every position of `next` in turn: what stands there already is
    // kept, what stands later is moved up, what is new is inserted.
    auto change = [this](std::size_t i, Row& incoming) {
        Row& row = rows_[i];
        QList<int> changed;
        for (qsizetype r = 0; r < std::max(row.values.size(), incoming.values.size()); ++r) {
            const QVariant a = r < row.values.size() ? row.values[r] : QVariant();
            const QVariant b = r < incoming.values.size() ? incoming.values[r] : QVariant();
            if (a != b) changed.append(Qt::UserRole + 1 + int(r));
        }
        if (changed.isEmpty()) return;
        row.values = std::move(incoming.values);
        const QModelIndex at = index(int(i));
        emit dataChanged(at, at, changed);
    };
    for (std::size_t i = 0; i < next.size();) {
        if (i < rows_.size() && rows_[i].key == next[i].key) {
            change(i, next[i]);
            ++i;
            continue;
        }
        if (present.contains(next[i].key)) {
            const auto from = std::find_if(rows_.begin() + std::ptrdiff_t(i), rows_.end(),
                                           [&](const Row& row) { return row.key == next[i].key; });
            const int j = int(from - rows_.begin());
            beginMoveRows({}, j, j, {}, int(i));
            Row moved = std::move(*from);
            rows_.erase(from);
            rows_.insert(rows_.begin() + std::ptrdiff_t(i), std::move(moved));
            endMoveRows();
            change(i, next[i]);
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < next.size() && !present.contains(next[end].key)) ++end;
        beginInsertRows({}, int(i), int(end - 1));
        rows_.insert(rows_.begin() + std::ptrdiff_t(i), std::make_move_iterator(next.begin() + std::ptrdiff_t(i)),
                     std::make_move_iterator(next.begin() + std::ptrdiff_t(end)));
        endInsertRows();
        i = end;
    }
    if (count() != before) emit countChanged();
}

}  // namespace velmar::ui
