// The list side of the panel: the browser strip, the gh warning when there
// is one, then the pull requests. Until the repositories file has been read
// the rest stays blank, so nothing flashes; with no repository it shows the
// empty state.
import QtQuick
import Velmar.Views

Item {
    id: screen
    required property PanelModel panel
    required property Theme theme
    required property string widthClass

    Column {
        id: top
        width: parent.width

        BrowserPickerRow {
            width: parent.width
            panel: screen.panel
            theme: screen.theme
            widthClass: screen.widthClass
        }
        Item {
            width: parent.width
            height: screen.panel.showsGhBanner ? banner.implicitHeight + 6 : 0
            visible: screen.panel.showsGhBanner
            GhBanner {
                id: banner
                x: 14
                width: parent.width - 28
                panel: screen.panel
                theme: screen.theme
                widthClass: screen.widthClass
            }
        }
    }

    PRList {
        anchors { left: parent.left; right: parent.right; top: top.bottom; bottom: parent.bottom }
        visible: screen.panel.hasRepos
        panel: screen.panel
        theme: screen.theme
        widthClass: screen.widthClass
    }
    EmptyListView {
        anchors { left: parent.left; right: parent.right; top: top.bottom; bottom: parent.bottom }
        visible: screen.panel.reposLoaded && !screen.panel.hasRepos
        panel: screen.panel
        theme: screen.theme
    }
}
