// The settings section about the GitHub CLI: whether gh is installed and
// signed in, with the way to install it or the command to sign in under the
// row that is not yet good.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel

    title: panel.words.githubCli
    footer: panel.ghFooter

    FormRow {
        theme: section.theme
        divider: false
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: section.panel.words.ghInstalledRow.arg(section.theme.mono(section.panel.words.gh))
                textFormat: Text.StyledText
                color: section.theme.primary
                font.pixelSize: section.theme.body
                // Wraps rather than cut a title short in a narrow panel.
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: section.panel.words.ghInstalledRow.arg(section.panel.words.gh)
            }
            GhStatusLabel {
                theme: section.theme
                status: section.panel.ghInstalledStatus
            }
        }
        GhInstallGuidance {
            Layout.fillWidth: true
            visible: section.panel.ghMissing
            panel: section.panel
            theme: section.theme
        }
    }
    FormRow {
        theme: section.theme
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: section.panel.words.signedInToGitHub
                color: section.theme.primary
                font.pixelSize: section.theme.body
                // Wraps rather than cut a title short in a narrow panel.
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            GhStatusLabel {
                theme: section.theme
                status: section.panel.ghSignedInStatus
            }
        }
        CommandWell {
            Layout.fillWidth: true
            visible: section.panel.ghSignedOut
            panel: section.panel
            theme: section.theme
            command: section.panel.ghLoginCommand
        }
    }
}
