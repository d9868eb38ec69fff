// Entry of the tests that need a GUI application: offscreen unless the
// environment names a platform, so the clipboard, URL handlers and windows
// are real and no display is needed. A QApplication, as the program has,
// since shortcuts and focus are not dispatched alike under the two.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
