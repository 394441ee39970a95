// What a PDF holds: its text, its pictures, and how its pages look beside approved ones.
#pragma once

#include "shots.h"

#include <QDir>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <string>

namespace vael::test {

/// Runs a program of the PDF tools; what it wrote to its output.
inline QString RunTool(const QString& program, const QStringList& words) {
    QProcess tool;
    tool.start(program, words);
    if (!tool.waitForFinished(60000) || tool.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString()
                      << " failed: " << tool.readAllStandardError().toStdString();
        return {};
    }
    return QString::fromUtf8(tool.readAllStandardOutput());
}

/// A PDF that was printed.
class Pdf {
public:
    explicit Pdf(const std::string& path) : path_(QString::fromStdString(path)) {}

    /// The text of all pages as it lies on the paper, or of one page from 1.
    [[nodiscard]] QString Text(int page = 0) const {
        QStringList words{QStringLiteral("-layout")};
        if (page > 0)
            words << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l")
                  << QString::number(page);
        return RunTool(QStringLiteral("pdftotext"), words << path_ << QStringLiteral("-"));
    }
    [[nodiscard]] bool Has(const char* text, int page = 0) const {
        return Text(page).contains(QString::fromUtf8(text));
    }
    [[nodiscard]] int Pages() const {
        const QString about = RunTool(QStringLiteral("pdfinfo"), {path_});
        const qsizetype at = about.indexOf(QStringLiteral("Pages:"));
        return about.mid(at + 6, 20).split(QLatin1Char('\n')).first().trimmed().toInt();
    }
    /// How many pictures stand in it: text and curves are none.
    [[nodiscard]] int Pictures() const {
        const QString list = RunTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path_});
        return static_cast<int>(list.trimmed().count(QLatin1Char('\n'))) - 1;
    }
    /// A page as a picture of `dots` to the inch.
    [[nodiscard]] QImage Picture(int page, int dots) const {
        const QString stem = path_ + QStringLiteral(".page");
        RunTool(QStringLiteral("pdftoppm"),
                {QStringLiteral("-png"), QStringLiteral("-singlefile"), QStringLiteral("-f"),
                 QString::number(page), QStringLiteral("-r"), QString::number(dots), path_, stem});
        return QImage(stem + QStringLiteral(".png"));
    }

private:
    QString path_;
};

/// Compares a page with tests/golden/NAME, a picture that a person looked at, at 40 dots to the
/// inch. Fonts and renderers differ a little, so that what counts is how much of the page differs:
/// the mean of all pixels, and the share of pixels that are ink in one and paper in the other.
inline void ExpectPageLike(const Pdf& pdf, int page, const std::string& name) {
    constexpr double MEAN = 6.0;    // of 255
    constexpr double SHARE = 0.01;  // of the pixels
    constexpr int INK_OR_PAPER = 120;
    const QImage now = pdf.Picture(page, 40).convertToFormat(QImage::Format_Grayscale8);
    ASSERT_FALSE(now.isNull());
    const QString golden = QString::fromStdString(
        (std::filesystem::path(VAEL_SOURCE_DIR) / "tests/golden" / name).string());
    if (qEnvironmentVariableIsSet("VAEL_APPROVE")) {
        ASSERT_TRUE(now.save(golden));
        FAIL() << "approved anew: " << name << "; run again without VAEL_APPROVE";
    }
    const QImage told = QImage(golden).convertToFormat(QImage::Format_Grayscale8);
    ASSERT_FALSE(told.isNull()) << "no picture " << name;
    ASSERT_EQ(now.size(), told.size());
    double sum = 0.0;
    int far = 0;
    for (int y = 0; y < now.height(); ++y)
        for (int x = 0; x < now.width(); ++x) {
            const int gap = std::abs(now.constScanLine(y)[x] - told.constScanLine(y)[x]);
            sum += gap;
            far += gap > INK_OR_PAPER ? 1 : 0;
        }
    const double pixels = static_cast<double>(now.width()) * now.height();
    EXPECT_LE(sum / pixels, MEAN) << name;
    EXPECT_LE(far / pixels, SHARE) << name;
}

}  // namespace vael::test
