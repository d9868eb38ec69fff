// Restacking a container's children into screen order.
#include "ScreenOrder.h"

#include <QAccessible>
#include <algorithm>

namespace velmar::ui {

std::vector<QQuickItem*> inScreenOrder(std::vector<QQuickItem*> items) {
    std::stable_sort(items.begin(), items.end(), [](const QQuickItem* a, const QQuickItem* b) {
        if (a->y() != b->y()) return a->y() < b->y();
        return a->x() < b->x();
    });
    return items;
}

ScreenOrder::ScreenOrder(QObject* parent) : QObject(parent) {}

void ScreenOrder::setContainer(QQuickItem* container) {
    if (container == container_) return;
    if (container_) {
        disconnect(container_, nullptr, this, nullptr);
        for (QQuickItem* child : container_->childItems()) disconnect(child, nullptr, this, nullptr);
    }
    container_ = container;
    if (container_) {
        connect(container_, &QQuickItem::childrenChanged, this, [this] {
            for (QQuickItem* child : container_->childItems()) watch(child);
            schedule();
        });
        for (QQuickItem* child : container_->childItems()) watch(child);
        schedule();
    }
    emit containerChanged();
}

void ScreenOrder::watch(QQuickItem* child) {
    // One connection per child however often the children change.
    connect(child, &QQuickItem::yChanged, this, &ScreenOrder::schedule, Qt::UniqueConnection);
    connect(child, &QQuickItem::xChanged, this, &ScreenOrder::schedule, Qt::UniqueConnection);
}

// A list lays out many items in one pass: restack once, after it.
void ScreenOrder::schedule() {
    if (scheduled_) return;
    scheduled_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            scheduled_ = false;
            apply();
        },
        Qt::QueuedConnection);
}

bool ScreenOrder::apply() {
    if (!container_) return false;
    const QList<QQuickItem*> children = container_->childItems();
    const std::vector<QQuickItem*> sorted = inScreenOrder({children.begin(), children.end()});
    if (std::equal(sorted.begin(), sorted.end(), children.begin())) return false;
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const QList<QQuickItem*> now = container_->childItems();
        if (now.indexOf(sorted[i]) != now.indexOf(sorted[i - 1]) + 1) sorted[i]->stackAfter(sorted[i - 1]);
    }
    if (QAccessible::isActive()) {
        QAccessibleEvent reordered(container_.data(), QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&reordered);
    }
    return true;
}

}  // namespace velmar::ui
