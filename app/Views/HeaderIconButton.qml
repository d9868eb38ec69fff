// A borderless symbol button of the header, with a rounded highlight while
// the pointer is over it. Its label is both tooltip and accessible name.
import QtQuick
import QtQuick.Controls
import QtQuick.Templates as T

T.AbstractButton {
    id: button
    required property var theme
    property string systemImage
    property string label

    implicitWidth: 26
    implicitHeight: 24
    hoverEnabled: true
    focusPolicy: Qt.NoFocus

    Accessible.name: label
    Accessible.role: Accessible.Button
    ToolTip.text: label
    ToolTip.visible: hovered && label.length > 0
    ToolTip.delay: 700

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
