// A repository's heading in the list: branch symbol, name, then a spinner
// while it loads, "failed" after a failed fetch and the number of open pull
// requests. From the second group on a divider stands above it. Its context
// menu opens the repository on GitHub or copies its address.
import QtQuick
import QtQuick.Layouts

FocusScope {
    id: header
    required property var theme
    required property var panel
    required property int index
    required property var repoId
    required property int groupIndex
    required property string name
    required property bool spinning
    required property bool failed
    required property var count
    required property string countLabel
    required property string loadingLabel

    /// Its menu ("Open on GitHub", "Copy Link") is the list's.
    signal menuRequested(Item item, real x, real y)

    readonly property real dividerSpace: groupIndex > 0 ? 11 : 0

    implicitHeight: dividerSpace + 24
    activeFocusOnTab: true

    Accessible.role: Accessible.Heading
    Accessible.name: name
    Accessible.focusable: true
    // A heading does nothing of its own; Press offers its menu.
    Accessible.onPressAction: header.menuRequested(row, 0, row.height)

    Keys.onPressed: (event) => {
        if (event.key === Qt.Key_Menu) {
            header.menuRequested(row, 0, row.height)
            event.accepted = true
        }
    }
    onActiveFocusChanged: if (activeFocus) ListView.view.positionViewAtIndex(index, ListView.Contain)

    Rectangle {
        visible: header.groupIndex > 0
        x: 14 + 20
        y: 5
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
        height: 24
        spacing: 6
        // Symbol, the least spacer, and whatever marks are shown, with their gaps.
        readonly property real fixedWidth: 14 + spacing + spacing + 8
            + (spinner.visible ? spinner.implicitWidth + spacing : 0)
            + (failedPill.visible ? failedPill.implicitWidth + spacing : 0)
            + (countPill.visible ? countPill.implicitWidth + spacing : 0)

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
            text: "failed"
            role: "destructive"
            Accessible.role: Accessible.StaticText
            Accessible.name: text
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
