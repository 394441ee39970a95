// All views with their form defaults, for a world made anew.
#pragma once

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
#include "display/frmbatchprint.h"
#include "display/frmdialogcolor.h"
#include "display/frmpreview.h"
#include "display/frmprint.h"
#include "display/frmsetcolor.h"
#include "files/frmproperty.h"
#include "lattice/frmatom.h"
#include "lattice/frmelement.h"
#include "lattice/frmpeakcal.h"
#include "toolkit/hand.h"

namespace vael {

/// Every view with its form defaults.
inline void FreshViews() {
    Unload(frmVaelAna);
    Unload(frmLog);
    Unload(frmSelGraph);
    Unload(frmDialogMessage);
    Unload(frmDialogLoad);
    Unload(frmInput);
    Unload(frmDispPara);
    Unload(frmExpandSetting);
    Unload(frmGrpCalc);
    Unload(frmSetting);
    Unload(frmPeakReport);
    Unload(frmRoiReport);
    Unload(frmProperty);
    Unload(frmPeakCal);
    Unload(frmManualFit);
    Unload(frmInputFitParameter);
    Unload(frmElement);
    Unload(frmAtom);
    Unload(frmDialogCalibC);
    Unload(frmCalibCurv);
    Unload(frmSetColor);
    Unload(frmDialogColor);
    Unload(frmPrint);
    Unload(frmPreView);
    Unload(frmBatchPrint);
}

}  // namespace vael
