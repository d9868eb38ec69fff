// The application's mark: a magnifying glass with a plus, in the tint.
import QtQuick

SymbolIcon {
    required property var theme
    name: "plus.magnifyingglass"
    color: theme.tint
}
