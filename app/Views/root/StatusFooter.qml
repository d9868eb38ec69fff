// The status line at the foot of the panel: counts, refresh state, flashes.
import QtQuick
import Velmar.Views

Item {
    id: footer
    required property Theme theme
    property string text

    implicitHeight: 22
    height: 22

    Accessible.role: Accessible.StatusBar
    Accessible.name: text

    Text {
        anchors { left: parent.left; right: parent.right; leftMargin: 14; rightMargin: 14 }
        anchors.verticalCenter: parent.verticalCenter
        text: footer.text
        textFormat: Text.PlainText
        color: footer.theme.secondary
        font.pixelSize: footer.theme.caption
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: true
    }
}
