// Extras beyond the plain list: the switch for checks, reviews and
// deployments, with a note on what it costs and shows; then notifications
// (with their kinds) and the tray icon, which read what that switch fetches.
import QtQuick
import Velmar.Views
import QtQuick.Layouts

FormSection {
    id: section
    required property PanelModel panel
    required property string widthClass

    title: panel.words.extras
    footer: panel.words.extrasFooter

    FormRow {
        theme: section.theme
        divider: false
        RowLayout {
            Layout.fillWidth: true
            spacing: 8
            Text {
                Layout.fillWidth: true
                text: section.panel.words.checksSwitch
                color: section.theme.primary
                font.pixelSize: section.theme.body
                wrapMode: Text.Wrap
                // The switch carries the title.
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: "checksSwitch"
                theme: section.theme
                text: section.panel.words.checksSwitch
                tooltip: ""
                showsTitle: false
                on: section.panel.checksOn
                onClicked: section.panel.send({ msg: "set_checks", on: !section.panel.checksOn })
            }
        }
    }

    // Under its parent, indented, and greyed while the parent is off.
    FormRow {
        theme: section.theme
        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 16
            spacing: 8
            enabled: section.panel.checksOn
            opacity: enabled ? 1 : 0.45
            Text {
                Layout.fillWidth: true
                text: section.panel.words.showMyPrs
                color: section.theme.primary
                font.pixelSize: section.theme.body
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            AutoSwitch {
                objectName: "yoursSwitch"
                theme: section.theme
                text: section.panel.words.showMyPrs
                // A screen reader is not told that a control is greyed; it hears why.
                tooltip: section.panel.checksOn ? "" : section.panel.words.yoursNeedsChecks
                showsTitle: false
                on: section.panel.yoursOn
                onClicked: section.panel.send({ msg: "set_yours", on: !section.panel.yoursOn })
            }
        }
    }

    // The notifications and tray switches, as the panel words them.
    readonly property var attention: section.panel.attention

    ExtrasSwitchRow {
        theme: section.theme
        title: section.panel.words.notifications
        switchName: "notifySwitch"
        caption: section.attention.notifyCaption
        usable: section.attention.usable
        on: section.attention.notify
        onToggled: section.panel.send({ msg: "set_notify", on: !section.attention.notify })
    }
    ExtrasSwitchRow {
        visible: section.attention.notify
        theme: section.theme
        indent: 16
        title: section.attention.kinds[0].title
        switchName: "notifyKind_new_prs"
        on: section.attention.kinds[0].on
        onToggled: section.panel.send({ msg: "set_notify_kind", kind: "new_prs", on: !section.attention.kinds[0].on })
    }
    ExtrasSwitchRow {
        visible: section.attention.notify
        theme: section.theme
        indent: 16
        title: section.attention.kinds[1].title
        switchName: "notifyKind_checks"
        on: section.attention.kinds[1].on
        onToggled: section.panel.send({ msg: "set_notify_kind", kind: "checks", on: !section.attention.kinds[1].on })
    }
    ExtrasSwitchRow {
        visible: section.attention.notify
        theme: section.theme
        indent: 16
        title: section.attention.kinds[2].title
        switchName: "notifyKind_review"
        on: section.attention.kinds[2].on
        onToggled: section.panel.send({ msg: "set_notify_kind", kind: "review", on: !section.attention.kinds[2].on })
    }
    ExtrasSwitchRow {
        theme: section.theme
        title: section.panel.words.trayIcon
        switchName: "traySwitch"
        caption: section.attention.trayCaption
        usable: section.attention.usable
        on: section.attention.tray
        onToggled: section.panel.send({ msg: "set_tray", on: !section.attention.tray })
    }
}
