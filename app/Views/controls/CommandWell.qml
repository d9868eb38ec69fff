// A shell command to run, in a small well the user can select from, with a
// button that copies it.
import QtQuick
import Velmar.Views

Row {
    id: well
    required property PanelModel panel
    required property Theme theme
    required property string command

    spacing: 8

    Item {
        anchors.verticalCenter: parent.verticalCenter
        width: text.implicitWidth + 16
        height: text.implicitHeight + 6
        Rectangle {
            anchors.fill: parent
            radius: 5
            color: well.theme.primary
            opacity: 0.06
        }
        Rectangle {
            anchors.fill: parent
            radius: 5
            color: "transparent"
            border.width: 1
            border.color: Qt.rgba(well.theme.primary.r, well.theme.primary.g, well.theme.primary.b, 0.1)
        }
        TextEdit {
            id: text
            anchors.centerIn: parent
            text: well.command
            textFormat: TextEdit.PlainText
            readOnly: true
            selectByMouse: true
            color: well.theme.primary
            selectionColor: well.theme.tint
            font.family: well.theme.monospace
            font.pixelSize: well.theme.callout
            activeFocusOnPress: false
            Accessible.role: Accessible.StaticText
            Accessible.name: well.command
        }
    }
    PushButton {
        anchors.verticalCenter: parent.verticalCenter
        theme: well.theme
        small: true
        text: "Copy"
        tooltip: "Copy command"
        Accessible.name: "Copy command " + well.command
        onClicked: well.panel.send({ msg: "copy_command", command: well.command })
    }
}
