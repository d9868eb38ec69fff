// The suggestions under the add field, owned before shared, on a quiet
// rounded well; "No matching repos." when the filter leaves none. Only the
// rows in sight exist, and rows that scroll or filter away are kept for
// reuse, so typing in the field never waits for rows to be built. Tab stops
// on the list once; the arrows move through it, Return or Space adds.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: list
    required property PanelModel panel
    required property Theme theme

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: list.theme.quinary
    }
    Rectangle {
        anchors.fill: parent
        radius: 8
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(list.theme.primary.r, list.theme.primary.g, list.theme.primary.b, 0.08)
    }

    ListView {
        id: view
        anchors.fill: parent
        anchors.margins: 4
        visible: count > 0
        model: list.panel.suggestions
        clip: true
        cacheBuffer: 0
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        onActiveFocusChanged: if (activeFocus && currentIndex < 0) currentIndex = 0
        Keys.onReturnPressed: pickCurrent()
        Keys.onEnterPressed: pickCurrent()
        Keys.onSpacePressed: pickCurrent()
        function pickCurrent() {
            if (currentItem) list.panel.send({ msg: "pick_suggestion", name: currentItem.name }) // qmllint disable type
        }

        Accessible.role: Accessible.List
        Accessible.name: list.panel.words.suggestions
        ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

        delegate: SuggestionRow {
            width: ListView.view.width
            theme: list.theme
            words: list.panel.words
            current: ListView.isCurrentItem && ListView.view.activeFocus
            onClicked: list.panel.send({ msg: "pick_suggestion", name: name })
        }
    }
    FocusRing {
        anchors.fill: parent
        target: view
        theme: list.theme
        radius: 8
    }

    Text {
        anchors.centerIn: parent
        visible: view.count === 0
        text: list.panel.words.noMatchingRepos
        color: list.theme.secondary
        font.pixelSize: list.theme.body
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
