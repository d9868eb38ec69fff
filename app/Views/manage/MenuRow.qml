// A titled choice of the settings form. From compact width up the title
// stands at the leading end and the menu at the trailing one; in the
// narrowest panel the title stands above the menu, which keeps its natural
// size, and the two are read as one group.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

GridLayout {
    id: row
    required property Theme theme
    required property string widthClass
    property string title
    /// [{title, value}], in menu order.
    property var options: []
    property string current
    signal chosen(string value)

    readonly property bool stacked: widthClass === "minimal"

    Layout.fillWidth: true
    columns: stacked ? 1 : 2
    columnSpacing: 8
    rowSpacing: 6

    Accessible.role: stacked ? Accessible.Grouping : Accessible.NoRole
    Accessible.ignored: !stacked

    Text {
        Layout.fillWidth: true
        text: row.title
        textFormat: Text.PlainText
        color: row.theme.primary
        font.pixelSize: row.theme.body
        elide: Text.ElideRight
        // The menu carries the title as its name.
        Accessible.ignored: true
    }
    MenuPicker {
        Layout.alignment: row.stacked ? Qt.AlignLeft : Qt.AlignRight | Qt.AlignVCenter
        theme: row.theme
        text: row.title
        options: row.options
        current: row.current
        onChosen: (value) => row.chosen(value)
    }
}
