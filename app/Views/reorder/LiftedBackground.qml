// What lies behind a lifted group or row: a rounded plate in the window's
// colour over a soft shadow (black at 0.25, blurred about `radius`, 2 down),
// drawn as a few widening layers since Qt Quick 6.4 has no blur of its own.
pragma ComponentBehavior: Bound

import QtQuick
import Velmar.Views

Item {
    id: plate
    required property Theme theme
    property real radius: 8
    property color color: theme.windowBackground

    Repeater {
        model: [{ spread: 1, alpha: 0.09 }, { spread: 3, alpha: 0.06 }, { spread: 5, alpha: 0.04 },
                { spread: 8, alpha: 0.025 }]
        Rectangle {
            required property var modelData
            x: -modelData.spread
            y: 2 - modelData.spread
            width: plate.width + 2 * modelData.spread
            height: plate.height + 2 * modelData.spread
            radius: plate.radius + modelData.spread
            color: Qt.rgba(0, 0, 0, modelData.alpha)
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: plate.radius
        color: plate.color
    }
}
