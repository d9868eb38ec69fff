// One open pull request: its number as a link, the title, a draft marker,
// the author where there is room, and the preview button when a preview is
// known. The row keeps the list's row height whatever the title holds.
import QtQuick
import Velmar.Views
import QtQuick.Controls
import QtQuick.Layouts

FocusScope {
    id: row
    required property Theme theme
    required property PanelModel panel
    required property string widthClass
    required property int index
    required property var repoId
    required property int rowInGroup
    required property var prId
    required property string numberText
    required property string numberTemplate
    required property string title
    required property string author
    required property string authorTooltip
    required property bool isDraft
    required property bool hovered
    required property bool hasPreview
    required property string previewTooltip
    required property string openLabel
    required property string previewLabel
    // Checks, reviews and deployments: empty while switched off.
    required property string checks
    required property string checksLabel
    required property string reviewLabel
    required property bool conflicts
    required property string deploy
    required property string deployLabel
    /// "owner/repo" in a group that mixes repositories ("Yours"); else empty.
    required property string repoLabel

    /// The number's and the preview button's menus are the list's, shared by all rows.
    signal linkMenuRequested(Item item, real x, real y)
    signal previewMenuRequested(Item item, real x, real y)

    implicitHeight: theme.rowHeight

    // The texts that are not empty, as one phrase for the screen reader.
    function joined(parts) { return parts.filter(t => t.length > 0).join(", ") }
    // It moves with its group's heading: lifted, under the heading's divider,
    // the heading and the rows before it, above the heading's plate.
    transform: ReorderPlacement {
        item: row
        drag: row.panel.listDrag
        itemId: row.repoId
        reports: false
        liftedOffset: row.theme.headingDivider + row.theme.headingHeight + row.theme.rowHeight * row.rowInGroup
        raisedZ: 2
    }

    Accessible.role: Accessible.ListItem
    Accessible.name: repoLabel.length > 0 ? title + ", " + repoLabel : title

    // The author stands in the row when there is room; else it is the row's tooltip.
    // A repository stands in its place, also when compact, and is always the tooltip,
    // since it is often cut.
    HoverHandler { id: rowHover }
    ToolTip.text: row.repoLabel.length > 0 ? row.repoLabel : row.widthClass === "regular" ? "" : row.authorTooltip
    ToolTip.visible: rowHover.hovered && !preview.hovered && ToolTip.text.length > 0
    ToolTip.delay: 700

    RowLayout {
        id: layout
        // What the fixed items take; the title gets the rest, up to its own width.
        readonly property real fixedWidth: link.implicitWidth + spacing + (draft.visible ? draft.implicitWidth + spacing : 0)
            + (checksMark.visible ? checksMark.implicitWidth + spacing : 0)
            + (reviewMark.visible ? reviewMark.implicitWidth + spacing : 0)
            + (conflictsMark.visible ? conflictsMark.implicitWidth + spacing : 0)
            + (author.visible ? author.cappedWidth + spacing : 0) + spacing + 4
            + (preview.visible ? preview.implicitWidth + spacing : 0)
        // In the narrowest window the review and conflicts marks would leave the
        // title a letter or two; there the title's accessible name carries them.
        readonly property bool roomForMarks: width >= 180
        x: 14 + 20
        width: parent.width - x - 14
        height: row.theme.rowHeight
        spacing: row.widthClass === "minimal" ? 6 : 8

        PRNumberLink {
            id: link
            Layout.alignment: Qt.AlignVCenter
            theme: row.theme
            numberText: row.numberText
            numberTemplate: row.numberTemplate
            underlined: row.hovered
            text: row.openLabel
            onClicked: row.panel.send({ msg: "open_pr", id: row.prId })
            onHoveredChanged: row.panel.send({ msg: hovered ? "hover_pr" : "unhover_pr", id: row.prId })
            onMenuRequested: (x, y) => row.linkMenuRequested(link, x, y)
            onActiveFocusChanged: if (activeFocus) row.ListView.view.positionViewAtIndex(row.index, ListView.Contain)
        }
        // The markers are made only on a row that shows them: most rows show
        // none, and a marker left empty still costs its whole set of objects.
        // The markers below are built by their loaders, in this file's context.
        // qmllint disable unqualified
        Loader {
            id: checksMark
            Layout.alignment: Qt.AlignVCenter
            active: row.checks.length > 0
            visible: active
            sourceComponent: ChecksMarker {
                theme: row.theme
                state: row.checks
                label: row.checksLabel
            }
        }
        // qmllint enable unqualified
        Text {
            Layout.preferredWidth: Math.max(0, Math.min(implicitWidth, layout.width - layout.fixedWidth))
            // Isolated: a direction mark inside a title ends with the title.
            text: "\u2068" + row.title + "\u2069"
            textFormat: Text.PlainText
            color: row.theme.primary
            font.pixelSize: row.theme.body
            elide: Text.ElideRight
            maximumLineCount: 1
            wrapMode: Text.NoWrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: layout.roomForMarks ? row.title
                : row.joined([row.title, row.reviewLabel, row.conflicts ? row.panel.words.conflicts : ""])
        }
        // qmllint disable unqualified
        Loader {
            id: reviewMark
            active: row.reviewLabel.length > 0 && layout.roomForMarks
            visible: active
            sourceComponent: ReviewMarker {
                theme: row.theme
                widthClass: row.widthClass
                label: row.reviewLabel
                role: row.reviewLabel === row.panel.words.approved ? "accent"
                    : row.reviewLabel === row.panel.words.changesRequested ? "warning" : "info"
            }
        }
        Loader {
            id: conflictsMark
            active: row.conflicts && layout.roomForMarks
            visible: active
            sourceComponent: ReviewMarker {
                theme: row.theme
                widthClass: row.widthClass
                label: row.panel.words.conflicts
                role: "destructive"
            }
        }
        Loader {
            id: draft
            active: row.isDraft
            visible: active
            sourceComponent: DraftMarker {
                theme: row.theme
                words: row.panel.words
                widthClass: row.widthClass
            }
        }
        // qmllint enable unqualified
        Text {
            id: author
            // A long name gives way before the title does: it takes at most
            // a quarter of the row and is cut at its end past that.
            readonly property real cappedWidth: Math.min(implicitWidth, Math.ceil(layout.width / 4))
            Layout.preferredWidth: cappedWidth
            readonly property string shown: row.repoLabel.length > 0 ? row.repoLabel : row.author
            visible: row.widthClass === "regular" || (row.repoLabel.length > 0 && row.widthClass === "compact")
            text: "\u2068" + shown + "\u2069"
            textFormat: Text.PlainText
            color: row.theme.secondary
            font.pixelSize: row.theme.callout
            // A repository keeps its owner and the end of its name.
            elide: row.repoLabel.length > 0 ? Text.ElideMiddle : Text.ElideRight
            maximumLineCount: 1
            Accessible.role: Accessible.StaticText
            Accessible.name: shown
        }
        Item { Layout.fillWidth: true; Layout.minimumWidth: 4 }
        PreviewButton {
            id: preview
            visible: row.hasPreview
            theme: row.theme
            text: row.previewLabel
            tooltip: row.previewTooltip + (row.deploy.length > 0 ? " \u2014 " + row.deployLabel : "")
            deploy: row.deploy
            Accessible.description: row.deployLabel.length > 0 ? row.deployLabel : row.previewTooltip
            onClicked: row.panel.send({ msg: "open_preview", id: row.prId })
            onMenuRequested: (x, y) => row.previewMenuRequested(preview, x, y)
            onActiveFocusChanged: if (activeFocus) row.ListView.view.positionViewAtIndex(row.index, ListView.Contain)
        }
    }
}
