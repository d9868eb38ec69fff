// One symbol of the panel's icon set, by its symbol name, in one colour.
import QtQuick
import QtQuick.Window

Image {
    id: icon
    property string name
    property color color: "black"
    property real size: 13

    width: size
    height: size
    source: name.length > 0 ? "image://icon/" + name + "/" + String(color) : ""
    sourceSize.width: Math.ceil(size * Screen.devicePixelRatio)
    sourceSize.height: Math.ceil(size * Screen.devicePixelRatio)
    fillMode: Image.PreserveAspectFit
    smooth: true
    Accessible.ignored: true
}
