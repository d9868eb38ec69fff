// The strip at the top of the panel. The list's items (mark and name, the
// switch and buttons) and the settings items (back button and title) lie on
// top of each other and swap with a short slide as the screen changes. The
// strip itself drags the window; during onboarding it holds nothing else.
import QtQuick
import Velmar.Views
import QtQuick.Layouts
import QtQuick.Window

Item {
    id: header
    required property PanelModel panel
    required property Theme theme
    required property var chrome
    required property string widthClass
    required property real push

    readonly property bool onboarding: panel.showsOnboarding
    readonly property bool backShown: !onboarding && panel.onSettings

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton
        onPressed: header.Window.window && header.Window.window.startSystemMove()
    }

    // Escape leaves the settings screen, only while the back button is there.
    Shortcut {
        sequence: "Escape"
        enabled: header.backShown
        onActivated: header.panel.send({ msg: "navigate", screen: "list" })
    }

    RowLayout {
        id: listItems
        anchors.fill: parent
        anchors.leftMargin: header.chrome.leadingInset
        anchors.rightMargin: 10
        spacing: 8
        visible: !header.onboarding && opacity > 0
        enabled: !header.panel.onSettings
        opacity: 1 - header.push
        transform: Translate { x: -24 * header.push }

        Row {
            visible: header.widthClass !== "minimal"
            spacing: 5
            Accessible.role: Accessible.Heading
            Accessible.name: header.panel.words.appName
            AppMark {
                theme: header.theme
                size: 13
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: header.panel.words.appName
                color: header.theme.primary
                font.pixelSize: header.theme.headline
                font.weight: Font.Bold
                Accessible.ignored: true
            }
        }
        Item { Layout.fillWidth: true; Layout.minimumWidth: 8 }
        Row {
            spacing: 2
            // The switch with its trailing inset, then the row's own gap.
            Row {
                visible: header.panel.settingsLoaded
                anchors.verticalCenter: parent.verticalCenter
                AutoSwitch {
                    anchors.verticalCenter: parent.verticalCenter
                    theme: header.theme
                    text: header.panel.words.autoTitle
                    tooltip: header.panel.words.autoTooltip
                    on: header.panel.autoRefresh
                    showsTitle: header.widthClass !== "minimal"
                    onClicked: header.panel.send({ msg: "set_auto", on: !header.panel.autoRefresh })
                }
                Item { width: header.widthClass === "minimal" ? 2 : 6; height: 1 }
            }
            HeaderIconButton {
                theme: header.theme
                systemImage: "arrow.clockwise"
                label: header.panel.words.refresh
                onClicked: header.panel.send({ msg: "refresh" })
            }
            HeaderIconButton {
                theme: header.theme
                systemImage: "gearshape"
                label: header.panel.words.settings
                onClicked: header.panel.send({ msg: "navigate", screen: "manage" })
            }
        }
    }

    RowLayout {
        id: settingsItems
        anchors.fill: parent
        anchors.leftMargin: header.chrome.leadingInset
        anchors.rightMargin: 10
        spacing: 8
        visible: !header.onboarding && opacity > 0
        enabled: header.panel.onSettings
        opacity: header.push
        transform: Translate { x: 24 * (1 - header.push) }

        HeaderIconButton {
            theme: header.theme
            systemImage: "chevron.left"
            label: header.panel.words.backToPullRequests
            onClicked: header.panel.send({ msg: "navigate", screen: "list" })
        }
        Text {
            visible: header.widthClass !== "minimal"
            text: header.panel.words.settings
            color: header.theme.primary
            font.pixelSize: header.theme.headline
            font.weight: Font.Bold
            elide: Text.ElideRight
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Item { Layout.fillWidth: true; Layout.minimumWidth: 8 }
    }
}
