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
    footer: "One GitHub query a minute for all repositories. Shows CI, review and deployment state, and the pull requests waiting for your review."

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
}
