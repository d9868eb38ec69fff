// The popover that edits one repository's preview URL pattern. It is up
// while the model edits this repository; when the window closes it (a press
// outside, Escape away from the field) it cancels the edit, and only then.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

Popover {
    id: editor
    required property PanelModel panel
    required property var repoId
    required property string name
    required property string placeholder
    required property string hint
    required property string removeTooltip

    edge: "trailing"
    preferredWidth: 320
    visible: panel.editingRepo === repoId
    onClosed: if (editor.panel.editingRepo === editor.repoId) editor.panel.send({ msg: "cancel_edit" })

    // The content is built by the popover's loader, in this file's context.
    // qmllint disable unqualified
    content: ColumnLayout {
        spacing: 10
        // Return anywhere but on a button saves.
        Keys.onReturnPressed: editor.panel.send({ msg: "save_pattern" })
        Keys.onEnterPressed: editor.panel.send({ msg: "save_pattern" })

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Text {
                Layout.fillWidth: true
                text: editor.name
                textFormat: Text.PlainText
                color: editor.theme.primary
                font.pixelSize: editor.theme.headline
                font.weight: Font.DemiBold
                elide: Text.ElideMiddle
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                text: editor.panel.words.previewUrl
                color: editor.theme.secondary
                font.pixelSize: editor.theme.callout
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        CappedTextField {
            Layout.fillWidth: true
            theme: editor.theme
            modelText: editor.panel.editText
            maxBytes: editor.panel.patternCapacity
            accessibilityLabel: editor.panel.words.previewUrlPattern
            placeholderText: editor.placeholder
            autofocus: true
            cancels: true
            onEdited: (text) => editor.panel.send({ msg: "edit_text", text: text })
            onSubmitted: editor.panel.send({ msg: "save_pattern" })
            onCancelled: editor.panel.send({ msg: "cancel_edit" })
        }
        Text {
            Layout.fillWidth: true
            text: editor.panel.words.placeholdersLine
            textFormat: Text.PlainText
            color: editor.theme.secondary
            font.pixelSize: editor.theme.caption
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            text: editor.hint
            textFormat: Text.PlainText
            color: editor.theme.secondary
            font.pixelSize: editor.theme.caption
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        // Remove sits apart from Cancel and Save; when the three do not fit
        // on one line (the narrowest window), Remove takes a line of its own
        // above them rather than pushing the popover past the window's edge.
        GridLayout {
            id: buttons
            Layout.fillWidth: true
            readonly property real oneLine: remove.implicitWidth + cancel.implicitWidth
                                            + save.implicitWidth + 3 * columnSpacing
            columns: editor.availableWidth >= oneLine ? 2 : 1
            columnSpacing: 8
            rowSpacing: 8
            PushButton {
                id: remove
                theme: editor.theme
                text: editor.panel.words.remove
                textColor: editor.theme.destructive
                tooltip: editor.removeTooltip
                onClicked: editor.panel.send({ msg: "remove_repo", id: editor.repoId })
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: buttons.columnSpacing
                Item { Layout.fillWidth: true }
                PushButton {
                    id: cancel
                    theme: editor.theme
                    text: editor.panel.words.cancel
                    onClicked: editor.panel.send({ msg: "cancel_edit" })
                }
                PushButton {
                    id: save
                    theme: editor.theme
                    text: editor.panel.words.save
                    prominent: true
                    Accessible.defaultButton: true
                    onClicked: editor.panel.send({ msg: "save_pattern" })
                }
            }
        }
    }
    // qmllint enable unqualified
}
