// The keyboard focus mark: an outline in the tint just outside the area it
// is laid over, shown only while `target` has focus from the keyboard.
import QtQuick
import Velmar.Views

Rectangle {
    required property Item target
    required property Theme theme

    z: 100
    color: "transparent"
    border.width: 2
    border.color: theme.tint
    // Buttons know whether focus came from the keyboard; any other item shows it whenever focused.
    visible: target.visualFocus === true || (target.visualFocus === undefined && target.activeFocus) // qmllint disable type
    Accessible.ignored: true
}
