// One browser of the strip: its icon over a small bar that marks the one
// selected, so the tile keeps its size either way.
import QtQuick

PlainButton {
    id: tile
    required property var browserId
    required property string name
    required property string initials
    required property bool isDefault
    required property bool selected
    required property string iconSource
    property real size: 22

    text: name
    tooltip: name
    Accessible.selectable: true
    Accessible.selected: selected

    contentItem: Column {
        spacing: 1
        Item {
            width: tile.size
            height: tile.size
            Rectangle {
                anchors.fill: parent
                radius: 6
                color: tile.theme.quaternaryFill
                opacity: tile.hovered ? 1 : 0
            }
            BrowserIcon {
                anchors.fill: parent
                anchors.margins: 2
                theme: tile.theme
                icon: tile.iconSource
                initials: tile.initials
                isDefault: tile.isDefault
            }
        }
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 14
            height: 2
            radius: 1
            color: tile.selected ? tile.theme.tint : "transparent"
        }
    }
}
