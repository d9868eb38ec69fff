// The watched repositories: the add button with its popover in the heading,
// then one row per repository in the order of the watch list. The rows are
// kept by key, so a refresh or a learned pattern changes one row in place.
import QtQuick
import QtQuick.Layouts

FormSection {
    id: section
    required property var panel
    required property string widthClass

    title: "Repositories"

    accessories: SymbolButton {
        id: add
        theme: section.theme
        systemImage: "plus"
        symbolSize: 12
        frameWidth: 22
        frameHeight: 20
        text: "Add a repo"
        tooltip: "Add a repo"
        activate: () => section.panel.send({ msg: "open_add" })

        AddRepoPopover {
            anchorItem: add
            theme: section.theme
            panel: section.panel
        }
    }

    FormRow {
        theme: section.theme
        divider: false
        visible: !section.panel.hasRepos
        Text {
            Layout.fillWidth: true
            text: "Nothing watched yet."
            color: section.theme.secondary
            font.pixelSize: section.theme.body
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Repeater {
        model: section.panel.watchedRepos
        WatchedRepoRow {
            theme: section.theme
            panel: section.panel
            widthClass: section.widthClass
        }
    }
}
