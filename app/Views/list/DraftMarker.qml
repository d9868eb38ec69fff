// Marks a draft: a "draft" pill where there is room, a dashed circle in the
// narrowest panel.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: marker
    required property Theme theme
    required property string widthClass
    readonly property bool asSymbol: widthClass === "minimal"

    implicitWidth: asSymbol ? symbol.width : pill.implicitWidth
    implicitHeight: asSymbol ? symbol.height : pill.implicitHeight

    Accessible.role: Accessible.StaticText
    Accessible.name: "draft"

    Pill {
        id: pill
        visible: !marker.asSymbol
        anchors.verticalCenter: parent.verticalCenter
        theme: marker.theme
        text: "draft"
        role: "warning"
        Accessible.ignored: true
    }
    SymbolIcon {
        id: symbol
        visible: marker.asSymbol
        anchors.verticalCenter: parent.verticalCenter
        name: "circle.dashed"
        size: 11
        color: marker.theme.dark ? marker.theme.warning : marker.theme.warningEmphasis
    }
    HoverHandler { id: hover; enabled: marker.asSymbol }
    ToolTip.text: "Draft"
    ToolTip.visible: marker.asSymbol && hover.hovered
    ToolTip.delay: 700
}
