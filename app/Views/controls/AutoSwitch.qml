// The "Auto" switch of the list header: shows the model's value and asks for
// the opposite on a click, so the model stays the only truth.
import QtQuick

PlainControl {
    id: control
    property bool on: false
    property bool showsTitle: true

    implicitWidth: row.implicitWidth
    implicitHeight: 20
    focusRadius: 8

    accessibleRole: Accessible.CheckBox
    readonly property bool checked: on
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onToggleAction: control.clicked()

    contentItem: Row { // qmllint disable deferred-property-id
        id: row
        spacing: 5
        Text {
            visible: control.showsTitle
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            textFormat: Text.PlainText
            color: control.theme.secondary
            font.pixelSize: control.theme.callout
            Accessible.ignored: true
        }
        Rectangle {
            id: track
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 14
            radius: height / 2
            // Off, the track is a foreground level rather than a faint fill,
            // so it stands out from the panel at 3:1 or more.
            color: control.on ? control.theme.tint : control.theme.tertiary
            Behavior on color { ColorAnimation { duration: 120 } }
            Rectangle {
                width: track.height - 2
                height: width
                radius: width / 2
                y: 1
                x: control.on ? track.width - width - 1 : 1
                color: "white"
                border.width: 0.5
                border.color: Qt.rgba(0, 0, 0, 0.12)
                Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
            }
        }
    }
}
