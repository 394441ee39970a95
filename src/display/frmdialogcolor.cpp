// The colour picker: 48 colours, a bar each for red, green and blue, and the system's own dialog.
#include "display/frmdialogcolor.h"

#include "core/fault.h"
#include "core/frmvaelana.h"
#include "toolkit/desk.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace vael {
namespace {

using V = DialogColorView;

constexpr int MOST = 255;
constexpr Colour ALL = Rgb(MOST, MOST, MOST);
constexpr int ROWS = SWATCH_COUNT / SWATCH_COLUMNS;

/// What belongs to one component of a colour.
struct Component {
    unsigned Shift;
    ScrollBar& Bar;
    NumberBox& Box;
    Picture& Shape;
};

std::array<Component, 3> Components() {
    V& v = frmDialogColor;
    return {{{0, v.vsbRed, v.inumRed, v.shpColorR},
             {8, v.vsbGreen, v.inumGreen, v.shpColorG},
             {16, v.vsbBlue, v.inumBlue, v.shpColorB}}};
}

Colour Part(int value, unsigned shift) { return static_cast<Colour>(value << shift); }

int PartOf(Colour colour, unsigned shift) { return (colour >> shift) & MOST; }

void Paint(Picture& picture, Colour colour) {
    picture.Paper().ScaleReset();
    picture.Paper().Clear(colour);
    ++picture.Painted;
}

/// The ring in a swatch.
void Ring(Picture& picture, Colour ground) {
    Canvas& paper = picture.Paper();
    const double right = picture.Width - 1.0;
    const double bottom = picture.Height - 1.0;
    paper.Scale(0.0, 0.0, right, bottom);
    paper.DrawWidth = 2.0;
    paper.Box(3.0, 3.0, right - 3.0, bottom - 3.0, PlainestOn(ground), false);
}

void PaintSwatch(int index) {
    Picture& picture = Item(frmDialogColor.picColor, index);
    const Colour colour = Item(Swatches(), index);
    Paint(picture, colour);
    if (index == frmDialogColor.Swatch) Ring(picture, colour);
}

/// A bar filled in its own component down to the handle of its scroll bar.
void PaintBar(const Component& part) {
    Paint(part.Shape, frmVaelAna.StripBack);
    const int value = PartOf(frmDialogColor.Selected, part.Shift);
    Canvas& paper = part.Shape.Paper();
    paper.Scale(0.0, 0.0, 1.0, MOST);
    if (value > 0) paper.Box(0.0, 0.0, 1.0, value, Part(value, part.Shift), true);
    paper.Box(0.0, 0.0, 1.0, MOST, frmVaelAna.StripInk, false);
}

void PaintChosen() {
    for (const Component& part : Components()) PaintBar(part);
    Paint(frmDialogColor.picSampl, frmDialogColor.Selected);
    Paint(frmDialogColor.shpSetColor, frmDialogColor.Former);
}

void PaintAll() {
    for (int index = 0; index < SWATCH_COUNT; ++index) PaintSwatch(index);
    PaintChosen();
}

/// The ring goes to the swatch of the chosen colour; a colour that is on none takes it away.
void MarkSwatch() {
    V& v = frmDialogColor;
    const auto& all = Swatches();
    const auto found = std::find(all.begin(), all.end(), v.Selected);
    const int now = found == all.end() ? -1 : static_cast<int>(found - all.begin());
    const int before = std::exchange(v.Swatch, now);
    for (const int index : {before, now})
        if (index >= 0) PaintSwatch(index);
}

void Take(const Component& part, int value) {
    V& v = frmDialogColor;
    const Colour others = v.Selected & ~Part(MOST, part.Shift);
    v.SelColor(others | Part(std::clamp(value, 0, MOST), part.Shift));
}

void cmdOther_Click() {
    if (const auto picked = TheDesk().PickColour(frmDialogColor.SelColor()))
        frmDialogColor.SelColor(*picked);
}

void cmdSet_Click() {
    frmDialogColor.EndedSet = true;
    frmDialogColor.Visible = false;
}

void cmdCansel_Click() { frmDialogColor.Visible = false; }

/// The arrows go from swatch to swatch; from a colour that is on none, to the first.
bool StepSwatch(int across, int down) {
    V& v = frmDialogColor;
    int next = 0;
    if (v.Swatch >= 0) {
        const int column = std::clamp(v.Swatch % SWATCH_COLUMNS + across, 0, SWATCH_COLUMNS - 1);
        const int row = std::clamp(v.Swatch / SWATCH_COLUMNS + down, 0, ROWS - 1);
        next = row * SWATCH_COLUMNS + column;
    }
    v.SelColor(Item(Swatches(), next));
    return true;
}

bool Keys(const KeyPress& key) {
    using K = KeyPress::Name;
    if (key.Alt || key.Ctrl) return false;
    switch (key.Key) {
        case K::Left: return StepSwatch(-1, 0);
        case K::Right: return StepSwatch(1, 0);
        case K::Up: return StepSwatch(0, -1);
        case K::Down: return StepSwatch(0, 1);
        case K::Enter: cmdSet_Click(); return true;
        case K::Escape: cmdCansel_Click(); return true;
        default: return false;
    }
}

/// A colour by its components, red first.
std::string Written(Colour colour) {
    std::string words;
    for (const unsigned shift : {0U, 8U, 16U})
        words += (words.empty() ? "" : ", ") + std::to_string(PartOf(colour, shift));
    return words;
}

void Tips(V& v) {
    for (ScrollBar* bar : {&v.vsbRed, &v.vsbGreen, &v.vsbBlue})
        bar->Tip = "Sets this component from 0 at the top to 255";
    for (NumberBox* box : {&v.inumRed, &v.inumGreen, &v.inumBlue})
        box->Tip = "This component as a number from 0 to 255";
    for (int index = 0; index < SWATCH_COUNT; ++index)
        Item(v.picColor, index).Tip = Written(Item(Swatches(), index)) + " (arrow keys)";
    v.picSampl.Tip = "The colour that \"O K\" takes";
    v.shpSetColor.Tip = "The colour as it was set before";
    v.cmdOther.Tip = "Opens the system's colour dialog";
    v.cmdSet.Tip = "Takes the colour (Enter)";
    v.cmdCansel.Tip = "Leaves the colour as it was (Esc)";
}

}  // namespace

DialogColorView::DialogColorView() : View("frmDialogColor", "Color Selection") {
    Modal = true;
    Tips(*this);
    const auto wire = [](ScrollBar& bar, NumberBox& box, std::size_t which) {
        bar.Most = MOST;
        bar.Large = 16;
        bar.Change = [&bar, which] { Take(Components()[which], bar.Value); };
        box.Least = 0.0;
        box.Most = MOST;
        box.Change = [&box, which] { Take(Components()[which], Whole32(box.Value)); };
    };
    wire(vsbRed, inumRed, 0);
    wire(vsbGreen, inumGreen, 1);
    wire(vsbBlue, inumBlue, 2);
    for (std::size_t index = 0; index < picColor.size(); ++index)
        picColor[index].MouseDown = [index](MouseButton button, double, double) {
            if (button == MouseButton::Left) frmDialogColor.SelColor(Swatches()[index]);
        };
    cmdOther.Click = cmdOther_Click;
    cmdSet.Click = cmdSet_Click;
    cmdCansel.Click = cmdCansel_Click;
    KeyPreview = Keys;
    Resized = PaintAll;
}

void DialogColorView::SelColor(Colour colour) {
    Selected = colour & ALL;
    for (const Component& part : Components()) {
        part.Bar.Value = PartOf(Selected, part.Shift);
        part.Box.Value = part.Bar.Value;
    }
    MarkSwatch();
    PaintChosen();
}

std::optional<Colour> AskColour(Colour now) {
    V& v = frmDialogColor;
    v.EndedSet = false;
    v.Former = now & ALL;
    v.SelColor(now);
    PaintAll();
    ShowModal(v);
    return v.EndedSet ? std::optional<Colour>(v.SelColor()) : std::nullopt;
}

}  // namespace vael
