// The keyboard focus mark: an outline in the tint just outside the area it
// is laid over, shown only while `target` has focus from the keyboard. A line
// of the window's colour runs along its inside, so the ring stays apart from
// a control filled with the tint ("Continue", "Add repos", "Save").
import QtQuick
import Velmar.Views

Rectangle {
    id: ring
    required property Item target
    required property Theme theme

    z: 100
    color: "transparent"
    border.width: 2
    border.color: theme.tint
    // Buttons know whether focus came from the keyboard; any other item shows it whenever focused.
    visible: target.visualFocus === true || (target.visualFocus === undefined && target.activeFocus) // qmllint disable type
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        anchors.margins: ring.border.width
        radius: Math.max(0, ring.radius - ring.border.width)
        color: "transparent"
        border.width: 1
        border.color: ring.theme.windowBackground
    }
}
