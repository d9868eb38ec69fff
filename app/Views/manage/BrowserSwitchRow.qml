// One browser of the settings screen: its icon and name, and the switch
// that says whether the picker offers it.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormRow {
    id: row
    required property PanelModel panel
    required property var browserId
    required property string name
    required property string initials
    required property bool isDefault
    required property string iconSource
    required property bool shown

    minimumHeight: 30

    RowLayout {
        Layout.fillWidth: true
        spacing: 8
        BrowserIcon {
            Layout.preferredWidth: 18
            Layout.preferredHeight: 18
            theme: row.theme
            icon: row.iconSource
            initials: row.initials
            isDefault: row.isDefault
        }
        Text {
            Layout.fillWidth: true
            text: row.name
            textFormat: Text.PlainText
            color: row.theme.primary
            font.pixelSize: row.theme.body
            elide: Text.ElideRight
            maximumLineCount: 1
            // The switch carries the name.
            Accessible.ignored: true
        }
        AutoSwitch {
            theme: row.theme
            text: row.name
            tooltip: ""
            showsTitle: false
            on: row.shown
            onClicked: row.panel.send({ msg: "toggle_browser_shown", id: row.browserId })
        }
    }
}
