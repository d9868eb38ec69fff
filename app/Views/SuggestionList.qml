// The suggestions under the add field, owned before shared, on a quiet
// rounded well; "No matching repos." when the filter leaves none.
import QtQuick
import QtQuick.Controls

Item {
    id: list
    required property var panel
    required property var theme

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: list.theme.quinary
    }
    Rectangle {
        anchors.fill: parent
        radius: 8
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(list.theme.primary.r, list.theme.primary.g, list.theme.primary.b, 0.08)
    }

    ListView {
        id: view
        anchors.fill: parent
        anchors.margins: 4
        visible: count > 0
        model: list.panel.suggestions
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        Accessible.role: Accessible.List
        Accessible.name: "Suggestions"
        ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }
        delegate: SuggestionRow {
            width: ListView.view.width
            theme: list.theme
            onClicked: list.panel.send({ msg: "pick_suggestion", name: name })
        }
    }

    Text {
        anchors.centerIn: parent
        visible: view.count === 0
        text: "No matching repos."
        color: list.theme.secondary
        font.pixelSize: list.theme.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
