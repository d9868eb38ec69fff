// What the list shows when no repository is watched: a struck-through eye,
// a title, a line of help and the way to the settings screen.
import QtQuick
import Velmar.Views

Item {
    id: empty
    required property PanelModel panel
    required property Theme theme

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
            text: empty.panel.words.noReposWatched
            Accessible.role: Accessible.Heading
            Accessible.name: text
            color: empty.theme.primary
            font.pixelSize: empty.theme.title2
            font.weight: Font.Bold
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: empty.panel.words.emptyListHint
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            color: empty.theme.secondary
            font.pixelSize: empty.theme.body
        }
        Item { width: 1; height: 6 }
        PushButton {
            anchors.horizontalCenter: parent.horizontalCenter
            theme: empty.theme
            prominent: true
            text: empty.panel.words.addRepos
            onClicked: empty.panel.send({ msg: "navigate", screen: "manage" })
        }
    }
}
