// Loading the root view.
#include "PanelView.h"

#include <QQmlEngine>
#include <QQuickView>
#include <QVariantMap>

#include "BrowserIcons.h"
#include "IconProvider.h"
#include "PanelModel.h"
#include "Theme.h"

namespace velmar::ui {

QStringList loadPanel(QQuickView& view, PanelModel& panel, Theme& theme, const BrowserIcons& icons,
                      PanelChrome chrome) {
    // The module's files and types come from the resources compiled in.
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.engine()->addImageProvider(QStringLiteral("icon"), new IconProvider);
    view.engine()->addImageProvider(QStringLiteral("browser"), new BrowserIconProvider(icons));
    view.setInitialProperties({
        {QStringLiteral("panel"), QVariant::fromValue(&panel)},
        {QStringLiteral("theme"), QVariant::fromValue(&theme)},
        {QStringLiteral("chrome"), QVariantMap{{QStringLiteral("titlebarHeight"), chrome.titlebarHeight},
                                               {QStringLiteral("leadingInset"), chrome.leadingInset}}},
    });
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmar/Views/RootView.qml")));
    QStringList errors;
    for (const QQmlError& error : view.errors()) errors.append(error.toString());
    return errors;
}

}  // namespace velmar::ui
