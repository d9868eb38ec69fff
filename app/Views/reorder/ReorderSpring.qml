// The reorder's spring (response 0.2 s, damping 0.85) as a curve: groups and
// rows glide to their places and a dropped one settles, without a visible
// overshoot.
import QtQuick

NumberAnimation {
    duration: 260
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.25, 0.8, 0.25, 1.0, 1.0, 1.0]
}
