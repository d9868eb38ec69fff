// The warning above the list when gh cannot be used: not installed, or
// signed out. It says what is wrong and offers the one step that helps; in
// the narrowest panel that step sits under the text.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

Item {
    id: banner
    required property PanelModel panel
    required property Theme theme
    required property string widthClass

    readonly property bool missing: panel.ghMissing
    readonly property bool narrow: widthClass === "minimal"
    readonly property string title: missing ? panel.words.ghMissingTitle : panel.words.ghSignedOutTitle
    // The detail names a command, set in the fixed-pitch face where it shows.
    readonly property string detailWords: missing ? panel.words.ghMissingDetail : panel.words.ghSignedOutDetail
    readonly property string command: missing ? panel.words.gh : panel.ghLoginCommand
    readonly property string detail: detailWords.arg(theme.mono(command))
    readonly property string plainDetail: detailWords.arg(command)

    implicitHeight: layout.implicitHeight + 12

    Accessible.role: Accessible.AlertMessage
    Accessible.name: title

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: banner.theme.warning
        opacity: 0.12
    }
    Rectangle {
        anchors.fill: parent
        radius: 7
        color: "transparent"
        border.width: 0.5
        border.color: Qt.rgba(banner.theme.warning.r, banner.theme.warning.g, banner.theme.warning.b, 0.3)
    }

    RowLayout {
        id: layout
        x: 10
        y: 6
        width: parent.width - 20
        spacing: 8

        SymbolIcon {
            Layout.alignment: banner.narrow ? Qt.AlignTop : Qt.AlignVCenter
            Layout.topMargin: banner.narrow ? 2 : 0
            name: "exclamationmark.triangle.fill"
            color: banner.theme.dark ? banner.theme.warning : banner.theme.warningEmphasis
            size: banner.theme.callout
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.alignment: banner.narrow ? Qt.AlignTop : Qt.AlignVCenter
            spacing: 1
            Text {
                Layout.fillWidth: true
                text: banner.title
                textFormat: Text.PlainText
                color: banner.theme.primary
                font.pixelSize: banner.theme.callout
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Text {
                Layout.fillWidth: true
                text: banner.detail
                textFormat: Text.StyledText
                color: banner.theme.secondary
                font.pixelSize: banner.theme.caption
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: banner.plainDetail
            }
            Loader {
                active: banner.narrow
                visible: active
                Layout.topMargin: 4
                sourceComponent: action
            }
        }
        Loader {
            active: !banner.narrow
            visible: active
            Layout.alignment: Qt.AlignVCenter
            sourceComponent: action
        }
    }

    // Built by the loaders above, inside this file, so it sees the banner.
    // qmllint disable unqualified
    Component {
        id: action
        PushButton {
            theme: banner.theme
            small: true
            text: banner.missing ? banner.panel.words.installInstructions : banner.panel.words.copy
            tooltip: banner.missing ? "" : banner.panel.words.copyCommand
            Accessible.name: banner.missing ? text : banner.panel.words.copyCommand
            onClicked: banner.missing ? banner.panel.send({ msg: "open_install_page" })
                                      : banner.panel.send({ msg: "copy_command", command: banner.panel.ghLoginCommand })
        }
    }
    // qmllint enable unqualified
}
