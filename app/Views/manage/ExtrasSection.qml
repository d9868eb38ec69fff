// Extras beyond the plain list: the switch for checks, reviews and
// deployments, with a note on what it costs and shows; then notifications
// (with their kinds) and the tray icon, which read what that switch fetches.
import QtQuick
import QtQuick.Layouts

FormSection {
    id: section
    required property var panel
    required property string widthClass

    title: "Extras"
    footer: "One GitHub query a minute for all repositories. Shows CI, review and deployment state, and the pull requests waiting for your review."

    FormRow {
        theme: section.theme
        divider: false
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: "Checks, reviews and deployments"
                color: section.theme.primary
                font.pixelSize: section.theme.body
                wrapMode: Text.Wrap
                // The switch carries the title.
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: "checksSwitch"
                theme: section.theme
                text: "Checks, reviews and deployments"
                tooltip: ""
                showsTitle: false
                on: section.panel.checksOn
                activate: () => section.panel.send({ msg: "set_checks", on: !section.panel.checksOn })
            }
        }
    }

    ExtrasSwitchRow {
        theme: section.theme
        title: "Notifications"
        switchName: "notifySwitch"
        caption: section.panel.attention.notifyCaption
        usable: section.panel.attention.usable
        on: section.panel.attention.notify
        activate: () => section.panel.send({ msg: "set_notify", on: !section.panel.attention.notify })
    }
    Repeater {
        model: section.panel.attention.notify ? section.panel.attention.kinds : []
        ExtrasSwitchRow {
            required property var modelData
            theme: section.theme
            indent: 16
            title: modelData.title
            switchName: "notifyKind_" + modelData.kind
            usable: section.panel.attention.usable
            on: modelData.on
            activate: () => section.panel.send({ msg: "set_notify_kind", kind: modelData.kind, on: !modelData.on })
        }
    }
    ExtrasSwitchRow {
        theme: section.theme
        title: "Icon in the system tray"
        switchName: "traySwitch"
        caption: section.panel.attention.trayCaption
        usable: section.panel.attention.usable
        on: section.panel.attention.tray
        activate: () => section.panel.send({ msg: "set_tray", on: !section.panel.attention.tray })
    }
}
