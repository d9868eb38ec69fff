// A borderless button that is one symbol in a fixed frame, the whole frame
// clickable, with a faint highlight under the pointer. `text` is its
// accessible name; the tooltip may say more.
import QtQuick

PlainButton {
    id: button
    property string systemImage
    property real symbolSize: 13
    property color symbolColor: theme.secondary
    property real frameWidth: 22
    property real frameHeight: 22

    implicitWidth: frameWidth
    implicitHeight: frameHeight

    background: Rectangle {
        radius: 5
        color: button.theme.quaternaryFill
        opacity: button.down ? 1 : (button.hovered ? 0.7 : 0)
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: button.systemImage
            color: button.symbolColor
            size: button.symbolSize
        }
    }
}
