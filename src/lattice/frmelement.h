// The element sheet: one element of the table with its line energies, browsed and edited.
#pragma once

#include "lattice/elements.h"
#include "toolkit/controls.h"

#include <cstdint>
#include <functional>
#include <string>

namespace vael {

/// frmElement, a sheet beside the others. What is typed into a box is taken into the table when the
/// box is left; "OK" writes the file, and every other way out puts the table back to what it was
/// when the sheet was opened. What fires a handler when the program sets it: nothing.
struct ElementView : View {
    ElementView();

    /// The element that is shown, by atomic number. Setting it shows another one; a number outside
    /// 1 to 107 says "AtomIndex out of range" and changes nothing.
    [[nodiscard]] std::int16_t ElemNo() const { return Number; }
    void ElemNo(std::int16_t number);
    // What the table has of an element; empty or 0 where it has nothing. They read the file when no
    // table is in force yet. Messages: "AtomIndex out of range", and "Num = " with "records index
    // error" for an element that the table has no row of. Faults: those of reading the file.
    [[nodiscard]] std::string ElementName(int number) const;
    [[nodiscard]] std::string GetSymbol(int number) const;
    /// Energy in keV of a line kind (LINE_KA1 to LINE_EDGE); 0 where there is no such line.
    [[nodiscard]] double Energy(int number, int kind) const;

    /// Takes an energy in keV into the current row of the calibration's table, and goes on to the
    /// next row. Empty while no calibration is open: the one who opens it sets it, and clears it.
    std::function<void(double)> EntEnargy;

    ElementTable Table;   // the table in force
    ElementTable Opened;  // as it was when the sheet was opened
    std::int16_t Number = 1;

    Button cmdBack{*this, "cmdBack", "<"};
    Label lblNum{*this, "lblNum", "Num"};
    TextBox ImNumber5{*this, "ImNumber5"};
    Button cmdFor{*this, "cmdFor", ">"};
    Label lblSymbol{*this, "lblSymbol", "Symbol"};
    TextBox txtSymbol{*this, "txtSymbol"};
    Label lblElement{*this, "lblElement", "Element"};
    TextBox Text1{*this, "Text1"};
    Label lblElementName{*this, "lblElementName", "Element Name"};
    TextBox Text2{*this, "Text2"};

    // Two columns: the lines from the lowest energy up, and what else there is.
    Label lblKa2{*this, "lblKa2", "Ka2"};
    TextBox ImNumber1{*this, "ImNumber1"};
    Label lblKa1{*this, "lblKa1", "Ka1"};
    TextBox ImNumber2{*this, "ImNumber2"};
    Label lblKb3{*this, "lblKb3", "Kb3"};
    TextBox ImNumber7{*this, "ImNumber7"};
    Label lblKb1{*this, "lblKb1", "Kb1"};
    TextBox ImNumber3{*this, "ImNumber3"};
    Label lblKb2{*this, "lblKb2", "Kb2"};
    TextBox ImNumber4{*this, "ImNumber4"};
    Label lblAbsEdge{*this, "lblAbsEdge", "AbsEdge"};
    TextBox ImNumber6{*this, "ImNumber6"};
    Label lblGamma{*this, "lblGamma", "Gamma"};
    TextBox ImNumber8{*this, "ImNumber8"};
    Label lblKAve{*this, "lblKAve", "KAve"};
    TextBox ImNumber9{*this, "ImNumber9"};
    ControlArray<Label, 8> lblUnit{*this, "lblUnit", std::string("keV")};

    Label lblTold{*this, "lblTold"};
    Button cmdOk{*this, "cmdOk", "OK"};
};

inline ElementView frmElement;

/// Reads "atomic.dat" of the program's folder and shows the sheet at `ElemNo`. One that stands open
/// keeps what was typed. Where the file cannot be read "Atomic.dat File Read (Open Error)" says so,
/// the command ends in the fault that names the reason, and the table in force stays.
void ShowElement();
/// The same at an element.
void ShowElement(std::int16_t number);
/// Reads the file when no table is in force yet; the same message and faults.
void NeedElementTable();

}  // namespace vael
