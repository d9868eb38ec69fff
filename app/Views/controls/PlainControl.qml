// The base of the panel's links and switches: what PlainButton does, built
// on a plain item instead of Qt's button template. With a screen reader
// already running when the panel is built, Qt 6.4's template announces
// itself as a push button whatever role it is given; a plain item keeps the
// role it is given (`accessibleRole`), so a link reads as a link and a switch
// as a check box with its state.
// Tab reaches it and draws a focus ring; Space, Return and Enter activate
// it, as does a screen reader's Press; right click, the menu key and
// Shift+F10 ask for its context menu.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: control
    required property Theme theme
    property string text
    property string tooltip
    /// A link: the pointing hand, and the link role.
    property bool link: false
    property int accessibleRole: link ? Accessible.Link : Accessible.Button
    property real focusRadius: 6
    /// Laid over the whole control.
    property Item contentItem: null

    readonly property bool hovered: hover.hovered
    readonly property bool down: tap.pressed
    // Only the keyboard gives it focus (a click does not), so focus is always visual.
    readonly property bool visualFocus: activeFocus

    signal clicked()
    /// Right click (at the pointer) or the menu key and Shift+F10 (under the control).
    signal menuRequested(real x, real y)

    // A click or a menu puts the tooltip away until the pointer leaves, so
    // it never lies over the popover or menu the control opened.
    property bool tipDismissed: false
    onClicked: tipDismissed = true
    onMenuRequested: tipDismissed = true
    onHoveredChanged: if (!hovered) tipDismissed = false

    implicitWidth: contentItem ? contentItem.implicitWidth : 0
    implicitHeight: contentItem ? contentItem.implicitHeight : 0
    activeFocusOnTab: true
    onContentItemChanged: if (contentItem) {
        contentItem.parent = control
        contentItem.anchors.fill = control
    }

    Accessible.role: accessibleRole
    Accessible.name: text
    Accessible.description: tooltip
    Accessible.focusable: true
    Accessible.onPressAction: if (control.enabled) control.clicked()

    // Return belongs to the focused control before any window-wide default action.
    Keys.onShortcutOverride: (event) => event.accepted = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
    Keys.onPressed: (event) => {
        if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))) {
            control.menuRequested(0, control.height)
            event.accepted = true
        } else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
                   && !event.isAutoRepeat && (event.modifiers & ~Qt.KeypadModifier) === 0) {
            if (control.enabled) control.clicked()
            event.accepted = true
        }
    }

    ToolTip.text: tooltip
    ToolTip.visible: hovered && !tipDismissed && tooltip.length > 0
    ToolTip.delay: 700

    HoverHandler {
        id: hover
        cursorShape: control.link ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    TapHandler {
        id: tap
        acceptedButtons: Qt.LeftButton
        onTapped: control.clicked()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => control.menuRequested(point.position.x, point.position.y)
    }

    FocusRing {
        // The ring and its inner line both lie outside the control.
        anchors.fill: parent
        anchors.margins: -3
        target: control
        theme: control.theme
        radius: control.focusRadius + 1
    }
}
