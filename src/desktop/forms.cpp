// The list of forms: which .ui file belongs to which view.
#include "desktop/forms.h"

#include "analysis/frminputfitparameter.h"
#include "analysis/frmmanualfit.h"
#include "analysis/frmpeakreport.h"
#include "analysis/frmroireport.h"
#include "analysis/frmsetting.h"
#include "calibration/frmcalibcurv.h"
#include "calibration/frmdialogcalibc.h"
#include "core/frmdialogload.h"
#include "core/frmdialogmessage.h"
#include "core/frmdisppara.h"
#include "core/frmexpandsetting.h"
#include "core/frmgrpcalc.h"
#include "core/frminput.h"
#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "core/frmvaelana.h"
#include "desktop/icons.h"
#include "display/frmbatchprint.h"
#include "display/frmdialogcolor.h"
#include "display/frmpreview.h"
#include "display/frmprint.h"
#include "display/frmsetcolor.h"
#include "files/frmproperty.h"
#include "lattice/frmatom.h"
#include "lattice/frmelement.h"
#include "lattice/frmpeakcal.h"
#include "ui_frmatom.h"
#include "ui_frmbatchprint.h"
#include "ui_frmcalibcurv.h"
#include "ui_frmdialogcalibc.h"
#include "ui_frmdialogcolor.h"
#include "ui_frmdialogload.h"
#include "ui_frmdialogmessage.h"
#include "ui_frmdisppara.h"
#include "ui_frmelement.h"
#include "ui_frmexpandsetting.h"
#include "ui_frmgrpcalc.h"
#include "ui_frminput.h"
#include "ui_frminputfitparameter.h"
#include "ui_frmlog.h"
#include "ui_frmmanualfit.h"
#include "ui_frmpeakcal.h"
#include "ui_frmpeakreport.h"
#include "ui_frmpreview.h"
#include "ui_frmprint.h"
#include "ui_frmproperty.h"
#include "ui_frmroireport.h"
#include "ui_frmselgraph.h"
#include "ui_frmsetcolor.h"
#include "ui_frmsetting.h"
#include "ui_frmvaelana.h"

#include <QLabel>

namespace vael {
namespace {

template <class Ui>
Form::SetUp FromUi() {
    return [](QMainWindow& window) { Ui().setupUi(&window); };
}

Colour FromQt(const QColor& colour) { return Rgb(colour.red(), colour.green(), colour.blue()); }

/// The axis strips are pictures, so they take the system's colours through the record.
void StripColours(const QPalette& palette) {
    frmVaelAna.StripBack = FromQt(palette.color(QPalette::Active, QPalette::Window));
    frmVaelAna.StripInk = FromQt(palette.color(QPalette::Active, QPalette::WindowText));
}

/// A fault in the status line has a mark in front of it until the next command.
void MarkStatus(Form& form) {
    auto* mark = form.findChild<QLabel*>(QStringLiteral("markStatus"));
    if (mark == nullptr || mark->isHidden() == !frmVaelAna.StatusFault) return;
    mark->setPixmap(FaultIcon().pixmap(16, 16));
    mark->setVisible(frmVaelAna.StatusFault);
}

}  // namespace

std::vector<std::unique_ptr<Form>> MakeForms() {
    std::vector<std::unique_ptr<Form>> forms;
    forms.push_back(std::make_unique<Form>(frmVaelAna, FromUi<Ui::frmVaelAna>(),
                                           Form::Extras{StripColours, MarkStatus}));
    forms.push_back(std::make_unique<Form>(frmLog, FromUi<Ui::frmLog>()));
    forms.push_back(std::make_unique<Form>(frmSelGraph, FromUi<Ui::frmSelGraph>()));
    forms.push_back(std::make_unique<Form>(frmDialogMessage, FromUi<Ui::frmDialogMessage>()));
    forms.push_back(std::make_unique<Form>(frmDialogLoad, FromUi<Ui::frmDialogLoad>()));
    forms.push_back(std::make_unique<Form>(frmInput, FromUi<Ui::frmInput>()));
    forms.push_back(std::make_unique<Form>(frmDispPara, FromUi<Ui::frmDispPara>()));
    forms.push_back(std::make_unique<Form>(frmExpandSetting, FromUi<Ui::frmExpandSetting>()));
    forms.push_back(std::make_unique<Form>(frmGrpCalc, FromUi<Ui::frmGrpCalc>()));
    forms.push_back(std::make_unique<Form>(frmSetting, FromUi<Ui::frmSetting>()));
    forms.push_back(std::make_unique<Form>(frmPeakReport, FromUi<Ui::frmPeakReport>()));
    forms.push_back(std::make_unique<Form>(frmRoiReport, FromUi<Ui::frmRoiReport>()));
    forms.push_back(std::make_unique<Form>(frmProperty, FromUi<Ui::frmProperty>()));
    forms.push_back(std::make_unique<Form>(frmPeakCal, FromUi<Ui::frmPeakCal>()));
    forms.push_back(std::make_unique<Form>(frmManualFit, FromUi<Ui::frmManualFit>()));
    forms.push_back(
        std::make_unique<Form>(frmInputFitParameter, FromUi<Ui::frmInputFitParameter>()));
    forms.push_back(std::make_unique<Form>(frmElement, FromUi<Ui::frmElement>()));
    forms.push_back(std::make_unique<Form>(frmAtom, FromUi<Ui::frmAtom>()));
    forms.push_back(std::make_unique<Form>(frmDialogCalibC, FromUi<Ui::frmDialogCalibC>()));
    forms.push_back(std::make_unique<Form>(frmCalibCurv, FromUi<Ui::frmCalibCurv>()));
    forms.push_back(std::make_unique<Form>(frmSetColor, FromUi<Ui::frmSetColor>()));
    forms.push_back(std::make_unique<Form>(frmDialogColor, FromUi<Ui::frmDialogColor>()));
    forms.push_back(std::make_unique<Form>(frmPrint, FromUi<Ui::frmPrint>()));
    forms.push_back(std::make_unique<Form>(frmPreView, FromUi<Ui::frmPreView>()));
    forms.push_back(std::make_unique<Form>(frmBatchPrint, FromUi<Ui::frmBatchPrint>()));
    return forms;
}

}  // namespace vael
