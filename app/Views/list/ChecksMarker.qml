// The head commit's checks before a title: a green check when they pass, a
// red cross when they fail, an amber dot while they run; nothing without checks.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: marker
    required property Theme theme
    property string state: ""
    property string label: ""

    visible: state.length > 0
    implicitWidth: 12
    implicitHeight: 12

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    // Most rows show no checks at all (or the switch is off): the glyph
    // is built only for a state there is.
    // The components below are built by this file's loader, in its context.
    // qmllint disable unqualified
    Loader {
        anchors.centerIn: parent
        active: marker.state.length > 0
        sourceComponent: marker.state === "passing" ? passing : marker.state === "failing" ? failing : running
    }
    Component {
        id: passing
        SymbolIcon {
            name: "checkmark"
            size: 11
            color: marker.theme.success
        }
    }
    Component {
        id: failing
        Text {
            text: "\u2715"
            color: marker.theme.destructive
            font.pixelSize: 11
            font.weight: Font.Bold
            Accessible.ignored: true
        }
    }
    Component {
        id: running
        Rectangle {
            width: 7
            height: 7
            radius: 3.5
            color: marker.theme.dark ? marker.theme.warning : marker.theme.warningEmphasis
        }
    }
    HoverHandler { id: hover }
    ToolTip.text: label
    ToolTip.visible: hover.hovered && label.length > 0
    ToolTip.delay: 700
    // qmllint enable unqualified
}
