// Marks a draft: a "draft" pill where there is room, a dashed circle in the
// narrowest panel.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: marker
    required property Theme theme
    required property PanelWords words
    required property string widthClass
    readonly property bool asSymbol: widthClass === "minimal"

    implicitWidth: content.implicitWidth
    implicitHeight: content.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: words.draft

    // Built only on a draft's row.
    // The components below are built by this file's loader, in its context.
    // qmllint disable unqualified
    Loader {
        id: content
        anchors.verticalCenter: parent.verticalCenter
        active: marker.visible
        sourceComponent: marker.asSymbol ? symbol : pill
    }
    Component {
        id: pill
        Pill {
            theme: marker.theme
            text: marker.words.draft
            role: "warning"
            Accessible.ignored: true
        }
    }
    Component {
        id: symbol
        SymbolIcon {
            name: "circle.dashed"
            size: 11
            color: marker.theme.dark ? marker.theme.warning : marker.theme.warningEmphasis
        }
    }
    HoverHandler { id: hover; enabled: marker.asSymbol }
    ToolTip.text: marker.words.draftTooltip
    ToolTip.visible: marker.asSymbol && hover.hovered
    ToolTip.delay: 700
    // qmllint enable unqualified
}
