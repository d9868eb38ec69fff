// One entry of a PanelMenu, or a thin divider when `separator` is set. An
// entry of a choice (`choice`) keeps room for a check, shown while `chosen`;
// the model alone decides which entry is chosen.
// Pointer, keyboard (arrows, Return, Space) and a screen reader's Press all
// trigger it.
import QtQuick
import Velmar.Views
import QtQuick.Templates as T

T.MenuItem {
    id: item
    required property Theme theme
    property bool separator: false
    /// Drawn in the destructive colour.
    property bool destructive: false
    property bool choice: false
    property bool chosen: false

    enabled: !separator
    checkable: choice
    checked: chosen
    // A click toggles a checkable entry; the mark goes back to the model's word.
    onToggled: checked = Qt.binding(() => item.chosen)
    hoverEnabled: true
    implicitWidth: separator ? 0 : label.x + label.implicitWidth + 16
    implicitHeight: separator ? 9 : 22

    Accessible.role: separator ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: text
    Accessible.checkable: choice
    Accessible.checked: checked
    Accessible.onPressAction: item.activate()

    function activate() {
        if (!item.enabled) return
        item.triggered()
        if (item.menu) item.menu.dismiss()
    }
    Keys.onReturnPressed: activate()
    Keys.onEnterPressed: activate()

    background: Rectangle {
        visible: !item.separator
        radius: 4
        color: item.theme.tint
        opacity: item.highlighted || item.hovered ? 1 : 0
    }
    contentItem: Item { // qmllint disable deferred-property-id
        SymbolIcon {
            visible: item.choice && item.checked
            anchors.verticalCenter: parent.verticalCenter
            x: 6
            name: "checkmark"
            size: 11
            color: item.highlighted || item.hovered ? "white" : item.theme.primary
        }
        Text {
            id: label
            visible: !item.separator
            anchors.verticalCenter: parent.verticalCenter
            x: item.choice ? 22 : 8
            text: item.text
            textFormat: Text.PlainText
            color: item.highlighted || item.hovered ? "white" : (item.destructive ? item.theme.destructive : item.theme.primary)
            font.pixelSize: item.theme.body
        }
        Rectangle {
            visible: item.separator
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: 1
            color: item.theme.quaternary
        }
    }
}
