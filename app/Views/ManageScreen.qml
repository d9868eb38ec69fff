// The settings side of the panel; an empty pane that the slide brings in.
import QtQuick

Item {
    id: screen
    required property var panel
    required property var theme
    required property string widthClass
}
