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
    readonly property int symbolSize: 13

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: "arrow.up.forward.square"
            color: button.theme.primary
            size: button.symbolSize
            opacity: button.hovered ? 1 : 0.65
            Behavior on opacity { NumberAnimation { duration: 150; easing.type: Easing.OutQuad } }
        }
        // The dot is a badge on the square's lower right corner, cut out of
        // the symbol by a ring of the panel's own colour.
        Loader {
            active: button.deploy.length > 0
            width: 9
            height: 9
            // The symbol is centred: its lower right corner, 3 points in.
            x: (parent.width + button.symbolSize) / 2 - 3 - width / 2
            y: (parent.height + button.symbolSize) / 2 - 3 - height / 2
            // The components below are built by this file's loader, in its context.
            // qmllint disable unqualified
            sourceComponent: Item {
                Rectangle {
                    anchors.fill: parent
                    radius: width / 2
                    color: button.theme.backdrop
                }
                Rectangle {
                    anchors.fill: parent
                    radius: width / 2
                    color: button.theme.backdropOverlay
                }
                Rectangle {
                    anchors.centerIn: parent
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
    }
    // qmllint enable unqualified
}
