// Start of the desktop program: its look, its folder, its main window.
#include "desktop/start.h"

#include "core/params.h"
#include "desktop/icons.h"
#include "desktop/look.h"
#include "desktop/qtdesk.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>
#include <string_view>

namespace vael {
namespace {

/// The data of an installed program; empty where it is not installed.
QString InstalledData() {
    const QString beside =
        QDir::cleanPath(QApplication::applicationDirPath() + QStringLiteral("/../share/vael"));
    return QFileInfo::exists(beside + QStringLiteral("/crystal.dat")) ? beside : QString();
}

void DescribeCall(QCommandLineParser& parser) {
    parser.setApplicationDescription(QStringLiteral(
        "Workbench for energy-dispersive X-ray diffraction under high pressure: spectra are "
        "calibrated, smoothed, freed of their background and fitted; the peaks give the cell of a "
        "crystal and, by a marker, the pressure."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Spectra to open, at most ten"),
                                 QStringLiteral("[FILE...]"));
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
    const QString installed = InstalledData();
    if (!installed.isEmpty() || !QFileInfo(folder).isWritable()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        QDir().mkpath(folder);
    }
    FillFolder(folder.toStdString(),
               installed.isEmpty() ? std::string(VAEL_TREE_DATA) : installed.toStdString());
    return folder.toStdString();
}

std::optional<int> AnswerInWords(int argc, char** argv) {
    for (int k = 1; k < argc; ++k) {
        const std::string_view word = argv[k];
        if (word == "--") break;
        if (word != "-h" && word != "--help" && word != "--help-all" && word != "-v" &&
            word != "--version")
            continue;
        const QCoreApplication application(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("vael"));
        QCoreApplication::setApplicationVersion(QStringLiteral(VAEL_VERSION));
        QCommandLineParser parser;
        DescribeCall(parser);
        const bool help = word == "-h" || word.starts_with("--help");
        const QString text = help ? parser.helpText() : QStringLiteral("vael " VAEL_VERSION "\n");
        std::fputs(text.toUtf8().constData(), stdout);
        return 0;
    }
    return std::nullopt;
}

std::vector<std::string> FilesOfCall(const QStringList& words) {
    QCommandLineParser parser;
    DescribeCall(parser);
    parser.process(words);  // ends the program at a wrong option
    std::vector<std::string> files;
    for (const QString& word : parser.positionalArguments())
        files.push_back(QFileInfo(word).absoluteFilePath().toStdString());
    return files;
}

int RunDesktop(QApplication& application, const std::vector<std::string>& files) {
    SetLook(application);
    QtDesk desk;
    StartProgram(ProgramFolder(), files);
    desk.Show();
    return QApplication::exec();
}

}  // namespace vael
