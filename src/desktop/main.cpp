// The desktop program.
#include "desktop/start.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    return vael::RunDesktop(application);
}
