// How to get the GitHub CLI: the Homebrew command when Homebrew is there,
// else the way to the install page ("Install guide" when the full title
// does not fit).
import QtQuick
import Velmar.Views

Item {
    id: guidance
    required property PanelModel panel
    required property Theme theme

    // The short title's width, so the choice of title never feeds back into
    // the width offered; the command takes whatever width it is given.
    implicitWidth: panel.brewInstalled ? 0 : shortTitle.advanceWidth + 22
    implicitHeight: panel.brewInstalled ? brew.implicitHeight : page.implicitHeight

    Column {
        id: brew
        width: guidance.width
        visible: guidance.panel.brewInstalled
        spacing: 6
        CommandWell {
            width: guidance.width
            panel: guidance.panel
            theme: guidance.theme
            command: guidance.panel.brewInstallCommand
        }
        PushButton {
            theme: guidance.theme
            linkStyle: true
            textSize: guidance.theme.callout
            text: guidance.panel.words.otherWaysToInstall
            onClicked: guidance.panel.send({ msg: "open_install_page" })
        }
    }
    PushButton {
        id: page
        visible: !guidance.panel.brewInstalled
        theme: guidance.theme
        readonly property bool fits: guidance.width <= 0 || full.advanceWidth + 22 <= guidance.width
        text: fits ? full.text : shortTitle.text
        onClicked: guidance.panel.send({ msg: "open_install_page" })
        TextMetrics {
            id: full
            text: guidance.panel.words.installInstructions
            font.pixelSize: guidance.theme.body
        }
        TextMetrics {
            id: shortTitle
            text: guidance.panel.words.installGuide
            font.pixelSize: guidance.theme.body
        }
    }
}
