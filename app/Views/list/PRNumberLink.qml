// The number of a pull request as a link. A hidden copy of the group's
// number template sets its width, so the titles of a group line up; the
// visible number is underlined while the core says the row is hovered.
import QtQuick

PlainControl {
    id: link
    property string numberText
    property string numberTemplate
    property bool underlined: false

    link: true
    focusRadius: 3
    implicitWidth: Math.max(template.implicitWidth, number.implicitWidth)
    implicitHeight: number.implicitHeight

    contentItem: Item { // qmllint disable deferred-property-id
        Text {
            id: template
            visible: false
            text: link.numberTemplate
            textFormat: Text.PlainText
            font: number.font
        }
        Text {
            id: number
            anchors.verticalCenter: parent.verticalCenter
            text: link.numberText
            textFormat: Text.PlainText
            color: link.theme.link
            font.pixelSize: link.theme.body
            font.weight: Font.Medium
            font.underline: link.underlined
            Accessible.ignored: true
        }
    }
}
