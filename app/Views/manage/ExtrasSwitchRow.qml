// One switch of the Extras section: its title, the switch, and a caption
// under them when there is one. Greyed and inert while not usable.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormRow {
    id: row
    property string title
    property string caption
    property string switchName
    property bool on: false
    property bool usable: true
    property real indent: 0
    /// The switch was pressed.
    signal toggled()

    ColumnLayout {
        Layout.fillWidth: true
        Layout.leftMargin: row.indent
        spacing: 2
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            opacity: row.usable ? 1 : 0.45
            Text {
                Layout.fillWidth: true
                text: row.title
                textFormat: Text.PlainText
                color: row.theme.primary
                font.pixelSize: row.theme.body
                wrapMode: Text.Wrap
                // The switch carries the title.
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: row.switchName
                theme: row.theme
                text: row.title
                tooltip: ""
                showsTitle: false
                enabled: row.usable
                on: row.on
                onClicked: row.toggled()
                Accessible.description: row.caption
            }
        }
        Text {
            Layout.fillWidth: true
            visible: row.caption.length > 0
            text: row.caption
            textFormat: Text.PlainText
            color: row.theme.secondary
            font.pixelSize: row.theme.caption
            wrapMode: Text.Wrap
            Accessible.name: text
        }
    }
}
