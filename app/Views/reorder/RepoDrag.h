// Reordering by drag, free of Qt: the geometry of a drag (where the lifted
// item would land, where it is drawn, what order the preview shows) and the
// states of a press that may become a drag. The Qt tracker feeds it pointer
// events and carries out what each step asks for (timer, cursor, drop).
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace velmar::ui::reorder {

using Id = std::int64_t;

/// A point of the coordinate space the items report their frames in.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Rect&) const = default;
    double right() const { return x + width; }
    /// Half-open on the far edges, so neighbours never both hold a point;
    /// false for a not-a-number point.
    bool contains(Point p) const { return p.x >= x && p.x < right() && p.y >= y && p.y < y + height; }
};

using Frames = std::unordered_map<Id, Rect>;

/// Movement, in points along either axis, that makes a press a drag.
inline constexpr double movementThreshold = 4;
/// The height an item without a recorded frame is taken to have.
inline constexpr double assumedHeight = 44;

/// The height of `id`'s frame, or `assumedHeight`.
double heightOf(Id id, const Frames& frames);

/// Where the item `id`, moved by `translation` from its place in `order`,
/// would land: the number of other items whose vertical midpoint lies
/// strictly above the dragged item's centre. Items are laid out from 0 in
/// list order with their frames' heights. An id not in `order` is taken to
/// start at the top.
int targetIndex(Id id, double translation, const std::vector<Id>& order, const Frames& frames);

/// `items` with the one whose id is `moving` taken out and put back at
/// `to`, held to the bounds of the remaining items: the place a move to
/// index `to` gives. Unchanged without an id, an index or such an item.
template <class T, class IdOf>
std::vector<T> previewOrder(std::vector<T> items, std::optional<Id> moving, std::optional<int> to, IdOf idOf) {
    if (!moving || !to) return items;
    const auto it = std::find_if(items.begin(), items.end(), [&](const T& item) { return idOf(item) == *moving; });
    if (it == items.end()) return items;
    T item = std::move(*it);
    items.erase(it);
    const int at = std::clamp(*to, 0, int(items.size()));
    items.insert(items.begin() + at, std::move(item));
    return items;
}

inline std::vector<Id> previewOrder(std::vector<Id> ids, std::optional<Id> moving, std::optional<int> to) {
    return previewOrder(std::move(ids), moving, to, [](Id id) { return id; });
}

/// The lifted item and how far the pointer has moved vertically since the press.
struct Drag {
    Id id = 0;
    double translation = 0;
    bool operator==(const Drag&) const = default;
};

/// The vertical offset of the lifted item from its slot in `shown`: it
/// follows the pointer from its place in `order`, but never past either end
/// of the list. 0 without a drag.
double draggedOffset(const std::vector<Id>& order, const std::vector<Id>& shown, const std::optional<Drag>& drag,
                     const Frames& frames);

/// How far each item of `order` stands from its resting place when the list
/// is shown as `shown`: the others make room for the lifted one.
std::unordered_map<Id, double> shifts(const std::vector<Id>& order, const std::vector<Id>& shown, const Frames& frames);

/// The first item of `ids` whose press area holds `p`: its handle where it
/// has one, else its frame less the trailing `trailingClearance`.
std::optional<Id> handleAt(Point p, const std::vector<Id>& ids, const Frames& frames, const Frames& handles,
                           double trailingClearance);

/// What the shell has to do after one step of the state machine.
struct Outcome {
    /// The event belongs to the reorder: no view may see it.
    bool consumed = false;
    /// Schedule the hold timer for the press just begun.
    bool startHold = false;
    /// Drop a pending hold timer.
    bool stopHold = false;
    /// A drag began: show the closed hand.
    bool lifted = false;
    /// The drag's observable state changed (lift, move, end).
    bool dragChanged = false;
    /// A drag ended, dropped or not: restore the cursor.
    bool ended = false;
    /// A committed drop: the lifted id and its target index.
    std::optional<std::pair<Id, int>> drop;
    bool operator==(const Outcome&) const = default;
};

/// The press and drag states of one reorderable list:
///   idle -> pressed (press on a press area) -> dragging (hold timer, or
///   movement of 4 without a hold delay) -> idle (release: drop; cancel or a
///   new press: no drop). Moving 4 before the hold ends abandons the press.
/// Invariants: a drag implies a press; a pending hold implies a press.
class RepoDragState {
public:
    struct Press {
        Id id = 0;
        Point start;
        bool operator==(const Press&) const = default;
    };

    RepoDragState(std::optional<double> holdDelay, double trailingClearance)
        : holdDelay_(holdDelay), trailingClearance_(trailingClearance) {}

    std::optional<double> holdDelay() const { return holdDelay_; }
    bool enabled() const { return enabled_; }
    const std::optional<Press>& press() const { return press_; }
    const std::optional<Drag>& drag() const { return drag_; }
    bool holding() const { return holding_; }
    const std::vector<Id>& ids() const { return ids_; }
    const Frames& frames() const { return frames_; }
    const Frames& handles() const { return handles_; }

    /// The items in the shown order. Frames of items that left are
    /// forgotten, and a drag whose item left is cancelled.
    Outcome setIds(std::vector<Id> ids);
    /// Off: every event passes untouched, and what was going on is cancelled.
    Outcome setEnabled(bool enabled);
    /// Layout reports. While a drag lasts the frames stay those of the resting
    /// layout; the latest report of each item is taken when the drag ends.
    void reportFrame(Id id, Rect frame);
    void reportHandle(Id id, Rect handle);

    /// Left button down at `p`, the `clickCount`-th click of a series;
    /// `visible` says whether the point shows the list itself.
    Outcome mouseDown(Point p, int clickCount, const std::function<bool(Point)>& visible);
    Outcome mouseDragged(Point p);
    Outcome mouseUp();
    /// The hold timer of the press on `id` fired.
    Outcome holdFired(Id id);
    /// Back to idle with no drop.
    Outcome cancel();

    /// While dragging: where the lifted item would land among `ids`.
    std::optional<int> target() const;
    /// `ids` as the preview shows them.
    std::vector<Id> shownIds() const { return previewOrder(ids_, drag_ ? std::optional(drag_->id) : std::nullopt, target()); }
    /// The lifted item's offset from its slot in the preview.
    double draggedOffset() const { return reorder::draggedOffset(ids_, shownIds(), drag_, frames_); }
    /// Where the lifted item's top is drawn, in the frames' space: its slot
    /// in the preview, counted from the first item's resting top, plus its
    /// offset. A view whose rows are still gliding draws it there all along.
    double draggedTop() const;

private:
    Outcome lift(Outcome out);
    void takePending();

    std::optional<double> holdDelay_;
    double trailingClearance_;
    bool enabled_ = true;
    std::vector<Id> ids_;
    Frames frames_;
    Frames handles_;
    Frames pendingFrames_;
    Frames pendingHandles_;
    std::optional<Press> press_;
    std::optional<Drag> drag_;
    bool holding_ = false;
};

}  // namespace velmar::ui::reorder
