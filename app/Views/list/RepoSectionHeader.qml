// A repository's heading in the list: branch symbol, name, then a spinner
// while it loads, "failed" after a failed fetch and the number of open pull
// requests. From the second group on a divider stands above it. Its context
// menu opens the repository on GitHub or copies its address. Holding it
// lifts the group for reordering; Alt+Up and Alt+Down move it by one place.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FocusScope {
    id: header
    required property Theme theme
    required property PanelModel panel
    required property int index
    required property var repoId
    required property int groupIndex
    required property string name
    required property bool spinning
    required property bool failed
    required property var count
    required property string countLabel
    required property string loadingLabel
    required property int groupRows
    // "Yours" only: "2 blocked", and the whole heading as read ("Yours, 5 open, 2 blocked").
    required property var blocked
    required property string blockedLabel
    required property string headingLabel

    /// Its menu ("Open on GitHub", "Copy Link") is the list's.
    signal menuRequested(Item item, real x, real y)

    readonly property real dividerSpace: groupIndex > 0 ? theme.headingDivider : 0
    readonly property RepoDragTracker drag: panel.listDrag
    /// This group is the one being dragged.
    readonly property bool lifted: placement.lifted

    implicitHeight: dividerSpace + theme.headingHeight
    activeFocusOnTab: true

    // The group as the drag sees it: the divider's space (also above the
    // first group, so that every slot is alike), the heading and the rows.
    // A press lifts it by the heading's row.
    transform: ReorderPlacement {
        id: placement
        item: header
        drag: header.drag
        itemId: header.repoId
        frame: Qt.rect(0, header.dividerSpace - header.theme.headingDivider, header.width,
                       header.theme.headingDivider + header.theme.headingHeight + header.theme.rowHeight * header.groupRows)
        handle: row
    }

    Accessible.role: Accessible.Heading
    Accessible.name: headingLabel
    Accessible.description: panel.words.movesByKeys
    Accessible.focusable: true
    // A heading does nothing of its own; Press offers its menu.
    Accessible.onPressAction: header.menuRequested(row, 0, row.height)

    Keys.onPressed: (event) => {
        if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))) {
            header.menuRequested(row, 0, row.height)
            event.accepted = true
        } else if ((event.modifiers & Qt.AltModifier) && (event.key === Qt.Key_Up || event.key === Qt.Key_Down)) {
            header.panel.moveRepoBy(header.repoId, event.key === Qt.Key_Up ? -1 : 1)
            event.accepted = true
        }
    }
    onActiveFocusChanged: if (activeFocus) ListView.view.positionViewAtIndex(index, ListView.Contain)

    // Behind the lifted block: 6 beyond it on either side, 2 above and below.
    LiftedBackground {
        z: -1
        x: 14 - 6
        y: header.dividerSpace - 2
        width: header.width - 28 + 12
        height: header.theme.headingHeight + header.theme.rowHeight * header.groupRows + 4
        theme: header.theme
        radius: 8
        opacity: header.lifted ? 1 : 0
        visible: opacity > 0
        Behavior on opacity { ReorderSpring {} }
    }

    // The divider stands 5 above the block, over every group but the one
    // shown first; never over the lifted one.
    Rectangle {
        visible: header.drag.firstId !== header.repoId && !header.lifted
        x: 14 + 20
        y: header.dividerSpace - 6
        width: parent.width - x - 14
        height: 1
        color: header.theme.quaternary
        Accessible.ignored: true
    }

    RowLayout {
        id: row
        x: 14
        y: header.dividerSpace
        width: parent.width - 28 - 2
        height: header.theme.headingHeight
        spacing: 6
        // Symbol, the least spacer, and whatever marks are shown, with their gaps.
        readonly property real fixedWidth: 14 + spacing + spacing + 8
            + (spinner.visible ? spinner.implicitWidth + spacing : 0)
            + (failedPill.visible ? failedPill.implicitWidth + spacing : 0)
            + (countPill.visible ? countPill.implicitWidth + spacing : 0)
            + (blockedPill.visible ? blockedPill.implicitWidth + spacing : 0)

        Item {
            Layout.preferredWidth: 14
            Layout.preferredHeight: 14
            SymbolIcon {
                anchors.centerIn: parent
                name: "arrow.triangle.branch"
                color: header.theme.secondary
                size: 11
            }
        }
        Text {
            Layout.preferredWidth: Math.max(0, Math.min(implicitWidth, row.width - row.fixedWidth))
            text: header.name
            textFormat: Text.PlainText
            color: header.theme.primary
            font.pixelSize: header.theme.callout
            font.weight: Font.DemiBold
            elide: Text.ElideMiddle
            maximumLineCount: 1
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Item { Layout.fillWidth: true; Layout.minimumWidth: 8 }
        RepoSpinner {
            id: spinner
            visible: header.spinning
            theme: header.theme
            label: header.loadingLabel
        }
        Pill {
            id: failedPill
            visible: header.failed
            theme: header.theme
            text: header.panel.words.failed
            role: "destructive"
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Pill {
            id: blockedPill
            visible: header.blocked > 0
            theme: header.theme
            // In the narrowest panel the word would squeeze the group's name.
            text: header.width < 240 ? String(header.blocked) : header.blockedLabel
            role: "destructive"
            Accessible.role: Accessible.StaticText
            Accessible.name: header.blockedLabel
        }
        Pill {
            id: countPill
            visible: header.count >= 1
            theme: header.theme
            text: String(header.count)
            role: "accent"
            filled: true
            Accessible.role: Accessible.StaticText
            Accessible.name: header.countLabel
        }
    }

    FocusRing {
        x: row.x - 4
        y: row.y
        width: row.width + 8
        height: row.height
        target: header
        theme: header.theme
        radius: 6
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => header.menuRequested(header, point.position.x, point.position.y)
    }
}
