// Frame times of the pull request list, offscreen, with the real core and the
// real screens:
//   fetched -> frame  from a `prsFetched` of one repository with 40 rows (the
//                     most the list shows of one repository) to the end of
//                     the next rendered frame; the first run apart, then 29
//   scroll 50 rows    one frame per 24-point step through the list the core
//                     allows (50 rows), 3 passes
//   scroll 2000 rows  the same over 2000 rows put straight into the list
//                     model, past the core's cap, as a stress of the view
// Prints the median and the worst of each, in milliseconds.
//   build/bench/list_frames
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "PanelBench.h"
#include "Store.h"
#include "BrowserIcons.h"
#include "PanelModel.h"
#include "PanelView.h"
#include "Theme.h"

using namespace velmar;

namespace {

std::string base64(const std::string& text) {
    return QByteArray::fromStdString(text).toBase64().toStdString();
}

// A gh answer of `count` pull requests for `slug`, each with a bot comment.
std::string answer(const std::string& slug, int count, int round) {
    std::string out = slug + "\n";
    for (int n = 1; n <= count; ++n) {
        const std::string body = "[Web](https://web-pr-" + std::to_string(n) + ".up.railway.app)";
        out += std::to_string(n) + "\tChange " + std::to_string(n) + " of round " + std::to_string(round) +
               ", with a title long enough to be cut\tsomeone\tfeature/" + std::to_string(n) + "\t" +
               (n % 5 == 0 ? "true" : "false") + "\thttps://github.com/" + slug + "/pull/" + std::to_string(n) +
               "\t" + base64(body) + "\n";
    }
    return out;
}

struct Stats {
    double median, worst;
};
Stats stats(std::vector<double> v) {
    if (v.empty()) return {0, 0};
    std::sort(v.begin(), v.end());
    return {v[v.size() / 2], v.back()};
}

// Milliseconds from `change` to the end of the frame that shows it.
double timeFrame(QQuickView& view, const std::function<void()>& change) {
    bool swapped = false;
    auto connection = QObject::connect(&view, &QQuickWindow::frameSwapped, [&] { swapped = true; });
    QElapsedTimer timer;
    timer.start();
    change();
    view.update();
    while (!swapped) QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    QObject::disconnect(connection);
    return ms;
}

QQuickItem* listView(QQuickView& view) {
    QQuickItem* list = view.rootObject()->findChild<QQuickItem*>("prList");
    if (list == nullptr) qFatal("no pull request list in the panel");
    return list;
}

std::vector<double> scrollThrough(QQuickView& view, int passes) {
    QQuickItem* list = listView(view);
    std::vector<double> frames;
    for (int pass = 0; pass < passes; ++pass) {
        list->setProperty("contentY", 0);
        QTest::qWait(20);
        for (;;) {
            const double y = list->property("contentY").toDouble();
            const double end = list->property("contentHeight").toDouble() - list->height();
            if (y >= end) break;
            frames.push_back(timeFrame(view, [&] { list->setProperty("contentY", std::min(end, y + 24)); }));
        }
    }
    return frames;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    bench::PanelBench bench("acme/web\t\n");
    auto& store = bench.store;
    auto& panel = bench.panel;
    auto& view = bench.view;
    bench.show(200);

    std::vector<double> fetched;
    for (int round = 0; round < 30; ++round) {
        const std::string output = answer("acme/web", 40, round);
        fetched.push_back(timeFrame(view, [&] { store.send(msg::PrsFetched{output, true}); }));
        timeFrame(view, [&] { store.send(msg::Refresh{}); });
    }
    // The first answer also builds every row's delegate for the first time.
    std::printf("fetched -> frame   first %.2f ms\n", fetched.front());
    fetched.erase(fetched.begin());
    const Stats f = stats(fetched);
    std::printf("fetched -> frame   median %.2f ms  worst %.2f ms  (29 later runs)\n", f.median, f.worst);

    const Stats s50 = stats(scrollThrough(view, 3));
    std::printf("scroll 50 rows     median %.2f ms  worst %.2f ms  per frame\n", s50.median, s50.worst);

    // Past the core's cap: 2000 rows straight into the list model.
    std::vector<ui::DiffListModel::Row> rows;
    for (int i = 0; i < 2000; ++i) {
        const bool header = i % 40 == 0;
        QVariantMap values{{"kind", header ? "header" : "pr"}, {"repoId", i / 40 + 1}, {"groupIndex", i / 40},
                           {"name", QString("acme/repo-%1").arg(i / 40)}, {"count", 39},
                           {"countLabel", "39 open"}, {"prId", i}, {"number", i},
                           {"numberText", QString("#%1").arg(i)}, {"numberTemplate", "#0000"},
                           {"title", QString("Change %1 with a title long enough to be cut at the edge").arg(i)},
                           {"author", "someone"}, {"authorTooltip", "by someone"}, {"isDraft", i % 7 == 0},
                           {"hasPreview", i % 3 != 0}, {"previewTooltip", "Open preview"},
                           {"openLabel", QString("Open pull request #%1").arg(i)},
                           {"previewLabel", QString("Open preview for #%1").arg(i)}};
        ui::DiffListModel::Row row{QString("row-%1").arg(i), {}};
        for (int r = 0; r < panel.rows()->roleNames().size() - 1; ++r)
            row.values.append(values.value(QString::fromLatin1(panel.rows()->roleNames().value(Qt::UserRole + 1 + r))));
        rows.push_back(row);
    }
    panel.rows()->update(rows);
    QTest::qWait(100);
    const Stats s2000 = stats(scrollThrough(view, 1));
    std::printf("scroll 2000 rows   median %.2f ms  worst %.2f ms  per frame\n", s2000.median, s2000.worst);
    return 0;
}
