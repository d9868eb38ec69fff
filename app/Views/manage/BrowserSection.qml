// Which browsers the picker offers: the open ones, or those switched on
// here. The switches slide open when the choice turns to chosen browsers.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel
    required property string widthClass

    readonly property bool manual: panel.browserMode === "manual"

    title: panel.words.browsers
    footer: panel.browserFooter

    FormRow {
        theme: section.theme
        divider: false
        MenuRow {
            theme: section.theme
            widthClass: section.widthClass
            title: section.panel.words.showInPicker
            options: [{ title: section.panel.words.openBrowsers, value: "open" },
                      { title: section.panel.words.chosenBrowsers, value: "manual" }]
            current: section.panel.browserMode
            onChosen: (value) => section.panel.send({ msg: "set_browser_mode", mode: value })
        }
    }
    Item {
        Layout.fillWidth: true
        implicitHeight: section.manual ? switches.implicitHeight : 0
        Behavior on implicitHeight { SpringEase {} }
        visible: implicitHeight > 0
        clip: true
        ColumnLayout {
            id: switches
            width: parent.width
            spacing: 0
            Repeater {
                model: section.panel.browserSwitches
                BrowserSwitchRow {
                    theme: section.theme
                    panel: section.panel
                }
            }
        }
    }
}
