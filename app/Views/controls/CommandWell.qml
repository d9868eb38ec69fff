// A shell command to run, in a small well the user can select from, with a
// button that copies it. The button stands beside the well when both fit the
// width it is given, else under it, and a command wider than that wraps.
import QtQuick
import QtQuick.Layouts
import Velmar.Views

GridLayout {
    id: well
    required property PanelModel panel
    required property Theme theme
    required property string command

    // The room is the width of what holds it, never its own, which follows
    // the choice; with no room known it takes one line.
    readonly property real room: parent ? parent.width : 0
    readonly property bool fits: room <= 0 || box.implicitWidth + columnSpacing + copy.implicitWidth <= room
    columns: fits ? 2 : 1
    columnSpacing: 8
    rowSpacing: 6

    Item {
        id: box
        Layout.alignment: Qt.AlignVCenter
        Layout.maximumWidth: well.room > 0 ? well.room : implicitWidth
        implicitWidth: text.implicitWidth + 16
        implicitHeight: text.height + 6
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
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            width: box.width - 16
            text: well.command
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
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
        id: copy
        Layout.alignment: Qt.AlignVCenter | Qt.AlignLeft
        theme: well.theme
        small: true
        text: well.panel.words.copy
        tooltip: well.panel.words.copyCommand
        Accessible.name: well.panel.words.copyCommand + " " + well.command
        onClicked: well.panel.send({ msg: "copy_command", command: well.command })
    }
}
