// One suggestion: the slug, a "shared" pill for a repository the user does
// not own, and a plus that shows under the pointer or on the list's current
// row. A click adds it without taking the focus, so typing goes on in the
// field. A row kept aside for reuse is hidden from assistive tools.
import QtQuick
import QtQuick.Layouts
import Velmar.Views

PlainButton {
    id: row
    required property string name
    required property bool mine
    required property string label
    required property PanelWords words

    /// The list's current row while the list has the keyboard.
    property bool current: false
    property bool pooled: false
    readonly property bool lit: hovered || current

    ListView.onPooled: pooled = true
    ListView.onReused: pooled = false
    Accessible.ignored: pooled

    text: label
    focusPolicy: Qt.NoFocus
    focusRadius: 4
    implicitHeight: 22

    background: Rectangle {
        radius: 4
        color: row.theme.quaternaryFill
        opacity: row.lit ? 1 : 0
    }
    contentItem: RowLayout { // qmllint disable deferred-property-id
        id: line
        spacing: 6
        Item { Layout.preferredWidth: 2 }
        Text {
            // As wide as the name, up to what the pill and the plus leave.
            Layout.preferredWidth: Math.max(0, Math.min(Math.ceil(implicitWidth),
                line.width - 4 - 3 * line.spacing - plus.width - (pill.visible ? pill.implicitWidth + line.spacing : 0)))
            text: row.name
            textFormat: Text.PlainText
            color: row.theme.primary
            font.pixelSize: row.theme.body
            elide: Text.ElideMiddle
            maximumLineCount: 1
            Accessible.ignored: true
        }
        Pill {
            id: pill
            visible: !row.mine
            theme: row.theme
            text: row.words.shared
            role: "info"
        }
        Item { Layout.fillWidth: true }
        SymbolIcon {
            id: plus
            name: "plus"
            size: row.theme.caption
            color: row.theme.secondary
            opacity: row.lit ? 1 : 0
        }
        Item { Layout.preferredWidth: 2 }
    }
}
