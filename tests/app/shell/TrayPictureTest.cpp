// The tray icon's pictures: no number for zero, a number that grows its disc,
// "99+" past 99, and the red mark only when a check of the viewer's failed.
// With VELMAR_TRAY_PICTURES set to a folder, the pictures are saved there to
// be looked at.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <algorithm>
#include <map>

#include "TrayIcon.h"

using namespace velmar;

namespace {

/// Pixels of the number's dark disc and of the mark's red.
struct Marks {
    int dark = 0;
    int red = 0;
    int darkWidth = 0;  // columns holding the disc
};

Marks marks(const QImage& image) {
    Marks m;
    std::vector<bool> columns(image.width());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.alpha() < 250) continue;
            if (c.red() < 50 && c.green() < 50 && c.blue() < 60) m.dark++, columns[x] = true;
            if (c.red() > 200 && c.green() < 80 && c.blue() < 80) m.red++;
        }
    m.darkWidth = int(std::count(columns.begin(), columns.end(), true));
    return m;
}

TEST(tray_picture, number_and_mark_show_only_when_there_is_something) {
    const QString folder = qEnvironmentVariable("VELMAR_TRAY_PICTURES");
    struct Row {
        std::int64_t count;
        bool failed;
    };
    std::map<std::pair<std::int64_t, bool>, Marks> seen;
    for (const Row row : {Row{0, false}, Row{3, false}, Row{12, false}, Row{0, true}, Row{3, true}, Row{120, false}}) {
        for (int size : {22, 64}) {
            const QImage image = TrayIcon::picture(size, row.count, row.failed);
            ASSERT_EQ(image.size(), QSize(size, size));
            if (!folder.isEmpty())
                image.save(QDir(folder).filePath(QStringLiteral("tray-%1-%2%3.png")
                                                     .arg(size)
                                                     .arg(row.count)
                                                     .arg(row.failed ? "-failed" : "")));
            const Marks m = marks(image);
            EXPECT_EQ(m.dark > 0, row.count > 0) << row.count << " at " << size;
            EXPECT_EQ(m.red > 0, row.failed) << row.count << " at " << size;
            if (size == 64) seen[{row.count, row.failed}] = m;
        }
    }
    // Two digits need a wider disc than one; "99+" wider still.
    const auto width = [&](std::int64_t count) { return seen[std::pair(count, false)].darkWidth; };
    EXPECT_GT(width(12), width(3));
    EXPECT_GT(width(120), width(12));
}

}  // namespace
