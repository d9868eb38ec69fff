// The last row of a group whose pull requests did not all fit: how many more
// there are, as a link to the repository's pull requests.
import QtQuick
import Velmar.Views

Item {
    id: row
    required property Theme theme
    required property PanelModel panel
    required property var repoId
    required property string moreText

    implicitHeight: theme.rowHeight

    PlainControl {
        id: button
        x: 14 + 20
        anchors.verticalCenter: parent.verticalCenter
        theme: row.theme
        link: true
        text: row.moreText
        tooltip: row.panel.words.openPullsOnGitHub
        onClicked: row.panel.send({ msg: "open_repo_pulls", id: row.repoId })
        contentItem: Text {
            text: button.text
            color: button.theme.link
            font.pixelSize: button.theme.callout
            font.underline: button.hovered
            Accessible.ignored: true
        }
    }
}
