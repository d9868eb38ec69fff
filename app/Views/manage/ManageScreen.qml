// The settings side of the panel: a form of four sections (the GitHub CLI,
// the watched repositories, the browsers, general) over the panel's
// backdrop. It scrolls when taller than the panel and keeps whatever the
// keyboard focuses in view.
import QtQuick
import Velmar.Views
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window

Flickable {
    id: screen
    required property PanelModel panel
    required property Theme theme
    required property string widthClass

    readonly property real inset: widthClass === "minimal" ? 10 : 14

    contentWidth: width
    contentHeight: form.implicitHeight + 24
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    // The watched repositories' drag watches the pointer only while this
    // screen is on screen.
    Binding {
        target: screen.panel.manageDrag
        property: "view"
        value: screen.visible ? screen : null
        restoreMode: Binding.RestoreNone
    }

    // Scrolls the focused control into view when Tab reaches it.
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: {
        let item = focused
        while (item && item !== form) item = item.parent
        if (!item) return
        const top = focused.mapToItem(form, 0, 0).y + form.y
        const bottom = top + focused.height
        if (top - 8 < contentY) contentY = Math.max(0, top - 8)
        else if (bottom + 8 > contentY + height) contentY = Math.min(contentHeight - height, bottom + 8 - height)
    }

    ColumnLayout {
        id: form
        x: screen.inset
        y: 8
        width: screen.width - 2 * screen.inset
        spacing: 18

        GhSection {
            Layout.fillWidth: true
            panel: screen.panel
            theme: screen.theme
        }
        RepoSection {
            Layout.fillWidth: true
            panel: screen.panel
            theme: screen.theme
            widthClass: screen.widthClass
        }
        BrowserSection {
            Layout.fillWidth: true
            panel: screen.panel
            theme: screen.theme
            widthClass: screen.widthClass
        }
        GeneralSection {
            Layout.fillWidth: true
            panel: screen.panel
            theme: screen.theme
            widthClass: screen.widthClass
        }
        ExtrasSection {
            Layout.fillWidth: true
            panel: screen.panel
            theme: screen.theme
            widthClass: screen.widthClass
        }
    }
}
