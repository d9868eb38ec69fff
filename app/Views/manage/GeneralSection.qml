// The appearance, and once the settings file has been read, the automatic
// refresh with a note on what it does.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel
    required property string widthClass

    title: panel.words.general
    footer: panel.settingsLoaded ? panel.autoFooter : ""

    FormRow {
        theme: section.theme
        divider: false
        MenuRow {
            theme: section.theme
            widthClass: section.widthClass
            title: section.panel.words.appearance
            options: [{ title: section.panel.words.dark, value: "dark" }, { title: section.panel.words.light, value: "light" },
                      { title: section.panel.words.autoTitle, value: "system" }]
            current: section.panel.appearance
            onChosen: (value) => section.panel.send({ msg: "set_appearance", appearance: value })
        }
    }
    FormRow {
        theme: section.theme
        visible: section.panel.settingsLoaded
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: section.panel.words.refreshAutomatically
                color: section.theme.primary
                font.pixelSize: section.theme.body
                // Wraps rather than cut a title short in a narrow panel.
                wrapMode: Text.Wrap
                // The switch carries the title.
                Accessible.ignored: true
            }
            AutoSwitch {
                theme: section.theme
                text: section.panel.words.refreshAutomatically
                tooltip: ""
                showsTitle: false
                on: section.panel.autoRefresh
                onClicked: section.panel.send({ msg: "set_auto", on: !section.panel.autoRefresh })
            }
        }
    }
}
