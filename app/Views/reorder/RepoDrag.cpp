// The drag's geometry and states. The sums run over the list once per call:
// lists here hold tens of items, and a pointer move calls each a few times.
#include "RepoDrag.h"

#include <cmath>
#include <unordered_set>

namespace velmar::ui::reorder {

double heightOf(Id id, const Frames& frames) {
    const auto it = frames.find(id);
    return it == frames.end() ? assumedHeight : it->second.height;
}

namespace {

// The sum of the heights of the items before `id` in `list` (all of them
// when `id` is not there).
double topOf(Id id, const std::vector<Id>& list, const Frames& frames) {
    double top = 0;
    for (Id other : list) {
        if (other == id) break;
        top += heightOf(other, frames);
    }
    return top;
}

}  // namespace

int targetIndex(Id id, double translation, const std::vector<Id>& order, const Frames& frames) {
    double top = 0;
    double draggedTop = 0;
    std::vector<double> midpoints;
    midpoints.reserve(order.size());
    for (Id other : order) {
        const double h = heightOf(other, frames);
        if (other == id)
            draggedTop = top;
        else
            midpoints.push_back(top + h / 2);
        top += h;
    }
    const double centre = draggedTop + heightOf(id, frames) / 2 + translation;
    return int(std::count_if(midpoints.begin(), midpoints.end(), [&](double m) { return m < centre; }));
}

double draggedOffset(const std::vector<Id>& order, const std::vector<Id>& shown, const std::optional<Drag>& drag,
                     const Frames& frames) {
    if (!drag) return 0;
    double total = 0;
    for (Id id : order) total += heightOf(id, frames);
    double wanted = std::max(0.0, topOf(drag->id, order, frames) + drag->translation);
    wanted = std::min(wanted, total - heightOf(drag->id, frames));
    return wanted - topOf(drag->id, shown, frames);
}

std::unordered_map<Id, double> shifts(const std::vector<Id>& order, const std::vector<Id>& shown,
                                      const Frames& frames) {
    std::unordered_map<Id, double> out;
    double top = 0;
    for (Id id : order) {
        out[id] = -top;
        top += heightOf(id, frames);
    }
    top = 0;
    for (Id id : shown) {
        out[id] += top;
        top += heightOf(id, frames);
    }
    return out;
}

std::optional<Id> handleAt(Point p, const std::vector<Id>& ids, const Frames& frames, const Frames& handles,
                           double trailingClearance) {
    for (Id id : ids) {
        if (const auto h = handles.find(id); h != handles.end()) {
            if (h->second.contains(p)) return id;
            continue;
        }
        if (const auto f = frames.find(id); f != frames.end())
            if (f->second.contains(p) && p.x < f->second.right() - trailingClearance) return id;
    }
    return std::nullopt;
}

// ---- States ----

Outcome RepoDragState::setIds(std::vector<Id> ids) {
    ids_ = std::move(ids);
    const std::unordered_set<Id> present(ids_.begin(), ids_.end());
    for (Frames* map : {&frames_, &handles_, &pendingFrames_, &pendingHandles_})
        std::erase_if(*map, [&](const auto& entry) { return !present.contains(entry.first); });
    if (press_ && !present.contains(press_->id)) return cancel();
    return {};
}

Outcome RepoDragState::setEnabled(bool enabled) {
    enabled_ = enabled;
    return enabled ? Outcome{} : cancel();
}

void RepoDragState::reportFrame(Id id, Rect frame) { (drag_ ? pendingFrames_ : frames_)[id] = frame; }
void RepoDragState::reportHandle(Id id, Rect handle) { (drag_ ? pendingHandles_ : handles_)[id] = handle; }

void RepoDragState::takePending() {
    for (auto& [id, rect] : pendingFrames_) frames_[id] = rect;
    for (auto& [id, rect] : pendingHandles_) handles_[id] = rect;
    pendingFrames_.clear();
    pendingHandles_.clear();
}

Outcome RepoDragState::cancel() {
    Outcome out;
    if (holding_) out.stopHold = true;
    holding_ = false;
    press_.reset();
    if (drag_) {
        drag_.reset();
        takePending();
        out.ended = out.dragChanged = true;
    }
    return out;
}

Outcome RepoDragState::lift(Outcome out) {
    drag_ = Drag{press_->id, 0};
    out.lifted = out.dragChanged = true;
    return out;
}

Outcome RepoDragState::mouseDown(Point p, int clickCount, const std::function<bool(Point)>& visible) {
    if (!enabled_) return {};
    Outcome out = cancel();
    // The second click of a double click always belongs to the view.
    if (clickCount != 1) return out;
    const std::optional<Id> id = handleAt(p, ids_, frames_, handles_, trailingClearance_);
    if (!id || !visible(p)) return out;
    press_ = Press{*id, p};
    if (holdDelay_) {
        holding_ = true;
        out.startHold = true;
    }
    out.consumed = true;
    return out;
}

Outcome RepoDragState::mouseDragged(Point p) {
    if (!enabled_ || !press_) return {};
    Outcome out;
    out.consumed = true;
    if (!drag_) {
        const double movement = std::max(std::abs(p.x - press_->start.x), std::abs(p.y - press_->start.y));
        // Not-a-number moves nothing.
        if (!(movement >= movementThreshold)) return out;
        if (holdDelay_) {
            // Moving before the hold ended: the press is off, and the rest
            // of this drag goes to the views.
            holding_ = false;
            press_.reset();
            out.stopHold = true;
            return out;
        }
        out = lift(out);
    }
    drag_->translation = p.y - press_->start.y;
    out.dragChanged = true;
    return out;
}

Outcome RepoDragState::mouseUp() {
    if (!enabled_ || !press_) return {};
    Outcome out;
    out.consumed = true;
    if (holding_) out.stopHold = true;
    holding_ = false;
    press_.reset();
    if (drag_) {
        out.drop = std::pair{drag_->id, targetIndex(drag_->id, drag_->translation, ids_, frames_)};
        drag_.reset();
        takePending();
        out.ended = out.dragChanged = true;
    }
    return out;
}

Outcome RepoDragState::holdFired(Id id) {
    if (!holding_ || !press_ || press_->id != id || drag_) return {};
    holding_ = false;
    return lift({});
}

double RepoDragState::draggedTop() const {
    if (!drag_ || ids_.empty()) return 0;
    const auto first = frames_.find(ids_.front());
    const double origin = first == frames_.end() ? 0 : first->second.y;
    const std::vector<Id> shown = shownIds();
    return origin + topOf(drag_->id, shown, frames_) + reorder::draggedOffset(ids_, shown, drag_, frames_);
}

std::optional<int> RepoDragState::target() const {
    if (!drag_) return std::nullopt;
    return targetIndex(drag_->id, drag_->translation, ids_, frames_);
}

}  // namespace velmar::ui::reorder
