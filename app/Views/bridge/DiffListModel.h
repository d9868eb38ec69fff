// A list for QML whose rows are replaced as a whole and announced by
// difference: rows whose key is gone are removed, new keys are inserted, keys
// that changed place are moved and rows whose values changed are reported as
// changed, role by role. A view over it therefore keeps its scroll position,
// hover, focus and open menus across a refresh; it never sees a reset.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>
#include <vector>

namespace velmar::ui {

class DiffListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    /// One row: a key that is unique in the list and stable across updates,
    /// and one value per role, in the order of the role names.
    struct Row {
        QString key;
        QVariantList values;
        bool operator==(const Row&) const = default;
    };

    /// `roles` name the values of each row; the first is Qt::UserRole + 1.
    /// A role "key" holding the row's key is always added after them.
    explicit DiffListModel(QList<QByteArray> roles, QObject* parent = nullptr);

    /// Makes the list equal to `next` through removals, moves, insertions and
    /// changes. A key repeated in `next` keeps only its first row.
    void update(std::vector<Row> next);

    const std::vector<Row>& rows() const { return rows_; }
    int count() const { return int(rows_.size()); }
    /// The role number of `name`, or -1.
    int role(const QByteArray& name) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The value of role `name` in row `row`, for QML: undefined when either
    /// is out of range.
    Q_INVOKABLE QVariant get(int row, const QString& name) const;

signals:
    void countChanged();

private:
    QList<QByteArray> roles_;
    std::vector<Row> rows_;
};

}  // namespace velmar::ui
