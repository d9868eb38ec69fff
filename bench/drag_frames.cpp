// Cost of dragging a group of the pull request list, offscreen, with the real
// core and screens: 50 repositories, so 50 headings (the list's cap), the
// first one held and dragged down through the list and back, 3 points per
// pointer event (about 360 events a pass, 3 passes). For each event:
//   handling        the event through the filter and every binding it moves
//   to next frame   from the event to the end of the frame that shows it
//   bare frame      a frame asked for with no event, for comparison: what
//                   rendering costs here whatever the drag does
// Prints the median and the worst of each, in milliseconds.
//   build/bench/drag_frames
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMouseEvent>
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
#include "HitTest.h"
#include "PanelModel.h"
#include "PanelView.h"
#include "Theme.h"

using namespace velmar;

namespace {

struct Stats {
    double median, worst;
};
Stats stats(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return {v[v.size() / 2], v.back()};
}

std::string slug(int i) { return "acme/repo-" + std::to_string(100 + i); }

QQuickItem* heading(QQuickItem* item, const std::string& name) {
    if (ui::HitTest::typeName(item) == "RepoSectionHeader" && item->property("name").toString().toStdString() == name)
        return item;
    for (QQuickItem* child : item->childItems())
        if (QQuickItem* found = heading(child, name)) return found;
    return nullptr;
}

void mouse(QQuickView& view, QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
    static QElapsedTimer clock;
    if (!clock.isValid()) clock.start();
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent e(type, at, at, view.mapToGlobal(at), button, buttons, Qt::NoModifier);
    // Real time stamps: the passes' presses are no double click.
    e.setTimestamp(ulong(clock.elapsed()) + 1000);
    QCoreApplication::sendEvent(&view, &e);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    std::string repos;
    for (int i = 0; i < 50; ++i) repos += slug(i) + "\t\n";
    bench::PanelBench bench(repos);
    auto& store = bench.store;
    auto& panel = bench.panel;
    auto& view = bench.view;
    // Every repository answered, with no pull request: no spinner keeps
    // frames coming, so each frame is one the drag asked for.
    for (int i = 0; i < 50; ++i) store.send(msg::PrsFetched{slug(i) + "\n", true});
    bench.show(300);

    QQuickItem* first = heading(view.contentItem(), slug(0));
    if (first == nullptr) {
        std::fprintf(stderr, "no heading\n");
        return 1;
    }
    const QPointF start = first->mapToScene(QPointF(first->width() / 2, first->height() - 12));

    bool swapped = false;
    QObject::connect(&view, &QQuickWindow::frameSwapped, [&] { swapped = true; });
    std::vector<double> handling, toFrame;
    for (int pass = 0; pass < 3; ++pass) {
        mouse(view, QEvent::MouseButtonPress, start, Qt::LeftButton);
        QTest::qWait(400);  // the hold
        if (!panel.listDrag()->lifted()) {
            std::fprintf(stderr, "the hold lifted nothing\n");
            return 1;
        }
        std::vector<double> path;
        for (double dy = 3; dy <= 540; dy += 3) path.push_back(dy);
        for (double dy = 540; dy >= 0; dy -= 3) path.push_back(dy);
        for (double dy : path) {
            swapped = false;
            QElapsedTimer timer;
            timer.start();
            mouse(view, QEvent::MouseMove, start + QPointF(0, dy), Qt::LeftButton);
            handling.push_back(double(timer.nsecsElapsed()) / 1e6);
            view.update();
            while (!swapped) QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
            toFrame.push_back(double(timer.nsecsElapsed()) / 1e6);
        }
        mouse(view, QEvent::MouseButtonRelease, start, Qt::NoButton);
        QTest::qWait(500);
    }
    std::vector<double> bare;
    for (int i = 0; i < 300; ++i) {
        swapped = false;
        QElapsedTimer timer;
        timer.start();
        view.update();
        while (!swapped) QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
        bare.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    const Stats b = stats(bare);
    const Stats h = stats(handling);
    const Stats f = stats(toFrame);
    std::printf("drag over 50 groups, %zu pointer events\n", handling.size());
    std::printf("handling        median %.3f ms  worst %.3f ms\n", h.median, h.worst);
    std::printf("to next frame   median %.3f ms  worst %.3f ms\n", f.median, f.worst);
    std::printf("bare frame      median %.3f ms  worst %.3f ms\n", b.median, b.worst);
    return 0;
}

