// Puts the panel's QML into a view: the image providers, the facade, the
// theme and the chrome as the root's properties, then the root itself. The
// application and the in-process screen tests load the panel the same way.
#pragma once

#include <QStringList>

class QQmlEngine;
class QQuickView;

namespace velmar::ui {

class BrowserIcons;
class PanelModel;
class Theme;

struct PanelChrome {
    double titlebarHeight = 38;
    double leadingInset = 12;
};

/// Gives `engine` a network that refuses every request; call before loading.
void refuseNetwork(QQmlEngine& engine);

/// Loads the root view into `view`; returns the QML errors, if any.
QStringList loadPanel(QQuickView& view, PanelModel& panel, Theme& theme, const BrowserIcons& icons,
                      PanelChrome chrome = {});

}  // namespace velmar::ui
