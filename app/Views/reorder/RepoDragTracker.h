// Reordering by drag in one list. An application-wide event filter sees the
// left button before any item does and swallows the events that belong to a
// reorder, so nothing under the pointer reacts to them; the states and the
// geometry are RepoDragState's. QML reads the lifted item and its offset,
// reports the items' frames, and sets `view` while the list is on screen.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QVariant>
#include <functional>
#include <unordered_map>

#include "RepoDrag.h"

namespace velmar::ui {

class RepoDragTracker : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Each list's drag is the panel's.")
    /// The scrolling list while it is on screen: setting it installs the
    /// filter, clearing it removes the filter and cancels. Frames are taken
    /// in its content's coordinates.
    Q_PROPERTY(QQuickItem* view READ view WRITE setView NOTIFY viewChanged)
    /// The item frames are taken in while `view` is set: its content.
    Q_PROPERTY(QQuickItem* space READ space NOTIFY viewChanged)
    /// An item is lifted. At a drop it clears first, then the model moves,
    /// then `dragId`, then the rest: a view settles the item from where it
    /// was let go into its new place.
    Q_PROPERTY(bool lifted READ lifted NOTIFY liftedChanged)
    /// The lifted item's id; undefined when none. It changes at a lift and
    /// at the end, not with every move.
    Q_PROPERTY(QVariant dragId READ dragId NOTIFY dragIdChanged)
    /// Where the lifted item's top is drawn, in the list content's
    /// coordinates (`toItemY` takes it into an item's).
    Q_PROPERTY(double draggedTop READ draggedTop NOTIFY dragChanged)
    /// Counts the changes of the preview's order; pass it to `shiftOf`, so
    /// that a binding reads the shifts again when they change.
    Q_PROPERTY(int shiftsRevision READ shiftsRevision NOTIFY shiftsChanged)
    /// The item shown first, which has no divider above it.
    Q_PROPERTY(QVariant firstId READ firstId NOTIFY shiftsChanged)
    /// Changes of place should glide: during a drag, while a dropped item
    /// settles, and for a moment after the order changed.
    Q_PROPERTY(bool gliding READ gliding NOTIFY glidingChanged)
public:
    using DropHandler = std::function<void(reorder::Id id, int target)>;

    /// `holdDelay` in seconds: present, a press lifts after holding still
    /// that long; absent, it lifts on moving. `trailingClearance`: the strip
    /// at a frame's trailing edge that does not start a press.
    RepoDragTracker(std::optional<double> holdDelay, double trailingClearance, QObject* parent = nullptr);
    ~RepoDragTracker() override;

    QQuickItem* view() const { return view_; }
    void setView(QQuickItem* view);
    QQuickItem* space() const;
    bool lifted() const { return lifted_; }
    QVariant dragId() const;
    double draggedTop() const { return state_.draggedTop(); }
    int shiftsRevision() const { return shiftsRevision_; }
    /// How far item `id` stands from its resting place in the preview: the
    /// others make room for the lifted one. (A map property would be copied
    /// whole into every binding that reads it.)
    Q_INVOKABLE double shiftOf(const QVariant& id, int revision = 0) const;
    QVariant firstId() const;
    bool gliding() const { return gliding_; }
    /// A press is waiting out the hold that lifts it.
    bool holding() const { return hold_.isActive(); }
    const reorder::RepoDragState& state() const { return state_; }
    bool installed() const { return installed_; }

    /// Called once per committed drop, with the target index among the ids.
    void setOnDrop(DropHandler onDrop) { onDrop_ = std::move(onDrop); }
    /// The items in the order shown; a drag of an item that left is
    /// cancelled, and a new order glides into place. Call before the list's
    /// rows change, and `rowsFollowed` after.
    void setIds(std::vector<reorder::Id> ids);
    void rowsFollowed();
    /// Off: events pass untouched and a drag in progress is cancelled.
    void setEnabled(bool enabled);
    /// Back to idle, with no drop.
    void cancel();

    /// `y` of the list content's coordinates in those of `item`.
    Q_INVOKABLE double toItemY(QQuickItem* item, double y) const;

    /// The frame of item `id`: `rect` in `item`'s coordinates. Taken into
    /// the list's space now and again at each press, when the item may have
    /// moved with what holds it.
    Q_INVOKABLE void reportFrame(const QVariant& id, QQuickItem* item, const QRectF& rect);
    /// The press area of item `id`, where it is smaller than its frame.
    Q_INVOKABLE void reportHandle(const QVariant& id, QQuickItem* item, const QRectF& rect);

signals:
    void viewChanged();
    void liftedChanged();
    void dragIdChanged();
    /// The drag moved, began or ended: one notification per pointer event.
    void dragChanged();
    void shiftsChanged();
    void glidingChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void install();
    void uninstall();
    void apply(const reorder::Outcome& out);
    void updateShifts();
    /// The frames and handles as the reporting items stand now.
    void refreshFrames();
    void setGliding(bool on);
    std::optional<reorder::Rect> toSpace(QQuickItem* item, const QRectF& rect) const;
    reorder::Point toSpace(QPointF scenePoint) const;
    bool isVisible(QPointF scenePoint) const;
    int clickCount(ulong timestamp, QPointF scenePoint);

    reorder::RepoDragState state_;
    DropHandler onDrop_;
    QPointer<QQuickItem> view_;
    QTimer hold_;
    QTimer glide_;
    bool installed_ = false;
    bool lifted_ = false;
    bool gliding_ = false;
    bool cursorPushed_ = false;
    std::vector<reorder::Id> shown_;
    std::vector<reorder::Id> shiftedFrom_;
    // The latest reports as given, so that they can be taken into the list's
    // space once it is known: items report before the list is on screen.
    struct Report {
        QPointer<QQuickItem> item;
        QRectF rect;
    };
    std::unordered_map<reorder::Id, Report> frameReports_;
    std::unordered_map<reorder::Id, Report> handleReports_;
    std::unordered_map<reorder::Id, double> shifts_;
    int shiftsRevision_ = 0;
    // The last left press, to count the clicks of a series.
    ulong lastPressTime_ = 0;
    QElapsedTimer clock_;
    QPointF lastPressPoint_;
    int clicks_ = 0;
};

}  // namespace velmar::ui
