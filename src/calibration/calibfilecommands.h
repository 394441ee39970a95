// The calibration's list of spectra: which files stand in it, and which one fills the rows.
#pragma once

namespace vael {

/// Shows the list as it stands.
void FillCalibFiles();

/// Asks for files by the program's own dialog, lists those that a reader takes, twenty at most, and
/// reads the last of them. One that is listed already is chosen. Message at the twenty-first: "Can
/// not open more file (Max=20)".
void OpenCalibFiles();

/// Reads the spectrum in a line of the list, from 1, anew: the rows are emptied without a prompt
/// and hold it alone, so that twenty fit into ten rows. A file that cannot be read leaves the rows.
void ReadCalibFile(int row);

/// Takes the current line off the list, and its spectrum with all that was derived from it off the
/// rows.
void DeleteCalibFile();

}  // namespace vael
