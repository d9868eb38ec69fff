// The review decision after a title: a small pill where there is room, a
// symbol with the decision as its tooltip otherwise. "Conflicts" uses the same
// marker with the destructive role.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: marker
    required property Theme theme
    required property string widthClass
    property string label: ""
    property string role: "info"
    readonly property bool asSymbol: widthClass !== "regular"

    visible: label.length > 0
    implicitWidth: asSymbol ? 12 : content.implicitWidth
    implicitHeight: asSymbol ? 12 : content.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    // Built only while there is something to mark, as most rows have nothing.
    // The components below are built by this file's loader, in its context.
    // qmllint disable unqualified
    Loader {
        id: content
        anchors.verticalCenter: parent.verticalCenter
        anchors.horizontalCenter: marker.asSymbol ? parent.horizontalCenter : undefined
        active: marker.label.length > 0
        sourceComponent: marker.asSymbol ? symbol : pill
    }
    Component {
        id: pill
        Pill {
            theme: marker.theme
            text: marker.label
            role: marker.role
            Accessible.ignored: true
        }
    }
    Component {
        id: symbol
        Rectangle {
            width: 9
            height: 9
            radius: 2
            color: "transparent"
            border.width: 1.5
            readonly property var colors: marker.theme.pill(marker.role, true, marker.theme.dark, marker.theme.increasedContrast)
            border.color: colors.background
        }
    }
    HoverHandler { id: hover; enabled: marker.asSymbol }
    ToolTip.text: label
    ToolTip.visible: marker.asSymbol && hover.hovered
    ToolTip.delay: 700
    // qmllint enable unqualified
}
