// The open pull requests, grouped by repository: a heading per repository,
// then its rows. The view is lazy and its model changes by difference, so a
// refresh keeps the scroll position, hover, focus and any open menu. Groups
// are reordered by holding and dragging their heading (panel.listDrag).
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Controls
import Qt.labs.qmlmodels
import Velmar.Views

ListView {
    id: list
    required property PanelModel panel
    required property Theme theme
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
    // No pool of delegates for reuse: a pooled delegate is hidden but lives on
    // with the values it had when its row left the list, so the spinner of a
    // group pushed past the cap while loading kept turning, and the panel
    // drawing, for as long as it stayed open; and the pool held every such
    // delegate. With the cache buffer above nearly every row is alive anyway,
    // and a refresh costs the same without it (bench/list_frames).
    reuseItems: false
    activeFocusOnTab: false
    keyNavigationEnabled: false
    // No current item: the view would hand the focus to it whenever rows
    // move, so a heading moved by Alt+Up lost the focus to the first group
    // and a second Alt+Up moved another one. Focus stays on the item it is on.
    currentIndex: -1

    Accessible.role: Accessible.List
    Accessible.name: panel.words.pullRequests

    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    // Tab and a screen reader follow the rows as drawn: each heading, then
    // its group's rows, whatever order the delegates were made in.
    ScreenOrder { container: list.contentItem }

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
            roleValue: "more"
            MoreOnGitHubRow {
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
            text: list.panel.words.openOnGitHub
            onTriggered: list.panel.send({ msg: "open_repo", id: repoMenu.subject })
        }
        PanelMenuItem {
            theme: list.theme
            text: list.panel.words.copyRepoLink
            onTriggered: list.panel.send({ msg: "copy_repo_link", id: repoMenu.subject })
        }
    }
    PanelMenu {
        id: linkMenu
        theme: list.theme
        PanelMenuItem {
            theme: list.theme
            text: list.panel.words.copyPrLink
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
