// The list side of the panel. Until the repositories file has been read it
// stays blank, so nothing flashes; with no repository it shows the empty state.
import QtQuick

Item {
    id: screen
    required property var panel
    required property var theme
    required property string widthClass

    EmptyListView {
        anchors.fill: parent
        visible: screen.panel.reposLoaded && !screen.panel.hasRepos
        panel: screen.panel
        theme: screen.theme
    }
}
