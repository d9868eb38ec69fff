// The value of a gh status row: a green check, a warning triangle, a small
// spinner while the check runs, or a dash while there is nothing to say.
import QtQuick
import Velmar.Views

Row {
    id: label
    required property Theme theme
    /// {state, text}: state "good", "bad", "checking" or "pending".
    required property var status

    readonly property string kind: status.state

    spacing: 6
    Accessible.role: Accessible.StaticText
    Accessible.name: status.text

    SymbolIcon {
        anchors.verticalCenter: parent.verticalCenter
        visible: label.kind === "good" || label.kind === "bad"
        name: label.kind === "good" ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
        color: label.kind === "good" ? label.theme.success
             : (label.theme.dark ? label.theme.warning : label.theme.warningEmphasis)
        size: label.theme.body
    }
    RepoSpinner {
        anchors.verticalCenter: parent.verticalCenter
        visible: label.kind === "checking"
        theme: label.theme
        Accessible.ignored: true
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: label.status.text
        textFormat: Text.PlainText
        color: label.kind === "pending" ? label.theme.tertiary : label.theme.secondary
        font.pixelSize: label.theme.body
        Accessible.ignored: true
    }
}
