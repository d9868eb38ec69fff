// Keeps the children of one item in the order they stand on screen, top to
// bottom. Tab and the accessibility tree both walk an item's children in the
// order those were created; a list view creates its delegates as rows come
// into view or into the model, so without this a refresh, a reorder or a
// scroll leaves the keyboard and a screen reader visiting rows in an order
// unrelated to what is drawn.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace velmar::ui {

/// `items` in screen order: by top, then by left; items at the same place
/// keep their relative order.
std::vector<QQuickItem*> inScreenOrder(std::vector<QQuickItem*> items);

class ScreenOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The item whose children are kept in order (a list view's content item).
    Q_PROPERTY(QQuickItem* container READ container WRITE setContainer NOTIFY containerChanged)
public:
    explicit ScreenOrder(QObject* parent = nullptr);

    QQuickItem* container() const { return container_; }
    void setContainer(QQuickItem* container);

    /// Restacks the children now if they are out of order; true if it did.
    Q_INVOKABLE bool apply();

signals:
    void containerChanged();

private:
    void watch(QQuickItem* child);
    void schedule();

    QPointer<QQuickItem> container_;
    bool scheduled_ = false;
};

}  // namespace velmar::ui
