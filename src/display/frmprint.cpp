// The print dialog: paper direction, line width, printer or file; and the job that follows it.
#include "display/frmprint.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "display/frmpreview.h"
#include "display/lotatefont.h"
#include "display/pagepicture.h"
#include "display/paper.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <filesystem>
#include <memory>

namespace vael {
namespace {

constexpr const char* FILE_KIND = ".pdf";

/// The sheet in its direction with a plot on it, lines as wide as they will be.
void DrawSketch() {
    PrintView& v = frmPrint;
    Picture& picture = v.picTemp;
    picture.Paper().ScaleReset();
    PagePicture sheet(picture.Paper().Below(), v.GetOrientation() == 0, 1);
    sheet.DrawSheet();
    Canvas canvas(sheet);
    const Extent size = canvas.PixelSize();
    const paper::Rect plot{size.Width * 0.2, size.Height * 0.15, size.Width * 0.9,
                           size.Height * 0.6};
    // The sketch is some fifth of a sheet, so that a width in points has to be drawn larger.
    canvas.DrawWidth = v.ImnDrawWidth.Value * 5.0;
    canvas.Box(plot.Left, plot.Top, plot.Right, plot.Bottom, paper::QUIET, false);
    constexpr std::array<double, 6> HEIGHTS{0.05, 0.1, 0.9, 0.15, 0.4, 0.05};
    for (std::size_t i = 1; i < HEIGHTS.size(); ++i) {
        const auto x = [&](std::size_t at) {
            return plot.Left + plot.Width() * static_cast<double>(at) / 5.0;
        };
        canvas.Line(x(i - 1), plot.Bottom - plot.Height() * HEIGHTS[i - 1], x(i),
                    plot.Bottom - plot.Height() * HEIGHTS[i], paper::INK);
    }
    canvas.DrawWidth = 4.0;
    for (int line = 0; line < 4; ++line) {
        const double y = size.Height * (0.72 + 0.06 * line);
        canvas.Line(size.Width * 0.1, y, size.Width * (line == 3 ? 0.5 : 0.9), y, paper::FAINT);
    }
    ++picture.Painted;
}

void Leave(bool ok, bool preview) {
    PrintView& v = frmPrint;
    v.OkPb = ok;
    v.PreViewPb = preview;
    if (ok || preview) {
        v.PrintMode = 2;
        v.DrawWidth = v.ImnDrawWidth.Value;
    }
    v.Visible = false;
}

void cmdOk_Click() { Leave(true, false); }
void cmdPreview_Click() { Leave(false, true); }
void cmdCan_Click() { Leave(false, false); }

/// What the file box says, as a path: beside the spectra where it names no folder, with the kind of
/// the file behind a name that has none.
std::string FileOfBox() {
    const std::string name = Trim(frmPrint.txtFileName.Text);
    if (name.empty()) return {};
    std::filesystem::path path(name);
    if (path.is_relative()) path = std::filesystem::path(store.DataDrive + store.DataFolder) / path;
    std::string file = path.string();
    if (LowerCase(path.extension().string()) != FILE_KIND) file += FILE_KIND;
    return file;
}

/// Whether a file may be written: it is not there, or the user says so.
bool MayReplace(const std::string& file) {
    if (file.empty() || !FileExists(file)) return true;
    return AskYesNo(file + " is there already. Replace it?", "Print");
}

/// The message of a job that ended badly, without a mark at its end.
std::string FailedOn(int page) { return "the printer failed on page " + std::to_string(page); }

}  // namespace

PrintView::PrintView() : View("frmPrint", "Print") {
    Modal = true;
    optOrientation[0].Value = true;
    ImnDrawWidth.Least = 0.1;
    ImnDrawWidth.Most = 5.0;
    optOrientation[0].Tip = "The long side of the sheet lies level";
    optOrientation[1].Tip = "The long side of the sheet stands upright";
    ImnDrawWidth.Tip = "Width of lines and dots on paper, 0.1 to 5 points";
    txtFileName.Tip = "A PDF file to print to; left empty it goes to the printer";
    cmdPreview.Tip = "Shows the pages as they will be";
    cmdOk.Tip = "Prints (Enter)";
    for (Option& direction : optOrientation) direction.Click = DrawSketch;
    ImnDrawWidth.Change = DrawSketch;
    cmdPreview.Click = cmdPreview_Click;
    cmdOk.Click = cmdOk_Click;
    cmdCan.Click = cmdCan_Click;
    Closing = cmdCan_Click;
    Resized = DrawSketch;
    KeyPreview = EnterEscape(cmdOk_Click, cmdCan_Click);
}

void PrintView::PrintLotateFont(Canvas& canvas, std::string_view utf8, bool bold, double angle,
                                Colour ink) {
    LotateText(canvas, utf8, bold, angle, ink);
}

std::optional<PrintOrder> AskPrint(const Printable& what) {
    PrintView& v = frmPrint;
    v.Caption = "Print - " + what.Title;
    v.cmdPreview.Enabled = what.Draw != nullptr;
    v.txtFileName.Text = TheDesk().HasPrinter() ? "" : what.Name + FILE_KIND;
    while (true) {
        v.OkPb = v.PreViewPb = false;
        DrawSketch();
        ShowModal(v);
        if (v.PreViewPb) {
            ShowPreView(what, v.GetOrientation() == 0, v.GetDrawWidth());
            continue;
        }
        if (!v.OkPb) return std::nullopt;
        const std::string file = FileOfBox();
        if (MayReplace(file))
            return PrintOrder{
                .Title = what.Title, .Landscape = v.GetOrientation() == 0, .File = file};
    }
}

PrintOutcome PrintOn(PrintJob& job, const Printable& what) {
    PrintOutcome outcome;
    outcome.Started = true;
    int begun = 1;
    Canvas canvas(job.Page());
    const bool drawn = what.Draw(canvas, frmPrint.GetDrawWidth(), [&] {
        ++begun;
        return job.NextPage();
    });
    outcome.Fine = drawn;
    outcome.Pages = drawn ? begun : begun - 1;
    if (!drawn) outcome.Reason = FailedOn(begun);
    return outcome;
}

std::string PlaceOf(const PrintOrder& order) {
    return order.File.empty() ? "the printer" : order.File;
}

void TellNotStarted(const PrintOrder& order) {
    if (order.File.empty()) {
        TellStatus("Not printed: there is no printer.", true);
        Say("Printer not ready");
        return;
    }
    TellStatus("Not printed: " + order.File + " cannot be written.", true);
    Say(order.File + " cannot be written.", "Print");
}

void PrintWithDialog(const Printable& what) {
    const auto order = AskPrint(what);
    if (!order) {
        TellStatus("Nothing was printed.");
        return;
    }
    PrintOutcome outcome;
    {
        const BusyCursor busy;
        const auto job = TheDesk().StartPrintJob(*order);
        if (job) {
            outcome = PrintOn(*job, what);
            if (outcome.Fine && !job->End()) {
                outcome.Fine = false;
                outcome.Reason = FailedOn(outcome.Pages);
            }
        }
    }
    if (!outcome.Started) return TellNotStarted(*order);
    if (!outcome.Fine) {
        TellStatus("Not printed: " + outcome.Reason + "; the job was ended.", true);
        Say("Printer error: " + outcome.Reason + ". The job was ended.", "Print");
        return;
    }
    TellStatus("Printed " + std::to_string(outcome.Pages) +
               (outcome.Pages == 1 ? " page on " : " pages on ") + PlaceOf(*order) + ".");
}

void mnuPrint_Click() {
    if (!AnythingDrawn()) {
        TellStatus("There is nothing to print: no row is drawn.");
        return;
    }
    const GraphEntry& entry = Item(store.GraphList, GraphNo());
    PrintWithDialog({.Title = entry.State > 0 ? entry.Name : std::string("Graphs"),
                     .Name = entry.State > 0 ? SplitFilePath(entry.Name).Name : "Graphs",
                     .Draw = PrintDataH});
}

}  // namespace vael
