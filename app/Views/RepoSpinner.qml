// The small turning arc of a repository that is being fetched. It turns only
// while it is shown, once in 0.9 s (3 s when motion is to be reduced).
import QtQuick
import QtQuick.Shapes

Item {
    id: spinner
    required property var theme
    property string label
    property bool reduceMotion: false

    implicitWidth: 11
    implicitHeight: 11

    Accessible.role: Accessible.Animation
    Accessible.name: label

    Shape {
        id: arc
        anchors.fill: parent
        anchors.margins: 1.5
        // Thin arcs need multisampling to look smooth.
        layer.enabled: true
        layer.samples: 4
        ShapePath {
            strokeColor: spinner.theme.secondary
            strokeWidth: 1.75
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap
            PathAngleArc {
                centerX: arc.width / 2
                centerY: arc.height / 2
                radiusX: arc.width / 2
                radiusY: arc.height / 2
                startAngle: -90
                sweepAngle: 360 * 0.72
            }
        }
        RotationAnimator on rotation {
            from: 0
            to: 360
            duration: spinner.reduceMotion ? 3000 : 900
            loops: Animation.Infinite
            running: spinner.visible
        }
    }
}
