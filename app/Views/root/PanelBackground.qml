// The backdrop: a flat colour for the scheme's material, and in light scheme
// the window colour laid over it.
import QtQuick

Item {
    id: background
    required property var theme

    Rectangle {
        anchors.fill: parent
        color: background.theme.backdrop
    }
    Rectangle {
        anchors.fill: parent
        color: background.theme.backdropOverlay
    }
}
