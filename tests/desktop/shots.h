// What the screenshot tests share: a dark palette, the writing of a picture, the ground they stand
// on.
#pragma once

#include "deskworld.h"

#include <QPalette>
#include <QStyle>

namespace vael::test {

inline QPalette DarkPalette() {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(45, 48, 52));
    dark.setColor(QPalette::WindowText, QColor(225, 227, 230));
    dark.setColor(QPalette::Base, QColor(32, 34, 37));
    dark.setColor(QPalette::AlternateBase, QColor(40, 43, 46));
    dark.setColor(QPalette::Text, QColor(225, 227, 230));
    dark.setColor(QPalette::Button, QColor(56, 60, 65));
    dark.setColor(QPalette::ButtonText, QColor(225, 227, 230));
    dark.setColor(QPalette::Highlight, QColor(61, 132, 201));
    dark.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
    dark.setColor(QPalette::ToolTipBase, QColor(56, 60, 65));
    dark.setColor(QPalette::ToolTipText, QColor(225, 227, 230));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(122, 126, 132));
    return dark;
}

/// Writes the picture of a widget to the folder of screenshots. With VAEL_APPROVE set, what was
/// looked at and found good becomes a picture of the manual, where the manual shows it.
inline void Shoot(QWidget& widget, const std::string& name) {
    const std::filesystem::path folder = std::filesystem::path(VAEL_BUILD_DIR) / "shots";
    std::filesystem::create_directories(folder);
    const int scale = static_cast<int>(widget.devicePixelRatioF());
    const std::string file = name + (scale > 1 ? "@" + std::to_string(scale) + "x" : "") + ".png";
    const QPixmap picture = widget.grab();
    ASSERT_TRUE(picture.save(QString::fromStdString((folder / file).string())));
    static const std::set<std::string> shown{
        "opened",   "fitted",      "fitted_dark",   "log",           "setting",   "setting_express",
        "disppara", "input",       "rows",          "expandsetting", "expand",    "pileup",
        "area",     "memo",        "peakreport",    "roireport",     "manualfit", "inputfit",
        "regions",  "property",    "calibration",   "calibcurve",    "atom",      "element",
        "lattice",  "lattice_use", "lattice_marks", "print",         "preview",   "batchprint",
        "setcolor", "dialogcolor", "tengraphs"};
    if (scale > 1 || !shown.contains(name) || !qEnvironmentVariableIsSet("VAEL_APPROVE")) return;
    const std::filesystem::path manual = std::filesystem::path(VAEL_SOURCE_DIR) / "docs/images";
    std::filesystem::create_directories(manual);
    ASSERT_TRUE(picture.save(QString::fromStdString((manual / file).string())));
}

/// A fixture that gives the palette back.
class ShotTest : public ::testing::Test {
protected:
    static void OpenSpectrum(DeskWorld& world) {
        const std::string measured = MeasuredFile("AuWire.npd");
        world.Open({measured.empty() ? world.Write("made.npd", FIVE_LINES) : measured});
    }
    static void Dark() { QApplication::setPalette(DarkPalette()); }
    ~ShotTest() override { QApplication::setPalette(QApplication::style()->standardPalette()); }
};

}  // namespace vael::test
