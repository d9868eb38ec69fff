// The event filter, the hold timer and the closed-hand cursor around
// RepoDragState.
#include "RepoDragTracker.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QStyleHints>
#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "HitTest.h"

namespace velmar::ui {

RepoDragTracker::RepoDragTracker(std::optional<double> holdDelay, double trailingClearance, QObject* parent)
    : QObject(parent), state_(holdDelay, trailingClearance) {
    clock_.start();
    hold_.setSingleShot(true);
    hold_.setTimerType(Qt::PreciseTimer);
    if (holdDelay) hold_.setInterval(int(std::lround(*holdDelay * 1000)));
    connect(&hold_, &QTimer::timeout, this, [this] {
        if (state_.press()) apply(state_.holdFired(state_.press()->id));
    });
    // Long enough for the spring to come to rest.
    glide_.setSingleShot(true);
    glide_.setInterval(400);
    connect(&glide_, &QTimer::timeout, this, [this] { setGliding(state_.drag().has_value()); });
}

RepoDragTracker::~RepoDragTracker() {
    if (installed_ && qApp != nullptr) qApp->removeEventFilter(this);
    if (cursorPushed_) QGuiApplication::restoreOverrideCursor();
}

void RepoDragTracker::setView(QQuickItem* view) {
    if (view_ == view) return;
    if (view_) disconnect(view_, &QObject::destroyed, this, nullptr);
    view_ = view;
    refreshFrames();
    // The pointer is already null when the list goes away.
    if (view) connect(view, &QObject::destroyed, this, [this] {
        uninstall();
        emit viewChanged();
    });
    view ? install() : uninstall();
    emit viewChanged();
}

void RepoDragTracker::install() {
    if (installed_) return;
    qApp->installEventFilter(this);
    installed_ = true;
}

void RepoDragTracker::uninstall() {
    if (installed_) qApp->removeEventFilter(this);
    installed_ = false;
    cancel();
}

QVariant RepoDragTracker::dragId() const {
    return state_.drag() ? QVariant(qint64(state_.drag()->id)) : QVariant();
}

QVariant RepoDragTracker::firstId() const {
    return shown_.empty() ? QVariant() : QVariant(qint64(shown_.front()));
}

void RepoDragTracker::setIds(std::vector<reorder::Id> ids) {
    // Most changes of the model leave the order as it was: nothing to forget.
    if (ids == state_.ids()) return;
    const bool reordered = ids != state_.ids() && std::is_permutation(ids.begin(), ids.end(), state_.ids().begin(),
                                                                      state_.ids().end());
    // Before the rows move, so that they glide from where they stood.
    if (reordered) setGliding(true);
    apply(state_.setIds(std::move(ids)));
    const auto& now = state_.ids();
    for (auto* reports : {&frameReports_, &handleReports_})
        std::erase_if(*reports, [&](const auto& e) { return std::find(now.begin(), now.end(), e.first) == now.end(); });
}

void RepoDragTracker::rowsFollowed() {
    // Laid out at once (the list, and whatever positions its rows), so that
    // the rows' new places and the end of their shifts are seen together:
    // nothing starts gliding towards a place that is about to change.
    if (view_) view_->ensurePolished();
    std::unordered_set<QQuickItem*> parents;
    for (const auto& [id, report] : frameReports_)
        if (report.item && report.item->parentItem()) parents.insert(report.item->parentItem());
    for (QQuickItem* parent : parents) parent->ensurePolished();
    updateShifts();
}

void RepoDragTracker::refreshFrames() {
    for (const auto& [id, report] : frameReports_)
        if (auto r = toSpace(report.item, report.rect)) state_.reportFrame(id, *r);
    for (const auto& [id, report] : handleReports_)
        if (auto r = toSpace(report.item, report.rect)) state_.reportHandle(id, *r);
}

double RepoDragTracker::toItemY(QQuickItem* item, double y) const {
    QQuickItem* from = space();
    return item && from ? from->mapToItem(item, QPointF(0, y)).y() : y;
}

void RepoDragTracker::setEnabled(bool enabled) { apply(state_.setEnabled(enabled)); }
void RepoDragTracker::cancel() { apply(state_.cancel()); }

void RepoDragTracker::setGliding(bool on) {
    if (on && !state_.drag()) glide_.start();
    if (gliding_ == on) return;
    gliding_ = on;
    emit glidingChanged();
}

void RepoDragTracker::updateShifts() {
    // The shifts lead from the resting order to the shown one: either may change.
    std::vector<reorder::Id> shown = state_.shownIds();
    if (shown == shown_ && state_.ids() == shiftedFrom_) return;
    shown_ = std::move(shown);
    shiftedFrom_ = state_.ids();
    shifts_ = reorder::shifts(state_.ids(), shown_, state_.frames());
    ++shiftsRevision_;
    emit shiftsChanged();
}

double RepoDragTracker::shiftOf(const QVariant& id, int) const {
    const auto it = shifts_.find(id.toLongLong());
    return it == shifts_.end() ? 0 : it->second;
}

void RepoDragTracker::apply(const reorder::Outcome& out) {
    if (out.stopHold) hold_.stop();
    if (out.startHold) hold_.start();
    if (out.lifted) setGliding(true);
    // At the end the lifted flag goes first, then the model moves, then the
    // id and last the offsets: the view settles the item from where it was
    // let go into its new place.
    if (out.ended) {
        if (cursorPushed_) QGuiApplication::restoreOverrideCursor();
        cursorPushed_ = false;
        if (lifted_) {
            lifted_ = false;
            emit liftedChanged();
        }
    }
    if (out.drop && onDrop_) onDrop_(out.drop->first, out.drop->second);
    if (out.lifted || out.ended) emit dragIdChanged();
    if (out.dragChanged) {
        emit dragChanged();
        updateShifts();
    }
    if (out.lifted) {
        if (!cursorPushed_) QGuiApplication::setOverrideCursor(QCursor(Qt::ClosedHandCursor));
        cursorPushed_ = true;
        lifted_ = true;
        emit liftedChanged();
    }
    if (out.ended) setGliding(true);
}

QQuickItem* RepoDragTracker::space() const {
    if (!view_) return nullptr;
    if (view_->inherits("QQuickFlickable"))
        if (auto* content = view_->property("contentItem").value<QQuickItem*>()) return content;
    return view_;
}

std::optional<reorder::Rect> RepoDragTracker::toSpace(QQuickItem* item, const QRectF& rect) const {
    QQuickItem* to = space();
    if (item == nullptr || to == nullptr) return std::nullopt;
    // The item's own transform is how it is drawn for the moment (moved
    // aside, lifted); its frame is its place in the layout.
    QQuickItem* parent = item->parentItem();
    const QRectF laid = rect.translated(item->position());
    const QRectF r = parent ? parent->mapRectToItem(to, laid) : laid;
    return reorder::Rect{r.x(), r.y(), r.width(), r.height()};
}

reorder::Point RepoDragTracker::toSpace(QPointF scenePoint) const {
    QQuickItem* to = space();
    const QPointF p = to ? to->mapFromScene(scenePoint) : scenePoint;
    return {p.x(), p.y()};
}

void RepoDragTracker::reportFrame(const QVariant& id, QQuickItem* item, const QRectF& rect) {
    bool ok = false;
    const qint64 key = id.toLongLong(&ok);
    if (!ok || item == nullptr) return;
    frameReports_[key] = {item, rect};
    if (auto r = toSpace(item, rect)) state_.reportFrame(key, *r);
}

void RepoDragTracker::reportHandle(const QVariant& id, QQuickItem* item, const QRectF& rect) {
    bool ok = false;
    const qint64 key = id.toLongLong(&ok);
    if (!ok || item == nullptr) return;
    handleReports_[key] = {item, rect};
    if (auto r = toSpace(item, rect)) state_.reportHandle(key, *r);
}

bool RepoDragTracker::isVisible(QPointF scenePoint) const {
    // The point must show the list itself: not a menu, a popover or the
    // other screen lying over it.
    return view_ && HitTest::within(HitTest::itemAt(view_->window(), scenePoint), view_);
}

int RepoDragTracker::clickCount(ulong timestamp, QPointF scenePoint) {
    // An event made without a time stamp is timed on arrival.
    if (timestamp == 0) timestamp = ulong(clock_.elapsed()) + 1;
    const QStyleHints* hints = QGuiApplication::styleHints();
    const QPointF d = scenePoint - lastPressPoint_;
    const bool series = clicks_ > 0 && timestamp >= lastPressTime_ &&
                        timestamp - lastPressTime_ < ulong(hints->mouseDoubleClickInterval()) &&
                        std::max(std::abs(d.x()), std::abs(d.y())) <= hints->mouseDoubleClickDistance();
    clicks_ = series ? clicks_ + 1 : 1;
    lastPressTime_ = timestamp;
    lastPressPoint_ = scenePoint;
    return clicks_;
}

bool RepoDragTracker::eventFilter(QObject* watched, QEvent* event) {
    if (!view_ || watched != view_->window()) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress: {
            const auto* e = static_cast<QMouseEvent*>(event);
            if (e->button() != Qt::LeftButton) {
                // A second button during a press ends the reorder, and its
                // click belongs to nobody.
                if (!state_.press()) return false;
                cancel();
                return true;
            }
            const QPointF at = e->scenePosition();
            const int count = clickCount(e->timestamp(), at);
            // A section above may have grown since the last report.
            if (!state_.drag()) refreshFrames();
            const reorder::Outcome out =
                state_.mouseDown(toSpace(at), count, [&](reorder::Point) { return isVisible(at); });
            apply(out);
            return out.consumed;
        }
        case QEvent::MouseMove: {
            const auto* e = static_cast<QMouseEvent*>(event);
            if (!(e->buttons() & Qt::LeftButton)) {
                // The release went elsewhere: nothing may stay pressed or lifted.
                if (state_.press()) cancel();
                return false;
            }
            const reorder::Outcome out = state_.mouseDragged(toSpace(e->scenePosition()));
            apply(out);
            return out.consumed;
        }
        case QEvent::MouseButtonRelease: {
            if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return false;
            const reorder::Outcome out = state_.mouseUp();
            apply(out);
            return out.consumed;
        }
        case QEvent::FocusOut:
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            if (state_.press()) cancel();
            return false;
        default: return false;
    }
}

}  // namespace velmar::ui

