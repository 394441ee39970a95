// The property sheet: who measured a spectrum, when, and under which conditions, read and edited.
#include "files/frmproperty.h"

#include "core/cursors.h"
#include "core/fault.h"
#include "core/frmvaelana.h"
#include "core/graphs.h"
#include "core/saving.h"
#include "core/store.h"
#include "core/text.h"
#include "core/wholefile.h"
#include "core/windows.h"
#include "display/edittext.h"
#include "files/filevael.h"
#include "toolkit/desk.h"
#include "toolkit/hand.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <optional>

namespace vael {
namespace {

using V = PropertyView;

constexpr double KELVIN_AT_ZERO_CELSIUS = 273.15;

// --- which box shows which field -----------

struct NumberField {
    NumberBox V::*Box;
    double ParamRecord::*Field;
};

/// The numbers that are shown and stored as they stand. 2 theta and the polynomial have two places
/// to come from, and the times are shown alone.
constexpr std::array<NumberField, 33> NUMBERS{{
    {&V::imnCurrent, &ParamRecord::RingCurrent},
    {&V::imnInV, &ParamRecord::InSlitV},
    {&V::imnInH, &ParamRecord::InSlitH},
    {&V::imnInX, &ParamRecord::InSlitX},
    {&V::imnInZ, &ParamRecord::InSlitZ},
    {&V::imnInTY, &ParamRecord::InSlitTY},
    {&V::imnReV, &ParamRecord::ReSlitV},
    {&V::imnReH, &ParamRecord::ReSlitH},
    {&V::imnReX, &ParamRecord::ReSlitX},
    {&V::imnReZ, &ParamRecord::ReSlitZ},
    {&V::imnReTY, &ParamRecord::ReSlitTY},
    {&V::imnCollimeterSize, &ParamRecord::CollimatorSize},
    {&V::imnHGonioX, &ParamRecord::HGonioX},
    {&V::imnHGonioY, &ParamRecord::HGonioY},
    {&V::imnHGonioZ, &ParamRecord::HGonioZ},
    {&V::imnVGonioX, &ParamRecord::VGonioX},
    {&V::imnVGonioY, &ParamRecord::VGonioY},
    {&V::imnVGonioZ, &ParamRecord::VGonioZ},
    {&V::imnVGonioDAngle, &ParamRecord::VGonioAngle},
    {&V::ImnPress, &ParamRecord::Pressure},
    {&V::imnLoad, &ParamRecord::PressLoad},
    {&V::ImnTemp, &ParamRecord::Temperature},
    {&V::imnRamStroke, &ParamRecord::RamStroke},
    {&V::imnPressX, &ParamRecord::PressX},
    {&V::imnPressY, &ParamRecord::PressY},
    {&V::imnPressZ, &ParamRecord::PressZ},
    {&V::imnPressTZ, &ParamRecord::PressTZ},
    {&V::imnVolt, &ParamRecord::Volt},
    {&V::imnCurrent2, &ParamRecord::Current2},
    {&V::imnPower, &ParamRecord::Power},
    {&V::imnRegistance, &ParamRecord::Resistance},
    {&V::imnCntRate, &ParamRecord::CountRate},
    {&V::imnMiriVolt, &ParamRecord::IonChamber},
}};

PropertyRecord& Record() { return Item(store.PropertyRecords, frmProperty.Slot); }

/// Slot 0 under "Default": a sheet that is filled now shows and edits the default calibration. What
/// it was filled with goes back to where it came from, also when the choice has changed since then.
bool TakesDefaults() { return frmProperty.Slot == 0 && store.UseFileEgc == 0; }

// --- filling -----------

/// The text without the blanks at either end, in the record's own bytes: what is no character of
/// the code page stays as it came in. A cleared record's zeros count as blanks.
template <std::size_t N>
std::string Trimmed(FixedText<N>& text) {
    const std::string bytes(text.View());
    const auto isBlank = [](char c) { return c == ' ' || c == '\0'; };
    const auto first = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    const auto last = std::find_if_not(bytes.rbegin(), bytes.rend(), isBlank).base();
    text.SetBytes(first < last ? std::string(first, last) : std::string());
    return text.Trimmed();
}

void ShowCalibration(const ParamRecord& param) {
    V& v = frmProperty;
    v.imnEneCalA.Value = param.EgcCoef[0];
    v.imnEneCalB.Value = param.EgcCoef[1];
    v.imnEneCalC.Value = param.EgcCoef[2];
    v.imnHGonioDAngle.Value = param.TwoTheta;
}

void ShowRow() {
    V& v = frmProperty;
    const int row = RowOfSlot(v.Slot);
    v.lblGraph.Caption =
        row < 0 ? "" : "Row " + std::to_string(row + 1) + "   " + Item(store.GraphList, row).Name;
    v.lblNote.Caption = v.ShowsDefaults
                            ? "Under \"Default\" SAVE changes the default calibration, and this "
                              "spectrum's own numbers stay as they were."
                            : "";
}

// --- storing -----------

/// A text that nobody changed is not written: its bytes may hold what is no character.
template <std::size_t N>
void StoreText(const TextBox& box, FixedText<N>& field) {
    if (field.Trimmed() != box.Text) field = box.Text;
}

void StoreCalibration(ParamRecord& param) {
    const V& v = frmProperty;
    param.TwoTheta = v.imnHGonioDAngle.Value;
    param.EgcCoef = {v.imnEneCalA.Value, v.imnEneCalB.Value, v.imnEneCalC.Value};
}

/// What the sheet shows goes to the record, and under "Default" the calibration of slot 0 to the
/// defaults too. Date, start time and the two counting times are not stored.
void Store() {
    const V& v = frmProperty;
    PropertyRecord& record = Record();
    StoreText(v.txtMsuName, record.FileName);
    StoreText(v.txtSampName, record.SampleName);
    StoreText(v.txtOpName, record.OpName);
    StoreText(v.txtMemo, record.Memo);
    for (const NumberField& number : NUMBERS) record.Param.*number.Field = (v.*number.Box).Value;
    StoreCalibration(record.Param);
    if (v.ShowsDefaults) StoreCalibration(store.DefaultParam);
}

/// Axis, cursor boxes, the list of rows and the reports follow what was stored.
void ShowStored() {
    RefreshRows();
    HidePeakMemo();
    ShowCurrentRow();
    XScaleDraw();
}

/// The name of the slot's row, for the status line.
std::string RowName() {
    const int row = RowOfSlot(frmProperty.Slot);
    return row < 0 ? "the spectrum" : Item(store.GraphList, row).Name;
}

// --- "Count Up" -----------

constexpr std::size_t SERIAL_DIGITS = 6;

/// Where the last six characters of a UTF-8 text begin, or nothing where it has fewer.
std::optional<std::size_t> SerialAt(const std::string& text) {
    std::size_t found = 0;
    for (std::size_t at = text.size(); at > 0; --at) {
        const bool begins = (static_cast<unsigned char>(text[at - 1]) & 0xc0) != 0x80;
        if (begins && ++found == SERIAL_DIGITS) return at - 1;
    }
    return std::nullopt;
}

/// The name with the next serial number, or as it is where it ends in none. A number that outgrows
/// its six places takes a seventh.
std::string CountedUp(const std::string& text) {
    const std::string name = Trim(text);
    const auto at = SerialAt(name);
    const auto end = SerialAt(text);
    // Blanks behind the name count among the last six characters of the box.
    if (!at || !end || !IsNumeric(std::string_view(text).substr(*end))) return text;
    const auto number = ParseNumber(std::string_view(name).substr(*at));
    if (!number) return text;
    return name.substr(0, *at) + FormatNumber(*number + 1.0, "000000");
}

void cmdIndent_Click() {
    V& v = frmProperty;
    const std::string next = CountedUp(v.txtMsuName.Text);
    if (next == v.txtMsuName.Text) {
        TellStatus("The name does not end in a number of six digits.");
        return;
    }
    Put(v.txtMsuName, next);
}

// --- events of the boxes -----------

void Edited() { frmProperty.Changed = true; }

void ShowKelvin() {
    frmProperty.imnTempK.Value = frmProperty.ImnTemp.Value + KELVIN_AT_ZERO_CELSIUS;
}

void ImnTemp_Change() {
    Edited();
    ShowKelvin();
}

/// R = 1000 U / I, milliohm from volt and ampere; 0 without a current. It is computed whenever one
/// of the two boxes is left, also where nothing was typed.
void Heater_Leave() {
    V& v = frmProperty;
    const double volt = v.imnVolt.Value;
    const double current = v.imnCurrent2.Value;
    NumberBox& box = v.imnRegistance;
    Put(box, current == 0.0 ? 0.0 : std::clamp(1000.0 * volt / current, box.Least, box.Most));
}

// --- buttons -----------

/// Each opening is a new sheet, whose backup of slot 0 is that of its own first fill.
void CloseSheet() { Unload(frmProperty); }

void cmdOk_Click() {
    V& v = frmProperty;
    // 1. The record, and under "Default" the defaults.
    Store();
    // 2. Under "Default" what was typed for slot 0 goes to the defaults and not to the spectrum:
    //    its numbers go back to what they were when the sheet first showed them, to the letter,
    //    also those that another command has changed since then.
    if (v.ShowsDefaults && v.BackupMade) Record().Param = v.Backup;
    ShowStored();
    TellStatus("The properties of " + RowName() + " were taken over.");
    // 3. The file, where something was changed. Saving works on the current row.
    const int row = RowOfSlot(v.Slot);
    if (v.Changed && row >= 0 &&
        TheDesk().Ask({.Text = "Property is changed. Do you want to save this file?",
                       .Title = {},
                       .Choice = Question::Buttons::YesNo}) == Answer::Yes) {
        if (row != GraphNo()) Change_cboGrphSel(GetRealWinNo(), row);
        FileSave();
        v.Changed = false;
    }
    // 4.
    CloseSheet();
}

void cmdCan_Click() {
    ShowAngle(Record().Param.TwoTheta);
    CloseSheet();
}

/// Where the label program looks for the spectrum, below the program's folder.
constexpr const char* LABEL_PROGRAM = "/VaelLabelPrint.exe";
constexpr const char* LABEL_FOLDER = "/LBL_TEMP";
constexpr const char* LABEL_FILE = "/LBL_TEMP/Label_Temp.xbm";

/// The label program is started before its file exists, and the two do not wait for each other: it
/// has always been so, and that program knows it.
void PrintLabel() {
    Store();
    ShowStored();
    const std::string program = store.ProgramFolder + LABEL_PROGRAM;
    if (!TheDesk().Launch(program, {}))
        throw Fault(FaultNumber::FileMissing, program + " does not start.");
    TheDesk().MakeFolder(store.ProgramFolder + LABEL_FOLDER);
    const std::string path = store.ProgramFolder + LABEL_FILE;
    if (FileExists(path)) std::filesystem::remove(path);
    const SpectrumData& spectrum = Item(store.SpectrumDatas, frmProperty.Slot);
    if (SaveXbm(path, spectrum, Record(), DeskFileTalk()) != TRUE_WORD) {
        TellStatus("No label: " + path + " was not written (the reason stands in the log).", true);
        Say("Failed Create Label File!");
        return;
    }
    TellStatus("The label program was started with " + RowName() + ".");
}

void cmdLabelPrint_Click() {
    try {
        PrintLabel();
    } catch (const std::exception& trouble) {
        TellStatus(std::string("No label: ") + trouble.what(), true);  // in the log too
        Say("Label Print error");
    }
}

// --- set-up -----------

/// In slot 0 the texts and the number of group 1 are locked, and with the name its counter.
void Lock(bool locked) {
    V& v = frmProperty;
    constexpr const char* WHY =
        "Locked: this spectrum lies in the first place of the memory, whose description stays as "
        "its file has it";
    struct Locked {
        TextBox& Box;
        const char* Tip;
    };
    for (const Locked& each :
         {Locked{v.txtMsuName, "Name of the measurement; saving replaces it by that of the file"},
          Locked{v.txtSampName, "At most 64 letters, a Japanese one counting as two"},
          Locked{v.txtOpName, "At most 30 letters, a Japanese one counting as two"},
          Locked{v.txtMemo, "At most 100 letters, a Japanese one counting as two"}}) {
        each.Box.ReadOnly = locked;
        each.Box.Tip = locked ? WHY : each.Tip;
    }
    v.imnCurrent.ReadOnly = locked;
    v.imnCurrent.Tip = locked ? WHY : "Current of the storage ring";
    v.cmdIndent.Enabled = !locked;
    v.cmdIndent.Tip =
        locked ? WHY : "Raises the serial number of six digits at the end of the name";
}

void Tips(V& v) {
    v.txtOpDate.Tip = v.txtOpTime.Tip = "As the file tells it; not edited here";
    v.imnRealTime.Tip = v.imnLiveTime.Tip = "As the file tells it; not edited here";
    v.imnTempK.Tip = "The temperature in kelvin; not stored";
    v.imnDeadTime.Tip = "(Real Time - Live Time) / Real Time; not stored";
    v.imnRegistance.Tip = "1000 * Volt / Current, computed when one of the two is left";
    v.imnHGonioDAngle.Tip = "2 theta";
    v.cmdOk.Tip = "Takes over what the sheet shows and closes it (Ctrl+S)";
    v.cmdCan.Tip = "Closes the sheet; nothing is taken over (Escape)";
    v.cmdLabelPrint.Tip =
        "Takes over what the sheet shows, and hands the spectrum to the label program";
}

/// Enter takes the number that was typed and saves nothing: a sheet of fifty boxes is not closed by
/// a key that ends one of them.
bool SheetKeys(const KeyPress& key) {
    if (key.Key != KeyPress::Name::Escape || key.Alt || key.Ctrl || key.Shift) return false;
    cmdCan_Click();
    return true;
}

}  // namespace

PropertyView::PropertyView() : View("frmProperty", "Property") {
    for (Control* control : Controls()) {
        if (control->Kind == ControlKind::TextBox) static_cast<TextBox*>(control)->Change = Edited;
        if (control->Kind == ControlKind::NumberBox)
            static_cast<NumberBox*>(control)->Change = Edited;
    }
    ImnTemp.Change = ImnTemp_Change;
    imnVolt.Leave = imnCurrent2.Leave = Heater_Leave;
    txtOpDate.ReadOnly = txtOpTime.ReadOnly = true;
    for (NumberBox* shown : {&imnTempK, &imnDeadTime, &imnRealTime, &imnLiveTime})
        shown->ReadOnly = true;
    imnHGonioDAngle.Least = 0.0;
    imnHGonioDAngle.Most = 180.0;
    ImnTemp.Least = -KELVIN_AT_ZERO_CELSIUS;
    Tips(*this);
    cmdOk.Shortcut = "Ctrl+S";
    cmdIndent.Click = cmdIndent_Click;
    cmdOk.Click = cmdOk_Click;
    cmdCan.Click = cmdCan_Click;
    cmdLabelPrint.Click = cmdLabelPrint_Click;
    Closing = [] {
        // A close box may wait for a command that closes the sheet itself.
        if (frmProperty.Visible) cmdCan_Click();
    };
    KeyPreview = SheetKeys;
}

void PropertyView::SetDataNo(int slot) {
    (void)Item(store.PropertyRecords, slot);  // a slot above 13 ends here
    Slot = slot;
    Lock(slot == 0);
}

void PropertyView::SetValue() {
    PropertyRecord& record = Record();
    const ParamRecord& param = record.Param;
    // 1. What SAVE puts back under "Default".
    ShowsDefaults = TakesDefaults();
    if (ShowsDefaults && !BackupMade) {
        Backup = param;
        BackupMade = true;
    }
    // 2. and 3. Texts.
    txtMsuName.Text = Trimmed(record.FileName);
    txtSampName.Text = Trimmed(record.SampleName);
    txtOpName.Text = Trimmed(record.OpName);
    txtMemo.Text = Trimmed(record.Memo);
    txtOpDate.Text = DateOf(record);
    txtOpTime.Text = TimeOf(record);
    // 4. and 5. Numbers.
    for (const NumberField& number : NUMBERS) (this->*number.Box).Value = param.*number.Field;
    imnRealTime.Value = param.RealTime;
    imnLiveTime.Value = param.LiveTime;
    ShowKelvin();
    imnDeadTime.Value =
        param.RealTime == 0.0 ? 0.0 : (param.RealTime - param.LiveTime) / param.RealTime * 100.0;
    // 6. The calibration that the sheet edits.
    ShowCalibration(ShowsDefaults ? store.DefaultParam : param);
    // 7.
    Changed = false;
    ShowRow();
}

void ShowProperty() {
    V& v = frmProperty;
    const GraphEntry& entry = Item(store.GraphList, GraphNo());
    if (entry.State == 0) {
        TellStatus("There is no spectrum in this row.");
        return;
    }
    const bool other = v.Slot != entry.DataNo;
    if (v.Visible && v.Changed && other) {
        TellStatus("The property sheet has changes of " + RowName() +
                   " that are not saved: SAVE or EXIT comes first.");
        return;
    }
    if (!v.Visible || other) {
        v.SetDataNo(entry.DataNo);
        v.SetValue();
    }
    v.Visible = true;
}

void RefreshProperty() {
    V& v = frmProperty;
    if (!v.Visible) return;
    if (RowOfSlot(v.Slot) < 0) {
        CloseSheet();
        return;
    }
    if (v.Changed)
        ShowRow();
    else
        v.SetValue();
}

}  // namespace vael
