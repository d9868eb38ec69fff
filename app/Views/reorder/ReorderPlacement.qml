// Where an item of a reorderable list is drawn, given to it as its transform:
// the lifted one where the drag puts it, the others in their places moved
// aside to make room, on the reorder's spring while things glide. It raises
// its item over its neighbours while lifted or gliding, and reports the
// item's frame to the drag whenever the layout moves it or the frame changes.
import QtQuick
import Velmar.Views

Translate {
    id: placement
    required property Item item
    required property RepoDragTracker drag
    /// The id the drag knows the item by (a group's row: its group's).
    required property var itemId
    /// The item as the drag lays it out, in the item's own coordinates.
    property rect frame: Qt.rect(0, 0, item.width, item.height)
    /// A child of the item that a press lifts it by, where that is less
    /// than its frame; none: the frame less the drag's trailing strip.
    property Item handle: null
    /// An item that moves with another (a group's row) reports nothing.
    property bool reports: true
    /// Where the lifted item stands below the top the drag gives.
    property real liftedOffset: 0
    /// The item's z while lifted or gliding.
    property real raisedZ: 1

    readonly property bool lifted: drag.dragId === itemId
    readonly property real restingTop: item.y + frame.y
    // The rows of the list's own content take the drag's top as it is,
    // sparing a mapping at every move of the pointer.
    readonly property bool inSpace: item.parent === drag.space
    property real shownTop: lifted ? (inSpace ? drag.draggedTop : drag.toItemY(item.parent, drag.draggedTop)) + liftedOffset
                                   : restingTop + drag.shiftOf(itemId, drag.shiftsRevision)
    Behavior on shownTop {
        enabled: placement.drag.gliding && !placement.lifted
        ReorderSpring { id: glide }
    }
    y: shownTop - restingTop

    readonly property bool raised: lifted || glide.running
    onRaisedChanged: item.z = raised ? raisedZ : 0

    readonly property rect handleFrame: handle ? Qt.rect(handle.x, handle.y, handle.width, handle.height)
                                               : Qt.rect(0, 0, 0, 0)
    function report() {
        if (!reports) return
        drag.reportFrame(itemId, item, frame)
        if (handle) drag.reportHandle(itemId, item, handleFrame)
    }
    onRestingTopChanged: report()
    onFrameChanged: report()
    onHandleFrameChanged: report()
    onItemIdChanged: report()
    Component.onCompleted: report()
}
