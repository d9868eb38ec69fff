// One watched repository on the settings screen: its name, the preview URL
// pattern it uses (typed, learned or none), and the button that opens the
// pattern editor. Right click or the menu key offer edit, copy and remove.
// Read as one element named by the repository, with its parts inside.
// Dragging the row (all but its trailing strip) reorders the watch list;
// Alt+Up and Alt+Down do it from the keyboard.
import QtQuick
import Velmar.Views
import QtQuick.Controls
import QtQuick.Layouts

FormRow {
    id: row
    required property PanelModel panel
    required property string widthClass
    required property int index
    required property var repoId
    required property string name
    required property string breakableName
    required property string patternKind
    required property string patternText
    required property string editLabel
    required property string removeTooltip
    required property string editorPlaceholder
    required property string editorHint

    readonly property bool narrow: widthClass === "minimal"
    readonly property RepoDragTracker drag: panel.manageDrag
    /// This row is the one being dragged.
    readonly property bool lifted: placement.lifted

    // A hairline above every row but the one shown first; none on the lifted one.
    divider: drag.firstId !== repoId && !lifted
    minimumHeight: 40

    transform: ReorderPlacement {
        id: placement
        item: row
        drag: row.drag
        itemId: row.repoId
    }

    /// Gives the keyboard focus to the row (its info button, the part Tab reaches).
    function takeFocus() { info.forceActiveFocus() }

    Keys.onPressed: (event) => {
        if ((event.modifiers & Qt.AltModifier) && (event.key === Qt.Key_Up || event.key === Qt.Key_Down)) {
            row.panel.moveRepoBy(row.repoId, event.key === Qt.Key_Up ? -1 : 1)
            event.accepted = true
        }
    }

    // Behind the lifted row: 6 beyond it on either side, 4 above and below,
    // in the card's colour made solid. Given to the row itself, not to its
    // laid-out content.
    LiftedBackground {
        parent: row
        z: -1
        x: -6
        y: -4
        width: row.width + 12
        height: row.height + 8
        theme: row.theme
        radius: 6
        color: Qt.tint(row.theme.windowBackground, row.theme.dark ? Qt.rgba(1, 1, 1, 0.08) : Qt.rgba(1, 1, 1, 0.7))
        opacity: row.lifted ? 1 : 0
        visible: opacity > 0
        Behavior on opacity { ReorderSpring {} }
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: panel.words.movesByKeys
    // The row does nothing of its own; Press offers its menu.
    Accessible.onPressAction: menu.openAt(row, 0, row.height)

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => menu.openAt(row, point.position.x, point.position.y)
    }

    RowLayout {
        Layout.fillWidth: true
        spacing: 8

        SymbolIcon {
            Layout.preferredWidth: 16
            Layout.alignment: Qt.AlignVCenter
            name: "arrow.triangle.branch"
            size: 12
            color: row.theme.secondary
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1
            Text {
                Layout.fillWidth: true
                text: row.narrow ? row.breakableName : row.name
                textFormat: Text.PlainText
                color: row.theme.primary
                font.pixelSize: row.theme.body
                wrapMode: row.narrow ? Text.Wrap : Text.NoWrap
                maximumLineCount: row.narrow ? 2 : 1
                elide: row.narrow ? Text.ElideRight : Text.ElideMiddle
                // The row itself carries the name.
                Accessible.ignored: true
            }
            // Placed by hand: the pattern takes what the mark leaves, and
            // nothing here feeds back into the width the line is given.
            Item {
                id: patternLine
                Layout.fillWidth: true
                implicitHeight: pattern.implicitHeight
                Text {
                    id: pattern
                    width: Math.max(0, Math.min(Math.ceil(implicitWidth),
                        patternLine.width - (detected.visible ? detected.implicitWidth + 6 : 0)))
                    text: row.patternText
                    textFormat: Text.PlainText
                    color: row.patternKind === "none" ? row.theme.tertiary : row.theme.secondary
                    font.pixelSize: row.theme.caption
                    font.family: row.patternKind === "none" ? row.theme.textFamily : row.theme.monospace
                    elide: Text.ElideMiddle
                    maximumLineCount: 1
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Text {
                    id: detected
                    visible: row.patternKind === "detected"
                    x: pattern.width + 6
                    anchors.baseline: pattern.baseline
                    text: row.panel.words.detected
                    color: row.theme.tertiary
                    font.pixelSize: row.theme.caption2
                    font.weight: Font.Medium
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    Accessible.description: ToolTip.text
                    HoverHandler { id: detectedHover }
                    ToolTip.text: row.panel.words.detectedTooltip
                    ToolTip.visible: detectedHover.hovered
                    ToolTip.delay: 700
                }
            }
        }
        Item { Layout.minimumWidth: 4; Layout.fillWidth: false }
        SymbolButton {
            id: info
            Layout.alignment: Qt.AlignVCenter
            theme: row.theme
            systemImage: "info.circle"
            symbolSize: 14
            text: row.editLabel
            tooltip: row.panel.words.editPreviewUrl
            onClicked: row.panel.send({ msg: "edit_pattern", repo_id: row.repoId })
            onMenuRequested: (x, y) => menu.openAt(info, x, y)

            PatternEditor {
                anchorItem: info
                theme: row.theme
                panel: row.panel
                repoId: row.repoId
                name: row.name
                accessibleName: row.editLabel
                placeholder: row.editorPlaceholder
                hint: row.editorHint
                removeTooltip: row.removeTooltip
            }
        }
    }

    PanelMenu {
        id: menu
        theme: row.theme
        PanelMenuItem {
            theme: row.theme
            text: row.panel.words.editPreviewUrlMenu
            onTriggered: row.panel.send({ msg: "edit_pattern", repo_id: row.repoId })
        }
        PanelMenuItem {
            theme: row.theme
            text: row.panel.words.copyName
            onTriggered: row.panel.send({ msg: "copy_repo_name", id: row.repoId })
        }
        PanelMenuItem { theme: row.theme; separator: true }
        PanelMenuItem {
            theme: row.theme
            text: row.panel.words.remove
            destructive: true
            onTriggered: row.panel.send({ msg: "remove_repo", id: row.repoId })
        }
    }
}
