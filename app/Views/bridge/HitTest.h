// What lies under a point of the panel's window: the topmost visible item,
// its chain of parents, and readable type names for the automation's log.
#pragma once

#include <QPointF>
#include <QString>
#include <QStringList>

class QObject;
class QQuickItem;
class QQuickWindow;

namespace velmar::ui::HitTest {

/// The deepest visible item holding `scenePoint`, children drawn on top
/// first; null when none does (outside the window, not a number).
QQuickItem* itemAt(QQuickWindow* window, QPointF scenePoint);

/// Whether `item` or one of its parents is `ancestor`.
bool within(const QQuickItem* item, const QQuickItem* ancestor);

/// The class name of `object`, with the suffix Qt gives types declared in
/// QML files taken off ("RepoSectionHeader", "QQuickText"); "nil" for null.
QString typeName(const QObject* object);

/// `item`'s type and then its parents', at most `limit` names.
QStringList typeChain(const QQuickItem* item, int limit);

}  // namespace velmar::ui::HitTest
