// The panel's push: a critically damped spring with a response of 0.35 s,
// drawn as a curve that settles within half a second without overshoot.
import QtQuick

NumberAnimation {
    duration: 500
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.3, 0.6, 0.1, 1.0, 1.0, 1.0]
}
