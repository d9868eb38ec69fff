// A popover hanging from `anchorItem`: below it ("bottom"), or beside it
// ("trailing", turned to the leading side when the window has no room on
// the trailing one, and below when it has room on neither). It is modal, so
// a press outside or Escape closes it, and what lies beneath takes no input
// meanwhile. Its content is built each time it opens, so a field in it
// starts from the model's value and takes the focus afresh.
import QtQuick
import Velmar.Views
import QtQuick.Templates as T

T.Popup {
    id: popover
    required property Theme theme
    required property Item anchorItem
    property string edge: "bottom"
    property real preferredWidth: 320
    property string accessibleName
    /// The content, built while the popover is open.
    property Component content

    readonly property real windowWidth: anchorItem && anchorItem.Window.window ? anchorItem.Window.width : preferredWidth + 16

    parent: anchorItem
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    margins: 8
    padding: 14
    width: Math.min(preferredWidth, windowWidth - 2 * margins)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    // Where it hangs, decided as it opens: "below", "trailing" or "leading".
    property string side: "below"
    readonly property real gap: 6
    function place() {
        if (popover.edge !== "trailing") {
            popover.side = "below"
            return
        }
        const at = popover.anchorItem.mapToItem(null, 0, 0)
        const trailingRoom = popover.windowWidth - (at.x + popover.anchorItem.width) - popover.margins
        const leadingRoom = at.x - popover.margins
        popover.side = trailingRoom >= popover.width + gap ? "trailing"
                     : leadingRoom >= popover.width + gap ? "leading" : "below"
    }
    x: side === "trailing" ? anchorItem.width + gap
     : side === "leading" ? -width - gap
     : (anchorItem.width - width) / 2
    y: side === "below" ? anchorItem.height + gap : (anchorItem.height - height) / 2
    onAboutToShow: place()
    // Closed, it gives the focus back to the control it hangs from rather
    // than to the window, where the next Tab would start from the top.
    onClosed: {
        const control = popover.anchorItem
        if (!control || !control.visible || !control.Window.window) return
        const now = control.Window.activeFocusItem
        if (!now || now === control.Window.contentItem) control.forceActiveFocus()
    }

    contentItem: Loader {
        active: popover.visible
        sourceComponent: popover.content
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: popover.accessibleName
    }

    background: Item {
        // A soft shadow of two faint layers, then the face.
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            anchors.topMargin: -1
            anchors.bottomMargin: -6
            radius: 13
            color: Qt.rgba(0, 0, 0, popover.theme.dark ? 0.18 : 0.06)
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            anchors.bottomMargin: -3
            radius: 11
            color: Qt.rgba(0, 0, 0, popover.theme.dark ? 0.25 : 0.08)
        }
        Rectangle {
            anchors.fill: parent
            radius: 10
            color: popover.theme.windowBackground
            border.width: 0.5
            border.color: popover.theme.tertiary
        }
    }
}
