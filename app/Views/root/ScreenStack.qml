// The list and the settings screen side by side: the list moves a third of
// the width out to the left and fades, the settings screen comes in from the
// right. The list stays alive off screen; only the one in front takes input.
// Each screen given here fills its slot.
import QtQuick

Item {
    id: stack
    property bool settingsShown: false
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
        enabled: !stack.settingsShown
        visible: opacity > 0
        Accessible.ignored: stack.settingsShown
    }
    Item {
        id: settingsSlot
        width: stack.width
        height: stack.height
        x: stack.width * (1 - stack.progress)
        enabled: stack.settingsShown
        visible: x < stack.width
        Accessible.ignored: !stack.settingsShown
    }
}
