// Entry of the effect tests: a GUI application on the offscreen platform, so
// the clipboard and the URL handlers are real, and no display is needed.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
