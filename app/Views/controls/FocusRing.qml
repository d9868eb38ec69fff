// The keyboard focus mark: an outline in the tint just outside the area it
// is laid over, shown only while `target` has focus from the keyboard. A line
// of the window's colour runs along its inside, so the ring stays apart from
// a control filled with the tint ("Continue", "Add repos", "Save").
// Every control carries one but at most one is shown, so the outline is
// built only while it is: a list of rows then holds no rings at all.
import QtQuick
import Velmar.Views

Loader {
    id: ring
    required property Item target
    required property Theme theme
    property real radius: 0

    z: 100
    // Buttons know whether focus came from the keyboard; any other item shows it whenever focused.
    active: target.visualFocus === true || (target.visualFocus === undefined && target.activeFocus) // qmllint disable type
    Accessible.ignored: true

    // The components below are built by this file's loader, in its context.
    // qmllint disable unqualified
    sourceComponent: Rectangle {
        color: "transparent"
        radius: ring.radius
        border.width: 2
        border.color: ring.theme.tint
        Accessible.ignored: true

        Rectangle {
            anchors.fill: parent
            anchors.margins: parent.border.width
            radius: Math.max(0, ring.radius - parent.border.width)
            color: "transparent"
            border.width: 1
            border.color: ring.theme.windowBackground
        }
    }
    // qmllint enable unqualified
}
