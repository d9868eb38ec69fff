// The first-run screen: what Velmar is, and a live check that the GitHub CLI
// is installed and signed in. The steps follow the core's re-checks; the user
// goes on with "Continue" once signed in, or skips.
import QtQuick
import Velmar.Views
import QtQuick.Controls
import QtQuick.Layouts

Flickable {
    id: screen
    required property PanelModel panel
    required property Theme theme
    required property string widthClass

    readonly property real inset: widthClass === "minimal" ? 12 : 24
    readonly property bool installed: panel.ghInstalled
    readonly property bool signedIn: panel.ghSignedIn

    contentWidth: width
    contentHeight: Math.max(height, content.implicitHeight + 48)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    // Return is the default action: "Continue", once it can be pressed.
    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: screen.visible && screen.signedIn
        onActivated: screen.panel.send({ msg: "onboarding_continue" })
    }

    ColumnLayout {
        id: content
        x: screen.inset
        width: screen.width - 2 * screen.inset
        y: Math.max(24, (screen.contentHeight - implicitHeight) / 2)
        spacing: 18

        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            spacing: 8
            AppMark {
                Layout.alignment: Qt.AlignHCenter
                theme: screen.theme
                size: 36
            }
            Text {
                Layout.alignment: Qt.AlignHCenter
                Layout.maximumWidth: content.width
                text: screen.panel.words.welcome
                color: screen.theme.primary
                font.pixelSize: screen.theme.title
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                Layout.alignment: Qt.AlignHCenter
                Layout.preferredWidth: Math.min(420, content.width)
                text: screen.panel.words.welcomeDetail
                color: screen.theme.secondary
                font.pixelSize: screen.theme.body
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Item {
            id: card
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredWidth: Math.min(440, content.width)
            implicitHeight: steps.implicitHeight + 24
            Rectangle {
                anchors.fill: parent
                radius: 8
                color: screen.theme.primary
                opacity: 0.045
            }
            Rectangle {
                anchors.fill: parent
                radius: 8
                color: "transparent"
                border.width: 0.5
                border.color: Qt.rgba(screen.theme.primary.r, screen.theme.primary.g, screen.theme.primary.b, 0.08)
            }
            ColumnLayout {
                id: steps
                x: 12
                y: 12
                width: parent.width - 24
                spacing: 12

                OnboardingStep {
                    Layout.fillWidth: true
                    theme: screen.theme
                    words: screen.panel.words
                    done: screen.installed
                    title: screen.panel.words.ghInstalledStep.arg(screen.theme.mono(screen.panel.words.gh))
                    plainTitle: screen.panel.words.ghInstalledStep.arg(screen.panel.words.gh)
                    GhInstallGuidance {
                        visible: screen.panel.ghMissing
                        Layout.fillWidth: true
                        Layout.topMargin: 0
                        panel: screen.panel
                        theme: screen.theme
                    }
                }
                Rectangle {
                    Layout.fillWidth: true
                    height: 1
                    color: screen.theme.quaternary
                }
                OnboardingStep {
                    Layout.fillWidth: true
                    theme: screen.theme
                    words: screen.panel.words
                    done: screen.signedIn
                    muted: !screen.installed
                    title: screen.panel.words.signedInStep
                    CommandWell {
                        Layout.fillWidth: true
                        visible: screen.panel.ghSignedOut
                        panel: screen.panel
                        theme: screen.theme
                        command: screen.panel.ghLoginCommand
                    }
                }
            }
        }

        // What the re-checking is doing right now.
        Item {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: checking.visible ? checking.implicitWidth : recheck.width
            implicitHeight: screen.signedIn ? 0 : Math.max(checking.implicitHeight, recheck.height)
            visible: !screen.signedIn
            Row {
                id: checking
                visible: screen.panel.ghChecking
                spacing: 6
                Accessible.role: Accessible.StaticText
                Accessible.name: screen.panel.words.checking
                RepoSpinner {
                    anchors.verticalCenter: parent.verticalCenter
                    theme: screen.theme
                    Accessible.ignored: true
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: screen.panel.words.checking
                    color: screen.theme.secondary
                    font.pixelSize: screen.theme.callout
                    Accessible.ignored: true
                }
            }
            Text {
                id: recheck
                visible: screen.panel.ghMissing || screen.panel.ghSignedOut
                // Wraps in the narrowest panel rather than run past its edge.
                width: Math.min(implicitWidth, content.width)
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                text: screen.panel.words.rechecking
                color: screen.theme.secondary
                font.pixelSize: screen.theme.callout
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        // Side by side when both fit, else stacked.
        GridLayout {
            id: buttons
            Layout.alignment: Qt.AlignHCenter
            readonly property bool fits: skip.implicitWidth + go.implicitWidth + 8 <= content.width
            columns: fits ? 2 : 1
            columnSpacing: 8
            rowSpacing: 8
            PushButton {
                id: skip
                Layout.alignment: Qt.AlignHCenter
                theme: screen.theme
                text: screen.panel.words.skipForNow
                onClicked: screen.panel.send({ msg: "onboarding_skip" })
            }
            PushButton {
                id: go
                Layout.alignment: Qt.AlignHCenter
                theme: screen.theme
                prominent: true
                enabled: screen.signedIn
                text: screen.panel.words.continueOn
                Accessible.defaultButton: true
                onClicked: screen.panel.send({ msg: "onboarding_continue" })
            }
        }
    }
}
