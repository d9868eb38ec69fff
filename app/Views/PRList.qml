// The open pull requests, grouped by repository: a heading per repository,
// then its rows. The view is lazy and its model changes by difference, so a
// refresh keeps the scroll position, hover, focus and any open menu. Groups
// are reordered by holding and dragging their heading (panel.listDrag).
import QtQuick
import QtQuick.Controls
import Qt.labs.qmlmodels

ListView {
    id: list
    required property var panel
    required property var theme
    required property string widthClass

    model: panel.rows
    clip: true
    topMargin: 2
    bottomMargin: 10
    boundsBehavior: Flickable.StopAtBounds
    // The core lists at most fifty rows: keep them all alive, so Tab can walk
    // every row and scrolling never builds a delegate mid-frame.
    cacheBuffer: 2000
    reuseItems: true
    activeFocusOnTab: false
    keyNavigationEnabled: false

    Accessible.role: Accessible.List
    Accessible.name: "Pull requests"

    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    // The drag watches the pointer only while the list is on screen.
    Binding {
        target: list.panel.listDrag
        property: "view"
        value: list.visible ? list : null
        restoreMode: Binding.RestoreNone
    }

    delegate: DelegateChooser {
        role: "kind"
        DelegateChoice {
            roleValue: "header"
            RepoSectionHeader {
                width: ListView.view.width
                theme: list.theme
                panel: list.panel
            }
        }
        DelegateChoice {
            roleValue: "pr"
            PRRow {
                width: ListView.view.width
                theme: list.theme
                panel: list.panel
                widthClass: list.widthClass
                previewMenu: list.panel.previewMenu
            }
        }
    }
}
