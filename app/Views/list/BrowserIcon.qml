// A browser's icon from its desktop entry; without one, its initials on a
// faint square; the system default shows a globe.
import QtQuick
import Velmar.Views

Item {
    id: badge
    required property Theme theme
    property string icon
    property string initials
    property bool isDefault: false

    Accessible.ignored: true

    Image {
        anchors.fill: parent
        visible: badge.icon.length > 0
        source: badge.icon
        sourceSize.width: 64
        sourceSize.height: 64
        smooth: true
        mipmap: true
        fillMode: Image.PreserveAspectFit
    }
    Rectangle {
        anchors.fill: parent
        visible: badge.icon.length === 0
        radius: 5
        color: badge.theme.primary
        opacity: 0.08
    }
    Text {
        anchors.centerIn: parent
        visible: badge.icon.length === 0 && !badge.isDefault
        text: badge.initials
        textFormat: Text.PlainText
        color: badge.theme.secondary
        font.pixelSize: 9
        font.weight: Font.DemiBold
    }
    SymbolIcon {
        anchors.centerIn: parent
        visible: badge.icon.length === 0 && badge.isDefault
        name: "globe"
        size: 12
        color: badge.theme.secondary
    }
}
