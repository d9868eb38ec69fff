// One step of the first-run checklist: a check mark once done, the step's
// title, and under it whatever guidance the step needs now.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

RowLayout {
    id: step
    required property Theme theme
    required property PanelWords words
    property bool done: false
    property bool muted: false
    /// May hold markup for the fixed-pitch command name.
    property string title
    property string plainTitle: title
    default property alias guidance: guidanceColumn.data

    spacing: 10

    Item {
        id: mark
        Layout.alignment: Qt.AlignTop
        implicitWidth: step.theme.title3 + 2
        implicitHeight: step.theme.title3 + 2
        // Mark and title are read as one: the title, then "Done" or "Not done".
        Accessible.role: Accessible.StaticText
        Accessible.name: step.plainTitle
        Accessible.description: step.done ? step.words.done : step.words.notDone
        SymbolIcon {
            anchors.centerIn: parent
            name: step.done ? "checkmark.circle.fill" : "circle"
            color: step.done ? step.theme.success : step.theme.tertiary
            size: step.theme.title3
        }
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop
        spacing: 6
        Text {
            Layout.fillWidth: true
            Layout.topMargin: 2
            text: step.title
            textFormat: Text.StyledText
            color: step.muted ? step.theme.tertiary : step.theme.primary
            font.pixelSize: step.theme.body
            font.weight: Font.Medium
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        ColumnLayout {
            id: guidanceColumn
            Layout.fillWidth: true
            spacing: 0
        }
    }
}
