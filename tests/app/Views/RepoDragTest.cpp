// The reorder's geometry and states, without Qt: where a lifted item lands,
// what the preview shows, where the lifted item is drawn, which point starts
// a press, and the states a press goes through.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Model.h"
#include "RepoDrag.h"

namespace velmar::ui::reorder {

void PrintTo(const Outcome& o, std::ostream* os) {
    *os << "{consumed " << o.consumed << ", startHold " << o.startHold << ", stopHold " << o.stopHold
        << ", lifted " << o.lifted << ", dragChanged " << o.dragChanged << ", ended " << o.ended << ", drop ";
    if (o.drop)
        *os << o.drop->first << "->" << o.drop->second;
    else
        *os << "none";
    *os << "}";
}

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

// Three items of the assumed height 44, stacked from 0.
const std::vector<Id> abc = {1, 2, 3};

TEST(repo_drag, target_index_passes_an_item_only_beyond_its_midpoint) {
    struct Row {
        Id id;
        double translation;
        std::vector<Id> order;
        Frames frames;
        int want;
    };
    const Frames tall = {{1, {0, 0, 100, 24}}, {2, {0, 24, 100, 100}}, {3, {0, 124, 100, 24}}};
    const Row table[] = {
        {1, 0, abc, {}, 0},
        // The centre exactly on the next midpoint does not pass it.
        {1, 44, abc, {}, 0},
        {1, 44.01, abc, {}, 1},
        {1, 88.01, abc, {}, 2},
        {1, 1e6, abc, {}, 2},
        {1, -1e6, abc, {}, 0},
        {3, 0, abc, {}, 2},
        {3, -88, abc, {}, 0},
        {3, -87.99, abc, {}, 1},
        // A single item always lands on itself.
        {7, 500, {7}, {}, 0},
        {7, -500, {7}, {}, 0},
        // Frames give the heights: the tall middle item's midpoint is at 74.
        {1, 62, abc, tall, 0},
        {1, 62.01, abc, tall, 1},
        // Only item 1 has a frame (10 high); item 2 counts 44, midpoint 32.
        {1, 27, {1, 2}, {{1, {0, 0, 50, 10}}}, 0},
        {1, 27.5, {1, 2}, {{1, {0, 0, 50, 10}}}, 1},
        {1, nan, abc, {}, 0},
    };
    for (const Row& row : table)
        EXPECT_EQ(targetIndex(row.id, row.translation, row.order, row.frames), row.want)
            << "id " << row.id << " by " << row.translation;
}

TEST(repo_drag, preview_order_puts_the_item_where_the_core_would_move_it) {
    struct Row {
        std::optional<Id> id;
        std::optional<int> to;
        std::vector<Id> want;
    };
    // Without an id, an index or such an item, nothing moves.
    const std::vector<Id> four = {1, 2, 3, 4};
    const Row table[] = {{std::nullopt, 1, four}, {2, std::nullopt, four}, {9, 0, four}};
    for (const Row& row : table) EXPECT_EQ(previewOrder(four, row.id, row.to), row.want);

    // Every id to every index, the ends and beyond included: the preview is
    // the order the core's move gives.
    for (Id id : four)
        for (int to = -1; to <= 5; ++to) {
            Model m;
            for (Id r : four) m.repos.push_back(Repo{.id = r, .name = "a/" + std::to_string(r)});
            m.moveRepo(id, to);
            std::vector<Id> moved;
            for (const Repo& r : m.repos) moved.push_back(r.id);
            EXPECT_EQ(previewOrder(four, id, to), moved) << id << " to " << to;
        }

    // Any identifiable item.
    struct Item {
        Id key;
        const char* name;
    };
    const auto items = previewOrder(std::vector<Item>{{5, "e"}, {6, "f"}}, Id(5), 1, [](const Item& i) { return i.key; });
    EXPECT_STREQ(items[0].name, "f");
    EXPECT_STREQ(items[1].name, "e");
}

TEST(repo_drag, the_lifted_item_follows_the_pointer_within_the_list) {
    struct Row {
        std::optional<Drag> drag;
        double want;
    };
    const Row table[] = {
        {std::nullopt, 0},
        {Drag{1, 0}, 0},
        // Past the second item's midpoint: its slot is the second, 44 down.
        {Drag{1, 50}, 6},
        {Drag{1, 30}, 30},
        {Drag{1, 80}, 36},
        // Held at the top, and at the end.
        {Drag{1, -30}, 0},
        {Drag{1, 500}, 0},
        {Drag{3, 500}, 0},
        {Drag{3, -500}, 0},
        {Drag{3, -20}, -20},
        {Drag{2, -40}, -40},
        {Drag{2, -50}, 0},
    };
    for (const Row& row : table) {
        std::vector<Id> shown = abc;
        if (row.drag) shown = previewOrder(abc, row.drag->id, targetIndex(row.drag->id, row.drag->translation, abc, {}));
        EXPECT_DOUBLE_EQ(draggedOffset(abc, shown, row.drag, {}), row.want)
            << (row.drag ? row.drag->translation : 0);
    }
    // Heights from frames: a 10-high item below a 100-high one.
    const Frames frames = {{1, {0, 0, 10, 100}}, {2, {0, 100, 10, 10}}};
    EXPECT_DOUBLE_EQ(draggedOffset({1, 2}, {2, 1}, Drag{1, 1000}, frames), 0);
    EXPECT_DOUBLE_EQ(draggedOffset({1, 2}, {2, 1}, Drag{1, 5}, frames), -5);
}

TEST(repo_drag, the_others_stand_aside_by_the_heights_they_pass) {
    const Frames frames = {{1, {0, 0, 10, 100}}, {2, {0, 100, 10, 10}}};
    using Shifts = std::unordered_map<Id, double>;
    EXPECT_EQ(shifts(abc, abc, {}), (Shifts{{1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(shifts(abc, {2, 1, 3}, {}), (Shifts{{1, 44}, {2, -44}, {3, 0}}));
    EXPECT_EQ(shifts(abc, {3, 1, 2}, {}), (Shifts{{1, 44}, {2, 44}, {3, -88}}));
    // The tall item moving down lets the short one up by its own height.
    EXPECT_EQ(shifts({1, 2, 3}, {2, 1, 3}, frames), (Shifts{{1, 10}, {2, -100}, {3, 0}}));

    // Drawn where the preview puts it: the slot counted from the first
    // item's resting top, plus the offset.
    RepoDragState s(std::nullopt, 0);
    s.setIds({1, 2});
    s.reportFrame(1, {0, -9, 10, 100});
    s.reportFrame(2, {0, 91, 10, 10});
    s.mouseDown({1, 0}, 1, [](Point) { return true; });
    s.mouseDragged({1, 7});
    EXPECT_DOUBLE_EQ(s.draggedTop(), -9 + 7);
    s.mouseDragged({1, 500});
    EXPECT_EQ(s.shownIds(), (std::vector<Id>{2, 1}));
    EXPECT_DOUBLE_EQ(s.draggedTop(), -9 + 10);
}

TEST(repo_drag, press_areas_are_handles_or_frames_less_the_trailing_strip) {
    struct Row {
        std::vector<Id> ids;
        Frames handles;
        Point p;
        std::optional<Id> want;
    };
    const Frames frames = {{1, {0, 0, 100, 40}}, {2, {0, 40, 100, 40}}};
    const Frames handle1 = {{1, {0, 0, 100, 24}}};
    const Row table[] = {
        {{1, 2}, {}, {10, 10}, 1},
        {{1, 2}, {}, {65.9, 10}, 1},
        {{1, 2}, {}, {66, 10}, std::nullopt},  // the trailing 34 points
        {{1, 2}, {}, {10, 40}, 2},             // an edge belongs to the item below
        {{1, 2}, {}, {10, 80}, std::nullopt},
        {{1, 2}, {}, {-1, 10}, std::nullopt},
        {{1, 2}, {}, {nan, 10}, std::nullopt},
        // With a handle, only the handle counts, and all of it.
        {{1, 2}, handle1, {10, 30}, std::nullopt},
        {{1, 2}, handle1, {90, 10}, 1},
        // Ids without a frame are passed over; ids not listed are not items.
        {{3, 2}, {}, {10, 50}, 2},
        {{2}, {}, {10, 10}, std::nullopt},
    };
    for (const Row& row : table)
        EXPECT_EQ(handleAt(row.p, row.ids, frames, row.handles, 34), row.want) << row.p.x << "," << row.p.y;
}

// ---- States ----

const auto yes = [](Point) { return true; };
const auto no = [](Point) { return false; };

// A list of two items 40 high; the first has a heading 24 high.
RepoDragState list(std::optional<double> hold, double clearance) {
    RepoDragState s(hold, clearance);
    s.setIds({1, 2});
    s.reportFrame(1, {0, 0, 200, 40});
    s.reportFrame(2, {0, 40, 200, 40});
    s.reportHandle(1, {0, 0, 200, 24});
    return s;
}

struct Step {
    const char* what;
    std::function<Outcome(RepoDragState&)> act;
    Outcome want;
    std::optional<Drag> drag;
    bool pressed;
};

void run(RepoDragState s, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        EXPECT_EQ(step.act(s), step.want);
        EXPECT_EQ(s.drag(), step.drag);
        EXPECT_EQ(s.press().has_value(), step.pressed);
        EXPECT_EQ(s.holding(), s.press() && !s.drag() && s.holdDelay().has_value());
    }
}

auto down(double x, double y, int clicks = 1, std::function<bool(Point)> visible = yes) {
    return [=](RepoDragState& s) { return s.mouseDown({x, y}, clicks, visible); };
}
auto moveTo(double x, double y) {
    return [=](RepoDragState& s) { return s.mouseDragged({x, y}); };
}
auto up() {
    return [](RepoDragState& s) { return s.mouseUp(); };
}
auto hold(Id id) {
    return [=](RepoDragState& s) { return s.holdFired(id); };
}

const Outcome pass{};
const Outcome swallow{.consumed = true};
const Outcome pressHeld{.consumed = true, .startHold = true};
const Outcome liftNow{.lifted = true, .dragChanged = true};
const Outcome moved{.consumed = true, .dragChanged = true};

TEST(repo_drag_states, a_held_heading_lifts_follows_and_drops) {
    run(list(0.3, 0), {
        {"press on the heading", down(10, 10), pressHeld, {}, true},
        {"3.9 either way", moveTo(13.9, 6.1), swallow, {}, true},
        {"hold ends", hold(1), liftNow, Drag{1, 0}, true},
        {"a late second timer", hold(1), pass, Drag{1, 0}, true},
        {"down past the second item's middle", moveTo(60, 55), moved, Drag{1, 45}, true},
        {"release", up(), Outcome{.consumed = true, .dragChanged = true, .ended = true, .drop = std::pair{Id(1), 1}},
         {}, false},
        {"the next release is the view's", up(), pass, {}, false},
    });
}

TEST(repo_drag_states, moving_before_the_hold_ends_gives_the_rest_to_the_views) {
    run(list(0.3, 0), {
        {"press", down(10, 10), pressHeld, {}, true},
        {"4 sideways", moveTo(14, 10), Outcome{.consumed = true, .stopHold = true}, {}, false},
        {"the timer would be stopped", hold(1), pass, {}, false},
        {"further moves", moveTo(10, 80), pass, {}, false},
        {"release", up(), pass, {}, false},
    });
}

TEST(repo_drag_states, presses_that_start_nothing) {
    run(list(0.3, 0), {
        {"below the heading, in the frame", down(10, 30), pass, {}, false},
        {"outside every item", down(10, 200), pass, {}, false},
        {"hidden under something else", down(10, 10, 1, no), pass, {}, false},
        {"second click of a double click", down(10, 10, 2), pass, {}, false},
        {"a click: swallowed whole", down(10, 10), pressHeld, {}, true},
        {"its release", up(), Outcome{.consumed = true, .stopHold = true}, {}, false},
        {"then a double click's second press", down(10, 10, 2), pass, {}, false},
    });
}

TEST(repo_drag_states, without_a_hold_movement_of_four_lifts_at_once) {
    run(list(std::nullopt, 34), {
        {"in the trailing strip", down(170, 50), pass, {}, false},
        {"on the second row", down(20, 50), swallow, {}, true},
        {"3.9", moveTo(23.9, 46.1), swallow, {}, true},
        {"4 upward", moveTo(20, 46), Outcome{.consumed = true, .lifted = true, .dragChanged = true}, Drag{2, -4}, true},
        {"sideways only", moveTo(300, 46), moved, Drag{2, -4}, true},
        {"far above the top", moveTo(20, -500), moved, Drag{2, -550}, true},
        {"release", up(), Outcome{.consumed = true, .dragChanged = true, .ended = true, .drop = std::pair{Id(2), 0}},
         {}, false},
    });
}

TEST(repo_drag_states, cancelling_ends_a_drag_without_a_drop) {
    const Outcome endedQuietly{.dragChanged = true, .ended = true};
    auto lifted = [] {
        RepoDragState s = list(std::nullopt, 0);
        s.mouseDown({10, 10}, 1, yes);
        s.mouseDragged({10, 30});
        return s;
    };
    run(lifted(), {
        {"a new press elsewhere", down(10, 200), endedQuietly, {}, false},
    });
    run(lifted(), {
        {"a new press on an item", down(10, 50), Outcome{.consumed = true, .dragChanged = true, .ended = true},
         {}, true},
    });
    run(lifted(), {
        {"the screen turns it off", [](RepoDragState& s) { return s.setEnabled(false); }, endedQuietly, {}, false},
        {"then every event passes", down(10, 10), pass, {}, false},
        {"and moves", moveTo(10, 60), pass, {}, false},
    });
    run(lifted(), {
        {"a refresh keeps the item", [](RepoDragState& s) { return s.setIds({2, 1}); }, pass, Drag{1, 20}, true},
        {"its removal", [](RepoDragState& s) { return s.setIds({2}); }, endedQuietly, {}, false},
    });
    RepoDragState held = list(0.3, 0);
    held.mouseDown({10, 10}, 1, yes);
    run(held, {
        {"a timer for another item", hold(2), pass, {}, true},
        {"cancel while held", [](RepoDragState& s) { return s.cancel(); }, Outcome{.stopHold = true}, {}, false},
        {"the timer after its press", hold(1), pass, {}, false},
    });
}

TEST(repo_drag_states, a_single_row_lifts_previews_itself_and_drops_in_place) {
    RepoDragState s(std::nullopt, 0);
    s.setIds({5});
    s.reportFrame(5, {0, 0, 100, 30});
    s.mouseDown({5, 5}, 1, yes);
    s.mouseDragged({5, 200});
    EXPECT_EQ(s.shownIds(), std::vector<Id>{5});
    EXPECT_DOUBLE_EQ(s.draggedOffset(), 0);
    EXPECT_EQ(s.mouseUp().drop, (std::pair{Id(5), 0}));
}

TEST(repo_drag_states, frames_stay_those_of_the_resting_layout_during_a_drag) {
    RepoDragState s = list(std::nullopt, 0);
    s.mouseDown({10, 50}, 1, yes);
    s.mouseDragged({10, 8});
    // The preview moved item 2 up; its report waits until the drag ends.
    s.reportFrame(2, {0, 0, 200, 40});
    s.reportFrame(1, {0, 40, 200, 40});
    EXPECT_EQ(s.frames().at(2), (Rect{0, 40, 200, 40}));
    EXPECT_EQ(s.shownIds(), (std::vector<Id>{2, 1}));
    EXPECT_DOUBLE_EQ(s.draggedOffset(), 0);
    s.mouseUp();
    EXPECT_EQ(s.frames().at(2), (Rect{0, 0, 200, 40}));
    EXPECT_EQ(s.frames().at(1), (Rect{0, 40, 200, 40}));
    // Items that leave take their frames with them.
    s.setIds({1});
    EXPECT_FALSE(s.frames().contains(2));
    EXPECT_FALSE(s.handles().contains(2));
}

}  // namespace
}  // namespace velmar::ui::reorder
