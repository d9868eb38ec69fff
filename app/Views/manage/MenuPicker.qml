// A choice shown as a menu button: the current entry's title and a pair of
// chevrons; a click opens the entries, the current one checked. Its
// accessible name is `text`, the choice's title.
pragma ComponentBehavior: Bound

import QtQuick
import QtQml

PlainButton {
    id: picker
    /// [{title, value}], in menu order.
    property var options: []
    property string current
    signal chosen(string value)

    readonly property string currentTitle: {
        for (const option of options) if (option.value === current) return option.title
        return ""
    }

    Accessible.role: Accessible.ComboBox
    implicitWidth: content.implicitWidth + 16
    implicitHeight: 22

    onClicked: menu.openAt(picker, 0, picker.height + 2)
    onMenuRequested: menu.openAt(picker, 0, picker.height + 2)

    background: Rectangle {
        radius: 5
        color: picker.theme.quaternaryFill
        border.width: 0.5
        border.color: picker.theme.tertiary
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: picker.theme.primary
            opacity: picker.down ? 0.12 : (picker.hovered ? 0.05 : 0)
        }
    }
    contentItem: Item { // qmllint disable deferred-property-id
        Row {
            id: content
            anchors.centerIn: parent
            spacing: 4
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: picker.currentTitle
                textFormat: Text.PlainText
                color: picker.theme.primary
                font.pixelSize: picker.theme.body
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron.up.chevron.down"
                size: 11
                color: picker.theme.secondary
            }
        }
    }

    PanelMenu {
        id: menu
        theme: picker.theme
        Instantiator {
            model: picker.options
            delegate: PanelMenuItem {
                required property var modelData
                theme: picker.theme
                choice: true
                chosen: modelData.value === picker.current
                text: modelData.title
                onTriggered: picker.chosen(modelData.value)
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
