// What the list shows when no repository is watched: a struck-through eye,
// a title, a line of help and the way to the settings screen.
import QtQuick
import QtQuick.Templates as T

Item {
    id: empty
    required property var panel
    required property var theme

    Column {
        anchors.centerIn: parent
        width: Math.min(empty.width - 32, 320)
        spacing: 8

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "eye.slash"
            color: empty.theme.secondary
            size: 40
        }
        Item { width: 1; height: 2 }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: "No repos watched yet."
            color: empty.theme.primary
            font.pixelSize: empty.theme.title2
            font.weight: Font.Bold
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: "Add the repositories you care about to see their open pull requests here."
            color: empty.theme.secondary
            font.pixelSize: empty.theme.body
        }
        Item { width: 1; height: 6 }
        T.Button {
            id: add
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Add repos"
            hoverEnabled: true
            implicitWidth: label.implicitWidth + 24
            implicitHeight: 26
            Accessible.name: text
            onClicked: empty.panel.navigate("manage")
            background: Rectangle {
                radius: 6
                color: empty.theme.tint
                opacity: add.down ? 0.8 : 1
            }
            contentItem: Text {
                id: label
                text: add.text
                color: "white"
                font.pixelSize: empty.theme.body
                font.weight: Font.Medium
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
}
