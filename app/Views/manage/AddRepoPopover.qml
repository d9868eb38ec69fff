// The popover of the add button: a slug field with its "Add" button, and
// the suggestions the core has gathered, filtered by the field. It is up
// while the model's add field is open; when the window closes it (a press
// outside, Escape) it sends the close, and only then.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

Popover {
    id: popover
    required property PanelModel panel

    edge: "bottom"
    preferredWidth: 360
    accessibleName: panel.words.addARepo
    visible: panel.addOpen
    onClosed: if (popover.panel.addOpen) popover.panel.send({ msg: "close_add" })

    // The content is built by the popover's loader, in this file's context.
    // qmllint disable unqualified
    content: ColumnLayout {
        spacing: 10

        Text {
            text: popover.panel.words.addARepo
            color: popover.theme.primary
            font.pixelSize: popover.theme.headline
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            CappedTextField {
                Layout.fillWidth: true
                theme: popover.theme
                modelText: popover.panel.addText
                maxBytes: popover.panel.slugCapacity
                accessibilityLabel: popover.panel.words.repositorySlug
                placeholderText: popover.panel.words.slugPlaceholder
                autofocus: true
                onEdited: (text) => popover.panel.send({ msg: "add_text", text: text })
                onSubmitted: popover.panel.send({ msg: "submit_add" })
            }
            PushButton {
                theme: popover.theme
                text: popover.panel.words.add
                prominent: true
                enabled: popover.panel.canSubmitAdd
                onClicked: popover.panel.send({ msg: "submit_add" })
            }
        }
        Text {
            Layout.fillWidth: true
            text: popover.panel.words.suggestionsIntro
            color: popover.theme.secondary
            font.pixelSize: popover.theme.callout
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        SuggestionList {
            Layout.fillWidth: true
            Layout.preferredHeight: 200
            panel: popover.panel
            theme: popover.theme
        }
        RowLayout {
            Layout.fillWidth: true
            Item { Layout.fillWidth: true }
            PushButton {
                theme: popover.theme
                text: popover.panel.words.done
                onClicked: popover.panel.send({ msg: "close_add" })
            }
        }
    }
    // qmllint enable unqualified
}
