// The single-line field of the add and pattern popovers. Its text follows the
// model's value, except while an input method is composing, so that the
// core's echo never breaks a composition; an edit that would take the text
// past `maxBytes` UTF-8 bytes is undone whole. It takes the focus once, when
// it first appears; Return submits, and Escape cancels when the owner
// handles it, else it falls through to the popover.
import QtQuick
import QtQuick.Templates as T
import Velmar.Views

T.TextField {
    id: field
    required property Theme theme
    /// The model's value.
    property string modelText
    property int maxBytes: 0
    property string accessibilityLabel
    property bool autofocus: false
    /// Whether Escape runs `cancelled`; without it Escape is left to the popover.
    property bool cancels: false

    signal edited(string text)
    signal submitted()
    signal cancelled()

    // The field's own editing state: whether it has taken its one focus.
    property bool didAutofocus: false

    function follow() {
        if (field.preeditText.length > 0) return
        if (field.text !== field.modelText) {
            field.text = field.modelText
            field.cursorPosition = field.text.length
        }
    }
    function takeFocus() {
        if (field.didAutofocus || !field.Window.window) return
        field.didAutofocus = true
        field.forceActiveFocus()
        if (field.activeFocus) field.cursorPosition = field.text.length
    }

    Component.onCompleted: {
        follow()
        if (autofocus) Qt.callLater(takeFocus) // qmllint disable type
    }
    onModelTextChanged: follow()
    // Any change that is not the model's echo is the user's: typed, pasted,
    // or put in whole through the accessibility interface, as dictation and
    // voice control do (that sets the text without a textEdited).
    onTextChanged: if (field.preeditText.length === 0 && field.text !== field.modelText) field.edited(field.text)

    validator: ByteCapValidator {
        maxBytes: field.maxBytes
        held: field.text
    }

    Keys.onReturnPressed: (event) => { field.submitted(); event.accepted = true }
    Keys.onEnterPressed: (event) => { field.submitted(); event.accepted = true }
    // Escape is claimed before any shortcut only when the field handles it.
    Keys.onShortcutOverride: (event) => { event.accepted = field.cancels && event.key === Qt.Key_Escape }
    Keys.onEscapePressed: (event) => {
        event.accepted = field.cancels
        if (field.cancels) field.cancelled()
    }

    implicitWidth: 120
    implicitHeight: 24
    leftPadding: 7
    rightPadding: 7
    topPadding: 3
    bottomPadding: 3
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    autoScroll: true
    color: theme.primary
    selectionColor: theme.tint
    selectedTextColor: "white"
    placeholderTextColor: theme.tertiary
    font.pixelSize: theme.body

    Accessible.role: Accessible.EditableText
    Accessible.name: accessibilityLabel
    Accessible.editable: true
    Accessible.focusable: true

    // The template draws no placeholder of its own; it is the only hint of
    // what the field takes (a slug, a pattern's syntax), so it is drawn here.
    Text {
        x: field.leftPadding
        y: field.topPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height - field.topPadding - field.bottomPadding
        visible: field.length === 0 && field.preeditText.length === 0
        text: field.placeholderText
        textFormat: Text.PlainText
        font: field.font
        color: field.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: 6
        color: field.theme.dark ? Qt.rgba(1, 1, 1, 0.06) : "white"
        border.width: field.activeFocus ? 2 : 0.5
        border.color: field.activeFocus ? field.theme.tint : field.theme.tertiary
    }
}
