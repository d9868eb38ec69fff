// A titled button: bordered by default, filled with the tint when
// `prominent`, or plain text in the tint when `linkStyle`. `small` gives the
// compact size used inside banners and wells.
import QtQuick

PlainButton {
    id: button
    property bool prominent: false
    property bool linkStyle: false
    property bool small: false
    property int textSize: small ? theme.caption : theme.body
    property color textColor: prominent ? "white" : (linkStyle ? theme.link : theme.primary)

    link: linkStyle
    implicitWidth: label.implicitWidth + (linkStyle ? 0 : (small ? 14 : 22))
    implicitHeight: linkStyle ? label.implicitHeight : (small ? 20 : 26)
    opacity: enabled ? 1 : 0.45

    background: Rectangle {
        visible: !button.linkStyle
        radius: button.small ? 5 : 6
        color: button.prominent ? button.theme.tintFill : button.theme.quaternaryFill
        border.width: button.prominent ? 0 : 0.5
        border.color: button.theme.tertiary
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.prominent ? "black" : button.theme.primary
            opacity: button.down ? 0.15 : (button.hovered ? 0.06 : 0)
        }
    }
    contentItem: Text { // qmllint disable deferred-property-id
        id: label
        text: button.text
        textFormat: Text.PlainText
        color: button.textColor
        font.pixelSize: button.textSize
        font.weight: button.prominent ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
