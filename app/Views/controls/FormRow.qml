// One row of a settings card: its content inset from the card's edges, and
// a hairline above it unless it is the card's first row.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

Item {
    id: row
    required property Theme theme
    property bool divider: true
    property real minimumHeight: 32
    default property alias content: body.data

    Layout.fillWidth: true
    implicitHeight: Math.max(minimumHeight, body.implicitHeight + 14)

    Rectangle {
        visible: row.divider
        x: 10
        width: parent.width - 10
        height: 1
        color: row.theme.primary
        opacity: 0.08
    }
    ColumnLayout {
        id: body
        x: 10
        width: parent.width - 20
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
