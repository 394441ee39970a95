// Start of the desktop program: its look, its folder, its main window.
#include "desktop/start.h"

#include "core/params.h"
#include "desktop/icons.h"
#include "desktop/look.h"
#include "desktop/qtdesk.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace vael {
namespace {

/// Where the data that come with the program may lie: beside an installed program, else in the tree
/// that it was built in.
QString InstalledData() {
    const QString beside =
        QDir::cleanPath(QApplication::applicationDirPath() + QStringLiteral("/../share/vael"));
    if (QFileInfo::exists(beside + QStringLiteral("/crystal.dat"))) return beside;
    return QStringLiteral(VAEL_TREE_DATA);
}

}  // namespace

void SetLook(QApplication& application) {
    QApplication::setStyle(new Look);  // the application takes it
    QApplication::setApplicationName(QStringLiteral("vael"));
    QApplication::setQuitOnLastWindowClosed(false);  // the main view leaves through its own command
    QApplication::setWindowIcon(ProgramIcon());
    application.setAttribute(Qt::AA_DontShowIconsInMenus);
}

void FillFolder(const std::string& to, const std::string& from) {
    const QDir source(QString::fromStdString(from));
    const QDir target(QString::fromStdString(to));
    for (const QString& name : {QStringLiteral("crystal.dat"), QStringLiteral("atomic.dat"),
                                QStringLiteral("History.txt")})
        if (source.exists(name) && !target.exists(name))
            QFile::copy(source.filePath(name), target.filePath(name));
}

std::string ProgramFolder() {
    QString folder = QApplication::applicationDirPath();
    if (!QFileInfo(folder).isWritable()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        QDir().mkpath(folder);
    }
    FillFolder(folder.toStdString(), InstalledData().toStdString());
    return folder.toStdString();
}

int RunDesktop(QApplication& application) {
    SetLook(application);
    QtDesk desk;
    StartProgram(ProgramFolder());
    desk.Show();
    return QApplication::exec();
}

}  // namespace vael
