// The base of every clickable control of the panel. Tab reaches it and draws
// a focus ring; Space, Return and Enter activate it, as does a screen
// reader's Press; right click, the menu key and Shift+F10 ask for its context menu.
import QtQuick
import Velmar.Views
import QtQuick.Controls
import QtQuick.Templates as T

T.AbstractButton {
    id: control
    required property Theme theme
    property string tooltip
    /// A link: the pointing hand, and the link role for assistive tools.
    property bool link: false
    property real focusRadius: 6

    /// Right click (at the pointer) or the menu key and Shift+F10 (under the control).
    signal menuRequested(real x, real y)

    // A press or a menu puts the tooltip away until the pointer leaves, so
    // it never lies over the popover or menu the control opened.
    property bool tipDismissed: false
    onPressed: tipDismissed = true
    onClicked: tipDismissed = true
    onMenuRequested: tipDismissed = true
    onHoveredChanged: if (!hovered) tipDismissed = false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.role: link ? Accessible.Link : Accessible.Button
    Accessible.name: text
    Accessible.description: tooltip
    Accessible.focusable: true
    Accessible.onPressAction: if (control.enabled) control.clicked()

    // Return belongs to the focused control before any window-wide default action.
    Keys.onShortcutOverride: (event) => event.accepted = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
    Keys.onReturnPressed: if (control.enabled) control.clicked()
    Keys.onEnterPressed: if (control.enabled) control.clicked()
    Keys.onPressed: (event) => {
        if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))) {
            control.menuRequested(0, control.height)
            event.accepted = true
        }
    }

    ToolTip.text: tooltip
    ToolTip.visible: hovered && !tipDismissed && tooltip.length > 0
    ToolTip.delay: 700

    HoverHandler {
        cursorShape: control.link ? Qt.PointingHandCursor : Qt.ArrowCursor
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => control.menuRequested(point.position.x, point.position.y)
    }

    FocusRing {
        anchors.fill: parent
        // The ring and its inner line both lie outside the control.
        anchors.margins: -3
        target: control
        theme: control.theme
        radius: control.focusRadius + 1
    }
}
