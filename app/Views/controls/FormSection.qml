// One section of the settings form: a heading (with room for controls after
// it), the grouped rows on a rounded card, and a footer note under the card
// when there is one.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

ColumnLayout {
    id: section
    required property Theme theme
    property string title
    property string footer
    /// Items laid after the title, at the trailing end of the heading.
    property alias accessories: accessoryRow.data
    /// The rows, on the card.
    default property alias rows: body.data

    spacing: 6

    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 2
        spacing: 8
        Text {
            Layout.fillWidth: true
            text: section.title
            textFormat: Text.PlainText
            color: section.theme.primary
            font.pixelSize: section.theme.headline
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Row {
            id: accessoryRow
            Layout.alignment: Qt.AlignVCenter
            spacing: 4
        }
    }

    Item {
        Layout.fillWidth: true
        implicitHeight: body.implicitHeight
        // A lighter card than the backdrop in both schemes.
        Rectangle {
            anchors.fill: parent
            radius: 8
            color: section.theme.dark ? Qt.rgba(1, 1, 1, 0.06) : Qt.rgba(1, 1, 1, 0.6)
        }
        Rectangle {
            anchors.fill: parent
            radius: 8
            color: "transparent"
            border.width: 0.5
            border.color: Qt.rgba(section.theme.primary.r, section.theme.primary.g, section.theme.primary.b, 0.1)
        }
        ColumnLayout {
            id: body
            width: parent.width
            spacing: 0
        }
    }

    Text {
        Layout.fillWidth: true
        Layout.leftMargin: 2
        Layout.rightMargin: 2
        visible: section.footer.length > 0
        text: section.footer
        textFormat: Text.PlainText
        color: section.theme.secondary
        font.pixelSize: section.theme.caption
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
