// The way to a pull request's preview deployment: an arrow leaving a square,
// faint until the pointer is over it. Its context menu offers the browsers
// and copying the address.
import QtQuick

PlainButton {
    id: button
    link: true
    implicitWidth: 20
    implicitHeight: 20

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: "arrow.up.forward.square"
            color: button.theme.primary
            size: 13
            opacity: button.hovered ? 1 : 0.5
            Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
        }
    }
}
