// The watched repositories: the add button with its popover in the heading,
// then one row per repository in the order of the watch list. The rows are
// kept by key, so a refresh or a learned pattern changes one row in place.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel
    required property string widthClass

    title: panel.words.repositories

    accessories: SymbolButton {
        id: add
        theme: section.theme
        systemImage: "plus"
        symbolSize: 12
        frameWidth: 22
        frameHeight: 20
        text: section.panel.words.addARepo
        tooltip: add.text
        onClicked: section.panel.send({ msg: "open_add" })

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
            text: section.panel.words.nothingWatched
            color: section.theme.secondary
            font.pixelSize: section.theme.body
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Repeater {
        id: rows
        model: section.panel.watchedRepos
        // A removed row took the focus with it (or its menu or editor held
        // it): once those have closed, the focus goes to the row that took
        // its place, else the one before, else the add button, so the
        // keyboard goes on from where the user was.
        onItemRemoved: (index, item) => Qt.callLater(rows.refocus, index)
        function refocus(index) {
            const now = section.Window.activeFocusItem
            if (now && now !== section.Window.contentItem) return
            const next = rows.itemAt(Math.min(index, rows.count - 1))
            if (next) next.takeFocus() // qmllint disable type
            else add.forceActiveFocus()
        }
        WatchedRepoRow {
            theme: section.theme
            panel: section.panel
            widthClass: section.widthClass
        }
    }
}
