// A borderless symbol button of the header, with a rounded highlight while
// the pointer is over it. Its label is both tooltip and accessible name.
import QtQuick

PlainButton {
    id: button
    property string systemImage
    property string label

    implicitWidth: 26
    implicitHeight: 24
    text: label
    tooltip: label

    background: Rectangle {
        radius: 6
        color: button.theme.quaternaryFill
        opacity: button.hovered ? 1 : 0
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: button.systemImage
            color: button.theme.secondary
            size: 13
        }
    }
}
