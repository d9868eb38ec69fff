// The application's mark: a magnifying glass with a plus, in the tint.
import QtQuick
import Velmar.Views

SymbolIcon {
    required property Theme theme
    name: "plus.magnifyingglass"
    color: theme.tint
}
