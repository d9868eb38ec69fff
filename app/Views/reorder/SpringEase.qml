// A quick spring (response 0.25 s, damping 0.85) drawn as a curve: the
// damping leaves an overshoot under one percent, too small to see, so the
// curve settles without one.
import QtQuick

NumberAnimation {
    duration: 320
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.25, 0.8, 0.25, 1.0, 1.0, 1.0]
}
