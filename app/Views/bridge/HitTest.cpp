// Hit-testing by item geometry, in drawing order.
#include "HitTest.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace velmar::ui::HitTest {

namespace {

QQuickItem* deepestAt(QQuickItem* item, QPointF scenePoint) {
    QList<QQuickItem*> children = item->childItems();
    // Later siblings and higher z are drawn on top: look at them first.
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem* a, const QQuickItem* b) { return a->z() < b->z(); });
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        QQuickItem* child = *it;
        if (!child->isVisible() || child->opacity() <= 0) continue;
        // An empty item draws nothing and holds nothing (a list's highlight
        // without a delegate is one): it hides nothing either.
        if (!child->flags().testFlag(QQuickItem::ItemHasContents) && child->childItems().isEmpty()) continue;
        if (!child->contains(child->mapFromScene(scenePoint))) continue;
        return deepestAt(child, scenePoint);
    }
    return item;
}

}  // namespace

QQuickItem* itemAt(QQuickWindow* window, QPointF scenePoint) {
    if (window == nullptr || !std::isfinite(scenePoint.x()) || !std::isfinite(scenePoint.y())) return nullptr;
    QQuickItem* root = window->contentItem();
    if (root == nullptr || !QRectF(QPointF(), window->size()).contains(scenePoint)) return nullptr;
    return deepestAt(root, scenePoint);
}

bool within(const QQuickItem* item, const QQuickItem* ancestor) {
    for (; item != nullptr; item = item->parentItem())
        if (item == ancestor) return true;
    return false;
}

QString typeName(const QObject* object) {
    if (object == nullptr) return QStringLiteral("nil");
    static const QRegularExpression qmlSuffix(QStringLiteral("_QML(TYPE)?_\\d+$"));
    return QString::fromLatin1(object->metaObject()->className()).remove(qmlSuffix);
}

QStringList typeChain(const QQuickItem* item, int limit) {
    QStringList names;
    for (; item != nullptr && names.size() < limit; item = item->parentItem()) names << typeName(item);
    if (names.isEmpty()) names << typeName(nullptr);
    return names;
}

}  // namespace velmar::ui::HitTest
