// A small capsule label in one of four roles, filled or tinted; under
// increased contrast it is outlined instead.
import QtQuick
import Velmar.Views

Rectangle {
    id: pill
    required property Theme theme
    property string text
    property string role: "accent"   // accent, destructive, warning, info
    property bool filled: false

    readonly property var colors: theme.pill(role, filled, theme.dark, theme.increasedContrast)

    implicitWidth: label.implicitWidth + 12
    implicitHeight: label.implicitHeight + 2
    radius: height / 2
    color: colors.background
    border.width: theme.increasedContrast ? 1 : 0
    border.color: colors.border

    Text {
        id: label
        anchors.centerIn: parent
        text: pill.text
        textFormat: Text.PlainText
        color: pill.colors.foreground
        font.pixelSize: pill.theme.caption
        font.weight: Font.DemiBold
    }
}
