// The small turning arc of a repository that is being fetched. It turns only
// while it is shown, once in 0.9 s (3 s when motion is to be reduced), on the
// render thread.
import QtQuick
import Velmar.Views

Item {
    id: spinner
    required property Theme theme
    property string label
    property bool reduceMotion: false

    implicitWidth: 11
    implicitHeight: 11

    Accessible.role: Accessible.Animation
    Accessible.name: label

    SymbolIcon {
        id: arc
        anchors.fill: parent
        name: "spinner.arc"
        size: 11
        color: spinner.theme.secondary
        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: spinner.reduceMotion ? 3000 : 900
            loops: Animation.Infinite
            running: spinner.visible
        }
    }
}
