// The desktop tests: one application off the screen, in the look of the program.
#include "desktop/start.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    vael::SetLook(application);
    return RUN_ALL_TESTS();
}
