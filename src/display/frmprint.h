// The print dialog: paper direction, line width, printer or file; and the job that follows it.
#pragma once

#include "display/printing.h"
#include "toolkit/controls.h"
#include "toolkit/desk.h"

#include <optional>

namespace vael {

/// frmPrint, shown modally. Direction and width stay for the run of the program. What fires a
/// handler when the program sets it: nothing.
struct PrintView : View {
    PrintView();

    Frame fraDirection{*this, "fraDirection", "Paper Direction"};
    ControlArray<Option, 2> optOrientation{*this, "optOrientation", {"Horizontal", "Vertical"}};
    Picture picTemp{*this, "picTemp", 160, 120};  // a sketch of the sheet
    Label lblDrawWidth{*this, "lblDrawWidth", "Draw Width"};
    NumberBox ImnDrawWidth{*this, "ImnDrawWidth", "0.0", 0.6};
    Label lblPoints{*this, "lblPoints", "pt"};
    Label lblFileName{*this, "lblFileName", "FileName"};
    TextBox txtFileName{*this, "txtFileName"};
    Button cmdPreview{*this, "cmdPreview", "Preview"};
    Button cmdOk{*this, "cmdOk", "O K"};
    Button cmdCan{*this, "cmdCan", "Cancel"};

    // Which button ended the dialog, and what it left.
    bool OkPb = false;
    bool PreViewPb = false;
    int PrintMode = 0;       // 2 after either of the two
    double DrawWidth = 0.6;  // points

    [[nodiscard]] double GetDrawWidth() const { return DrawWidth; }
    [[nodiscard]] int GetOrientation() const { return optOrientation[1].Value ? 1 : 0; }
    [[nodiscard]] int GetPrintMode() const { return PrintMode; }
    /// Rotated text at the canvas's current point, as LotateText writes it.
    static void PrintLotateFont(Canvas& canvas, std::string_view utf8, bool bold, double angle,
                                Colour ink = 0);
};

inline PrintView frmPrint;

/// Shows the dialog, and the preview where it is asked for, until there is an order or it is
/// cancelled. Without `what.Draw` there is no preview. A file that stands already is asked about.
[[nodiscard]] std::optional<PrintOrder> AskPrint(const Printable& what);

/// What became of a job.
struct PrintOutcome {
    bool Started = false;
    bool Fine = false;
    int Pages = 0;       // printed whole
    std::string Reason;  // of a failure, a sentence without its end
};

/// Draws `what` on a job that has begun, and does not end it. Faults of the drawing go on.
[[nodiscard]] PrintOutcome PrintOn(PrintJob& job, const Printable& what);
/// Where an order goes: "the printer" or the path of its file.
[[nodiscard]] std::string PlaceOf(const PrintOrder& order);
/// Tells that a job could not begin: "Printer not ready", or the file that cannot be written.
void TellNotStarted(const PrintOrder& order);

/// Asks, prints, and tells the end of it. Messages: "Printer not ready".
void PrintWithDialog(const Printable& what);

/// The "Print..." command.
void mnuPrint_Click();

}  // namespace vael
