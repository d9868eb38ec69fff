// Extras beyond the plain list: one switch for checks, reviews and
// deployments, with a note on what it costs and shows.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel
    required property string widthClass

    title: "Extras"
    footer: "One GitHub query a minute for all repositories. Shows CI, review and deployment state, the pull requests waiting for your review, and your own."

    FormRow {
        theme: section.theme
        divider: false
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: "Checks, reviews and deployments"
                color: section.theme.primary
                font.pixelSize: section.theme.body
                wrapMode: Text.Wrap
                // The switch carries the title.
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: "checksSwitch"
                theme: section.theme
                text: "Checks, reviews and deployments"
                tooltip: ""
                showsTitle: false
                on: section.panel.checksOn
                onClicked: section.panel.send({ msg: "set_checks", on: !section.panel.checksOn })
            }
        }
    }

    // Under its parent, indented, and greyed while the parent is off.
    FormRow {
        theme: section.theme
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 16
            spacing: 8
            enabled: section.panel.checksOn
            opacity: enabled ? 1 : 0.45
            Text {
                Layout.fillWidth: true
                text: "Show my pull requests"
                color: section.theme.primary
                font.pixelSize: section.theme.body
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: "yoursSwitch"
                theme: section.theme
                text: "Show my pull requests"
                // A screen reader is not told that a control is greyed; it hears why.
                tooltip: section.panel.checksOn ? "" : "Needs checks, reviews and deployments"
                showsTitle: false
                on: section.panel.yoursOn
                onClicked: section.panel.send({ msg: "set_yours", on: !section.panel.yoursOn })
            }
        }
    }
}
