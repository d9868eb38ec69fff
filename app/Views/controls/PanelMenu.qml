// A context menu in the panel's colours. Items are PanelMenuItem; the menu
// opens at a point of the item that asked for it and takes keyboard focus,
// so the arrows, Return and Escape work at once. One menu serves every row
// of a list: `subject` is the id of the row it was opened for, and an id
// that is gone by the time an item is picked is one the core ignores.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Templates as T

T.Menu {
    id: menu
    required property Theme theme

    property var subject

    /// The control that asked for the menu; the focus goes back to it.
    property Item opener: null

    /// Opens at (x, y) in `item`'s coordinates.
    function openAt(item, x, y) {
        let control = item
        while (control && !control.activeFocusOnTab) control = control.parent
        menu.opener = control
        menu.parent = item
        menu.popup(item, x, y)
        menu.currentIndex = -1
        menu.forceActiveFocus()
    }
    /// Opens for the row whose id is `id`.
    function openFor(id, item, x, y) {
        menu.subject = id
        openAt(item, x, y)
    }

    // Closed by Escape, a choice or a press outside, the menu leaves the
    // focus to the window itself, and the next Tab would start from the top:
    // it goes back to the opener instead, unless something else has taken it
    // meanwhile (a popover a choice opened).
    onClosed: {
        const control = menu.opener
        menu.opener = null
        if (!control || !control.visible || !control.Window.window) return
        const now = control.Window.activeFocusItem
        if (!now || now === control.Window.contentItem) control.forceActiveFocus()
    }

    padding: 4
    margins: 4
    modal: false
    focus: true
    implicitWidth: Math.max(160, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding

    delegate: PanelMenuItem { theme: menu.theme }

    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 0
            for (let i = 0; i < count; ++i) {
                const item = menu.itemAt(i)
                if (item) widest = Math.max(widest, item.implicitWidth)
            }
            return widest
        }
        model: menu.contentModel
        interactive: false
        clip: true
        currentIndex: menu.currentIndex
    }

    background: Rectangle {
        radius: 7
        color: menu.theme.windowBackground
        border.width: 0.5
        border.color: menu.theme.tertiary
    }
}
