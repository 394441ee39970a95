// The desktop program.
#include "desktop/start.h"

#include <QApplication>

int main(int argc, char** argv) {
    if (const auto status = vael::AnswerInWords(argc, argv)) return *status;
    QApplication application(argc, argv);
    return vael::RunDesktop(application, vael::FilesOfCall(application.arguments()));
}
