// The backdrop: a flat colour for the scheme's material, and in light scheme
// the window colour laid over it.
import QtQuick
import Velmar.Views

Item {
    id: background
    required property Theme theme

    Rectangle {
        anchors.fill: parent
        color: background.theme.backdrop
    }
    Rectangle {
        anchors.fill: parent
        color: background.theme.backdropOverlay
    }
}
