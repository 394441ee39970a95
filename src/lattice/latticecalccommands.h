// The calculations of the lattice view: the cell, the expected angle, the reports that are saved.
#pragma once

namespace vael {

/// "Execute": matches, refines, shows, logs. Messages: "Seed Error", "Temp Error", "Lattice Type
/// Error" and those of the fit. A calculation that fails changes no box and logs nothing.
void cmdCal_Click();

/// "Correct": the 2 theta at which a cubic standard's cell would be its seed; only shown. Messages:
/// "LatticeConstance Error", "2θ Error", "Initial Constans Error". Faults: Division, Argument where
/// no angle gives that cell.
void cmd2ThetaCalib_Click();

/// Writes the report of the calculation below the program's folder. Message: "LatticeFit Temp File
/// Open Error".
void DataSave();

/// The table of simulated pressures into the program's folder; an aid for whoever works on the
/// scales.
void Command1_Click();

}  // namespace vael
