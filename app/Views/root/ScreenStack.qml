// The list and the settings screen side by side: the list moves a third of
// the width out to the left and fades, the settings screen comes in from the
// right. Both stay alive off screen; only the one in front takes input.
// Each screen given here fills its slot.
import QtQuick

Item {
    id: stack
    property bool onSettings: false
    property real progress: 0
    property alias list: listSlot.data
    property alias settings: settingsSlot.data

    clip: true

    Item {
        id: listSlot
        width: stack.width
        height: stack.height
        x: -stack.width / 3 * stack.progress
        opacity: 1 - stack.progress
        enabled: !stack.onSettings
        visible: opacity > 0
        Accessible.ignored: stack.onSettings
    }
    Item {
        id: settingsSlot
        width: stack.width
        height: stack.height
        x: stack.width * (1 - stack.progress)
        enabled: stack.onSettings
        visible: x < stack.width
        Accessible.ignored: !stack.onSettings
    }
}
