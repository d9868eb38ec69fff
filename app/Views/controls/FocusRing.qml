// The keyboard focus mark: an outline in the tint just outside the area it
// is laid over, shown only while `target` has focus from the keyboard.
import QtQuick

Rectangle {
    required property Item target
    required property var theme

    z: 100
    color: "transparent"
    border.width: 2
    border.color: theme.tint
    visible: target.visualFocus === true || (target.visualFocus === undefined && target.activeFocus)
    Accessible.ignored: true
}
