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

    objectName: "prList"
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
                onMenuRequested: (item, x, y) => repoMenu.openFor(repoId, item, x, y)
            }
        }
        DelegateChoice {
            roleValue: "pr"
            PRRow {
                width: ListView.view.width
                theme: list.theme
                panel: list.panel
                widthClass: list.widthClass
                onLinkMenuRequested: (item, x, y) => linkMenu.openFor(prId, item, x, y)
                onPreviewMenuRequested: (item, x, y) => previewMenu.openFor(prId, item, x, y)
            }
        }
    }

    // One menu of each kind for the whole list: rows stay light, and a menu
    // stays open while a refresh rebuilds the rows under it.
    PanelMenu {
        id: repoMenu
        theme: list.theme
        PanelMenuItem {
            theme: list.theme
            text: "Open on GitHub"
            onTriggered: list.panel.send({ msg: "open_repo", id: repoMenu.subject })
        }
        PanelMenuItem {
            theme: list.theme
            text: "Copy Link"
            onTriggered: list.panel.send({ msg: "copy_repo_link", id: repoMenu.subject })
        }
    }
    PanelMenu {
        id: linkMenu
        theme: list.theme
        PanelMenuItem {
            theme: list.theme
            text: "Copy link"
            onTriggered: list.panel.send({ msg: "copy_pr_link", id: linkMenu.subject })
        }
    }
    PanelMenu {
        id: previewMenu
        theme: list.theme
        Instantiator {
            model: list.panel.previewMenu
            delegate: PanelMenuItem {
                required property var modelData
                theme: list.theme
                separator: modelData.kind === "separator"
                text: modelData.title || ""
                onTriggered: list.panel.send(Object.assign({ id: previewMenu.subject }, modelData.message))
            }
            onObjectAdded: (index, object) => previewMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => previewMenu.removeItem(object)
        }
    }
}
