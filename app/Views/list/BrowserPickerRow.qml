// The strip of browser tiles at the top of the list: the one picked opens
// the links. It takes no height while no browser is offered, and scrolls
// sideways when the tiles do not fit.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Layouts

Item {
    id: strip
    required property PanelModel panel
    required property Theme theme
    required property string widthClass

    readonly property bool empty: panel.browsers.count === 0

    implicitHeight: empty ? 0 : row.implicitHeight + 4
    height: implicitHeight
    visible: !empty

    Accessible.role: Accessible.Grouping
    Accessible.name: panel.words.openLinksIn

    RowLayout {
        id: row
        x: 14
        width: parent.width - 28
        spacing: 8

        Text {
            visible: strip.widthClass === "regular"
            Layout.bottomMargin: 3
            Layout.alignment: Qt.AlignVCenter
            text: strip.panel.words.openLinksIn
            color: strip.theme.secondary
            font.pixelSize: strip.theme.callout
            Accessible.ignored: true
        }
        Flickable {
            id: scroller
            Layout.fillWidth: true
            Layout.maximumWidth: tiles.implicitWidth + 4
            Layout.preferredHeight: tiles.implicitHeight + 4
            contentWidth: tiles.implicitWidth + 4
            contentHeight: height
            interactive: contentWidth > width
            flickableDirection: Flickable.HorizontalFlick
            boundsBehavior: Flickable.StopAtBounds
            clip: true

            Row {
                id: tiles
                x: 2
                y: 2
                spacing: 2
                Repeater {
                    model: strip.panel.browsers
                    BrowserTile {
                        theme: strip.theme
                        onClicked: strip.panel.send({ msg: "select_browser", id: browserId })
                        onActiveFocusChanged: if (activeFocus) scroller.contentX = Math.max(0,
                            Math.min(x + 2 - (scroller.width - width) / 2, scroller.contentWidth - scroller.width))
                    }
                }
            }
        }
        Item { Layout.fillWidth: true }
    }
}
