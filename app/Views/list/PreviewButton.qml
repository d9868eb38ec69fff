// The way to a pull request's preview deployment: an arrow leaving a square,
// fainter until the pointer is over it, though still at 3:1 against the panel. Its context menu offers the browsers
// and copying the address.
import QtQuick

PlainControl {
    id: button
    link: true
    implicitWidth: 20
    implicitHeight: 20
    /// The state of the matched deployment, shown as a small dot; empty: none.
    property string deploy: ""

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: "arrow.up.forward.square"
            color: button.theme.primary
            size: 13
            opacity: button.hovered ? 1 : 0.65
            Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
        }
        Rectangle {
            visible: button.deploy.length > 0
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: 6
            height: 6
            radius: 3
            color: button.deploy === "ready" ? button.theme.success
                 : button.deploy === "failed" ? button.theme.destructive
                 : button.deploy === "building" ? button.theme.warning
                 : button.theme.tertiary
        }
    }
}
