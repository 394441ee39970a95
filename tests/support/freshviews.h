// All views with their form defaults, for a world made anew.
#pragma once

#include "analysis/frminputfitparameter.h"
#include "analysis/frmmanualfit.h"
#include "analysis/frmpeakreport.h"
#include "analysis/frmroireport.h"
#include "analysis/frmsetting.h"
#include "core/frmdialogload.h"
#include "core/frmdialogmessage.h"
#include "core/frmdisppara.h"
#include "core/frmexpandsetting.h"
#include "core/frmgrpcalc.h"
#include "core/frminput.h"
#include "core/frmlog.h"
#include "core/frmselgraph.h"
#include "core/frmvaelana.h"
#include "files/frmproperty.h"
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
    Unload(frmManualFit);
    Unload(frmInputFitParameter);
}

}  // namespace vael
