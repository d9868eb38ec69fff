// The one content of the panel: header, the current screen, the status line,
// over the backdrop. Reads everything from `panel`; keeps no state but the
// animated progress of the slide between the two screens.
import QtQuick
import Velmar.Views
import QtQuick.Controls

Item {
    id: root

    // Every tooltip shares one instance, drawn here in the panel's colours
    // rather than the style's yellow. What it shows comes from outside
    // (authors, repository names), so it never reads its text as markup.
    Component.onCompleted: {
        const tip = ToolTip.toolTip
        tip.contentItem.textFormat = Text.PlainText
        tip.contentItem.color = Qt.binding(() => root.theme.primary)
        tip.contentItem.font.pixelSize = root.theme.callout
        tip.background = tipBackground.createObject(root, { theme: root.theme })
    }
    Component {
        id: tipBackground
        Rectangle {
            required property Theme theme
            radius: 5
            color: theme.windowBackground
            border.width: 1
            border.color: theme.quaternary
        }
    }

    required property PanelModel panel
    required property Theme theme
    required property var chrome

    readonly property string widthClass: theme.widthClass(width)
    readonly property bool onboarding: panel.showsOnboarding
    // 0 on the list, 1 on settings; the slide and the header swap follow it.
    property real push: panel.onSettings ? 1 : 0
    Behavior on push { PushAnimation {} }

    PanelBackground {
        anchors.fill: parent
        theme: root.theme
    }

    PanelHeader {
        id: header
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: root.chrome.titlebarHeight
        panel: root.panel
        theme: root.theme
        chrome: root.chrome
        widthClass: root.widthClass
        push: root.push
    }

    Item {
        id: middle
        anchors { left: parent.left; right: parent.right; top: header.bottom; bottom: footer.top }

        ScreenStack {
            anchors.fill: parent
            visible: !root.onboarding
            settingsShown: root.panel.onSettings
            progress: root.push
            list: ListScreen {
                anchors.fill: parent
                panel: root.panel
                theme: root.theme
                widthClass: root.widthClass
            }
            // Built as it comes in, dropped once the list is back in front:
            // with twenty repositories it holds megabytes no one sees from
            // the list, where the panel spends its day.
            // The loaders' screens are built here, so they see the root.
            // qmllint disable unqualified
            settings: Loader {
                anchors.fill: parent
                active: root.panel.onSettings || root.push > 0
                sourceComponent: ManageScreen {
                    panel: root.panel
                    theme: root.theme
                    widthClass: root.widthClass
                }
            }
        }
    }

    Loader {
        anchors.fill: middle
        active: root.onboarding
        visible: active
        sourceComponent: OnboardingScreen {
            panel: root.panel
            theme: root.theme
            widthClass: root.widthClass
        }
    }
    // qmllint enable unqualified

    StatusFooter {
        id: footer
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        text: root.panel.footerText
        theme: root.theme
    }
}
