// Loading the root view.
#include "PanelView.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>
#include <QQuickView>
#include <QVariantMap>

#include "BrowserIcons.h"
#include "IconProvider.h"
#include "PanelModel.h"
#include "Theme.h"

namespace velmar::ui {
namespace {

// The panel never needs the network from QML: everything it shows comes
// through the facade, and its images are compiled in. Refusing every request
// here means no text from outside (an author, a title) can ever make the
// panel fetch something, whatever a component does with it.
class RefusingAccessManager : public QNetworkAccessManager {
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* data) override {
        Q_UNUSED(data);
        // A scheme no handler knows: the manager answers with an error reply
        // of its own, without a socket or a name lookup.
        QNetworkRequest refused(request);
        refused.setUrl(QUrl(QStringLiteral("refused:")));
        return QNetworkAccessManager::createRequest(operation, refused, nullptr);
    }
};

class RefusingFactory : public QQmlNetworkAccessManagerFactory {
public:
    QNetworkAccessManager* create(QObject* parent) override {
        return new RefusingAccessManager(parent);
    }
};

}  // namespace

void refuseNetwork(QQmlEngine& engine) {
    static RefusingFactory factory;  // must outlive every engine that uses it
    engine.setNetworkAccessManagerFactory(&factory);
}

QStringList loadPanel(QQuickView& view, PanelModel& panel, Theme& theme, const BrowserIcons& icons,
                      PanelChrome chrome) {
    // The module's files and types come from the resources compiled in.
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    refuseNetwork(*view.engine());
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
